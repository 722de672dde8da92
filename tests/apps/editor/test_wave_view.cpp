#include "window_driver.h"

#include "oxa-editor/wave/quantity.h"
#include "oxa-editor/wave/wave_canvas.h"
#include "oxa-editor/wave/wave_events.h"
#include "oxa-editor/wave/wave_view.h"

#include "oxacapture/sample_text.h"
#include "support/rows.h"
#include "support/signals.h"

#include <QClipboard>
#include <QLineEdit>
#include <QTreeView>
#include <QWheelEvent>

#include <random>
#include <set>

using namespace OXA_CAPTURE;

namespace {

/// A core with a bus `data` of four bits and a signal `go`; the windows as texts of five bits, each
/// with its trigger at sample 2.
CapturedCore capturedOf(const QStringList& windows)
{
    CapturedCore core;
    core.items = {busOf("data", 4), signalOf("go")};
    qint64 first = 0;
    for (const QString& text : windows) {
        SampleTable samples = samplesOf({text});
        const Window place {first, samples.size(), first + 2};
        first += samples.size() + 100;
        core.windows.push_back({place, std::move(samples)});
    }
    return core;
}

const QStringList kTwoWindows
    = {"00000 00011 10100 10101 x0100 1111x", "00010 00010 11110 00011 00011 00010"};

/// A shown view of these windows, and what a person does with it.
struct Shown {
    WaveView view;

    explicit Shown(const QStringList& windows = kTwoWindows)
    {
        view.resize(1000, 400);
        view.setWaveform(capturedWaveform(capturedOf(windows), nullptr));
        view.show();
        view.activateWindow();
        view.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&view, kPatience));
    }

    void keys(const QString& text) { QTest::keyClicks(view.canvas(), text); }
    void key(Qt::Key key, Qt::KeyboardModifiers with = {})
    {
        QTest::keyClick(view.canvas(), key, with);
    }

    QLineEdit* field(const QString& label) const
    {
        for (const QLabel* candidate : view.findChildren<QLabel*>()) {
            if (candidate->text().remove('&') == label)
                return qobject_cast<QLineEdit*>(candidate->buddy());
        }
        return nullptr;
    }

    void enter(const QString& label, const QString& text)
    {
        QLineEdit* edit = field(label);
        edit->setFocus();
        edit->clear();
        QTest::keyClicks(edit, text);
        view.canvas()->setFocus();
    }

    QString state() const { return labelsIn(view); }

    /// The names and values that are in sight, "data=0 go=1".
    QString rows() const
    {
        QStringList texts;
        QModelIndex index = view.rows()->model()->index(0, 0);
        for (; index.isValid(); index = view.rows()->indexBelow(index))
            texts += index.data().toString() + '=' + index.siblingAtColumn(1).data().toString();
        return texts.join(' ');
    }

    void choose(int row) { view.rows()->setCurrentIndex(view.rows()->model()->index(row, 0)); }
    qint64 cursor(int which = 0) const { return view.canvas()->cursor(which); }
};

struct ValueRow {
    const char *what, *bits, *text;
    Radix radix;
    const char* wanted; ///< another text that finds the value
};

const ValueRow kValues[] = {
    {"binary",            "0101",                                                  "0101",                   Radix::Binary,      "101"                   },
    {"octal, cut digit",  "1000001",                                               "101",                    Radix::Octal,       "1?1"                   },
    {"hexadecimal",       "1010111100",                                            "2BC",                    Radix::Hexadecimal, "0x2bc"                 },
    {"an unknown digit",  "x0001111",                                              "xF",                     Radix::Hexadecimal, nullptr                 },
    {"decimal",           "11111111",                                              "255",                    Radix::Decimal,     "0255"                  },
    {"decimal, unknown",  "1x",                                                    "x",                      Radix::Decimal,     nullptr                 },
    {"negative",          "11111110",                                              "-2",                     Radix::Signed,      "-2"                    },
    {"the most negative", "1000",                                                  "-8",                     Radix::Signed,      "-8"                    },
    {"not negative",      "0111",                                                  "7",                      Radix::Signed,      "7"                     },
    {"text",              "100101101011",                                          ".k",                     Radix::Text,        nullptr                 },
    {"letters",           "0100111101001011",                                      "OK",                     Radix::Text,        "OK"                    },
    {"more than a word",
     "10000000000000000000000000000000000000000000000000000000000000000000000001", "9444732965739290427393", Radix::Decimal,     "9444732965739290427393"},
};

