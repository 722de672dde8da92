// SPDX-License-Identifier: Apache-2.0
#include "wave_driver.h"

#include "oxa-editor/wave/joint_waveform.h"
#include "oxa-editor/wave/quantity.h"
#include "oxa-editor/wave/wave_events.h"
#include "oxa-editor/wave/wave_row_menu.h"
#include "oxa-editor/wave/wave_ruler.h"
#include "oxa-editor/wave/wave_settings.h"
#include "oxa-editor/wave/wave_span.h"

#include "oxacapture/files/capture_file.h"
#include "oxautils/config/names_file.h"

#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <algorithm>
#include <functional>
#include <random>
#include <set>

using namespace OXA_CAPTURE;

class TestWaveView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changesAreFound();
    void values();
    void finds();
    void cursorsAndTheirDistance();
    void markersByTheMouse();
    void rulers();
    void clocks();
    void windowsAndTriggers();
    void allCoresAtTheirTimes();
    void choicesSurviveAnotherWaveform();
    void eventsOfCapturedSamples();
    void pictures();
    void spans();
    void gtkWave();
};

// Compared with a set. The index has levels: errors are likely at their borders.
void TestWaveView::changesAreFound()
{
    std::mt19937 random(1);
    for (const int samples : {1, 64, 65, 4096, 4097, 300000}) {
        ChangeIndex index(samples);
        std::set<qint64> naive {-1, samples};
        for (int i = 0; i < 40; ++i) {
            const auto sample = qint64(random() % unsigned(samples));
            index.insert(sample);
            naive.insert(sample);
        }
        for (int i = 0; i < 2000; ++i) {
            const auto at = qint64(random() % unsigned(samples));
            QCOMPARE(index.next(at), *naive.lower_bound(at));
            QCOMPARE(index.previous(at), *std::prev(naive.upper_bound(at)));
        }
        QCOMPARE(index.next(samples), qint64(samples));
    }
}

void TestWaveView::values()
{
    const QString word = '1' + QString(72, '0') + '1';
    const struct {
        Radix radix;
        QString bits;
        const char *text, *wanted, *wrong; ///< as shown, another text that finds it, no value
    } rows[] = {
        {Radix::Binary,      "0101",             "0101",                   "101",                    "2"    },
        {Radix::Octal,       "1000001",          "101",                    "1?1",                    "8"    },
        {Radix::Octal,       "11",               "3",                      "3",                      "4"    },
        {Radix::Hexadecimal, "1010111100",       "2BC",                    "0x2bc",                  "400"  },
        {Radix::Hexadecimal, "x0001111",         "xF",                     nullptr,                  "g"    },
        {Radix::Hexadecimal, "00001111",         "0F",                     "?F",                     "?0?"  },
        {Radix::Decimal,     "11111111",         "255",                    "0255",                   "256"  },
        {Radix::Decimal,     "1x",               "x",                      nullptr,                  "-1"   },
        {Radix::Decimal,     word,               "9444732965739290427393", "9444732965739290427393", nullptr},
        {Radix::Signed,      "11111110",         "-2",                     "-2",                     "-"    },
        {Radix::Signed,      "1000",             "-8",                     "-8",                     "-9"   },
        {Radix::Signed,      "0111",             "7",                      "7",                      "8"    },
        {Radix::Text,        "100101101011",     ".k",                     nullptr,                  nullptr},
        {Radix::Text,        "0100111101001011", "OK",                     "OK",                     "abc"  },
        {Radix::Names,       "0101",             "RUN",                    "5",                      "RUN"  },
        {Radix::Names,       "00101",            "05",                     "05",                     nullptr},
    };
    const QHash<QString, QString> states {
        {"0101", "RUN"}
    };
    for (const auto& row : rows) {
        WaveRow wave;
        wave.samples = std::make_shared<SampleTable>(samplesOf({'1' + row.bits + 'x'}));
        wave.firstBit = 1;
        wave.width = row.bits.size();
        const WaveValue value = wave.valueAt(0);
        QCOMPARE(namedText(value, row.radix, states), QString(row.text));
        WavePattern pattern;
        QVERIFY(!row.wrong || !readPattern(row.wrong, row.radix, value.width, pattern));
        QVERIFY(!row.wanted || readPattern(row.wanted, row.radix, value.width, pattern));
        QVERIFY(!row.wanted || pattern.matches(value));
    }
}

