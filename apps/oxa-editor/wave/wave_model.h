#ifndef APPS_OXA_EDITOR_WAVE_WAVE_MODEL_H
#define APPS_OXA_EDITOR_WAVE_WAVE_MODEL_H

#include "waveform.h"

#include <QAbstractItemModel>
#include <QHash>

/// The rows of a waveform, the bits of a bus below it, with their values at one sample.
class WaveModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Column { Name, Value, Columns };

    explicit WaveModel(QObject* parent = nullptr);

    const WaveformPtr& waveform() const { return m_waveform; }

    /// Shows `waveform`, never null. When its rows are named as those before, indexes stay valid.
    void setWaveform(WaveformPtr waveform);

    const WaveRow* row(const QModelIndex& index) const;

    Radix radix(const QModelIndex& index) const;

    /// How the values of a bus are written, in every later waveform that has it, too.
    void setRadix(const QModelIndex& index, Radix radix);

    /// The sample of the values.
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
    QHash<QString, Radix> m_radixes; // by the name of a bus
    qint64 m_sample = 0;
};

#endif
