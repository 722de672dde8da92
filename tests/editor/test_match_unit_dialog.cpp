#include "tests/editor/dialog_driver.h"

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
        core.getTrigger(0)->signalList = {busOf("data", 8), signalOf("we")};
        core.getTrigger(3)->signalList = {busOf("count", 9)};
        core.getTrigger(7)->signalList = {busOf("wide", 72), signalOf("ready")};
        unit.trigger = core.getTrigger(0);
        unit.matchType = type;
        unit.matchFunc = func;
        unit.value0 = value0;
        unit.value1 = value1;
    }
};

/// Calls every slot that tells by its sender or by the chosen editor what it is about.
void callSlotsOutOfPlace(MatchUnitDialog& dialog)
{
    dialog.onTriggerChanged();
    dialog.onTypeChanged();
    dialog.onFuncChanged();
    dialog.onBaseChanged();
    dialog.onCounterWidthChanged();
    dialog.onBusEditChange();
    dialog.onSubEditChange();
    dialog.onEditMenu(QPoint());
    dialog.onChange1();
    dialog.toolTipValueChanged(nullptr);
}

QString dump(const MatchUnit& unit)
{
    QString text;
    QDebug(&text) << unit;
    return text;
}

}

class TestMatchUnitDialog : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void opensOnTheUnit();
    void typedValues_data();
    void typedValues();
    void digitMenu_data();
    void digitMenu();
    void chosenDigitsReachBusAndBits();
    void radixChanges();
    void radixes_data();
    void radixes();
    void typeAndFunctionChanges_data();
    void typeAndFunctionChanges();
    void storedValues_data();
    void storedValues();
    void rangeBounds();
    void everythingIsWritten();
    void strangeNumbersSurvive();
    void fixedUnit_data();
    void fixedUnit();
    void cancel();
    void otherPort();
    void noPort();
    void slotsOutOfPlace();
    void unfinishedEdits();
    void destroyedWhileEditing();
    void reachableByKeys();
};

void TestMatchUnitDialog::opensOnTheUnit()
{
    Design design(MatchRangeEdges, MatchInRange, "000000110", "000000111");
    DialogDriver driver(&design.unit);
    for (const char* name : {"gridLayout_2", "groupBoxTrigger", "verticalLayout", "widget",
             "horizontalLayout", "label", "verticalLayout_2", "groupBoxGeneral", "formLayout",
             "lbType", "lbFunc", "groupBoxValue0", "formLayout_2", "widget_2", "horizontalLayout_2",
             "gridLayout", "lbWidth", "lbCount", "buttonBox"}) // what hosts may look for
        QVERIFY2(driver.find<QObject>(name), name);
    QCOMPARE(driver.find<QComboBox>("comboBoxTrigger")->count(), 3);
    QCOMPARE(driver.find<QComboBox>("comboBoxType")->currentText(), QString("Range w/edges"));
    QCOMPARE(driver.find<QComboBox>("comboBoxFunc")->currentText(), QString("in range"));
    for (const char* name : {"lbValue0", "lbValue1", kMaximum})
        QVERIFY2(driver.find<QWidget>(name)->isVisible(), name);
    QCOMPARE(driver.bits(0), QString("00000011"));
    QCOMPARE(driver.shown(1), QString("0"));
    QCOMPARE(driver.shown(1, kMaximum), QString("1"));
}

struct TypedRow {
    const char* what;
    MatchType type;
    MatchFunc func;
    const char *button, *keys, *shown, *bits;
};

constexpr TypedRow kTyped[] = {
    {"binary",                      MatchBasic,         MatchEqual,   "rbtnBin", "11x01010", "11X01010", "11X01010"},
    {"fewer digits stay on left",   MatchBasic,         MatchEqual,   "rbtnBin", "11",       "11000000", "11000000"},
    {"edges refused without edges", MatchBasic,         MatchEqual,   "rbtnBin", "1R0F",     "10000000",
     "10000000"                                                                                                    },
    {"edges",                       MatchBasicEdges,    MatchEqual,   "rbtnBin", "rfbnx01r", "RFBNX01R", "RFBNX01R"},
    {"no X in a magnitude",         MatchExtendedEdges, MatchGreater, "rbtnBin", "X1R1",     "11000000",
     "11000000"                                                                                                    },
    {"octal",                       MatchBasic,         MatchEqual,   "rbtnOct", "2785",     "275",      "10111101"},
    {"octal beyond the bus",        MatchBasic,         MatchEqual,   "rbtnOct", "777",      "377",      "11111111"},
    {"decimal",                     MatchBasic,         MatchEqual,   "rbtnDec", "1A98",     "198",      "11000110"},
    {"decimal beyond the bus",      MatchBasic,         MatchEqual,   "rbtnDec", "999",      "231",      "11100111"},
    {"hexadecimal",                 MatchBasic,         MatchEqual,   "rbtnHex", "Gfa",      "FA",       "11111010"},
};

