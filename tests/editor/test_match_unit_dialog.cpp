// SPDX-License-Identifier: Apache-2.0
#include "tests/editor/dialog_driver.h"

#include "oxautils/editor/oxautils_common.h"

#include "support/rows.h"
#include "support/signals.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QSpinBox>

using namespace OXA;

namespace {

constexpr char kMaximum[] = "treeSignals1";

/// A core whose ports 0, 3 and 7 have signals, and its unit 5 on port 0.
struct Design {
    AoCore core {0};
    MatchUnit& unit = *core.matchUnits.at(5);

    explicit Design(MatchType type = MatchBasic, MatchFunc func = MatchEqual,
        const QString& value0 = {}, const QString& value1 = {})
    {
        SignalItem data = busOf("data", 8);
        data.text = "bus";
        data.subItems[0].text = "high";
        core.getTrigger(0)->signalList = {data, signalOf("we")};
        core.getTrigger(3)->signalList = {busOf("count", 9)};
        core.getTrigger(7)->signalList = {busOf("wide", 72), signalOf("ready")};
        unit.trigger = core.getTrigger(0);
        unit.matchType = type;
        unit.matchFunc = func;
        unit.value0 = value0;
        unit.value1 = value1;
    }
};

/// Port, type, function, values; whether matches are counted, the counter's width, the count, and
/// whether it is of consecutive samples.
QString dump(const MatchUnit& unit)
{
    QString text;
    QDebug(&text).noquote() << (unit.trigger ? unit.trigger->index : -1) << int(unit.matchType)
                            << int(unit.matchFunc) << unit.value0 << unit.value1
                            << unit.counterEnable << unit.counterWidth << unit.counter
                            << unit.continuous;
    return text.trimmed();
}

}

class TestMatchUnitDialog : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void opensOnTheUnit();
    void edits_data();
    void edits();
    void digitMenu();
    void widthsOfFieldsAndTooltips();
    void rangeBounds();
    void whatIsEnteredIsWritten();
    void strangeNumbersSurvive();
    void otherPort();
    void noPort();
    void leftWhileEditing();
    void reachableByKeys();
    void digitsOfHosts();
};

void TestMatchUnitDialog::opensOnTheUnit()
{
    Design design(MatchRangeEdges, MatchInRange, "000000110", "000000x11");
    DialogDriver driver(&design.unit);
    for (const char* name : {"gridLayout_2", "groupBoxTrigger", "verticalLayout", "widget",
             "horizontalLayout", "label", "verticalLayout_2", "groupBoxGeneral", "formLayout",
             "lbType", "lbFunc", "groupBoxValue0", "formLayout_2", "widget_2", "horizontalLayout_2",
             "gridLayout", "lbWidth", "lbCount", "buttonBox"}) // what hosts may look for
        QVERIFY2(driver.find<QObject>(name), name);
    QCOMPARE(driver.find<QComboBox>("comboBoxTrigger")->count(), 3);
    QCOMPARE(driver.find<QComboBox>("comboBoxType")->currentText(), QString("Range w/edges"));
    QCOMPARE(driver.find<QComboBox>("comboBoxFunc")->currentText(), QString("in range"));
    QCOMPARE(driver.bits(0), QString("00000011"));
    QCOMPARE(driver.bits(0, kMaximum), QString("00000001"));
    QCOMPARE(driver.shown(1) + driver.shown(1, kMaximum), QString("01"));
    const QTreeWidgetItem* bus = driver.find<QTreeWidget>("treeSignals")->topLevelItem(0);
    QCOMPARE(bus->text(0) + ' ' + bus->child(0)->text(0) + ' ' + bus->child(1)->text(0),
        QString("bus high data[6]"));
}

struct EditRow {
    const char* what;
    MatchType type;
    MatchFunc func;
    const char *value, *steps;
    const char* shown; // by the bus; empty: its bits
    const char* kept; // the value and the function
};

constexpr char kWide[]
    = "1000000000000000000000000000000000000000000000000000000000000000000000011 >";

