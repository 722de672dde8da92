// SPDX-License-Identifier: Apache-2.0
// How the rows of a waveform are shown: their order, look and colors, and the file of layouts.
#include "wave_driver.h"

#include "oxa-editor/wave/analog_track.h"
#include "oxa-editor/wave/joint_waveform.h"
#include "oxa-editor/wave/wave_model.h"
#include "oxa-editor/wave/wave_row_menu.h"
#include "oxa-editor/wave/wave_settings.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QJsonDocument>
#include <QMimeData>

#include <array>
#include <random>

using namespace OXA_CAPTURE;

namespace {

/// A view of a bus `d` of two bits and the signals `a`, `b` and `c`.
struct Rows : Shown {
    explicit Rows(WaveSettings* settings = nullptr)
        : Shown(kTwoWindows, settings)
    {
        show({busOf("d", 2), signalOf("a"), signalOf("b"), signalOf("c")});
        choose(0);
    }

    void show(const QList<OXA::SignalItem>& items)
    {
        CapturedCore core = capturedOf(kTwoWindows);
        core.items = items;
        view.setWaveform(capturedWaveform(core, nullptr));
    }

    WaveModel& model() const { return static_cast<WaveModel&>(*view.rows()->model()); }

    /// "d a group(b c)", with what is below expanded rows.
    QString order(const QModelIndex& parent = {}) const
    {
        QStringList texts;
        for (int row = 0; row < model().rowCount(parent); ++row) {
            const QModelIndex index = model().index(row, 0, parent);
            const QString name = index.data().toString();
            const bool isOpen = view.rows()->isExpanded(index);
            texts += (name.isEmpty() ? "-" : name) + (isOpen ? '(' + order(index) + ')' : "");
        }
        return texts.join(' ');
    }

    QModelIndex find(const QString& name, const QModelIndex& parent = {}) const
    {
        for (int row = 0; row < model().rowCount(parent); ++row) {
            const QModelIndex index = model().index(row, 0, parent);
            const QModelIndex below = find(name, index);
            if (index.data() == name || below.isValid())
                return below.isValid() ? below : index;
        }
        return {};
    }

