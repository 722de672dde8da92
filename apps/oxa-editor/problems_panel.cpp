// SPDX-License-Identifier: Apache-2.0
#include "problems_panel.h"

#include "design/design_tree.h"
#include "least_lines.h"

#include "oxautils/check/check.h"
#include "oxautils/design/design_rules.h"
#include "oxautils/model/shown_text.h"

#include <QLabel>
#include <QListWidget>
#include <QRunnable>
#include <QStyle>
#include <QVBoxLayout>

using namespace OXA;

namespace {

template <typename List>
QList<Problem> problemsOf(const List& cores, const DEV::ChipInfo& part, const DesignTree* design)
{
    QList<Problem> problems = checkCores(cores, part.partNumber.isEmpty() ? nullptr : &part);
    if (design)
        addDesignProblems(cores, design->index(), problems);
    return problems;
}

}

ProblemsPanel::ProblemsPanel(QWidget* parent)
    : QWidget(parent)
    , m_label(new QLabel)
    , m_list(new QListWidget)
{
    m_pool.setMaxThreadCount(1);
    m_label->setBuddy(m_list);
    m_list->setAccessibleName(tr("Problems"));
    const int icon = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_list->setIconSize({icon, icon});
    m_list->setWordWrap(true);
    keepLeastLines(*m_list);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setResizeMode(QListView::Adjust);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_label);
    layout->addWidget(m_list, 1);
    const auto activate
        = [this](QListWidgetItem* item) { Q_EMIT activated(m_problems.at(m_list->row(item))); };
    connect(m_list, &QListWidget::itemClicked, this, activate);
    connect(m_list, &QListWidget::itemActivated, this, activate);
    show(0, {});
}

ProblemsPanel::~ProblemsPanel() { m_pool.waitForDone(); }

void ProblemsPanel::check(OxaMode mode, const Cores& cores, const DEV::ChipInfo& part,
    const std::shared_ptr<const DesignTree>& design)
{
    Cores copies;
    for (const CorePtr& core : cores)
        copies += core->clone();
    m_pool.clear();
    m_pool.start(QRunnable::create([this, mode, copies, part, design, number = ++m_check] {
        const QList<Problem> problems = mode == Lite
            ? problemsOf(liteCores(copies), part, design.get())
            : problemsOf(standardCores(copies), part, design.get());
        QMetaObject::invokeMethod(
            this, [this, number, problems] { show(number, problems); }, Qt::QueuedConnection);
    }));
}

void ProblemsPanel::show(int check, const QList<Problem>& problems)
{
    if (check != m_check)
        return;
    m_problems = problems;
    const int row = m_list->currentRow();
    m_list->clear();
    for (const Problem& problem : problems) {
        const QString place = problem.place.text();
        const QString text = shownText(problem.text);
        auto* item = new QListWidgetItem(place.isEmpty() ? text : tr("%1: %2").arg(place, text));
        item->setIcon(style()->standardIcon(problem.severity == Severity::Error
                ? QStyle::SP_MessageBoxCritical
                : QStyle::SP_MessageBoxWarning));
        item->setToolTip(problem.hint);
        item->setData(Qt::AccessibleTextRole,
            tr("%1: %2. %3").arg(severityText(problem.severity), item->text(), problem.hint));
        m_list->addItem(item);
    }
    m_list->setCurrentRow(qMin(row, m_list->count() - 1));
    m_label->setText(
        problems.isEmpty() ? tr("No &problems") : tr("&Problems: %1").arg(problems.size()));
    Q_EMIT checked();
}