void TestWaveView::finds()
{
    const struct {
        int row;
        const char* value;
        Radix radix;
        qint64 from;
        const char* key;
        qint64 to; ///< -1: not found
    } rows[] = {
        {0, "",     Radix::Hexadecimal, 2,  "N", 4 }, // any change of a bus
        {0, "",     Radix::Hexadecimal, 5,  "N", 6 }, // across the windows' border
        {0, "f",    Radix::Hexadecimal, 0,  "N", 5 },
        {0, "f",    Radix::Hexadecimal, 5,  "N", 8 },
        {0, "1?1?", Radix::Binary,      11, "P", 8 },
        {1, "0",    Radix::Hexadecimal, 3,  "N", 4 }, // an unknown bit is no 0
        {0, "f",    Radix::Hexadecimal, 8,  "N", 5 }, // from the beginning
        {1, "1",    Radix::Hexadecimal, 1,  "P", 9 }, // from the end
        {0, "7",    Radix::Hexadecimal, 8,  "N", -1},
    };
    Shown shown;
    for (const auto& row : rows) {
        shown.choose(row.row);
        shown.view.rowMenu().setRadix(row.radix);
        shown.enter("Find value:", row.value);
        shown.view.canvas()->setCursor(0, row.from);
        shown.keys(row.key);
        QCOMPARE(shown.cursor(), row.to < 0 ? row.from : row.to);
        const bool isBehind = QByteArray(row.key) == "N" ? row.to > row.from : row.to < row.from;
        QCOMPARE(shown.state().contains("searched on from"), row.to >= 0 && !isBehind);
        QCOMPARE(shown.state().contains("no match"), row.to < 0);
    }
}

void TestWaveView::cursorsAndTheirDistance()
{
    Shown shown({kTwoWindows.join(' ')});
    WaveCanvas& canvas = *shown.view.canvas();
    const int pixels = canvas.width() / 12;
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, {pixels * 3 + pixels / 2, 60});
    QTest::mouseClick(&canvas, Qt::LeftButton, Qt::ShiftModifier, {pixels * 9 + pixels / 2, 60});
    shown.key(Qt::Key_Right, Qt::ShiftModifier);
    shown.key(Qt::Key_Left);
    QCOMPARE(shown.cursor(0), 2);
    QCOMPARE(shown.cursor(1), 10);
    QVERIFY2(shown.state().contains("A: 8 samples"), qPrintable(shown.state()));
    QVERIFY(!shown.state().contains("ns"));
    shown.enter("Clock:", "50m");
    QVERIFY2(shown.state().contains("8 samples (160 ns, 6.25 MHz)"), qPrintable(shown.state()));
    shown.enter("Clock:", "fast");
    QVERIFY(shown.state().contains("fast is not a frequency"));
    shown.key(Qt::Key_Home);
    shown.key(Qt::Key_Left);
    QCOMPARE(shown.cursor(0), 0);
    shown.key(Qt::Key_End);
    shown.key(Qt::Key_Right);
    QCOMPARE(shown.cursor(0), 11);

    // What is between two windows was not captured.
    shown.view.setWaveform(capturedWaveform(capturedOf(kTwoWindows), nullptr));
    canvas.setCursor(0, 2);
    QVERIFY2(shown.state().contains("8 samples, of two windows"), qPrintable(shown.state()));
    canvas.setCursor(0, 8);
    shown.key(Qt::Key_W); // the window at A
    QCOMPARE(qRound(canvas.scale().first()), 6);
    QCOMPARE(qRound(canvas.scale().visible()), 6);
}