void TestMatchUnitDialog::typedValues_data() { addRows(kTyped); }

void TestMatchUnitDialog::typedValues()
{
    const TypedRow& row = rowOf(kTyped);
    Design design(row.type, row.func);
    DialogDriver driver(&design.unit);
    driver.radix(row.button);
    driver.enter(0, row.keys);
    QCOMPARE(driver.shown(0), QString(row.shown));
    QCOMPARE(driver.bits(0), QString(row.bits));
    QCOMPARE(driver.confirm(), QString());
    QCOMPARE(design.unit.value0, row.bits + QString("0"));
}

struct MenuRow {
    const char* what;
    MatchType type;
    MatchFunc func;
    const char *button, *enabled;
};

constexpr MenuRow kMenus[] = {
    {"levels",                 MatchBasic,      MatchNotEqual,   "rbtnBin", "X01"    },
    {"edges",                  MatchRangeEdges, MatchEqual,      "rbtnBin", "X01RFBN"},
    {"magnitude",              MatchRangeEdges, MatchGreater,    "rbtnBin", "01"     },
    {"range",                  MatchRangeEdges, MatchNotInRange, "rbtnBin", "01"     },
    {"a function not offered", MatchBasic,      MatchGreater,    "rbtnBin", "01"     },
    {"hexadecimal",            MatchBasicEdges, MatchEqual,      "rbtnHex", "01"     },
};

void TestMatchUnitDialog::digitMenu_data() { addRows(kMenus); }

void TestMatchUnitDialog::digitMenu()
{
    const MenuRow& row = rowOf(kMenus);
    Design design(row.type, row.func);
    DialogDriver driver(&design.unit);
    driver.radix(row.button);
    for (TreeLineEdit* field : {driver.edit(0), driver.edit(0)->subEdits.at(3)}) {
        QMenu* menu = driver.menu(field);
        QVERIFY(menu);
        QString enabled;
        for (const QAction* action : menu->actions())
            enabled += action->isEnabled() ? action->text().left(1) : QString();
        QCOMPARE(enabled, QString(row.enabled));
        menu->close();
    }
}

void TestMatchUnitDialog::chosenDigitsReachBusAndBits()
{
    Design design(MatchBasicEdges);
    DialogDriver driver(&design.unit);
    driver.chooseDigit(driver.edit(0), 3);
    QCOMPARE(driver.shown(0), QString("RRRRRRRR"));
    driver.chooseDigit(driver.edit(0)->subEdits.at(2), 0);
    driver.chooseDigit(driver.edit(1), 6);
    QCOMPARE(driver.shown(0), QString("RRXRRRRR"));
    QCOMPARE(driver.bits(0), QString("RRXRRRRR"));

    const QList<QPair<const char*, QString>> allHigh = {
        {"rbtnHex", "FF" },
        {"rbtnOct", "377"},
        {"rbtnDec", "255"}
    };
    for (const auto& row : allHigh) {
        driver.radix(row.first);
        driver.chooseDigit(driver.edit(0), 1);
        QCOMPARE(driver.bits(0), QString("00000000"));
        driver.chooseDigit(driver.edit(0), 2);
        QCOMPARE(driver.shown(0), row.second);
        QCOMPARE(driver.bits(0), QString("11111111"));
    }
    driver.radix("rbtnHex");
    driver.chooseDigit(driver.edit(0)->subEdits.at(0), 1);
    QCOMPARE(driver.shown(0), QString("7F"));
    driver.dialog.onChangeX();
    QCOMPARE(driver.shown(0), QString("7F"));
}