struct WrongRow {
    const char* text;
    Radix radix;
    int width;
};

const WrongRow kWrong[] = {
    {"2",   Radix::Binary,      4 },
    {"g",   Radix::Hexadecimal, 8 },
    {"100", Radix::Hexadecimal, 8 },
    {"?0?", Radix::Hexadecimal, 8 },
    {"4",   Radix::Octal,       2 },
    {"256", Radix::Decimal,     8 },
    {"-1",  Radix::Decimal,     8 },
    {"8",   Radix::Signed,      4 },
    {"-9",  Radix::Signed,      4 },
    {"-",   Radix::Signed,      4 },
    {"abc", Radix::Text,        16},
};

struct FindRow {
    const char* what;
    int row;
    const char* value;
    Radix radix;
    qint64 from;
    const char* key;
    qint64 to; ///< -1: not found
};

const FindRow kFinds[] = {
    {"any change of a bus",        0, "",     Radix::Hexadecimal, 2,  "N", 4 },
    {"across the windows' border", 0, "",     Radix::Hexadecimal, 5,  "N", 6 },
    {"a value",                    0, "f",    Radix::Hexadecimal, 0,  "N", 5 },
    {"the same value again",       0, "f",    Radix::Hexadecimal, 5,  "N", 8 },
    {"with any digit",             0, "1?1?", Radix::Binary,      11, "P", 8 },
    {"an unknown bit is no 0",     1, "0",    Radix::Hexadecimal, 3,  "N", 4 },
    {"none behind",                0, "f",    Radix::Hexadecimal, 8,  "N", -1},
    {"none before",                1, "1",    Radix::Hexadecimal, 1,  "P", -1},
};

}

class TestWaveView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changesAreFound();
    void values_data();
    void values();
    void wrongValues();
    void finds_data();
    void finds();
    void cursorsAndTheirDistance();
    void zoomKeepsTheSampleUnderTheMouse();
    void windowsAndTriggers();
    void choicesSurviveAnotherWaveform();
    void eventsOfCapturedSamples();
    void gtkWave();
};

// Against a plain set: the index has levels, whose borders are where it could go wrong.
void TestWaveView::changesAreFound()
{
    std::mt19937 random(1);
    for (const int samples : {1, 64, 65, 4096, 4097, 300000}) {
        ChangeIndex index(samples);
        std::set<qint64> naive;
        for (int i = 0; i < 40; ++i) {
            const qint64 sample = random() % unsigned(samples);
            index.insert(sample);
            naive.insert(sample);
        }
        for (int i = 0; i < 2000; ++i) {
            const qint64 at = random() % unsigned(samples + 1);
            const auto behind = naive.lower_bound(at);
            QCOMPARE(index.next(at), behind == naive.end() ? samples : *behind);
            const auto before = naive.upper_bound(at);
            if (at < samples)
                QCOMPARE(index.previous(at), before == naive.begin() ? -1 : *std::prev(before));
        }
    }
}

void TestWaveView::values_data() { addRows(kValues); }

void TestWaveView::values()
{
    const ValueRow& row = rowOf(kValues);
    const auto samples = std::make_shared<SampleTable>(samplesOf({QString("1%1x").arg(row.bits)}));
    WaveRow wave;
    wave.samples = samples;
    wave.firstBit = 1;
    wave.width = int(qstrlen(row.bits));
    const WaveValue value = wave.valueAt(0);
    QCOMPARE(valueText(value, row.radix), QString(row.text));
    WavePattern pattern;
    if (!row.wanted)
        return;
    QVERIFY(readPattern(row.wanted, row.radix, value.width, pattern));
    QVERIFY(pattern.matches(value));
}

void TestWaveView::wrongValues()
{
    for (const WrongRow& row : kWrong) {
        WavePattern pattern;
        QVERIFY2(!readPattern(row.text, row.radix, row.width, pattern), row.text);
    }
}

void TestWaveView::finds_data() { addRows(kFinds); }