void TestWaveView::markersByTheMouse()
{
    Shown shown({kTwoWindows.join(' ')});
    WaveCanvas& canvas = *shown.view.canvas();
    const int ruler = WaveSheet::rulerHeight(canvas.font());
    const auto at
        = [&](double sample, int y) { return QPoint(qRound(canvas.scale().xOf(sample)), y); };
    const auto drag = [&](double from, double to, int y, Qt::KeyboardModifiers with = {}) {
        QTest::mousePress(&canvas, Qt::LeftButton, with, at(from, y));
        QTest::mouseMove(&canvas, at((from + to) / 2, y));
        QMouseEvent move(
            QEvent::MouseMove, at(to, y), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&canvas, &move);
        QTest::mouseRelease(&canvas, Qt::LeftButton, with, at(to, y));
    };
    // `go`, the second row, changes at 1, 2, 3, 4 and 5, then at 9.
    const int y = ruler
        + shown.view.rows()->visualRect(shown.view.rows()->model()->index(1, 0)).center().y();
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, at(9, y) - QPoint(3, 0));
    QCOMPARE(shown.cursor(), 9);
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, at(9, y) - QPoint(20, 0));
    QCOMPARE(shown.cursor(), 8);

    const int least = shown.view.minimumSizeHint().width();
    shown.keys("mm");
    QCOMPARE(shown.view.minimumSizeHint().width(), least); // for any number of markers
    shown.view.canvas()->setCursor(0, 4);
    QCOMPARE(canvas.markers().count(), 4);
    drag(4.05, 6.5, 3); // the flag of A
    QCOMPARE(shown.cursor(), 6);
    drag(8.05, 10.5, 3); // one of the two there
    QCOMPARE(canvas.markers().at(2), 10);
    QVERIFY2(shown.state().contains("D − A: 2 samples"), qPrintable(shown.state()));
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, at(1.5, ruler - 3));
    QCOMPARE(shown.cursor(), 1);

    for (const auto with : {Qt::NoModifier, Qt::ControlModifier}) {
        canvas.fit();
        drag(3, 5, with == Qt::NoModifier ? ruler - 3 : y, with);
        QCOMPARE(qRound(canvas.scale().first()), 3);
        QCOMPARE(qRound(canvas.scale().visible()), 2);
    }
    QCOMPARE(shown.cursor(), 1);
    auto* overview = findIn<QWidget>(shown.view, "Overview");
    QTest::mouseClick(overview, Qt::LeftButton, {}, {overview->width() * 8 / 12, 5});
    QCOMPARE(qRound(canvas.scale().first()), 7);
}

void TestWaveView::rulers()
{
    auto stimulus = std::make_shared<Waveform>();
    stimulus->samples = 6;
    stimulus->times = std::make_shared<std::vector<quint64>>(
        std::vector<quint64> {105, 115, 125, 1125, 1135, 1145});
    stimulus->timeExponent = -9;
    const WaveformPtr windows = capturedWaveform(capturedOf(kTwoWindows), nullptr);
    const struct {
        WaveformPtr waveform;
        double clock; ///< Hz
        bool inTime;
        int width, room; ///< pixels
        const char* ticks;
    } rows[] = {
        {windows,  0,     false, 120, 30, "0:0 50:5 100:10"                                      },
        {windows,  0,     true,  120, 30, "0:0 50:5 100:10"                                      },
        {windows,  100e6, true,  240, 40, "0:-20 ns 40:0 s 80:20 ns 120:-20 ns 160:0 s 200:20 ns"},
        {windows,  27e6,  true,  480, 50,
         "26:-50 ns 80:0 s 134:50 ns 187:100 ns 266:-50 ns 320:0 s"
            " 374:50 ns 428:100 ns"                                                              },
 // The clock stops for 1 us.
        {stimulus, 0,     true,  600, 90, "207:200 ns"                                           },
    };
    for (const auto& row : rows) {
        WaveScale scale;
        scale.fit(row.waveform->samples, row.width);
        const WaveTimes times(row.waveform, row.clock);
        QStringList texts;
        for (const RulerTick& tick : rulerTicks(
                 scale, row.waveform->samples, row.inTime ? &times : nullptr, row.room, row.width))
            texts += QString::number(tick.x) + ':' + tick.text;
        QCOMPARE(texts.join(' '), QString::fromUtf8(row.ticks));
    }
    QCOMPARE(clockOf(*stimulus->times, stimulus->timeExponent), 1e8);
    QCOMPARE(WaveTimes(stimulus, 50e6).between(3, 1).value(), -1010e-9);
}

void TestWaveView::clocks()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("c.oxa");
    WaveSettings settings;
    settings.open(path);
    Shown one(kTwoWindows, &settings);
    Shown other(kTwoWindows, &settings);
    const auto clock
        = [](const Shown& shown) { return findIn<QLineEdit>(shown.view, "Clock:")->text(); };
    QCOMPARE(clock(one), QString());
    auto stimulus = std::make_shared<Waveform>();
    stimulus->clockHz = 1e8;
    one.view.setWaveform(stimulus);
    QCOMPARE(clock(other), QString("100 MHz"));
    other.view.setWaveform(capturedWaveform(capturedOf(kTwoWindows), nullptr));
    QCOMPARE(clock(other), QString("100 MHz"));
    writeFile(path + ".names", R"({"clocks": {"0": 27e6, "1": 1e6}})");
    other.view.setNamesOf(path);
    QCOMPARE(clock(one), QString("27 MHz"));
    one.enter("Clock:", "12 MHz");
    QCOMPARE(other.view.clock(), 12e6);
    settings.open(path);
    QCOMPARE(clock(other), QString("12 MHz"));
    one.enter("Clock:", "");
    other.view.setNamesOf(path);
    QCOMPARE(clock(one), QString("27 MHz"));
}