    /// Selects these rows, the first as the current one.
    void select(const QString& names)
    {
        auto* selection = view.rows()->selectionModel();
        selection->clear();
        for (const QString& name : names.split(' ')) {
            if (!selection->hasSelection())
                selection->setCurrentIndex(find(name), QItemSelectionModel::NoUpdate);
            selection->select(find(name), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
    }

    void drop(const QString& names, const QString& parent, int row)
    {
        QModelIndexList indexes;
        for (const QString& name : names.split(' '))
            indexes += find(name);
        const std::unique_ptr<QMimeData> data(model().mimeData(indexes));
        model().dropMimeData(data.get(), Qt::MoveAction, row, 0, find(parent));
    }

    /// Chooses an entry of the menu of rows, "Color/Blue".
    void menu(const QString& path)
    {
        QMenu* menu = &view.rowMenu();
        for (const QString& part : path.split('/')) {
            Q_EMIT menu->aboutToShow();
            for (QAction* action : menu->actions()) {
                if (action->text().remove('&') != part)
                    continue;
                QVERIFY2(action->isEnabled(), qPrintable(path));
                action->menu() ? void(menu = action->menu()) : action->trigger();
                break;
            }
        }
        Q_EMIT view.rowMenu().aboutToHide();
    }
};

/// The distance of two colors as people see them who lack one kind of cones: `without` 0 that for
/// red, 1 that for green, 2 none of them.
double distance(const QColor& a, const QColor& b, int without)
{
    const auto seen = [&](const QColor& color) {
        const auto linear = [](double part) { return std::pow(part, 2.2); };
        const double red = linear(color.redF());
        const double green = linear(color.greenF());
        const double blue = linear(color.blueF());
        double l = 17.8824 * red + 43.5161 * green + 4.1194 * blue;
        double m = 3.4557 * red + 27.1554 * green + 3.8671 * blue;
        const double s = 0.03 * red + 0.1843 * green + 1.4671 * blue;
        if (without == 0)
            l = 2.0234 * m - 2.5258 * s;
        else if (without == 1)
            m = 0.4942 * l + 1.2483 * s;
        // Brightness, and the two differences that the eye computes, each about 0 to 100.
        const auto root
            = [](double cone, double white) { return 100 * std::cbrt(std::fmax(cone / white, 0)); };
        const double lRoot = root(l, 65.5);
        const double mRoot = root(m, 34.5);
        const double sRoot = root(s, 1.68);
        return std::array<double, 3> {
            (2 * lRoot + mRoot) / 3, 3 * (lRoot - mRoot), (lRoot + mRoot) / 2 - sRoot};
    };
    const auto x = seen(a);
    const auto y = seen(b);
    return std::sqrt(
        std::pow(x[0] - y[0], 2) + std::pow(x[1] - y[1], 2) + std::pow(x[2] - y[2], 2));
}

}

class TestWaveLayout : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ordersOfRows();
    void looks();
    void layoutIsKept();
    void brokenFiles();
    void layoutOfTwoViews();
    void rangesOfCurves();
    void curvesAreDrawn();
    void colorsCanBeToldApart_data();
    void colorsCanBeToldApart();
};

void TestWaveLayout::ordersOfRows()
{
    const auto typeName = [](Rows& rows, const char* name) {
        auto* editor = rows.view.rows()->findChild<QLineEdit*>();
        QVERIFY(editor);
        editor->setText(name);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents(); // the view takes the name later
    };
    const struct {
        std::function<void(Rows& rows)> act;
        const char* order;
    } steps[] = {
        {[](Rows& rows) { rows.key(Qt::Key_Down, Qt::AltModifier); },                         "a d b c"             },
        {[](Rows& rows) { rows.select("c d"), rows.key(Qt::Key_Up, Qt::AltModifier); },       "d c a b"             },
        {[](Rows& rows) { rows.key(Qt::Key_Up, Qt::AltModifier); },                           "d c a b"             },
        {[&](Rows& rows) {
             rows.select("b c");
             rows.key(Qt::Key_G, Qt::ControlModifier);
             typeName(rows, "<bus>");
         },                                                                          "d <bus>(c b) a"      },
        {[](Rows& rows) { rows.select("a"), rows.key(Qt::Key_Up, Qt::AltModifier); },
         "d <bus>(c b a)"                                                                                           },
        {[](Rows& rows) { rows.select("c"), rows.key(Qt::Key_Up, Qt::AltModifier); },
         "d c <bus>(b a)"                                                                                           },
        {[](Rows& rows) { rows.view.rows()->collapse(rows.find("<bus>")); },                  "d c <bus>"           },
        {[](Rows& rows) { rows.select("c"), rows.key(Qt::Key_Down, Qt::AltModifier); },
         "d <bus> c"                                                                                                },
        {[](Rows& rows) { rows.view.rows()->expand(rows.find("d")); },                        "d(d[1] d[0]) <bus> c"},
 // Of a bit, its bus moves.
        {[](Rows& rows) { rows.select("d[0]"), rows.key(Qt::Key_Down, Qt::AltModifier); },
         "<bus> d(d[1] d[0]) c"                                                                                     },
        {[&](Rows& rows) { rows.select("c"), rows.menu("Add divider"), typeName(rows, ""); },
         "<bus> d(d[1] d[0]) - c"                                                                                   },
        {[](Rows& rows) { rows.drop("c d", "<bus>", 1), rows.view.rows()->collapseAll(); },
         "<bus> -"                                                                                                  },
        {[](Rows& rows) { rows.view.rows()->expand(rows.find("<bus>")); },                    "<bus>(b d c a) -"    },
        {[](Rows& rows) { rows.drop("<bus>", "<bus>", 0); },                                  "<bus>(b d c a) -"    },
        {[](Rows& rows) { rows.drop("<bus> c", "none", 2); },                                 "- <bus>(b d c a)"    },
        {[](Rows& rows) { rows.select("b c"), rows.keys("h"); },                              "- <bus>(d a)"        },
        {[](Rows& rows) { rows.menu("Show hidden rows"); },                                   "- <bus>(b d c a)"    },
        {[](Rows& rows) { rows.select("b"), rows.menu("Hide"); },                             "- <bus>(b d c a)"    },
        {[](Rows& rows) { rows.menu("Show hidden rows"); },                                   "- <bus>(b d a)"      },
        {[](Rows& rows) { rows.enter("Filter:", "A"); },                                      "<bus>(a)"            },
        {[](Rows& rows) { rows.enter("Filter:", "[bd"); },                                    ""                    },
        {[](Rows& rows) { rows.enter("Filter:", "[bd]"); },                                   "<bus>(b d)"          },
        {[](Rows& rows) { rows.enter("Filter:", "<bus>"); },                                  "<bus>(b d a)"        },
        {[](Rows& rows) { rows.enter("Filter:", ""); },                                       "- <bus>(b d a)"      },
        {[](Rows& rows) { rows.select("<bus>"), rows.key(Qt::Key_Delete); },                  "- b d a"             },
        {[](Rows& rows) { rows.select("a"), rows.key(Qt::Key_Delete); },                      "- b d a"             },
        {[](Rows& rows) { rows.menu("Usual layout"); },                                       "d a b c"             },
    };
    Rows rows;
    const QAbstractItemModelTester tester(
        &rows.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    for (const auto& step : steps) {
        step.act(rows);
        QCOMPARE(rows.order(), QString(step.order));
    }
}

void TestWaveLayout::looks()
{
    Rows rows;
    rows.view.canvas()->setCursor(0, 3);
    const int low = rows.view.rows()->visualRect(rows.find("d")).height();
    rows.select("d a");
    rows.menu("Color/Purple");
    rows.menu("Height/4 line(s)");
    rows.menu("Radix/Binary");
    QCOMPARE(rows.rows(), QString("d=10 a=1 b=0 c=1"));
    QVERIFY(rows.view.rows()->visualRect(rows.find("a")).height() > 3 * low);
    QCOMPARE(rows.view.rows()->visualRect(rows.find("b")).height(), low);
    const WaveColors colors = waveColors(rows.view.palette());
    QCOMPARE(rows.find("a").data(Qt::DecorationRole).value<QColor>(), colors.rows[3]);

    // Sample 3 of `a` is 1, and is drawn at the upper edge of the high row.
    rows.view.canvas()->setCursor(0, 0); // it tints its sample
    const QRect place = rows.view.rows()->visualRect(rows.find("a"));
    const QImage picture = rows.view.canvas()->grab().toImage();
    const int x = qRound(rows.view.canvas()->scale().xOf(3.5));
    const int y = rows.view.rows()->header()->height() + place.top() + 3;
    QCOMPARE(picture.pixelColor(x, y), colors.rows[3]);
}

void TestWaveLayout::layoutIsKept()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("c.oxa");
    writeFile(
        path + ".waves", R"({"of others": [1], "cores": {"7": {"rows": [{"signal": "x"}]}}})");
    {
        WaveSettings settings;
        settings.open(path);
        Rows rows(&settings);
        rows.select("b c");
        rows.key(Qt::Key_G, Qt::ControlModifier);
        rows.select("d");
        rows.menu("Radix/Decimal, signed");
        rows.menu("Draw as/Analog lines");
        rows.view.rows()->expand(rows.find("d"));
        // A run without some signals, and with another one.
        rows.show({busOf("d", 4), signalOf("b")});
        QCOMPARE(rows.order(), QString("d(d[3] d[2] d[1] d[0]) Group(b)"));
        rows.show({busOf("d", 2), signalOf("new"), signalOf("b"), signalOf("c")});
        settings.editRows(kJointCores, settings.rows(0));
    }
    WaveSettings settings;
    settings.open(path);
    Rows rows(&settings);
    QCOMPARE(rows.order(), QString("d(d[1] d[0]) a Group(b c)"));
    const WaveEntry& bus = *rows.model().entry(rows.find("d"));
    QCOMPARE(int(bus.radix.value()), int(Radix::Signed));
    QCOMPARE(int(bus.shape), int(WaveShape::Lines));
    QCOMPARE(bus.height, 4);
    const QJsonObject file = QJsonDocument::fromJson(bytesOf(path + ".waves")).object();
    QCOMPARE(file["of others"].toArray().size(), 1);
    QCOMPARE(file["cores"].toObject().keys(), QStringList({"0", "7", "all"}));
    QCOMPARE(settings.rows(kJointCores), settings.rows(0));

    // Another file of the same configuration gets it, too; another configuration does not have it.
    settings.moveTo(folder.filePath("copy.oxa"));
    settings.open(folder.filePath("other.oxa"));
    QCOMPARE(rows.order(), QString("d a b c"));
    settings.open(folder.filePath("copy.oxa"));
    QCOMPARE(rows.order(), QString("d(d[1] d[0]) a Group(b c)"));
}

void TestWaveLayout::brokenFiles()
{
    const struct {
        const char *content, *problem, *order;
    } files[] = {
        {"{",                                                                                                               "at byte",     "d a b c"},
        {"[]",                                                                                                              "is an array", "d a b c"},
        {R"({"cores": {"x": 1, "0": {"rows": 3, "clockHz": "fast"}}})",                                                     nullptr,       "d a b c"},
        {R"({"cores": {"0": {"rows": [7, {}, {"signal": "c", "color": "pink", "height": -1, "radix": 4, "shape": "round"},
             {"signal": "c"}, {"group": "G", "rows": [{"group": "H"}, {"signal": "a", "rows": [1]}], "expanded": 1}]}}})",
         nullptr,                                                                                                                          "d c G b"},
    };
    for (const auto& file : files) {
        const QTemporaryDir folder;
        const QString path = folder.filePath("c.oxa");
        writeFile(path + ".waves", file.content);
        WaveSettings settings;
        settings.open(path);
        Rows rows(&settings);
        QCOMPARE(rows.order(), QString(file.order));
        QCOMPARE(rows.state().contains(file.problem ? file.problem : "cannot be read"),
            file.problem != nullptr);
        rows.menu("Color/Blue");
        settings.save();
        QCOMPARE(bytesOf(path + ".waves") == file.content, file.problem != nullptr);
    }
}