void TestMatchUnitDialog::radixChanges()
{
    Design design(MatchBasicEdges, MatchEqual, "10100110X");
    DialogDriver driver(&design.unit);
    const QList<QPair<const char*, QString>> rows = {
        {"rbtnHex", "A6"      },
        {"rbtnOct", "246"     },
        {"rbtnDec", "166"     },
        {"rbtnBin", "10100110"}
    };
    driver.dialog.onBaseChanged(); // which nothing changed
    QCOMPARE(driver.shown(1), QString("X"));
    for (const auto& row : rows) {
        driver.radix(row.first);
        QCOMPARE(driver.shown(0), row.second);
        QCOMPARE(driver.bits(0), QString("10100110"));
        QCOMPARE(driver.shown(1), QString("0")); // the X, which no other radix has
    }
    driver.enter(0, "1R");
    driver.enter(1, "1");
    driver.radix("rbtnDec");
    QCOMPARE(driver.shown(0), QString("000"));
    QCOMPARE(driver.shown(1), QString("1"));
}

struct RadixRow {
    const char* what;
    int port;
    const char *value, *button, *shown, *range;
};

constexpr char kWide[]
    = "1000000000000000000000000000000000000000000000000000000000000000000000011";

constexpr RadixRow kRadixes[] = {
    {"binary",            3, "110000001", "rbtnBin", "110000001",                "000000000~111111111"},
    {"hexadecimal",       3, "110000001", "rbtnHex", "181",                      "000~1ff"            },
    {"octal",             3, "110000001", "rbtnOct", "601",                      "000~777"            },
    {"decimal",           3, "110000001", "rbtnDec", "385",                      "000~511"            },
    {"wide, hexadecimal", 7, kWide,       "rbtnHex", "800000000000000001",       nullptr              },
    {"wide, octal",       7, kWide,       "rbtnOct", "400000000000000000000001", nullptr              },
    {"wide, decimal",     7, kWide,       "rbtnDec", "2361183241434822606849",   nullptr              },
};

void TestMatchUnitDialog::radixes_data() { addRows(kRadixes); }

void TestMatchUnitDialog::radixes()
{
    const RadixRow& row = rowOf(kRadixes);
    Design design(MatchExtended, MatchGreater, row.value);
    design.unit.trigger = design.core.getTrigger(row.port);
    DialogDriver driver(&design.unit);
    driver.radix(row.button);
    driver.enter(0, {});
    QCOMPARE(driver.shown(0), QString(row.shown));
    QCOMPARE(driver.dialog.calculatedBitwidth(driver.edit(0)->bitWidth), driver.shown(0).size());
    for (const char* tree : {"treeSignals0", kMaximum})
        QVERIFY(!row.range || driver.edit(0, tree)->toolTip() == row.range);
    driver.confirm();
    QCOMPARE(design.unit.value0, QString(row.value));
}

struct ChangeRow {
    const char* what;
    MatchType type;
    MatchFunc func;
    const char *value, *combo, *choice, *func1, *value1;
};

constexpr ChangeRow kChanges[] = {
    {"a richer type keeps all",        MatchBasic,         MatchNotEqual, "1010X0001", "comboBoxType",
     "Range w/edges",                                                                                              "!=", "1010X0001"},
    {"edges go with the whole value",  MatchBasicEdges,    MatchEqual,    "10R00001X", "comboBoxType",
     "Basic",                                                                                                      "==", "000000000"},
    {"a poorer type's first function", MatchRange,         MatchInRange,  "101000011", "comboBoxType",
     "Basic",                                                                                                      "==", "101000011"},
    {"only the row with letters",      MatchExtendedEdges, MatchEqual,    "10X000011", "comboBoxFunc",
     ">=",                                                                                                         ">=", "000000001"},
    {"a range of levels",              MatchRange,         MatchEqual,    "10100001X", "comboBoxFunc", "in range",
     "in range",                                                                                                         "101000010"},
    {"letters among equalities",       MatchBasicEdges,    MatchEqual,    "10R00001X", "comboBoxFunc",
     "!=",                                                                                                         "!=", "10R00001X"},
    {"to equality",                    MatchRangeEdges,    MatchGreater,  "101000011", "comboBoxFunc",
     "==",                                                                                                         "==", "101000011"},
};

