#ifndef APPS_OXA_EDITOR_WAVE_WAVE_SCALE_H
#define APPS_OXA_EDITOR_WAVE_WAVE_SCALE_H

#include <QtGlobal>

#include <cmath>

/// Which samples are seen where: sample s takes the pixels from `xOf(s)` to `xOf(s + 1)`.
class WaveScale {
public:
    double xOf(double sample) const { return (sample - m_first) * m_pixels; }
    double sampleAt(double x) const { return m_first + x / m_pixels; }

    double first() const { return m_first; } ///< at the left edge, with its fraction
    double pixels() const { return m_pixels; } ///< a sample
    double visible() const { return m_width / m_pixels; } ///< samples

    /// The whole of `samples` in `width` pixels, at the widest scale that shows all.
    void fit(qint64 samples, int width)
    {
        m_samples = double(qMax(samples, qint64(1)));
        m_width = qMax(width, 1);
        m_pixels = smallest();
        m_first = 0;
    }

    /// Another size of the same, with the same sample at the left edge as far as that goes.
    void resize(qint64 samples, int width)
    {
        m_samples = double(qMax(samples, qint64(1)));
        m_width = qMax(width, 1);
        zoom(1, 0);
    }

    /// `factor` times the pixels a sample; what is seen at `x` stays there as far as that goes.
    void zoom(double factor, double x)
    {
        const double fixed = sampleAt(x);
        m_pixels = qBound(smallest(), m_pixels * factor, qMax(kLargest, smallest()));
        moveTo(fixed - x / m_pixels);
    }

    void moveTo(double first)
    {
        m_first = qBound(0.0, first, std::fmax(0.0, m_samples - visible()));
    }

private:
    static constexpr double kLargest = 400; // pixels a sample: room for the digits of a wide bus

    double smallest() const { return std::fmin(m_width / m_samples, kLargest); }

    double m_samples = 1;
    double m_width = 1;
    double m_first = 0;
    double m_pixels = 1;
};

#endif