void TestWaveLayout::layoutOfTwoViews()
{
    WaveSettings settings;
    Rows one(&settings);
    Rows other(&settings);
    one.select("c");
    one.menu("Move up");
    QCOMPARE(other.order(), QString("d a c b"));
    other.view.rows()->expand(other.find("d"));
    QCOMPARE(one.order(), QString("d(d[1] d[0]) a c b"));
    QCOMPARE(one.view.rows()->currentIndex(), one.find("c"));
}

// Compared with a search of all samples.
void TestWaveLayout::rangesOfCurves()
{
    std::mt19937 random(1);
    QStringList texts;
    for (int i = 0; i < 700; ++i)
        texts += QString::number(random() % 256 + 256, 2)
                     .mid(1)
                     .replace(i % 50 == 7 ? "0" : "none", "x");
    WaveRow row;
    row.samples = std::make_shared<SampleTable>(samplesOf({texts.join(' ')}));
    row.width = 8;
    row.changes = ChangeIndex(texts.size());
    for (int i = 1; i < texts.size(); ++i) {
        if (texts.at(i) != texts.at(i - 1))
            row.changes.insert(i);
    }
    const AnalogTrack track(row, true);
    for (int i = 0; i < 2000; ++i) {
        const int first = int(random() % 700);
        const int end = first + 1 + int(random() % unsigned(700 - first));
        double least = 1000;
        double greatest = -1000;
        for (int sample = first; sample < end; ++sample) {
            if (texts.at(sample).contains('x'))
                continue;
            const double value = qint8(texts.at(sample).toInt(nullptr, 2));
            least = qMin(least, value);
            greatest = qMax(greatest, value);
        }
        const AnalogTrack::Range range = track.range(first, end);
        QCOMPARE(range.isEmpty(), greatest < least);
        if (!range.isEmpty())
            QCOMPARE(QPointF(range.least, range.greatest), QPointF(least, greatest));
    }
}

