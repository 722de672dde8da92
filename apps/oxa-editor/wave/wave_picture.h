// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_PICTURE_H
#define APPS_OXA_EDITOR_WAVE_WAVE_PICTURE_H

#include "wave_sheet.h"

#include <QImage>

class QTreeView;
class WaveCanvas;

/// A picture of a waveform for documents: the names, the values at the cursors and the samples that
/// the canvas shows, of all rows, also of those that are scrolled out of sight.
class WavePicture {
public:
    WavePicture(const QTreeView& rows, const WaveCanvas& canvas);

    /// Writes the file `path`, whose suffix is .svg or .png. On failure it is unchanged, and
    /// `error` has the reason.
    bool write(const QString& path, QString* error) const;

    QImage image() const; ///< null when there is no memory for it

private:
    struct Text {
        QPoint place; ///< left, and the base line
        QString text;
        QFont font;
    };

    void addRows(const QTreeView& rows, const QModelIndex& parent, int depth);
    void addText(const QModelIndex& index, int depth, int top, int height);
    void draw(QPainter& painter) const;
    QSize size() const;

    WaveSheet m_sheet;
    std::vector<Text> m_columns[WaveModel::Columns];
    int m_widths[WaveModel::Columns] = {};
};

#endif