void TestWaveView::finds()
{
    const FindRow& row = rowOf(kFinds);
    Shown shown;
    shown.choose(row.row);
    shown.view.setRadix(row.radix);
    shown.enter("Find value:", row.value);
    shown.view.canvas()->setCursor(0, row.from);
    shown.keys(row.key);
    QCOMPARE(shown.cursor(), row.to < 0 ? row.from : row.to);
    QCOMPARE(shown.state().contains("does not get there"), row.to < 0);
}

void TestWaveView::cursorsAndTheirDistance()
{
    Shown shown;
    WaveCanvas& canvas = *shown.view.canvas();
    const int pixels = canvas.width() / 12;
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, {pixels * 3 + pixels / 2, 60});
    QTest::mouseClick(&canvas, Qt::LeftButton, Qt::ShiftModifier, {pixels * 9 + pixels / 2, 60});
    shown.key(Qt::Key_Right, Qt::ShiftModifier);
    shown.key(Qt::Key_Left);
    QCOMPARE(shown.cursor(0), 2);
    QCOMPARE(shown.cursor(1), 10);
    QVERIFY2(
        shown.state().contains(QString::fromUtf8("B − A: 8 samples")), qPrintable(shown.state()));
    QVERIFY(!shown.state().contains("ns"));
    shown.enter("Clock:", "50m");
    QVERIFY2(shown.state().contains("8 samples (160 ns)"), qPrintable(shown.state()));
    QCOMPARE(shown.field("Clock:")->text(), QString("50 MHz"));
    shown.enter("Clock:", "fast");
    QVERIFY(shown.state().contains("fast is no frequency"));
    shown.key(Qt::Key_Home);
    shown.key(Qt::Key_Left);
    QCOMPARE(shown.cursor(0), 0);
    shown.key(Qt::Key_End);
    shown.key(Qt::Key_Right);
    QCOMPARE(shown.cursor(0), 11);
}

void TestWaveView::zoomKeepsTheSampleUnderTheMouse()
{
    Shown shown(QStringList {kTwoWindows[0] + (' ' + kTwoWindows[1]).repeated(400)});
    WaveCanvas& canvas = *shown.view.canvas();
    const QPointF mouse(canvas.width() * 0.7, 90);
    const double sample = canvas.scale().sampleAt(mouse.x());
    for (const int notches : {12, -5, 3}) {
        QWheelEvent wheel(mouse, canvas.mapToGlobal(mouse.toPoint()), {}, {0, 120 * notches},
            Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&canvas, &wheel);
        QVERIFY(qAbs(canvas.scale().sampleAt(mouse.x()) - sample) < 1e-6);
    }
    const double before = canvas.scale().first();
    shown.key(Qt::Key_PageDown);
    QVERIFY(qAbs(canvas.scale().first() - before - canvas.scale().visible()) < 1e-6);
    shown.keys("f");
    QCOMPARE(canvas.scale().first(), 0.0);
    QCOMPARE(canvas.scale().visible(), 2406.0);
}

void TestWaveView::windowsAndTriggers()
{
    Shown shown;
    shown.keys("t");
    QCOMPARE(shown.cursor(), 2);
    shown.keys("t");
    QCOMPARE(shown.cursor(), 8);
    QVERIFY(shown.state().contains("window 1, trigger + 0"));
    shown.key(Qt::Key_Left);
    shown.key(Qt::Key_Left);
    QVERIFY(shown.state().contains(QString::fromUtf8("A: sample 6, window 1, trigger − 2")));
    shown.keys("ttt"); // behind the last one the first comes again
    QCOMPARE(shown.cursor(), 8);

    // The trigger's line stands where its sample begins.
    shown.view.canvas()->setCursor(0, -1);
    const QImage picture = shown.view.canvas()->grab().toImage();
    const WaveColors colors = waveColors(shown.view.palette());
    const int y = picture.height() - 2;
    for (const int trigger : {2, 8}) {
        const int x = qRound(shown.view.canvas()->scale().xOf(trigger));
        const bool there = picture.pixelColor(x, y) == colors.trigger
            || picture.pixelColor(x - 1, y) == colors.trigger;
        QVERIFY(there);
    }
    QApplication::clipboard()->clear();
    shown.key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(QApplication::clipboard()->pixmap().width() > 900);
}