constexpr EditRow kEdits[] = {
    {"binary",                 MatchBasic,         MatchEqual,    "",            "=11x01010",            "",                       "11X010100 =="      },
    {"edges",                  MatchBasicEdges,    MatchEqual,    "",            "=rfbnx01r",            "",                       "RFBNX01R0 =="      },
    {"no X",                   MatchExtendedEdges, MatchGreater,  "",            "=X1R1",                "",                       "110000000 >"       },
    {"octal",                  MatchBasic,         MatchEqual,    "",            "Oct =2785",            "275",                    "101111010 =="      },
    {"decimal",                MatchBasic,         MatchEqual,    "",            "Dec =1A98",            "198",                    "110001100 =="      },
    {"decimal beyond the bus", MatchBasic,         MatchEqual,    "",            "Dec =999",             "231",                    "111001110 =="      },

    {"every letter",           MatchBasicEdges,    MatchEqual,    "01XRFBN1X",   "",                     "",                       "01XRFBN1X =="      },
    {"too short",              MatchBasic,         MatchEqual,    "1X",          "",                     "",                       "00000001X =="      },
    {"too long",               MatchBasic,         MatchEqual,    "10X0000001X", "",                     "",                       "10X000000 =="      },
    {"letters not allowed",    MatchBasic,         MatchEqual,    "1R?x00001",   "",                     "",                       "100000001 =="      },
    {"X in a magnitude",       MatchBasicEdges,    MatchGreater,  "1X1R00001",   "",                     "",                       "101000001 >"       },

    {"to hexadecimal",         MatchBasic,         MatchEqual,    "10100110X",   "Hex",                  "A6",                     "101001100 =="      },
    {"edges, no number",       MatchBasicEdges,    MatchEqual,    "1R0000001",   "Dec",                  "000",                    "000000001 =="      },
    {"wide, decimal",          MatchExtended,      MatchGreater,  kWide,         "Dec =",                "2361183241434822606849", kWide               },

    {"a richer type",          MatchBasic,         MatchNotEqual, "1010X0001",   "Type:Range",           "",                       "1010X0001 !="      },
    {"edges go",               MatchBasicEdges,    MatchEqual,    "10R00001X",   "Type:Basic",           "",                       "000000000 =="      },
    {"a poorer type",          MatchRange,         MatchInRange,  "101000011",   "Type:Basic",           "",                       "101000011 =="      },
    {"only its row",           MatchExtendedEdges, MatchEqual,    "10X000011",   "Func:>=",              "",                       "000000001 >="      },
    {"to a range",             MatchRange,         MatchEqual,    "10100001X",   "Func:in_range",        "",                       "101000010 in range"},

    {"typing, hexadecimal",    MatchExtended,      MatchEqual,    "",            "~11 Hex",              "C0",                     "110000000 =="      },
    {"typing, a type",         MatchExtended,      MatchEqual,    "",            "Oct ~2 Type:Range",    "200",                    "100000000 =="      },
    {"typing, a function",     MatchExtended,      MatchEqual,    "",            "Hex ~a Func:>",        "A0",                     "101000000 >"       },
    {"typing, confirmed",      MatchExtended,      MatchEqual,    "",            "Hex ~7",               "70",                     "011100000 =="      },

    {"menus",                  MatchBasicEdges,    MatchEqual,    "",            "row0:3 bit2:0 row1:6", "",                       "RRXRRRRRN =="      },
    {"all bits low",           MatchBasic,         MatchEqual,    "111111111",   "Dec row0:1",           "000",                    "000000001 =="      },
    {"all bits high, octal",   MatchBasic,         MatchEqual,    "",            "Oct row0:2",           "377",                    "111111110 =="      },
    {"one bit low",            MatchBasic,         MatchEqual,    "",            "Hex row0:2 bit0:1",    "7F",                     "011111110 =="      },
};

