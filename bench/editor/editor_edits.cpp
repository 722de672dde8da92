// SPDX-License-Identifier: Apache-2.0
// How long an edit of each kind blocks the window, on 16 cores of 1000 signals: the edit and the
// drawing after it. The program fails when an edit takes longer than the limit.
#include "oxa-editor/core_list.h"
#include "oxa-editor/expression_edit.h"
#include "oxa-editor/main_window.h"
#include "oxa-editor/problems_panel.h"
#include "oxa-editor/signal_editor.h"
#include "oxa-editor/signal_model.h"
#include "oxa-editor/units_page.h"

#include "oxautils/config/standard_config.h"
#include "oxautils/editor/match_unit_dialog.h"
#include "oxautils/editor/tree_line_edit.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QRadioButton>
#include <QSettings>
#include <QSpinBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QThread>
#include <QTreeView>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

namespace {

constexpr int kCores = 16;
constexpr int kSignals = 1000; // of a core, buses among them
constexpr int kPortBits = 1000; // of the widest port
constexpr int kEdits = 50; // of each kind
constexpr double kLimit = 50; // ms
constexpr double kNoLimit = 1e9;

OXA::SignalItem makeSignal(const QString& name, int width = 1)
{
    OXA::SignalItem item;
    item.name = name;
    for (int bit = width - 1; bit >= 0 && width > 1; --bit)
        item.subItems += makeSignal(QString("%1[%2]").arg(name).arg(bit));
    return item;
}

OXA::AoCore* makeCore(int index)
{
    auto* core = new OXA::AoCore(index);
    core->moduleName = QString("module%1").arg(index);
    core->sampleClock = QString("top/u%1/clk").arg(index);
    for (int i = 0; i < kSignals; ++i)
        core->signalList
            += makeSignal(QString("top/u%1/signal%2").arg(index).arg(i), i % 4 ? 1 : 8);
    core->captureSignals = core->signalList;
    for (int i = 0; i < core->triggers.size(); ++i) {
        const int width = i == 0 ? kPortBits : 16;
        core->triggers.at(i)->signalList
            = {makeSignal(QString("top/u%1/port%2").arg(index).arg(i), width),
                makeSignal(QString("top/u%1/valid%2").arg(index).arg(i))};
        OXA::MatchUnit& unit = *core->matchUnits.at(i);
        unit.enabled = true;
        unit.trigger = core->triggers.at(i);
        unit.value0 = unit.value1 = QString(width + 1, '1');
        core->expressions += QString("M%1 && M0").arg(i);
    }
    return core;
}

bool writeConfiguration(const QString& path)
{
    QList<OXA::AoCore*> cores;
    for (int index = 0; index < kCores; ++index)
        cores += makeCore(index);
    OXA::writeOXAConfigToXml(cores, path);
    qDeleteAll(cores);
    return QFile::exists(path);
}

/// The duration of an action in milliseconds: processor time, which other programs do not affect,
/// and elapsed time.
struct Duration {
    double processor;
    double clock;
};

double processorTime()
{
    timespec time {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/// The duration of `action`, including the drawing after it.
Duration timeOf(const std::function<void()>& action)
{
    QElapsedTimer timer;
    timer.start();
    const double begin = processorTime();
    action();
    QApplication::processEvents();
    return {processorTime() - begin, double(timer.nsecsElapsed()) / 1e6};
}

/// Prints the figures of `times`; whether all are within `limit` of processor time.
bool report(const char* what, std::vector<Duration> times, double limit = kLimit)
{
    std::sort(times.begin(), times.end(),
        [](const Duration& a, const Duration& b) { return a.processor < b.processor; });
    double late = 0;
    for (const Duration& time : times)
        late = qMax(late, time.clock);
    const bool kept = times.back().processor <= limit;
    std::printf("editor, %-32s median %6.1f ms, longest %6.1f ms, by the clock %6.1f ms%s\n", what,
        times.at(times.size() / 2).processor, times.back().processor, late,
        kept ? "" : "  OVER THE LIMIT");
    return kept;
}

bool repeat(const char* what, const std::function<void(int)>& action, int edits = kEdits)
{
    std::vector<Duration> times;
    times.reserve(size_t(edits));
    for (int i = 0; i < edits; ++i)
        times.push_back(timeOf([&] { action(i); }));
    return report(what, times);
}

class Bench {
public:
    explicit Bench(const QString& path)
        : m_path(path)
    {
        m_window.show();
    }

    bool run()
    {
        report("open the file (no limit)", {timeOf([&] { m_window.open(m_path); })}, kNoLimit);
        return m_window.document().cores().size() == kCores
            && bool(int(editSignals()) & int(editPorts()) & int(editUnits())
                & int(editExpressions()) & int(editCores()) & int(goBackAndForth())
                & int(updateChecks()) & int(save()));
    }

private:
    /// The page's widget of type T.
    template <typename T> T& on(Page page)
    {
        auto* tabs = m_window.findChild<QTabWidget*>();
        tabs->setCurrentIndex(int(page));
        QApplication::processEvents();
        return *tabs->currentWidget()->findChild<T*>();
    }

    bool editSignals()
    {
        auto& editor = on<SignalEditor>(Page::Signals);
        SignalModel& model = *editor.model();
        editor.view()->expandAll();
        const auto row = [](int i) { return i * 19 % kSignals; };
        const auto select = [&](int i) {
            editor.view()->setCurrentIndex(model.index(row(i), 0));
            editor.view()->selectionModel()->select(model.index(row(i) + 1, 0),
                QItemSelectionModel::Select | QItemSelectionModel::Rows);
        };
        bool kept = repeat("rename a signal", [&](int i) {
            model.setData(model.index(row(i), 0), QString("renamed%1").arg(i), Qt::EditRole);
        });
        kept &= repeat("switch a capture", [&](int i) {
            model.setData(model.index(row(i), 2), Qt::Unchecked, Qt::CheckStateRole);
        });
        kept &= repeat("add a signal", [&](int i) {
            select(i);
            editor.insert({makeSignal(QString("new%1").arg(i))}, "add");
        });
        kept &= repeat("move signals", [&](int i) {
            model.moveRowsTo({}, {row(i), row(i) + 1}, kSignals - row(i), "move");
        });
        const auto trigger = [&](const char* text) {
            for (QAction* action : editor.actions()) {
                if (action->text() == text)
                    action->trigger();
            }
        };
        kept &= repeat("make a bus", [&](int i) {
            select(i);
            trigger("&Group");
        });
        return kept & repeat("remove signals", [&](int i) {
            select(i);
            trigger("&Remove");
        });
    }

    bool editPorts()
    {
        auto& editor = on<SignalEditor>(Page::Ports);
        SignalModel& model = *editor.model();
        editor.view()->expandAll();
        return repeat("move a bit of a port of 1001",
            [&](int i) { model.moveRowsTo(model.index(0, 0), {i}, kPortBits - i, "move"); });
    }

    bool editUnits()
    {
        const CorePtr core = m_window.document().cores().first();
        on<QAbstractItemView>(Page::Units);
        bool kept = repeat("change the value of a unit", [&](int i) {
            OXA::MatchUnit unit = *core->standard->matchUnit(0);
            unit.value0[i] = '0';
            m_window.document().set(
                {core, Page::Units}, *core->standard->matchUnit(0), unit, QString("edit"));
        });
        OXA::MatchUnitDialog dialog(core->standard->matchUnit(0), false, &m_window);
        report("show the dialog (no limit)", {timeOf([&] { dialog.show(); })}, kNoLimit);
        auto* field = dialog.findChild<OXA::TreeLineEdit*>();
        kept &= repeat("type a digit into 1000 bits", [&](int i) {
            field->setCursorPosition(i);
            field->insert(i % 2 ? "1" : "0");
            Q_EMIT field->editingFinished();
        });
        const char* const radixes[] = {"rbtnHex", "rbtnOct", "rbtnBin", "rbtnDec"};
        return kept & repeat("change the radix of 1000 bits", [&](int i) {
            dialog.findChild<QRadioButton*>(radixes[i % 4])->setChecked(true);
        });
    }

    bool editExpressions()
    {
        auto& edit = on<ExpressionEdit>(Page::Expressions);
        return repeat(
            "type into an expression", [&](int i) { edit.insertPlainText(i % 2 ? "3" : " || M"); });
    }

    bool editCores()
    {
        auto& cores = *m_window.findChild<CoreList*>();
        bool kept = repeat("show another core",
            [&](int i) { cores.setCurrent(m_window.document().cores().at(i % kCores)); });
        kept &= repeat("move a core", [&](int i) { i % 2 ? cores.moveUp() : cores.moveDown(); });
        auto& depth = on<QSpinBox>(Page::Capture);
        return kept & repeat("change the depth", [&](int i) { depth.setValue(1024 + i); });
    }

    bool goBackAndForth()
    {
        QUndoStack& stack = m_window.document().undoStack();
        const int steps = stack.count();
        const auto action = [&](const char* begin) {
            for (QAction* each : m_window.findChildren<QAction*>()) {
                if (each->text().startsWith(begin))
                    return each;
            }
            return static_cast<QAction*>(nullptr);
        };
        QAction* undo = action("&Undo");
        QAction* redo = action("&Redo");
        return bool(int(repeat(
                        "undo", [&](int) { undo->trigger(); }, steps))
            & int(repeat(
                "redo", [&](int) { redo->trigger(); }, steps)));
    }

    /// The longest time that the window is blocked while problems and cost are updated.
    bool updateChecks()
    {
        const CorePtr core = m_window.document().cores().first();
        std::vector<Duration> longest;
        for (int i = 0; i < 5; ++i) {
            m_window.document().set(
                {core}, core->moduleName(), QString("checked%1").arg(i), QString("rename"));
            bool checked = false;
            const auto connection = QObject::connect(m_window.findChild<ProblemsPanel*>(),
                &ProblemsPanel::checked, [&checked] { checked = true; });
            for (; !checked; QThread::msleep(1))
                longest.push_back(timeOf([] {}));
            QObject::disconnect(connection);
        }
        return report("find problems and cost", longest);
    }

    bool save()
    {
        QString error;
        return report("save the file (no limit)",
            {timeOf([&] { m_window.document().save(m_path, &error); })}, kNoLimit);
    }

    const QString m_path;
    MainWindow m_window;
};

}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QTemporaryDir directory;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, directory.path());
    const QString path = directory.filePath("large.oxa");
    return writeConfiguration(path) && Bench(path).run() ? 0 : 1;
}
