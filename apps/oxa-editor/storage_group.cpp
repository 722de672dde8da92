// SPDX-License-Identifier: Apache-2.0
#include "storage_group.h"

#include "expression_edit.h"
#include "signal_names.h"

#include "oxautils/resource/capture_memory.h"

#include <QComboBox>
#include <QCompleter>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QStringListModel>

#include <algorithm>

using OXA::AoCore;
using OXA::CoreStorage;

namespace {

/// Completes the last of several words in a line.
class LastWordCompleter : public QCompleter {
public:
    LastWordCompleter(QStringListModel* names, QLineEdit* line)
        : QCompleter(names, line)
        , m_line(line)
    {
        setCaseSensitivity(Qt::CaseInsensitive);
        setFilterMode(Qt::MatchContains);
        line->setCompleter(this);
    }

    QStringList splitPath(const QString& path) const override
    {
        return {path.mid(path.lastIndexOf(' ') + 1)};
    }

    QString pathFromIndex(const QModelIndex& index) const override
    {
        const QString text = m_line->text();
        return text.left(text.lastIndexOf(' ') + 1) + QCompleter::pathFromIndex(index);
    }

private:
    QLineEdit* m_line;
};

/// The names of data signals: buses, then bits.
QStringList dataNames(const AoCore& core)
{
    QStringList names;
    for (const OXA::SignalItem& item : core.captureSignals)
        names += item.name;
    names += core.dataSignals();
    names.removeDuplicates();
    return names;
}

/// Samples from the first to the last of a window, at most.
qint64 longestSpan(const AoCore& core)
{
    const CoreStorage& storage = core.storage;
    const qint64 step = qint64(1) << std::clamp(storage.gapBits, 0, CoreStorage::kMostGapBits);
    const auto spanOf = [step](qint64 words) { return std::max<qint64>(words, 0) * step; };
    const qint64 whole = spanOf(core.captureAmount - 1) + 1;
    return storage.limit > 0 ? std::min(whole, spanOf(core.triggerPos) + storage.limit + 1) : whole;
}

QString sizesText(const AoCore& core)
{
    if (core.storage.isDefault())
        return {};
    const QString word = StorageGroup::tr("A stored word has %1 bits, %2 of them of the sample.")
                             .arg(QString::number(OXA_TOOL::storedBits(core) + 1),
                                 QString::number(core.dataSignals().size()));
    if (core.storage.gapBits == 0)
        return word + ' ' + StorageGroup::tr("The times between samples are not known.");
    return word + ' '
        + StorageGroup::tr("A window spans up to %1 samples.")
              .arg(QLocale().toString(longestSpan(core)));
}

}

StorageGroup::StorageGroup(Document& document, QWidget* parent)
    : QGroupBox(tr("Storage"), parent)
    , m_document(document)
    , m_grid(new QGridLayout(this))
    , m_keep(new QComboBox)
    , m_watch(new QLineEdit)
    , m_names(new QStringListModel(this))
    , m_when(new ExpressionEdit)
    , m_complaint(new QLabel)
    , m_gapBits(new QSpinBox)
    , m_limit(new QDoubleSpinBox)
    , m_sizes(new QLabel)
{
    addRows();
    connectRows();
}

void StorageGroup::addRow(const QString& text, QWidget* field)
{
    auto* label = new QLabel(text);
    label->setBuddy(field);
    field->setSizePolicy(QSizePolicy::Ignored, field->sizePolicy().verticalPolicy());
    m_labels.insert(field, label);
    const int row = m_grid->rowCount();
    m_grid->addWidget(label, row, 0);
    m_grid->addWidget(field, row, 1);
}

void StorageGroup::addRows()
{
    // In the order of CoreStorage::Keep.
    m_keep->addItems({tr("All samples"), tr("Changes of data signals"), tr("By an expression")});
    m_watch->setPlaceholderText(tr("all data signals"));
    m_watch->setToolTip(tr("Names of data signals, buses or bits, with spaces between them"));
    new LastWordCompleter(m_names, m_watch);
    m_when->setAccessibleName(tr("Stored when"));
    m_gapBits->setRange(0, CoreStorage::kMostGapBits);
    m_gapBits->setSuffix(tr(" bits"));
    m_limit->setDecimals(0);
    m_limit->setRange(0, double(CoreStorage::kMostLimit));
    m_limit->setSuffix(tr(" samples after the trigger"));
    m_limit->setSpecialValueText(tr("when it is full"));
    for (QLabel* label : {m_complaint, m_sizes}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
    }
    m_sizes->setAccessibleName(tr("Sizes of stored samples"));
    addRow(tr("Stored:"), m_keep);
    addRow(tr("Changes of:"), m_watch);
    addRow(tr("When:"), m_when);
    m_grid->addWidget(m_complaint, m_grid->rowCount(), 0, 1, 2);
    addRow(tr("Ga&p:"), m_gapBits);
    addRow(tr("Window ends:"), m_limit);
    m_grid->addWidget(m_sizes, m_grid->rowCount(), 0, 1, 2);
    m_grid->setColumnStretch(1, 1);
}

