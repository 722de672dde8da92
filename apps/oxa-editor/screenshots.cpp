// SPDX-License-Identifier: Apache-2.0
// Makes the pictures in docs/images; run by tools/screenshots.
//
//   oxa_screenshots CONFIGURATION WAVE.vcd OPENOCD CORES CAPTURE.vcd DIRECTORY [LOOK]
//
// OPENOCD is the address of its Tcl server, for a chip with the configuration. CORES is one with
// several cores, CAPTURE.vcd what they captured. LOOK is a row of `kLooks`; without it, the
// pictures are those of docs/images.

#include "build_panel.h"
#include "captures/captures_panel.h"
#include "core_list.h"
#include "design/design_panel.h"
#include "expressions_page.h"
#include "help_window.h"
#include "main_window.h"
#include "target/target_panel.h"
#include "wave/rehearsal_panel.h"
#include "wave/wave_canvas.h"
#include "wave/wave_view.h"

#include "oxautils/config/standard_config.h"
#include "oxautils/design/design_sources.h"
#include "oxautils/editor/match_unit_dialog.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QRadioButton>
#include <QSettings>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTreeView>

#include <algorithm>

namespace {

constexpr int kSettleTime = 600; // ms: the problems are found in the background
constexpr int kSmallest = 0; // quality: for PNG, the best compression
constexpr char kPart[] = "QX1N-9LV-QFN88-C6|QX1N-9";

/// How the window looks: its size, and the colours.
struct Look {
    const char* name;
    QSize size;
    QSize large; // with a waveform or the design
    QPalette (*palette)();
};

constexpr QSize kUsual(1180, 760);
constexpr QSize kUsualLarge(1180, 880);

QPalette darkPalette();
QPalette contrastPalette();

const Look kLooks[] = {
    {"",          kUsual,       kUsualLarge,  nullptr        },
    {"dark",      kUsual,       kUsualLarge,  darkPalette    },
    {"contrast",  kUsual,       kUsualLarge,  contrastPalette},
    {"960x540",   {960, 540},   {960, 540},   nullptr        },
    {"1440x900",  {1440, 900},  {1440, 900},  nullptr        },
    {"3840x2160", {3840, 2160}, {3840, 2160}, nullptr        },
};

void settle()
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < kSettleTime)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

void take(QWidget& widget, const QString& path)
{
    settle();
    widget.grab().save(path, "PNG", kSmallest);
}

void takePages(MainWindow& window, const QString& directory)
{
    auto* tabs = window.findChild<QTabWidget*>();
    for (int i = 0; i < tabs->count(); ++i) {
        tabs->setCurrentIndex(i);
        if (auto* expressions = qobject_cast<ExpressionsPage*>(tabs->widget(i)))
            expressions->reveal(1);
        for (QTreeView* view : window.findChildren<QTreeView*>())
            view->expandToDepth(0);
        const QString name = tabs->tabText(i).toLower().replace(' ', '-');
        take(window, directory + "/editor-" + name + ".png");
    }
}

void press(MainWindow& window, const char* keys)
{
    for (QAction* action : window.findChildren<QAction*>()) {
        if (action->shortcut() == QKeySequence(keys))
            action->trigger();
    }
}

/// The samples of a chip.
void takeTarget(MainWindow& window, const QString& address, const QString& path)
{
    auto* panel = window.findChild<TargetPanel*>();
    press(window, "Ctrl+9");
    auto* field = qobject_cast<QLineEdit*>(panel->focusProxy());
    field->setText(address);
    panel->arm();
    while (panel->isRunning())
        settle();
    field->setText("127.0.0.1:6666");
    press(window, "Ctrl+9");
    panel->view()->canvas()->setFocus();
    panel->view()->canvas()->zoom(4, 0);
    panel->view()->canvas()->setCursor(0, 41);
    take(window, path);
    window.findChild<QDockWidget*>("targetDock")->hide();
}

