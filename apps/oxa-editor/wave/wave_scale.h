// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_SCALE_H
#define APPS_OXA_EDITOR_WAVE_WAVE_SCALE_H

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

/// Where samples begin that are not equally long, and as the last the end of all: growing, from 0.
/// In units that are as wide as other samples. Null for samples that are equally long.
using WavePlaces = std::shared_ptr<const std::vector<double>>;

/// The mapping of samples to pixels: sample s is between `xOf(s)` and `xOf(s + 1)`. Samples have
/// places on an axis; where they are equally long, those are their numbers.
class WaveScale {
public:
    double xOf(double sample) const { return xOfPlace(placeOf(sample)); }
    /// `xOf` as a pixel; far from what is visible, it is some pixel there.
    int pixelOf(double sample) const { return int(qBound(-kFar, xOf(sample), kFar)); }
    double sampleAt(double x) const { return sampleOf(placeAt(x)); }

    double xOfPlace(double place) const { return (place - m_first) * m_pixels; }
    double placeAt(double x) const { return m_first + x / m_pixels; }
    double placeOf(double sample) const
    {
        if (!m_places)
            return sample;
        const double whole = qBound(0.0, std::floor(sample), double(m_places->size() - 2));
        const double begin = (*m_places)[size_t(whole)];
        return begin + (sample - whole) * ((*m_places)[size_t(whole) + 1] - begin);
    }

    double first() const { return m_first; } ///< place at the left edge
    double pixels() const { return m_pixels; } ///< for each unit of places
    double visible() const { return m_width / m_pixels; } ///< units

    /// Of the samples that are shown; call `fit` or `resize` then.
    void setPlaces(const WavePlaces& places) { m_places = places; }

    /// Fits all `samples` into `width` pixels.
    void fit(qint64 samples, int width)
    {
        setSize(samples, width);
        m_pixels = smallest();
        m_first = 0;
    }

    /// Changes the size; the sample at the left edge stays when possible.
    void resize(qint64 samples, int width)
    {
        setSize(samples, width);
        zoom(1, 0);
    }

    /// Multiplies the pixels for each unit by `factor`; the sample at `x` stays when possible.
    void zoom(double factor, double x)
    {
        const double fixed = placeAt(x);
        m_pixels = qBound(smallest(), m_pixels * factor, qMax(kLargest, smallest()));
        moveTo(fixed - x / m_pixels);
    }

    /// Shows the samples from `first` to `end`, at the greatest zoom around them.
    void show(double first, double end)
    {
        const double from = placeOf(first);
        const double to = placeOf(end);
        m_pixels
            = qBound(smallest(), m_width / std::fmax(to - from, 1e-9), qMax(kLargest, smallest()));
        moveTo((from + to) / 2 - visible() / 2);
    }

    /// Puts a place at the left edge.
    void moveTo(double first)
    {
        m_first = qBound(0.0, first, std::fmax(0.0, m_length - visible()));
    }

private:
    static constexpr double kLargest = 400; // pixels for each unit; fits a wide bus
    static constexpr double kFar = 1e9; // pixels

    double smallest() const { return std::fmin(m_width / m_length, kLargest); }

    double sampleOf(double place) const
    {
        if (!m_places)
            return place;
        const auto behind = std::upper_bound(m_places->begin(), m_places->end(), place);
        const auto next = qBound(m_places->begin() + 1, behind, m_places->end() - 1);
        const double begin = *(next - 1);
        return double(next - m_places->begin() - 1) + (place - begin) / (*next - begin);
    }

    void setSize(qint64 samples, int width)
    {
        m_length = m_places ? m_places->back() : double(qMax(samples, qint64(1)));
        m_width = qMax(width, 1);
    }

    WavePlaces m_places; // with two places at least
    double m_length = 1; // of the axis
    double m_width = 1;
    double m_first = 0;
    double m_pixels = 1;
};

#endif
