// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_SCALE_H
#define APPS_OXA_EDITOR_WAVE_WAVE_SCALE_H

#include <QtGlobal>

#include <cmath>

/// The mapping of samples to pixels: sample s is between `xOf(s)` and `xOf(s + 1)`.
class WaveScale {
public:
    double xOf(double sample) const { return (sample - m_first) * m_pixels; }
    double sampleAt(double x) const { return m_first + x / m_pixels; }

    double first() const { return m_first; } ///< sample at the left edge, with a fraction
    double pixels() const { return m_pixels; } ///< for each sample
    double visible() const { return m_width / m_pixels; } ///< samples

    /// Fits all `samples` into `width` pixels.
    void fit(qint64 samples, int width)
    {
        m_samples = double(qMax(samples, qint64(1)));
        m_width = qMax(width, 1);
        m_pixels = smallest();
        m_first = 0;
    }

    /// Changes the size; the sample at the left edge stays when possible.
    void resize(qint64 samples, int width)
    {
        m_samples = double(qMax(samples, qint64(1)));
        m_width = qMax(width, 1);
        zoom(1, 0);
    }

    /// Multiplies the pixels for each sample by `factor`; the sample at `x` stays when possible.
    void zoom(double factor, double x)
    {
        const double fixed = sampleAt(x);
        m_pixels = qBound(smallest(), m_pixels * factor, qMax(kLargest, smallest()));
        moveTo(fixed - x / m_pixels);
    }

    /// Shows the samples from `first` to `end`, at the greatest zoom around them.
    void show(double first, double end)
    {
        const double middle = (first + end) / 2;
        m_pixels = qBound(
            smallest(), m_width / std::fmax(end - first, 1e-9), qMax(kLargest, smallest()));
        moveTo(middle - visible() / 2);
    }

    void moveTo(double first)
    {
        m_first = qBound(0.0, first, std::fmax(0.0, m_samples - visible()));
    }

private:
    static constexpr double kLargest = 400; // pixels for each sample; fits a wide bus

    double smallest() const { return std::fmin(m_width / m_samples, kLargest); }

    double m_samples = 1;
    double m_width = 1;
    double m_first = 0;
    double m_pixels = 1;
};

#endif