void TestMatchUnitDialog::typeAndFunctionChanges_data() { addRows(kChanges); }

void TestMatchUnitDialog::typeAndFunctionChanges()
{
    const ChangeRow& row = rowOf(kChanges);
    Design design(row.type, row.func, row.value, "111111111");
    DialogDriver driver(&design.unit);
    driver.choose(row.combo, row.choice);
    QCOMPARE(driver.find<QComboBox>("comboBoxFunc")->currentText(), QString(row.func1));
    const bool range = QString(row.func1).contains("range");
    QCOMPARE(driver.find<QWidget>(kMaximum)->isVisible(), range);
    QCOMPARE(driver.find<QWidget>("lbValue0")->isVisible(), range);
    QCOMPARE(driver.bits(0), QString(row.value1).left(8));
    QCOMPARE(driver.confirm(), QString());
    QCOMPARE(design.unit.value0, QString(row.value1));
    QCOMPARE(design.unit.value1, QString("111111111"));
    QCOMPARE(func2string(design.unit.matchFunc), QString(row.func1));
}

struct StoredRow {
    const char* what;
    MatchType type;
    MatchFunc func;
    const char *stored, *kept;
};

constexpr StoredRow kStored[] = {
    {"every letter",             MatchBasicEdges, MatchEqual,   "01XRFBN1X",   "01XRFBN1X"},
    {"too short",                MatchBasic,      MatchEqual,   "1X",          "00000001X"},
    {"none",                     MatchBasic,      MatchEqual,   "",            "000000000"},
    {"too long",                 MatchBasic,      MatchEqual,   "10X0000001X", "10X000000"},
    {"letters not allowed here", MatchBasic,      MatchEqual,   "1R?x00001",   "100000001"},
    {"no X in a magnitude",      MatchBasicEdges, MatchGreater, "1X1R00001",   "101000001"},
};

void TestMatchUnitDialog::storedValues_data() { addRows(kStored); }

void TestMatchUnitDialog::storedValues()
{
    const StoredRow& row = rowOf(kStored);
    Design design(row.type, row.func, row.stored, row.stored);
    DialogDriver driver(&design.unit);
    QCOMPARE(driver.shown(0), QString(row.kept).left(8));
    QCOMPARE(driver.bits(0), QString(row.kept).left(8));
    driver.confirm();
    QCOMPARE(design.unit.value0, QString(row.kept));
    QCOMPARE(design.unit.value1, QString(row.kept));
    QCOMPARE(design.unit.matchFunc, row.func);
}

void TestMatchUnitDialog::rangeBounds()
{
    Design design(MatchRange, MatchInRange, "000000110", "000000101");
    DialogDriver driver(&design.unit);
    const QString before = dump(design.unit);
    driver.find<QSpinBox>("spinBoxCounterWidth")->setValue(9);
    QCOMPARE(driver.confirm(), QString("Value Invalid: Maximum value is less than minimum value."));
    QVERIFY(driver.dialog.isVisible());
    QCOMPARE(dump(design.unit), before);

    driver.enter(0, "00000011", kMaximum);
    driver.enter(1, "0", kMaximum);
    QCOMPARE(driver.confirm(), QString());
    QVERIFY(!driver.dialog.isVisible());
    QCOMPARE(driver.dialog.result(), int(QDialog::Accepted));
    QCOMPARE(design.unit.value0, design.unit.value1);
}

void TestMatchUnitDialog::everythingIsWritten()
{
    Design design;
    DialogDriver driver(&design.unit);
    driver.choose("comboBoxTrigger", "Trigger Port 3");
    driver.choose("comboBoxType", "Extended");
    driver.choose("comboBoxFunc", "<=");
    driver.radix("rbtnHex");
    driver.enter(0, "12a");
    auto* counter = driver.find<QGroupBox>("groupBoxCounter");
    counter->setFocus();
    QTest::keyClick(counter, Qt::Key_Space);
    driver.find<QSpinBox>("spinBoxCounterWidth")->setValue(4);
    driver.find<QSpinBox>("spinBoxCounter")->setValue(99);
    QTest::keyClick(driver.find<QCheckBox>("checkBoxContinuous"), Qt::Key_Space);
    QCOMPARE(driver.confirm(), QString());

    QCOMPARE(design.unit.trigger, design.core.getTrigger(3));
    QCOMPARE(design.unit.matchType, MatchExtended);
    QCOMPARE(design.unit.matchFunc, MatchLessEqual);
    QCOMPARE(design.unit.value0, QString("100101010"));
    QCOMPARE(design.unit.value1, QString("000000000"));
    QVERIFY(design.unit.counterEnable);
    QCOMPARE(design.unit.counterWidth, 4);
    QCOMPARE(design.unit.counter, 16); // 2 to the power of 4, not one less
    QVERIFY(design.unit.continuous);
}