/// Two cursors in the waveform of a rehearsal, some rows above and below them.
void takeRehearsal(MainWindow& window, const QString& stimulus, const QString& path)
{
    auto* panel = window.findChild<RehearsalPanel*>();
    press(window, "Ctrl+8");
    panel->setStimulus(stimulus);
    settle();
    panel->findChild<QLineEdit*>()->setText("/home/ada/uart/uart.vcd");
    WaveView& view = *panel->view();
    view.rows()->setExpanded(view.rows()->model()->index(0, 0), true);
    const std::vector<WaveWindow> windows = view.waveform()->windows;
    if (!windows.empty()) {
        const qint64 trigger = windows.front().trigger;
        view.canvas()->zoom(10, 0);
        view.canvas()->reveal(trigger);
        view.canvas()->setCursor(0, trigger + 8);
        view.canvas()->setCursor(1, trigger + 25);
    }
    take(window, path);
}

/// All cores of a capture, with cursors at the first trigger sample of each.
void takeAllCores(
    const QString& configuration, const QString& capture, const Look& look, const QString& path)
{
    MainWindow window;
    window.resize(look.large);
    window.show();
    if (!window.open(configuration))
        return;
    auto* panel = window.findChild<CapturesPanel*>();
    press(window, "Ctrl+Shift+H");
    panel->open(capture);
    while (panel->isOpening())
        settle();
    auto* cores = panel->findChild<QComboBox*>();
    cores->setCurrentIndex(cores->count() - 1);
    Q_EMIT cores->activated(cores->currentIndex());
    WaveView& view = *panel->view();
    view.canvas()->zoom(12, 0);
    int cursor = 0;
    for (const auto& row : view.waveform()->rows) {
        qint64 sample = row->name.endsWith(": trigger") ? 0 : view.waveform()->samples;
        while (sample < view.waveform()->samples && row->bitAt(sample) != OXA_CAPTURE::Logic::One)
            ++sample;
        if (sample == view.waveform()->samples)
            continue;
        view.canvas()->reveal(sample);
        view.canvas()->setCursor(cursor++, sample);
    }
    take(window, path);
}

/// Adds a second core, and an expression with an error.
void showSomething(MainWindow& window)
{
    window.findChild<CoreList*>()->duplicate();
    Document& document = window.document();
    const CorePtr core = document.cores().at(1);
    document.set({core}, core->moduleName(), QString("uart_rx"), QString());
    window.findChild<CoreList*>()->setCurrent(document.cores().at(0));
    const CorePtr first = document.cores().at(0);
    document.set({first, Page::Expressions}, first->standard->expressions,
        QStringList {"M0", "M1 && !(M2 || M7)", "M1 && M2"}, QString());
    window.findChild<BuildPanel*>()->setWorkDir("/home/ada/uart/uart_oxa");
}

/// The signals of the design of `configuration`; a copy is opened.
void takeDesign(const QString& configuration, const Look& look, const QString& path)
{
    const QTemporaryDir directory;
    for (const char* name : {"uart.oxa", "uart_tx.v"})
        QFile::copy(QFileInfo(configuration).dir().filePath(name), directory.filePath(name));
    const QString copy = directory.filePath("uart.oxa");
    OXA::DesignSources sources;
    sources.files += directory.filePath("uart_tx.v");
    MainWindow window;
    window.resize(look.large);
    window.show();
    if (!OXA::rememberDesign(copy, sources, nullptr) || !window.open(copy))
        return;
    window.findChild<QTabWidget*>()->setCurrentIndex(1);
    press(window, "Ctrl+Shift+D");
    for (int i = 0; i < 50 && !window.document().design(); ++i)
        settle();
    auto* view = window.findChild<DesignPanel*>()->findChild<QTreeView*>();
    const QModelIndex top = view->model()->index(0, 0);
    for (int row = 0; row < view->model()->rowCount(top); ++row) {
        if (view->model()->index(row, 0, top).data() == "bit_count")
            view->expand(view->model()->index(row, 0, top));
    }
    view->setCurrentIndex(view->indexBelow(top));
    view->setFocus();
    take(window, path);
}

void takeDialog(OXA::MatchUnit& unit, bool fixed, const char* radix, const QString& path)
{
    OXA::MatchUnitDialog dialog(&unit, fixed);
    dialog.findChild<QRadioButton*>(radix)->setChecked(true);
    if (QString(radix) == "rbtnBin") {
        for (QTreeView* tree : dialog.findChildren<QTreeView*>())
            tree->expandAll();
    }
    dialog.show();
    take(dialog, path);
}

