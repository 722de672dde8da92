// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_MODEL_H
#define APPS_OXA_EDITOR_WAVE_WAVE_MODEL_H

#include "waveform.h"

#include "oxautils/model/state_names.h"

#include <QAbstractItemModel>
#include <QHash>

/// The rows of a waveform, with the bits of a bus below it, and their values at one sample.
class WaveModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Column { Name, Value, Columns };

    explicit WaveModel(QObject* parent = nullptr);

    const WaveformPtr& waveform() const { return m_waveform; }

    /// Shows `waveform`, never null. Indexes stay valid when the rows' names are the same.
    void setWaveform(WaveformPtr waveform);

    const WaveRow* row(const QModelIndex& index) const;

    Radix radix(const QModelIndex& index) const;

    /// The names of values, which buses that have some are shown with.
    void setStates(const OXA::StateNames& states);
    /// Those of a bus by their digits; may be empty.
    QHash<QString, QString> statesOf(const WaveRow& row) const;

    /// The radix of a bus, also in later waveforms.
    void setRadix(const QModelIndex& index, Radix radix);

    /// The sample whose values are shown.
    void setSample(qint64 sample);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    QString valueText(const QModelIndex& index, const WaveRow& row) const;
    void valuesChanged();

    WaveformPtr m_waveform;
    OXA::StateNames m_states;
    QHash<QString, Radix> m_radixes; // by the name of a bus
    qint64 m_sample = 0;
};

#endif