void StorageGroup::connectRows()
{
    connect(m_keep, QOverload<int>::of(&QComboBox::activated), this, [this](int keep) {
        change([keep](CoreStorage& storage) { storage.keep = CoreStorage::Keep(keep); },
            tr("change which samples are stored"), false);
    });
    connect(m_watch, &QLineEdit::editingFinished, this, [this] {
        const QStringList names = OXA::watchFromText(cleanName(m_watch->text()));
        change([&names](CoreStorage& storage) { storage.watch = names; },
            tr("change the signals whose changes are stored"), false);
    });
    connect(m_when, &ExpressionEdit::typed, this, [this](const QString& text) {
        change([&text](CoreStorage& storage) { storage.when = text; },
            tr("edit the expression for stored samples"), true);
    });
    connect(m_when, &ExpressionEdit::finished, this, [this] { m_document.endRun(); });
    connect(m_gapBits, QOverload<int>::of(&QSpinBox::valueChanged), this, [this](int bits) {
        change(
            [bits](CoreStorage& storage) { storage.gapBits = bits; }, tr("change the gap"), true);
    });
    connect(m_limit, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
        [this](double samples) {
            change([samples](CoreStorage& storage) { storage.limit = qint64(samples); },
                tr("change the limit"), true);
        });
    for (QAbstractSpinBox* box :
        {static_cast<QAbstractSpinBox*>(m_gapBits), static_cast<QAbstractSpinBox*>(m_limit)}) {
        box->setKeyboardTracking(false);
        connect(box, &QAbstractSpinBox::editingFinished, this, [this] { m_document.endRun(); });
    }
}

void StorageGroup::change(const Change& change, const QString& step, bool typed)
{
    if (!m_core || !m_core->standard)
        return;
    CoreStorage& storage = m_core->standard->storage;
    CoreStorage changed = storage;
    change(changed);
    const Location location {m_core, Page::Capture};
    if (typed)
        m_document.type(location, storage, changed, step);
    else
        m_document.set(location, storage, changed, step);
}

void StorageGroup::show(const CorePtr& core)
{
    m_core = core;
    if (core && core->standard)
        showFields(*core->standard);
}

void StorageGroup::showFields(const AoCore& core)
{
    const CoreStorage& storage = core.storage;
    const auto setVisible = [this](QWidget* field, bool visible) {
        field->setVisible(visible);
        m_labels.value(field)->setVisible(visible);
    };
    setVisible(m_watch, storage.keep == CoreStorage::Changes);
    setVisible(m_when, storage.keep == CoreStorage::When);
    setVisible(m_gapBits, !storage.isDefault());
    setVisible(m_limit, !storage.isDefault());
    m_keep->setCurrentIndex(storage.keep);
    m_names->setStringList(dataNames(core));
    if (OXA::watchFromText(m_watch->text()) != storage.watch)
        m_watch->setText(OXA::watchText(storage.watch));
    showExpression(core);
    const QSignalBlocker gapBlocker(m_gapBits);
    m_gapBits->setRange(
        std::min(0, storage.gapBits), std::max(CoreStorage::kMostGapBits, storage.gapBits));
    m_gapBits->setValue(storage.gapBits);
    const QSignalBlocker limitBlocker(m_limit);
    m_limit->setValue(double(storage.limit));
    m_sizes->setText(sizesText(core));
    m_sizes->setVisible(!storage.isDefault());
}

void StorageGroup::showExpression(const AoCore& core)
{
    m_when->setUnits(core);
    m_when->setText(core.storage.when);
    const QList<ExpressionMark> marks = expressionMarks(core.storage.when, core);
    m_when->setMarks(marks);
    m_complaint->setText(complaintText(marks));
    m_complaint->setVisible(core.storage.keep == CoreStorage::When && !marks.isEmpty());
}