void TestWaveView::choicesSurviveAnotherWaveform()
{
    Shown shown;
    shown.view.canvas()->setCursor(0, 3);
    QCOMPARE(shown.rows(), QString("data=A go=1"));
    shown.choose(0);
    shown.key(Qt::Key_Down);
    shown.key(Qt::Key_Up);
    QTest::keyClick(shown.view.rows(), Qt::Key_Right);
    shown.view.setRadix(Radix::Signed);
    const QString wanted = "data=-6 data[3]=1 data[2]=0 data[1]=1 data[0]=0 go=1";
    QCOMPARE(shown.rows(), wanted);
    shown.view.canvas()->zoom(4, 0);
    const double pixels = shown.view.canvas()->scale().pixels();

    shown.view.setWaveform(capturedWaveform(capturedOf(kTwoWindows), nullptr));
    QCOMPARE(shown.rows(), wanted);
    QCOMPARE(shown.view.canvas()->scale().pixels(), pixels);
    CapturedCore more = capturedOf(kTwoWindows);
    for (CapturedWindow& window : more.windows)
        window.samples = samplesOf({QStringList(QVector<QString>(6, "110110").toList()).join(' ')});
    more.items.prepend(signalOf("first"));
    shown.view.setWaveform(capturedWaveform(more, nullptr));
    QCOMPARE(shown.rows(), QString("first=1 data=-5 data[3]=1 data[2]=0 data[1]=1 data[0]=1 go=0"));
    shown.view.setWaveform(std::make_shared<Waveform>());
    QCOMPARE(shown.cursor(), -1);
}

void TestWaveView::eventsOfCapturedSamples()
{
    OXA::AoCore core(0);
    core.captureSignals = core.signalList = {busOf("data", 4), signalOf("go")};
    core.triggers[0]->signalList = {signalOf("go")};
    core.triggers[1]->signalList = {signalOf("data[3]"), signalOf("elsewhere")};
    for (const int i : {0, 1, 2, 3}) {
        const QString value = QStringList {"1", "11", "R", "1"}.at(i);
        enableUnit(core, i, i == 1 ? 1 : 0, value).matchType = OXA::MatchBasicEdges;
    }
    core.matchUnits[3]->counterEnable = true;
    core.matchUnits[3]->counter = 2;
    core.expressions = QStringList {"M0", "M1", "M0 & M2"};
    const WaveformPtr waveform = capturedWaveform(capturedOf(kTwoWindows), &core);
    QStringList events;
    for (const auto& row : waveform->rows) {
        if (!row->isEvent)
            continue;
        QString text = row->name + ' ';
        for (qint64 sample = 0; sample < waveform->samples; ++sample)
            text += "01x"[int(row->bitAt(sample))];
        events += text;
    }
    // No M1, which sees a signal that was not captured, and no M3, which counts.
    const QStringList wanted {"M0 010100000110", "M2 x10100x00100", "0: M0 010100000110",
        "2: M0 & M2 x10100x00100", "trigger 001000001000"};
    QCOMPARE(events, wanted);
}

void TestWaveView::gtkWave()
{
    const QTemporaryDir folder;
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", folder.path().toUtf8());
    qputenv("TMPDIR", folder.path().toUtf8());
    Shown shown;
    shown.view.openInGtkWave();
    QVERIFY(shown.state().contains("GTKWave is not installed"));

    const QString script = folder.filePath("gtkwave");
    writeFile(script, "#!/bin/sh\nexec /bin/cp \"$1\" \"${0%gtkwave}seen.vcd\"\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    shown.view.openInGtkWave();
    QTRY_VERIFY_WITH_TIMEOUT(
        bytesOf(folder.filePath("seen.vcd")).contains("$enddefinitions"), kPatience);
    QVERIFY2(shown.state().contains("GTKWave is starting"), qPrintable(shown.state()));
    QTRY_COMPARE_WITH_TIMEOUT(
        QDir(folder.path()).entryList({"oxa-*"}), QStringList(), kPatience); // it goes with GTKWave
    qputenv("PATH", path);
    qunsetenv("TMPDIR");
}

QTEST_MAIN(TestWaveView)
#include "test_wave_view.moc"
