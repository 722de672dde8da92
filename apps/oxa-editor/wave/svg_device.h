// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_SVG_DEVICE_H
#define APPS_OXA_EDITOR_WAVE_SVG_DEVICE_H

#include <QPaintDevice>
#include <QSize>

#include <memory>

class SvgEngine;

/// Turns what is painted on it into the text of an SVG file. Clipping is not applied, and of
/// transformations only moves.
class SvgDevice : public QPaintDevice {
public:
    explicit SvgDevice(const QSize& size);
    ~SvgDevice() override;

    QByteArray file() const; ///< after the painter's end

    QPaintEngine* paintEngine() const override;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    QSize m_size;
    std::unique_ptr<SvgEngine> m_engine;
};

#endif
