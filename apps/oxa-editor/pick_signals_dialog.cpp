// SPDX-License-Identifier: Apache-2.0
#include "pick_signals_dialog.h"

#include "signal_names.h"

#include "oxautils/model/shown_text.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

PickSignalsDialog::PickSignalsDialog(const QList<OXA::SignalItem>& items, QWidget* parent)
    : QDialog(parent)
    , m_items(items)
    , m_list(new QListWidget)
{
    setWindowTitle(tr("Add Data Signals"));
    for (const OXA::SignalItem& item : items) {
        const QString name = OXA::shownText(shownName(item));
        m_list->addItem(
            item.isBus() ? QString("%1  (%2)").arg(name, bitsText(item.bitCount())) : name);
    }
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setAccessibleName(tr("Data signals"));
    auto* search = new QLineEdit;
    search->setPlaceholderText(tr("Filter"));
    search->setAccessibleName(tr("Filter"));
    search->setClearButtonEnabled(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    ok->setText(tr("&Add"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(search);
    layout->addWidget(m_list, 1);
    layout->addWidget(buttons);
    connect(search, &QLineEdit::textChanged, this, &PickSignalsDialog::filter);
    const auto showChoice = [=] { ok->setEnabled(!this->items().isEmpty()); };
    connect(search, &QLineEdit::textChanged, this, showChoice);
    connect(m_list, &QListWidget::itemSelectionChanged, this, showChoice);
    connect(m_list, &QListWidget::itemActivated, ok, &QPushButton::click); // needs a choice
    showChoice();
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(fontMetrics().averageCharWidth() * 60, fontMetrics().height() * 24);
}

QList<OXA::SignalItem> PickSignalsDialog::items() const
{
    QList<OXA::SignalItem> chosen;
    for (int row = 0; row < m_list->count(); ++row) {
        const QListWidgetItem* item = m_list->item(row);
        if (item->isSelected() && !item->isHidden())
            chosen += m_items.at(row);
    }
    return chosen;
}

void PickSignalsDialog::filter(const QString& text)
{
    for (int row = 0; row < m_list->count(); ++row) {
        const OXA::SignalItem& item = m_items.at(row);
        const bool found = item.name.contains(text, Qt::CaseInsensitive)
            || item.text.contains(text, Qt::CaseInsensitive);
        m_list->item(row)->setHidden(!found);
    }
}
