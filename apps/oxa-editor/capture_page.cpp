// SPDX-License-Identifier: Apache-2.0
#include "capture_page.h"

#include "core_form.h"
#include "events_group.h"
#include "scrolling.h"
#include "storage_group.h"
#include "window_drawing.h"

#include "oxacapture/trigger/trigger_setup.h"

#include "oxautils/model/limits.h"

#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

constexpr int kWidest = 90; // characters, of the form
constexpr int kDeepest = 1 << 24; // samples; more than any part can store

/// A form that scrolls when the window is small.
QFormLayout* makeForm(QWidget* page)
{
    auto* content = new QWidget;
    auto* layout = new QFormLayout(content);
    layout->setRowWrapPolicy(QFormLayout::WrapLongRows);
    content->setMaximumWidth(content->fontMetrics().averageCharWidth() * kWidest);
    auto* outer = new QVBoxLayout(page);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(scrolling(content));
    return layout;
}

template <typename Box> Box* makeBox(int minimum, int maximum, const QString& suffix)
{
    auto* box = new Box;
    box->setRange(minimum, maximum);
    box->setSuffix(suffix);
    return box;
}

/// The first rows of every core's form; returns the first field.
QLineEdit* addHead(CoreForm& form)
{
    QLineEdit* module
        = form.addName(CapturePage::tr("&Module:"), CapturePage::tr("rename the module"),
            [](const Core& core) -> QString& { return core.moduleName(); });
    form.addSignalName(CapturePage::tr("Samp&le clock:"),
        CapturePage::tr("change the sample clock"),
        [](const Core& core) -> QString& { return core.sampleClock(); });
    form.addChoice(CapturePage::tr("Ed&ge:"), CapturePage::tr("change the sampling edge"),
        [](const Core& core) -> int& {
            return core.trigType();
    },
        {{CapturePage::tr("Rising"), 0}, {CapturePage::tr("Falling"), 1}});
    return module;
}

}

CapturePage::CapturePage(Document& document, QWidget* parent)
    : CorePage(document, Page::Capture, parent)
    , m_drawing(new WindowDrawing)
    , m_storage(new StorageGroup(document))
    , m_events(new EventsGroup(document))
    , m_powerUp(new QLabel)
{
    QFormLayout* layout = makeForm(this);
    m_form = new CoreForm(document, layout);
    setEntry(addHead(*m_form));
    addWindowRows(layout);
    m_form->addChoice(tr("Mem&ory:"), tr("change the memory"),
        [](const Core& core) -> int& {
            return core.implementation();
    },
        {{tr("Block SRAM"), OXA::BlockSram}, {tr("Registers"), OXA::Registers},
            {tr("Shadow SRAM"), OXA::ShadowSram}});
    addSwitches();
    m_powerUp->setAccessibleName(tr("Windows of a power-up capture"));
    m_powerUp->setWordWrap(true);
    layout->addRow(m_powerUp);
    layout->addRow(m_storage);
    layout->addRow(m_events);
}

void CapturePage::addWindowRows(QFormLayout* layout)
{
    const QString samples = tr(" samples");
    m_form->addNumber(
        tr("Storage &depth:"), tr("change the storage depth"),
        [](const Core& core) -> int& { return core.standard->storageDepth; },
        makeBox<DoublingSpinBox>(16, kDeepest, samples));
    m_form->addNumber(
        tr("Wi&ndows:"), tr("change the number of windows"),
        [](const Core& core) -> int& { return core.standard->windowNum; },
        makeBox<QSpinBox>(1, kDeepest, {}));
    m_form->addNumber(
        tr("Capture &amount:"), tr("change the capture amount"),
        [](const Core& core) -> int& { return core.standard->captureAmount; },
        makeBox<QSpinBox>(1, kDeepest, tr(" samples a window")));
    m_form->addNumber(
        tr("Tr&igger position:"), tr("change the trigger position"),
        [](const Core& core) -> int& { return core.standard->triggerPos; },
        makeBox<QSpinBox>(0, kDeepest, tr(" samples before the trigger")));
    layout->addRow(m_drawing);
}

void CapturePage::addSwitches()
{
    m_form->addSwitch(tr("Force the trigge&r by a falling edge"),
        tr("change how the trigger is forced"),
        [](const Core& core) -> bool& { return core.standard->forceTriggerByFallingEdge; });
    m_form->addSwitch(tr("Armed at power-&up"), tr("change the arming at power-up"),
        [](const Core& core) -> bool& { return core.captureInitData(); });
}

void CapturePage::refresh()
{
    m_form->show(core());
    m_storage->show(core());
    m_events->show(core());
    if (!standard())
        return;
    const OXA::AoCore& shown = *standard();
    m_drawing->setWindows(
        shown.storageDepth, shown.captureAmount, shown.windowNum, shown.triggerPos);
    m_powerUp->setVisible(shown.captureInitDataEnabled);
    if (!shown.captureInitDataEnabled)
        return;
    const QString file = document().path().isEmpty() ? "untitled.oxa" : document().path();
    m_powerUp->setText(
        tr("Windows of a power-up capture: %1.").arg(OXA_CAPTURE::powerUpText(shown, file)));
}

LiteCapturePage::LiteCapturePage(Document& document, QWidget* parent)
    : CorePage(document, Page::Capture, parent)
    , m_form(new CoreForm(document, makeForm(this)))
{
    setEntry(addHead(*m_form));
    m_form->addNumber(
        tr("Capture &amount:"), tr("change the capture amount"),
        [](const Core& core) -> int& { return core.captureAmount(); },
        makeBox<DoublingSpinBox>(1, kDeepest, tr(" samples")));
    m_form->addChoice(tr("Mem&ory:"), tr("change the memory"),
        [](const Core& core) -> int& {
            return core.implementation();
    },
        {{tr("Block SRAM"), OXA::BlockSram}, {tr("Shadow SRAM"), OXA::ShadowSram}});
    m_form->addSwitch(tr("&Register before the memory"), tr("change the input register"),
        [](const Core& core) -> bool& { return core.lite->inputRegisterEnabled; });
    m_form->addSwitch(tr("Armed at power-&up"), tr("change the arming at power-up"),
        [](const Core& core) -> bool& { return core.captureInitData(); });
}

void LiteCapturePage::refresh() { m_form->show(core()); }