/// Enters "=text", types "~text" without leaving the field, chooses a radix, "Type:", "Func:" or
/// the menu's entry for "row" or "bit".
void doStep(DialogDriver& driver, const QString& step)
{
    const QString what = step.section(':', 0, 0);
    const QString text = step.section(':', 1).replace('_', ' ');
    const int place = what.mid(3).toInt();
    if (what.startsWith('='))
        driver.enter(0, step.mid(1));
    else if (what.startsWith('~'))
        driver.type(0, step.mid(1));
    else if (what == "Type" || what == "Func")
        driver.choose(qPrintable("comboBox" + what), text);
    else if (what.startsWith("row"))
        driver.chooseDigit(driver.edit(place), text.toInt());
    else if (what.startsWith("bit"))
        driver.chooseDigit(driver.edit(0)->subEdits.at(place), text.toInt());
    else
        driver.radix(what);
}

void TestMatchUnitDialog::edits_data() { addRows(kEdits); }

void TestMatchUnitDialog::edits()
{
    const EditRow& row = rowOf(kEdits);
    const QString kept = QString(row.kept).section(' ', 0, 0);
    const QString function = QString(row.kept).section(' ', 1);
    const QString ones(kept.size(), '1');
    Design design(row.type, row.func, row.value, ones);
    design.unit.trigger = design.core.getTrigger(kept.size() > 9 ? 7 : 0);
    DialogDriver driver(&design.unit);
    for (const QString& step : QString(row.steps).split(' ', Qt::SkipEmptyParts))
        doStep(driver, step);
    for (const char* name : {"lbValue0", "lbValue1", kMaximum})
        QCOMPARE(driver.find<QWidget>(name)->isVisible(), function == "in range");
    QCOMPARE(driver.confirm(), QString());
    QCOMPARE(driver.shown(0), *row.shown ? row.shown : kept.left(8));
    QCOMPARE(driver.bits(0) + driver.shown(1), kept);
    QCOMPARE(design.unit.value0, kept);
    QCOMPARE(design.unit.value1, ones);
    QCOMPARE(func2string(design.unit.matchFunc), function);
}

void TestMatchUnitDialog::digitMenu()
{
    const struct {
        MatchType type;
        MatchFunc func;
        const char *radix, *enabled;
    } rows[] = {
        {MatchBasic,      MatchNotEqual, "Bin", "X01"    },
        {MatchRangeEdges, MatchEqual,    "Bin", "X01RFBN"},
        {MatchRangeEdges, MatchGreater,  "Bin", "01"     },
        {MatchBasic,      MatchGreater,  "Bin", "01"     }, // a function that the type does not have
        {MatchBasicEdges, MatchEqual,    "Hex", "01"     },
    };
    for (const auto& row : rows) {
        Design design(row.type, row.func);
        DialogDriver driver(&design.unit);
        driver.radix(row.radix);
        QMenu* menu = driver.menu(driver.edit(0)->subEdits.at(3));
        QVERIFY(menu);
        QString enabled;
        for (const QAction* action : menu->actions())
            enabled += action->isEnabled() ? action->text().left(1) : QString();
        QCOMPARE(enabled, QString(row.enabled));
        menu->close();
    }
}

void TestMatchUnitDialog::widthsOfFieldsAndTooltips()
{
    Design design(MatchExtended, MatchGreater);
    design.unit.trigger = design.core.getTrigger(3);
    DialogDriver driver(&design.unit);
    for (const char* row :
        {"Bin 000000000~111111111", "Hex 000~1ff", "Oct 000~777", "Dec 000~511"}) {
        driver.radix(QString(row).left(3));
        const QString tip = QString(row).mid(4);
        QCOMPARE(driver.edit(0)->toolTip(), tip);
        QCOMPARE(driver.edit(0, kMaximum)->toolTip(), tip);
        QCOMPARE(driver.shown(0).size(), tip.indexOf('~'));
        QCOMPARE(driver.dialog.calculatedBitwidth(9), driver.shown(0).size());
    }
}