void TestMatchUnitDialog::strangeNumbersSurvive()
{
    Design design(MatchType(9), MatchFunc(12), "101010101");
    design.unit.counterEnable = true;
    design.unit.counterWidth = 40;
    design.unit.counter = 0;
    DialogDriver driver(&design.unit);
    QCOMPARE(driver.find<QComboBox>("comboBoxType")->currentIndex(), -1);
    QCOMPARE(driver.find<QComboBox>("comboBoxFunc")->currentIndex(), -1);
    const QString before = dump(design.unit);
    driver.dialog.onTypeChanged();
    driver.dialog.onFuncChanged();
    driver.confirm();
    QCOMPARE(int(design.unit.matchType), 9);
    QCOMPARE(int(design.unit.matchFunc), 12);
    QCOMPARE(design.unit.counterWidth, 40);
    QCOMPARE(design.unit.counter, 0);

    auto* count = driver.find<QSpinBox>("spinBoxCounter");
    QCOMPARE(count->maximum(), INT_MAX);
    driver.find<QSpinBox>("spinBoxCounterWidth")->setValue(31);
    QCOMPARE(count->maximum(), INT_MAX);
    driver.find<QSpinBox>("spinBoxCounterWidth")->setValue(30);
    QCOMPARE(count->maximum(), 1 << 30);
    driver.find<QSpinBox>("spinBoxCounterWidth")->setValue(33);
    QCOMPARE(count->maximum(), 2); // widths count modulo 32
}

void TestMatchUnitDialog::fixedUnit_data()
{
    QTest::addColumn<bool>("counterEnable");
    QTest::newRow("with a counter") << true;
    QTest::newRow("without") << false;
}

void TestMatchUnitDialog::fixedUnit()
{
    QFETCH(bool, counterEnable);
    Design design(MatchExtended, MatchGreater, "000000001");
    design.unit.counterEnable = counterEnable;
    DialogDriver driver(&design.unit, true);
    QVERIFY(!driver.find<QWidget>("comboBoxTrigger")->isEnabled());
    QVERIFY(!driver.find<QWidget>("comboBoxType")->isEnabled());
    QCOMPARE(driver.find<QWidget>("spinBoxCounter")->isEnabled(), counterEnable);

    driver.choose("comboBoxFunc", "<");
    driver.enter(0, "11111111");
    driver.find<QSpinBox>("spinBoxCounterWidth")->setValue(7);
    driver.find<QSpinBox>("spinBoxCounter")->setValue(100);
    driver.confirm();
    QCOMPARE(design.unit.trigger, design.core.getTrigger(0));
    QCOMPARE(design.unit.matchType, MatchExtended);
    QCOMPARE(design.unit.counterEnable, counterEnable);
    QCOMPARE(design.unit.counterWidth, 2);
    QCOMPARE(design.unit.matchFunc, MatchLess);
    QCOMPARE(design.unit.counter, 100);
}

void TestMatchUnitDialog::cancel()
{
    Design design(MatchRange, MatchInRange, "000000001", "111111111");
    const QString before = dump(design.unit);
    DialogDriver driver(&design.unit);
    driver.choose("comboBoxType", "Basic");
    driver.type(0, "1111");
    QTest::keyClick(&driver.dialog, Qt::Key_Escape);
    QVERIFY(!driver.dialog.isVisible());
    QCOMPARE(dump(design.unit), before);
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
    QMetaObject::invokeMethod(&driver.dialog, "onChange1");
    driver.choose("comboBoxTrigger", "Trigger Port 0");
    QCOMPARE(driver.shown(0), QString("00000000"));
    QCOMPARE(driver.edit(0)->bitWidth, 8);
}