void takeDialogs(const QString& file, const QString& directory)
{
    const QList<OXA::AoCore*> cores = OXA::readOXAConfigFromXml(file);
    if (cores.isEmpty())
        return;
    OXA::MatchUnit unit = *cores.first()->matchUnit(0);
    unit.trigger = cores.first()->getTrigger(0);
    const int width = unit.trigger->singleSignals().size();
    unit.matchType = OXA::MatchBasicEdges;
    unit.value0 = QString("R10X01F1NB").leftJustified(width, 'X', true);
    takeDialog(unit, false, "rbtnBin", directory + "/dialog-binary.png");
    unit.matchType = OXA::MatchRange;
    unit.value0 = QString("10100101").leftJustified(width, '0', true);
    takeDialog(unit, false, "rbtnHex", directory + "/dialog-hexadecimal.png");
    unit.matchFunc = OXA::MatchInRange;
    unit.value1 = QString(width, '1');
    unit.counterEnable = true;
    takeDialog(unit, false, "rbtnDec", directory + "/dialog-range.png");
    unit.counterEnable = false;
    takeDialog(unit, true, "rbtnHex", directory + "/dialog-fixed.png");
    qDeleteAll(cores);
}

QPalette darkPalette()
{
    QPalette palette(QColor(53, 53, 53), QColor(42, 42, 42));
    palette.setColor(QPalette::Base, QColor(27, 27, 27));
    palette.setColor(QPalette::Highlight, QColor(42, 110, 180));
    palette.setColor(QPalette::Link, QColor(110, 170, 240));
    return palette;
}

QPalette contrastPalette()
{
    QPalette palette(Qt::black, Qt::black);
    for (const QPalette::ColorRole role :
        {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText,
            QPalette::Light, QPalette::Midlight, QPalette::Mid})
        palette.setColor(role, Qt::white);
    for (const QPalette::ColorRole role :
        {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, Qt::gray);
    palette.setColor(QPalette::Disabled, QPalette::Light, Qt::black);
    palette.setColor(QPalette::Highlight, Qt::yellow);
    palette.setColor(QPalette::HighlightedText, Qt::black);
    palette.setColor(QPalette::Link, Qt::cyan);
    return palette;
}

void takeHelp(MainWindow& window, const QString& path)
{
    window.setFocus();
    press(window, "F1");
    take(*window.findChild<HelpWindow*>(), path);
    window.findChild<HelpWindow*>()->close();
}

/// All pictures, of a window whose settings are empty.
int takeAll(const QStringList& arguments, const Look& look)
{
    const QString& directory = arguments.at(6);
    QSettings().setValue("part/last", kPart);
    QSettings().setValue("recentFiles",
        QStringList {"/home/ada/uart/uart.oxa", "/home/ada/soc/fpga/soc_capture.oxa"});
    MainWindow window;
    window.resize(look.size);
    window.show();
    take(window, directory + "/editor-welcome.png");
    if (!window.open(arguments.at(1)))
        return 1;
    window.resize(look.large);
    takeTarget(window, arguments.at(3), directory + "/editor-target.png");
    window.resize(look.size);
    showSomething(window);
    takePages(window, directory);
    press(window, "F7");
    take(window, directory + "/editor-build.png");
    window.resize(look.large);
    window.document().undoStack().undo(); // the expression with an error
    takeRehearsal(window, arguments.at(2), directory + "/editor-rehearsal.png");
    takeHelp(window, directory + "/editor-help.png");
    window.document().undoStack().setClean();
    takeDesign(arguments.at(1), look, directory + "/editor-design.png");
    takeAllCores(arguments.at(4), arguments.at(5), look, directory + "/editor-all-cores.png");
    takeDialogs(arguments.at(1), directory);
    return 0;
}

}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() < 7)
        return 2;
    const QTemporaryDir settings;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QFont font("DejaVu Sans");
    font.setPixelSize(12);
    QApplication::setFont(font);
    const QString name = arguments.value(7);
    const auto look = std::find_if(
        std::begin(kLooks), std::end(kLooks), [&](const Look& each) { return name == each.name; });
    if (look == std::end(kLooks))
        return 2;
    if (name == "contrast") // whose frames do not depend on shades of the window's colour
        QApplication::setStyle(QStyleFactory::create("Windows"));
    if (look->palette)
        QApplication::setPalette(look->palette());
    return takeAll(arguments, *look);
}