void TestMatchUnitDialog::rangeBounds()
{
    Design design(MatchRange, MatchInRange, "000000110", "000000101");
    DialogDriver driver(&design.unit);
    const QString before = dump(design.unit);
    QCOMPARE(driver.confirm(), QString("Value Invalid: Maximum value is less than minimum value."));
    QVERIFY(driver.dialog.isVisible());
    QCOMPARE(dump(design.unit), before);

    driver.enter(0, "00000011", kMaximum);
    driver.enter(1, "0", kMaximum);
    QCOMPARE(driver.confirm(), QString());
    QVERIFY(!driver.dialog.isVisible());
    QCOMPARE(design.unit.value0, design.unit.value1);
}

// All that is entered is written, unless the unit is fixed: then less can be entered.
void TestMatchUnitDialog::whatIsEnteredIsWritten()
{
    const struct {
        bool fixed, counts;
        const char* written;
    } rows[] = {
        {false, false, "3 3 5 100101010 000000000 true 4 16 true" },
        {true,  false, "0 0 1 100000000 000000000 false 2 99 true"},
        {true,  true,  "0 0 1 100000000 000000000 true 2 99 true" },
    };
    for (const auto& row : rows) {
        Design design;
        design.unit.counterEnable = row.counts;
        DialogDriver driver(&design.unit, row.fixed);
        QCOMPARE(driver.find<QWidget>("comboBoxTrigger")->isEnabled(), !row.fixed);
        QCOMPARE(driver.find<QWidget>("comboBoxType")->isEnabled(), !row.fixed);
        if (!row.fixed) {
            driver.choose("comboBoxTrigger", "Trigger Port 3");
            driver.choose("comboBoxType", "Extended w/edges");
            QTest::keyClick(driver.find<QGroupBox>("groupBoxCounter"), Qt::Key_Space);
        }
        QCOMPARE(driver.find<QWidget>("spinBoxCounter")->isEnabled(), !row.fixed || row.counts);
        driver.choose("comboBoxFunc", row.fixed ? "!=" : "<=");
        driver.radix("Hex");
        driver.enter(0, row.fixed ? "80" : "12a");
        driver.find<QSpinBox>("spinBoxCounterWidth")->setValue(row.fixed ? 7 : 4);
        driver.find<QSpinBox>("spinBoxCounter")->setValue(99); // of 4 bits at most 16
        driver.find<QCheckBox>("checkBoxContinuous")->setChecked(true);
        QCOMPARE(driver.confirm(), QString());
        QCOMPARE(dump(design.unit), QString(row.written));
    }
}

void TestMatchUnitDialog::strangeNumbersSurvive()
{
    Design design(MatchType(9), MatchFunc(12), "101010101", "111111111");
    design.unit.counterEnable = true;
    design.unit.counterWidth = 40;
    design.unit.counter = 0;
    DialogDriver driver(&design.unit);
    const QString before = dump(design.unit);
    driver.dialog.onTypeChanged();
    driver.dialog.onFuncChanged();
    driver.confirm();
    QCOMPARE(dump(design.unit), before);

    auto* width = driver.find<QSpinBox>("spinBoxCounterWidth");
    QList<int> most {driver.find<QSpinBox>("spinBoxCounter")->maximum()};
    for (const int bits : {31, 30, 33}) {
        width->setValue(bits);
        most += driver.find<QSpinBox>("spinBoxCounter")->maximum();
    }
    QCOMPARE(most, QList<int>({INT_MAX, INT_MAX, 1 << 30, 2})); // widths count modulo 32
}

void TestMatchUnitDialog::otherPort()
{
    Design design(MatchBasic, MatchEqual, "101010101");
    DialogDriver driver(&design.unit);
    driver.choose("comboBoxTrigger", "Trigger Port 0");
    QCOMPARE(driver.shown(0), QString("10101010"));
    driver.type(0, "11");
    driver.choose("comboBoxTrigger", "Trigger Port 3");
    QCOMPARE(driver.find<QTreeWidget>("treeSignals")->topLevelItemCount(), 1);
    QCOMPARE(driver.shown(0), QString("000000000"));
    driver.dialog.onChange1(); // of an editor that is gone
    driver.choose("comboBoxTrigger", "Trigger Port 0");
    QCOMPARE(driver.shown(0), QString("00000000"));
}

