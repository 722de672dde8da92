// SPDX-License-Identifier: Apache-2.0
#include "wave_model.h"

#include "wave_painter.h"

#include "oxautils/model/shown_text.h"

#include <QBrush>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPalette>
#include <QSize>

namespace {

constexpr int kRowSpace = 6; // pixels
constexpr quintptr kTop = 0; // internal id of the rows; a bit's is its bus's number + 1

bool sameShape(const WaveRow& a, const WaveRow& b)
{
    if (a.name != b.name || a.isEvent != b.isEvent || a.bits.size() != b.bits.size())
        return false;
    return std::equal(a.bits.begin(), a.bits.end(), b.bits.begin(), sameShape);
}

bool sameShape(const Waveform& a, const Waveform& b)
{
    return std::equal(a.rows.begin(), a.rows.end(), b.rows.begin(), b.rows.end(),
        [](const auto& x, const auto& y) { return sameShape(*x, *y); });
}

}

WaveModel::WaveModel(QObject* parent)
    : QAbstractItemModel(parent)
    , m_waveform(std::make_shared<Waveform>())
{
}

void WaveModel::setWaveform(WaveformPtr waveform)
{
    const bool reset = !sameShape(*m_waveform, *waveform);
    if (reset)
        beginResetModel();
    m_waveform = std::move(waveform);
    if (reset)
        endResetModel();
    else
        valuesChanged();
}

const WaveRow* WaveModel::row(const QModelIndex& index) const
{
    if (!index.isValid())
        return nullptr;
    if (index.internalId() == kTop)
        return m_waveform->rows[size_t(index.row())].get();
    return &m_waveform->rows[index.internalId() - 1]->bits[size_t(index.row())];
}

Radix WaveModel::radix(const QModelIndex& index) const
{
    const WaveRow* shown = row(index);
    if (!shown || !shown->isBus())
        return Radix::Binary;
    return m_radixes.value(shown->name,
        shown->isEvent                   ? Radix::Decimal
            : statesOf(*shown).isEmpty() ? Radix::Hexadecimal
                                         : Radix::Names);
}

void WaveModel::setStates(const OXA::StateNames& states)
{
    m_states = states;
    valuesChanged();
}

QHash<QString, QString> WaveModel::statesOf(const WaveRow& row) const
{
    QStringList bits;
    for (const WaveRow& bit : row.bits)
        bits += bit.name;
    return m_states.isEmpty() || row.isEvent ? QHash<QString, QString>()
                                             : OXA::statesOf(m_states, bits);
}

void WaveModel::setRadix(const QModelIndex& index, Radix radix)
{
    const WaveRow* shown = row(index);
    if (!shown || !shown->isBus())
        return;
    m_radixes[shown->name] = radix;
    valuesChanged();
}

void WaveModel::setSample(qint64 sample)
{
    if (sample == m_sample)
        return;
    m_sample = sample;
    valuesChanged();
}

void WaveModel::valuesChanged()
{
    const int rows = rowCount();
    if (rows == 0)
        return;
    Q_EMIT dataChanged(index(0, Value), index(rows - 1, Value));
    for (int i = 0; i < rows; ++i) {
        const QModelIndex bus = index(i, Name);
        if (const int bits = rowCount(bus))
            Q_EMIT dataChanged(index(0, Value, bus), index(bits - 1, Value, bus));
    }
}

QModelIndex WaveModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? quintptr(parent.row()) + 1 : kTop);
}

QModelIndex WaveModel::parent(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == kTop)
        return {};
    return createIndex(int(index.internalId()) - 1, 0, kTop);
}

int WaveModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return int(m_waveform->rows.size());
    const bool isTop = parent.column() == 0 && parent.internalId() == kTop;
    return isTop ? int(row(parent)->bits.size()) : 0;
}

int WaveModel::columnCount(const QModelIndex&) const { return Columns; }

QString WaveModel::valueText(const QModelIndex& index, const WaveRow& row) const
{
    if (m_sample < 0 || m_sample >= m_waveform->samples)
        return {};
    const WaveValue value = row.valueAt(m_sample);
    if (row.isEvent && !value.isKnown())
        return QString(QChar(0x2013)); // a dash: unknown event
    return namedText(value, radix(index), statesOf(row));
}

QVariant WaveModel::data(const QModelIndex& index, int role) const
{
    const WaveRow* shown = row(index);
    if (!shown)
        return {};
    const bool isValue = index.column() == Value;
    switch (role) {
    case Qt::DisplayRole:
        return isValue ? valueText(index, *shown) : OXA::shownText(shown->name);
    case Qt::ToolTipRole:
        return isValue ? valueText(index, *shown)
            : shown->width == 1
            ? OXA::shownText(shown->name)
            : tr("%1 (%2 bits)").arg(OXA::shownText(shown->name), QString::number(shown->width));
    case Qt::FontRole:
        return isValue ? valueFont() : QVariant();
    case Qt::SizeHintRole:
        return QSize(0, QFontMetrics(QGuiApplication::font()).height() + kRowSpace);
    case Qt::BackgroundRole:
        return shown->isEvent ? QGuiApplication::palette().alternateBase() : QVariant();
    default:
        return {};
    }
}

QVariant WaveModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == Name ? tr("Signal") : tr("Value");
}
