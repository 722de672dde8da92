// SPDX-License-Identifier: Apache-2.0
#include "cost_panel.h"

#include "least_lines.h"

#include "oxautils/resource/capture_memory.h"

#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <iterator>

namespace {

constexpr int kTakesColumn = 2;
const QColor kOverColor(190, 30, 30); // with white text on it

// In the order of OXA::MemoryKind.
const char* const kKindNames[] = {
    QT_TRANSLATE_NOOP("CostPanel", "Block SRAM"),
    QT_TRANSLATE_NOOP("CostPanel", "Registers"),
    QT_TRANSLATE_NOOP("CostPanel", "Shadow SRAM"),
};

// In the order of OXA_TOOL::analyzerResources.
const char* const kBarNames[] = {
    QT_TRANSLATE_NOOP("CostPanel", "Look-up tables"),
    QT_TRANSLATE_NOOP("CostPanel", "Registers"),
    QT_TRANSLATE_NOOP("CostPanel", "Block SRAM"),
    QT_TRANSLATE_NOOP("CostPanel", "Shadow SRAM"),
};

/// A core's memory.
struct Memory {
    int width; // data bits
    int depth; // samples
    bool mark; // stores one bit more with each sample
};

QString noteText(const OXA_TOOL::AnalyzerResource& resource, const OXA_TOOL::AnalyzerAmounts& taken,
    const OXA_TOOL::AnalyzerAmounts& available)
{
    if (resource.exceeds(taken, available))
        return CostPanel::tr("does not fit");
    return resource.isNear(taken, available) ? CostPanel::tr("may not fit") : QString();
}

Memory memoryOf(const Core& core)
{
    if (core.standard)
        return {OXA_TOOL::storedBits(*core.standard), core.standard->storageDepth, true};
    return {int(core.lite->dataSignals().size()), core.lite->captureAmount, false};
}

}

CostPanel::CostPanel(QWidget* parent)
    : QWidget(parent)
    , m_cores(new QTreeWidget)
{
    auto* bars = new QFormLayout;
    for (const char* name : kBarNames) {
        m_bars += new ShareBar;
        m_bars.last()->setAccessibleName(tr(name));
        bars->addRow(tr("%1:").arg(tr(name)), m_bars.last());
    }
    m_cores->setAccessibleName(tr("Memory of each core"));
    m_cores->setHeaderLabels({tr("Core"), tr("Bits × samples"), tr("Needs")});
    m_cores->setRootIsDecorated(false);
    m_cores->setUniformRowHeights(true);
    keepLeastLines(*m_cores);
    m_cores->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_cores->header()->setStretchLastSection(false);
    m_cores->header()->setSectionResizeMode(kTakesColumn, QHeaderView::Stretch);
    m_cores->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(bars);
    layout->addWidget(m_cores, 1);
}

void CostPanel::count(const Cores& cores, const DEV::ChipInfo& part)
{
    const bool known = !part.partNumber.isEmpty();
    OXA_TOOL::AnalyzerEstimate estimate(part);
    m_cores->clear();
    for (int i = 0; i < cores.size(); ++i) {
        const Core& core = *cores.at(i);
        const Memory memory = memoryOf(core);
        const int kind = known
            ? OXA_TOOL::builtKind(core.implementation(), part.partNumber, part.name)
            : core.implementation();
        const int taken
            = OXA_TOOL::captureMemory(memory.width, memory.depth, memory.mark, part.name).of(kind);
        const bool built = core.standard || i == 0; // only the first Lite core is built
        const bool counts = built && kind >= 0 && kind < int(std::size(kKindNames));
        if (core.standard)
            estimate.add(*core.standard);
        else
            estimate.add(*core.lite);
        const QString takes = counts ? tr("%1 %2").arg(QString::number(taken), tr(kKindNames[kind]))
                                     : tr("not built");
        auto* row = new QTreeWidgetItem({QString::number(i),
            QString("%1 × %2").arg(
                QString::number(memory.width + int(memory.mark)), QString::number(memory.depth)),
            takes});
        row->setToolTip(kTakesColumn, takes);
        m_cores->addTopLevelItem(row);
    }
    showShares(estimate.amounts(), part);
}

void CostPanel::showShares(const OXA_TOOL::AnalyzerAmounts& taken, const DEV::ChipInfo& part)
{
    const OXA_TOOL::AnalyzerAmounts available = OXA_TOOL::amountsOf(part);
    for (int i = 0; i < m_bars.size(); ++i) {
        const OXA_TOOL::AnalyzerResource& resource = OXA_TOOL::analyzerResources().at(i);
        const qint64 amount = taken.*resource.amount;
        if (part.partNumber.isEmpty())
            m_bars[i]->setText(QString::number(amount));
        else
            m_bars[i]->setShare(
                amount, available.*resource.amount, noteText(resource, taken, available));
    }
}

ShareBar::ShareBar(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ShareBar::setShare(qint64 taken, qint64 available, const QString& note)
{
    m_text = tr("%1 of %2").arg(QString::number(taken), QString::number(available));
    if (!note.isEmpty())
        m_text = tr("%1: %2").arg(m_text, note);
    const double noneThere = note.isEmpty() ? 0 : 2;
    m_share = available > 0 ? double(taken) / double(available) : noneThere;
    setAccessibleDescription(m_text);
    update();
}

void ShareBar::setText(const QString& text)
{
    m_text = text;
    m_share = 0;
    setAccessibleDescription(text);
    update();
}

QSize ShareBar::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 26, fontMetrics().height() + 4};
}

QSize ShareBar::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 12, sizeHint().height()};
}

void ShareBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect frame = rect().adjusted(0, 0, -1, -1);
    const bool over = m_share > 1;
    QRect filled = frame;
    filled.setWidth(int(frame.width() * qMin(m_share, 1.0)));
    painter.fillRect(frame, palette().base());
    painter.fillRect(filled, over ? kOverColor : palette().color(QPalette::Highlight));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(frame);

    const auto drawText = [&](const QRect& clip, const QColor& color) {
        painter.setClipRect(clip);
        painter.setPen(color);
        painter.drawText(frame, Qt::AlignCenter, m_text);
    };
    drawText(frame, palette().color(QPalette::Text));
    drawText(filled, over ? Qt::white : palette().color(QPalette::HighlightedText));
}