void TestWaveLayout::curvesAreDrawn()
{
    Rows rows;
    rows.show({busOf("d", 5)});
    rows.select("d");
    rows.menu("Draw as/Analog steps");
    rows.menu("Color/Orange");
    const QRect place = rows.view.rows()->visualRect(rows.find("d"));
    const WaveScale& scale = rows.view.canvas()->scale();
    const QColor color = waveColors(rows.view.palette()).rows[1];
    QImage picture = rows.view.canvas()->grab().toImage();
    const auto heightAt = [&](double sample) {
        const int top = rows.view.rows()->header()->height() + place.top();
        for (int y = top; y < top + place.height(); ++y) {
            if (picture.pixelColor(qRound(scale.xOf(sample)), y) == color)
                return top + place.height() - y;
        }
        return -1;
    };
    // 0, 3, the trigger's sample, 21, unknown
    QVERIFY(heightAt(0.5) > 0);
    QCOMPARE(heightAt(0.8), heightAt(0.5));
    QVERIFY(heightAt(0.5) < heightAt(1.5));
    QVERIFY(heightAt(1.5) * 3 < heightAt(3.5));
    QCOMPARE(heightAt(4.5), -1);

    rows.menu("Draw as/Analog lines");
    picture = rows.view.canvas()->grab().toImage();
    QVERIFY(heightAt(0.5) < heightAt(0.95));
    const int columns = int(1.9 * scale.pixels());
    for (int column = 0; column < columns; ++column)
        QVERIFY(heightAt(0.05 + column / scale.pixels()) > 0);
}