void TestMatchUnitDialog::noPort()
{
    Design design(MatchBasic, MatchEqual, "1");
    design.unit.trigger = design.core.getTrigger(9); // has no signals
    const QString before = dump(design.unit);
    DialogDriver driver(&design.unit);
    QVERIFY(!driver.find<QWidget>("widgetRight")->isEnabled());
    QCOMPARE(driver.dialog.calculatedBitwidth(8), 0);
    for (const char* slot : {"onTriggerChanged", "onTypeChanged", "onFuncChanged", "onBaseChanged",
             "onCounterWidthChanged", "onChange1", "onBusEditChange", "onSubEditChange"})
        QVERIFY2(QMetaObject::invokeMethod(&driver.dialog, slot), slot);
    driver.dialog.toolTipValueChanged(nullptr);
    QCOMPARE(driver.confirm(), QString());
    QCOMPARE(driver.dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dump(design.unit), before);

    design.unit.trigger = nullptr;
    DialogDriver chosen(&design.unit);
    chosen.choose("comboBoxTrigger", "Trigger Port 3");
    chosen.confirm();
    QCOMPARE(design.unit.trigger, design.core.getTrigger(3));
}

void TestMatchUnitDialog::leftWhileEditing()
{
    Design design(MatchRange, MatchInRange, "000000001", "111111111");
    const QString before = dump(design.unit);
    for (const bool cancels : {true, false}) { // or is destroyed
        DialogDriver driver(&design.unit);
        driver.choose("comboBoxType", "Basic");
        driver.type(0, "1111");
        if (cancels)
            QTest::keyClick(&driver.dialog, Qt::Key_Escape);
        QCOMPARE(driver.dialog.isVisible(), !cancels);
    }
    QCOMPARE(dump(design.unit), before);
}

void TestMatchUnitDialog::reachableByKeys()
{
    Design design(MatchRange, MatchInRange);
    design.core.getTrigger(0)->signalList = {busOf(QString(300, 'n'), 2), signalOf("we")};
    DialogDriver driver(&design.unit);
    driver.find<QTreeWidget>("treeSignals0")->expandAll();
    driver.find<QTreeWidget>("treeSignals0")->setFocus();
    const QList<QWidget*> expected {driver.edit(0), driver.edit(0)->subEdits.at(0),
        driver.edit(0)->subEdits.at(1), driver.edit(1), driver.find<QWidget>(kMaximum),
        driver.edit(0, kMaximum), driver.edit(1, kMaximum),
        driver.find<QWidget>("groupBoxCounter")};
    for (QWidget* next : expected) {
        QTest::keyClick(driver.dialog.focusWidget(), Qt::Key_Tab);
        QCOMPARE(driver.dialog.focusWidget(), next);
        QVERIFY(next->visibleRegion().boundingRect().width() > 10);
    }
}

void TestMatchUnitDialog::digitsOfHosts()
{
    QCOMPARE(changeRadix("00255", 10, 16, 4), QString("ff"));
    QCOMPARE(changeRadix("18446744073709551615", 10, 16, 3), QString(16, 'f'));
    QCOMPARE(changeRadix("18446744073709551616", 10, 16, 3), QString("000"));
    QCOMPARE(changeRadix("19", 8, 2, 6), QString("000000"));
    QCOMPARE(changeRadix({}, 2, 10, -1), QString());
    QCOMPARE(BitWidthAdjust("10110", 3), QString("110"));
    QCOMPARE(BitWidthAdjust("1", 4), QString("0001"));
    QCOMPARE(BitWidthAdjust("101", -1), QString());
    QVERIFY(checkExcessBitWidth("1010", 4) && !checkExcessBitWidth("10101", 4));
}

QTEST_MAIN(TestMatchUnitDialog)
#include "test_match_unit_dialog.moc"