void TestWaveView::windowsAndTriggers()
{
    Shown shown;
    shown.keys("t");
    QCOMPARE(shown.cursor(), 2);
    shown.keys("t");
    QCOMPARE(shown.cursor(), 8);
    QVERIFY(shown.state().contains("window 1, trigger + 0"));
    shown.keys("tt"); // behind the last one the first comes again
    QCOMPARE(shown.cursor(), 8);

    // The trigger's line stands where its sample begins.
    shown.view.canvas()->setCursor(0, -1);
    const QImage picture = shown.view.canvas()->grab().toImage();
    const QColor color = waveColors(shown.view.palette()).trigger;
    const int y = picture.height() - 2;
    for (const int trigger : {2, 8}) {
        const int x = qRound(shown.view.canvas()->scale().xOf(trigger));
        QVERIFY(picture.pixelColor(x, y) == color || picture.pixelColor(x - 1, y) == color);
    }
}

// Core 0 forces core 1: its trigger sample, at 100 ns, tells that 3 periods later, and the forced
// one is taken half a period of core 1 behind that. Core 1 passes two samples over.
void TestWaveView::allCoresAtTheirTimes()
{
    auto capture = std::make_shared<Capture>(2);
    for (CapturedCore& core : *capture) {
        core.items = {signalOf("a")};
        core.windows.emplace_back();
        core.pulseDelay = 3;
    }
    CapturedCore& forcing = capture->front();
    forcing.clockHz = 10e6;
    forcing.windows[0].place = {0, 4, 1};
    forcing.windows[0].samples = samplesOf({"0 1 1 0"});
    CapturedCore& forced = capture->back();
    forced.index = 1;
    forced.forcedBy = {0};
    forced.storage.keep = OXA::CoreStorage::When;
    forced.windows[0].place = {
        0, 3, 1, {0, 1, 4},
           true
    };
    forced.windows[0].samples = samplesOf({"1 0 1"});
    QString text;
    QVERIFY(!jointWaveform(capture, text) && text.contains("Clock"));
    forced.clockHz = 4e6;
    const WaveformPtr joint = jointWaveform(capture, text);
    QVERIFY2(text.endsWith("; core 1: aligned with core 0, +- 1.25e-07 s"), qPrintable(text));
    QStringList texts;
    for (const auto& row : joint->rows) {
        texts += row->name + ' ';
        for (qint64 sample = 0; sample < joint->samples; ++sample)
            texts.last() += row->isTakenAt(sample) ? "01x"[int(row->bitAt(sample))] : '-';
    }
    QCOMPARE(texts,
        QStringList({"core 0: a 01110-----", "core 0: trigger 01000-----", "core 1: a ---1110x1-",
            "core 1: trigger ---000100-"}));
    QCOMPARE(joint->windows.size(), size_t(1));
    QCOMPARE(joint->windows[0].samples, 9);
    WaveTimes times(joint, 0);
    texts.clear();
    for (qint64 sample = 0; sample < joint->samples; ++sample)
        texts += QString::number(times.at(sample) * 1e9);
    QCOMPARE(texts.join(' '), QString("0 100 200 275 300 400 525 775 1275 1525"));

    Shown shown;
    shown.view.setWaveform(joint);
    shown.keys("t");
    QCOMPARE(shown.cursor(), 1);
    QCOMPARE(shown.rows(), QString("core 0= a=1 trigger=1 core 1= a=– trigger=–"));
    shown.view.canvas()->setCursor(1, 6);
    QVERIFY2(shown.state().contains("B − A: 425 ns"), qPrintable(shown.state()));
    const WaveScale& scale = shown.view.canvas()->scale();
    for (const double zoom : {1, 3}) { // equal times are equally long
        shown.view.canvas()->zoom(zoom, 200);
        const double pixels = (scale.xOf(1) - scale.xOf(0)) / 100;
        for (qint64 sample = 0; sample < joint->samples; ++sample)
            QVERIFY(std::fabs(
                        scale.xOf(double(sample)) - scale.xOf(0) - times.at(sample) * 1e9 * pixels)
                < 1e-6);
        for (const double sample : {0.5, 3.25, 8.5})
            QVERIFY(std::fabs(scale.sampleAt(scale.xOf(sample)) - sample) < 1e-6);
    }
    // Places grow, too, where a period is too short to count beside the times.
    forcing.windows[0].times = {0, 1, 2, 3, ~quint64(0) - 1};
    forced.windows[0].times = {0, 1, 2, 3, 4, ~quint64(0)};
    const WavePlaces places = jointWaveform(capture, text)->places;
    QCOMPARE(places->size(), size_t(8));
    QVERIFY(std::adjacent_find(places->begin(), places->end(), std::greater_equal<>())
        == places->end());
    SampleTable& many = forcing.windows[0].samples;
    while (many.size() < 3'000'000)
        many.appendField(SampleTable(many), 0, 0, many.size());
    QVERIFY(!jointWaveform(capture, text) && text.contains("too many samples"));
    capture->pop_back();
    QVERIFY(!jointWaveform(capture, text) && text.contains("two cores"));
}