void TestWaveLayout::colorsCanBeToldApart_data()
{
    QTest::addColumn<QColor>("base");
    QTest::addColumn<QColor>("text");
    QTest::newRow("light") << QColor(Qt::white) << QColor(Qt::black);
    QTest::newRow("dark") << QColor(0x1b1b1b) << QColor(Qt::white);
    QTest::newRow("high contrast") << QColor(Qt::black) << QColor(Qt::yellow);
    QTest::newRow("gray") << QColor(0x606060) << QColor(Qt::white);
}

void TestWaveLayout::colorsCanBeToldApart()
{
    QFETCH(QColor, base);
    QFETCH(QColor, text);
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, text);
    const WaveColors colors = waveColors(palette);
    const std::vector<std::vector<QColor>> sets {
        {colors.signal,      colors.bus,           colors.event, colors.unknown},
        {colors.trigger,    colors.cursors[0],                        colors.cursors[1]},
        {std::begin(colors.rows),std::end(colors.rows) - 1},
    };
    for (const auto& set : sets) {
        for (const QColor& one : set) {
            QVERIFY2(contrast(one, colors.base) >= 3, qPrintable(one.name()));
            QVERIFY2(contrast(one, colors.window) >= 2.2, qPrintable(one.name()));
            for (const QColor& other : set) {
                for (const int without : {0, 1, 2})
                    QVERIFY2(&one == &other || distance(one, other, without) > 10
                            || base == QColor(0x606060),
                        qPrintable(one.name() + other.name()));
            }
        }
    }
}

QTEST_MAIN(TestWaveLayout)
#include "test_wave_layout.moc"