void TestMatchUnitDialog::noPort()
{
    Design design(MatchBasic, MatchEqual, "1");
    design.unit.trigger = design.core.getTrigger(9); // has no signals
    const QString before = dump(design.unit);
    DialogDriver driver(&design.unit);
    QCOMPARE(driver.find<QComboBox>("comboBoxTrigger")->currentIndex(), -1);
    QVERIFY(!driver.find<QWidget>("widgetRight")->isEnabled());
    QCOMPARE(driver.dialog.calculatedBitwidth(8), 0);
    callSlotsOutOfPlace(driver.dialog);
    driver.find<QSpinBox>("spinBoxCounterWidth")->setValue(9);
    QCOMPARE(driver.confirm(), QString());
    QCOMPARE(driver.dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dump(design.unit), before);

    design.unit.trigger = nullptr;
    DialogDriver chosen(&design.unit);
    chosen.choose("comboBoxTrigger", "Trigger Port 3");
    QVERIFY(chosen.find<QWidget>("widgetRight")->isEnabled());
    chosen.confirm();
    QCOMPARE(design.unit.trigger, design.core.getTrigger(3));
}

void TestMatchUnitDialog::slotsOutOfPlace()
{
    Design design(MatchBasic, MatchEqual, "101010101");
    DialogDriver driver(&design.unit);
    callSlotsOutOfPlace(driver.dialog);
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(driver.shown(0), QString("10101010"));
}

void TestMatchUnitDialog::unfinishedEdits()
{
    Design design(MatchExtended, MatchEqual);
    DialogDriver driver(&design.unit);
    driver.type(0, "11");
    driver.find<QRadioButton>("rbtnHex")->setChecked(true);
    QCOMPARE(driver.shown(0), QString("C0"));
    driver.type(0, "5");
    driver.find<QRadioButton>("rbtnOct")->setChecked(true);
    QCOMPARE(driver.shown(0), QString("120"));
    driver.type(0, "2");
    auto* type = driver.find<QComboBox>("comboBoxType");
    type->setCurrentIndex(type->findText("Range"));
    driver.dialog.onTypeChanged();
    QCOMPARE(driver.bits(0), QString("10010000"));
    driver.find<QRadioButton>("rbtnHex")->setChecked(true);
    driver.type(0, "a");
    auto* func = driver.find<QComboBox>("comboBoxFunc");
    func->setCurrentIndex(func->findText(">"));
    driver.dialog.onFuncChanged();
    QCOMPARE(driver.bits(0), QString("10100000"));
    driver.type(0, "7");
    driver.dialog.accept();
    QCOMPARE(design.unit.value0, QString("011100000"));
}

void TestMatchUnitDialog::destroyedWhileEditing()
{
    Design design;
    {
        DialogDriver driver(&design.unit);
        driver.type(0, "11");
        QVERIFY(driver.edit(0)->hasFocus());
    }
    QCOMPARE(design.unit.value0, QString());
}

void TestMatchUnitDialog::reachableByKeys()
{
    Design design(MatchRange, MatchInRange);
    design.core.getTrigger(0)->signalList = {busOf(QString(300, 'n'), 8), signalOf("we")};
    DialogDriver driver(&design.unit);
    driver.find<QTreeWidget>("treeSignals0")->expandAll();
    driver.find<QTreeWidget>("treeSignals0")->setFocus();
    QList<QWidget*> expected = {driver.edit(0)};
    for (TreeLineEdit* bit : driver.edit(0)->subEdits)
        expected += bit;
    expected += {driver.edit(1), driver.find<QWidget>(kMaximum), driver.edit(0, kMaximum),
        driver.edit(1, kMaximum), driver.find<QWidget>("groupBoxCounter")};
    for (QWidget* next : qAsConst(expected)) {
        QTest::keyClick(driver.dialog.focusWidget(), Qt::Key_Tab);
        QCOMPARE(driver.dialog.focusWidget(), next);
        if (auto* edit = qobject_cast<TreeLineEdit*>(next))
            QVERIFY(edit->visibleRegion().boundingRect().width() > 10);
    }
}

QTEST_MAIN(TestMatchUnitDialog)
#include "test_match_unit_dialog.moc"