void TestWaveView::choicesSurviveAnotherWaveform()
{
    Shown shown;
    shown.view.canvas()->setCursor(0, 3);
    QCOMPARE(shown.rows(), QString("data=A go=1"));
    const QTemporaryDir directory;
    OXA::StateNames names;
    names["data"] = {"[3:0]", {{"FULL", "1010"}}};
    QVERIFY(OXA::addKnownStates(directory.filePath("c.oxa"), names, nullptr));
    shown.view.setNamesOf(directory.filePath("c.oxa"));
    QCOMPARE(shown.rows(), QString("data=FULL go=1"));
    shown.choose(0);
    QTest::keyClick(shown.view.rows(), Qt::Key_Right);
    shown.view.rowMenu().setRadix(Radix::Signed);
    QCOMPARE(shown.rows(), QString("data=-6 data[3]=1 data[2]=0 data[1]=1 data[0]=0 go=1"));
    CapturedCore other = capturedOf({QString(" 11011").repeated(6).mid(1)});
    other.items = {signalOf("first"), busOf("data", 4)};
    shown.view.setWaveform(capturedWaveform(other, nullptr));
    QCOMPARE(shown.rows(), QString("first=1 data=-5 data[3]=1 data[2]=0 data[1]=1 data[0]=1"));
    shown.view.setWaveform(std::make_shared<Waveform>());
    QCOMPARE(shown.cursor(), -1);
}

void TestWaveView::eventsOfCapturedSamples()
{
    OXA::AoCore core(0);
    core.captureSignals = core.signalList = {busOf("data", 4), signalOf("go")};
    core.triggers[0]->signalList = {signalOf("go")};
    core.triggers[1]->signalList = {signalOf("data[3]"), signalOf("elsewhere")};
    enableUnit(core, 0, 0, "1");
    enableUnit(core, 1, 1, "11");
    enableUnit(core, 2, 0, "R").matchType = OXA::MatchBasicEdges;
    OXA::MatchUnit& counting = enableUnit(core, 3, 0, "1");
    counting.counterEnable = true;
    counting.counter = 2;
    core.expressions = QStringList {"M0", "M1", "M0 & M2"};
    const WaveformPtr waveform = capturedWaveform(capturedOf(kTwoWindows), &core);
    QStringList events;
    for (const auto& row : waveform->rows) {
        QString text = row->name + ' ';
        for (qint64 sample = 0; sample < waveform->samples; ++sample)
            text += "01x"[int(row->bitAt(sample))];
        if (row->isEvent)
            events += text;
    }
    // No M1, which sees a signal that was not captured, and no M3, which counts.
    const QStringList wanted {"M0 010100000110", "M2 x10100x00100", "0: M0 010100000110",
        "2: M0 & M2 x10100x00100", "trigger 001000001000"};
    QCOMPARE(events, wanted);
}

void TestWaveView::pictures()
{
    const QTemporaryDir folder;
    CapturedCore core = capturedOf(kTwoWindows);
    core.items = {busOf("a<b>", 4), signalOf("go")};
    Shown shown;
    shown.view.setWaveform(capturedWaveform(core, nullptr));
    shown.view.canvas()->setCursor(0, 2);
    shown.view.rows()->expandAll();
    shown.view.resize(600, 160); // the last rows are out of sight
    shown.view.exportPicture(folder.filePath("wave.svg"));
    QVERIFY2(shown.state().contains("wave.svg: written"), qPrintable(shown.state()));
    QXmlStreamReader svg(bytesOf(folder.filePath("wave.svg")));
    QStringList texts;
    int fills = 0;
    while (!svg.atEnd()) {
        svg.readNext();
        if (svg.isStartElement() && svg.name() == QLatin1String("text"))
            texts += svg.readElementText();
        fills += svg.isStartElement() && svg.name() == QLatin1String("rect")
            && svg.attributes().value("fill") == waveColors(shown.view.palette()).signal.name();
    }
    QVERIFY2(!svg.hasError(), qPrintable(svg.errorString()));
    // Names and values, marker and triggers, and values in the samples; of 5 lines also their
    // edges.
    for (const char* text : {"a<b>", "go", "a<b>[0]", "A", "T", "1", "x"})
        QVERIFY2(texts.contains(text), text);
    QVERIFY(fills > 20);

    shown.view.exportPicture(folder.filePath("wave.png"));
    const QImage picture(folder.filePath("wave.png"));
    const int rows
        = 6 * shown.view.rows()->visualRect(shown.view.rows()->model()->index(0, 0)).height();
    QVERIFY(picture.height() > 2 * rows);
    QVERIFY(picture.width() > 2 * shown.view.canvas()->width());
    const QColor color = waveColors(shown.view.palette()).trigger;
    bool hasTrigger = false;
    for (int x = 0; x < picture.width(); ++x)
        hasTrigger = hasTrigger || picture.pixelColor(x, picture.height() - 3) == color;
    QVERIFY(hasTrigger);

    const struct {
        const char *name, *problem;
    } bad[] = {
        {"wave.bmp",      "ends in .svg or .png"},
        {"none/wave.svg", "cannot be written"   },
        {"none/wave.png", "cannot be written"   },
    };
    for (const auto& row : bad) {
        shown.view.exportPicture(folder.filePath(row.name));
        QVERIFY2(shown.state().contains(row.problem), qPrintable(shown.state()));
    }
}

void TestWaveView::spans()
{
    const QTemporaryDir folder;
    Shown shown;
    WaveCanvas& canvas = *shown.view.canvas();
    shown.view.exportSpans(folder.filePath("none.vcd"));
    QVERIFY(shown.state().contains("Set the cursors A and B first"));
    // D to C inside of the second window, B to A across both, E alone.
    canvas.setCursor(0, 9);
    for (const int marker : {2, 3, 4}) {
        canvas.addMarker();
        canvas.setCursor(marker, 13 - marker);
    }
    canvas.setCursor(0, 7);
    canvas.setCursor(1, 4);
    const QString path = folder.filePath("span.vcd");
    shown.view.exportSpans(path);
    QTRY_VERIFY_WITH_TIMEOUT(shown.state().contains("span.vcd: written"), kPatience);
    Capture capture;
    QString error;
    QVERIFY2(readCapture(path, capture, &error), qPrintable(error));
    QStringList windows;
    for (const CapturedWindow& window : capture.at(0).windows)
        windows += samplesText(window.samples) + '/' + QString::number(window.triggerOffset());
    QCOMPARE(windows, QStringList({"x0100 1111x/-1", "00010 00010/-1", "00011 00010/-1"}));

    // A stimulus has the samples between windows, and times.
    auto stimulus = std::make_shared<Waveform>(*shown.view.waveform());
    stimulus->isCut = false;
    std::vector<quint64> times;
    for (quint64 i = 0; i < 12; ++i)
        times.push_back(10 * i * i);
    stimulus->times = std::make_shared<std::vector<quint64>>(times);
    stimulus->timeExponent = -9;
    const CapturedCore core = cutSpans(*stimulus,
        {
            {5, 8},
            {3, 6}
    });
    QCOMPARE(int(core.windows.size()), 1);
    QCOMPARE(int(core.windows[0].samples.size()), 6);
    QCOMPARE(core.windows[0].triggerOffset(), qint64(5));
    QCOMPARE(core.windows[0].times[1] - core.windows[0].times[0], quint64(70));
}

void TestWaveView::gtkWave()
{
    const QTemporaryDir folder;
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", folder.path().toUtf8());
    qputenv("TMPDIR", folder.path().toUtf8());
    writeProgram(folder.filePath("gtkwave"), "exec /bin/cp \"$1\" \"${0%gtkwave}seen.vcd\"\n");
    Shown shown;
    shown.view.openInGtkWave();
    QTRY_VERIFY_WITH_TIMEOUT(
        bytesOf(folder.filePath("seen.vcd")).contains("$enddefinitions"), kPatience);
    qputenv("PATH", path);
    qunsetenv("TMPDIR");
}

QTEST_MAIN(TestWaveView)
#include "test_wave_view.moc"
