// SPDX-License-Identifier: Apache-2.0
#include "wave_picture.h"

#include "svg_device.h"
#include "wave_canvas.h"

#include "files/fail.h"
#include "files/replace_file.h"

#include <QFileInfo>
#include <QIODevice>
#include <QPainter>
#include <QTreeView>

namespace {

constexpr int kResolution = 2; // dots for each pixel of the screen
constexpr int kIndentation = 14; // pixels for each level of the tree
constexpr int kSpace = 8; // pixels between columns

}

WavePicture::WavePicture(const QTreeView& rows, const WaveCanvas& canvas)
    : m_sheet(canvas.sheet())
{
    m_sheet.rows.clear();
    m_sheet.current = {};
    addRows(rows, {}, 0);
    const int bottom
        = m_sheet.rows.empty() ? 0 : m_sheet.rows.back().top + m_sheet.rows.back().height;
    m_sheet.size.setHeight(WaveSheet::rulerHeight(m_sheet.font) + bottom + 1);
    for (int column = 0; column < WaveModel::Columns; ++column) {
        if (rows.isColumnHidden(column))
            m_columns[column].clear();
        for (const Text& text : m_columns[column])
            m_widths[column] = qMax(m_widths[column],
                text.place.x() + QFontMetrics(text.font).horizontalAdvance(text.text) + kSpace);
    }
}

void WavePicture::addRows(const QTreeView& rows, const QModelIndex& parent, int depth)
{
    const WaveModel& model = m_sheet.model;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const int top
            = m_sheet.rows.empty() ? 0 : m_sheet.rows.back().top + m_sheet.rows.back().height;
        const int height = index.data(Qt::SizeHintRole).toSize().height();
        m_sheet.rows.push_back({index, top, height});
        addText(index, depth, top, height);
        if (rows.isExpanded(index))
            addRows(rows, index, depth + 1);
    }
}

void WavePicture::addText(const QModelIndex& index, int depth, int top, int height)
{
    const int middle = WaveSheet::rulerHeight(m_sheet.font) + top + height / 2;
    for (int column = 0; column < WaveModel::Columns; ++column) {
        const QModelIndex cell = index.siblingAtColumn(column);
        const auto font = cell.data(Qt::FontRole).value<QFont>();
        const QFontMetrics metrics(font);
        const int left = kSpace / 2 + (column == WaveModel::Name ? depth * kIndentation : 0);
        m_columns[column].push_back({
            {left, middle + (metrics.ascent() - metrics.descent()) / 2},
            cell.data().toString(),
            font
        });
    }
}

QSize WavePicture::size() const
{
    int width = m_sheet.size.width();
    for (const int column : m_widths)
        width += column;
    return {width, m_sheet.size.height()};
}

void WavePicture::draw(QPainter& painter) const
{
    painter.fillRect(QRect({0, 0}, size()), m_sheet.palette.color(QPalette::Base));
    painter.setPen(m_sheet.palette.color(QPalette::Text));
    int left = 0;
    for (int column = 0; column < WaveModel::Columns; ++column) {
        for (const Text& text : m_columns[column]) {
            painter.setFont(text.font);
            painter.drawText(text.place + QPoint(left, 0), text.text);
        }
        left += m_widths[column];
    }
    painter.translate(left, 0);
    m_sheet.draw(painter);
}

QImage WavePicture::image() const
{
    QImage image(size() * kResolution, QImage::Format_RGB32);
    if (image.isNull())
        return image;
    image.setDevicePixelRatio(kResolution);
    QPainter painter(&image);
    draw(painter);
    return image;
}

bool WavePicture::write(const QString& path, QString* error) const
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == "png")
        return OXA_FILES::replaceFile(
            path,
            [this](QIODevice& out, QString* reason) {
                const QImage picture = image();
                return !picture.isNull() ? picture.save(&out, "PNG")
                                         : OXA::fail(reason, "the picture is too large");
            },
            error);
    if (suffix != "svg")
        return OXA::fail(
            error, WaveModel::tr("%1: the name of a picture ends in .svg or .png").arg(path));
    SvgDevice device(size());
    {
        QPainter painter(&device);
        draw(painter);
    }
    return OXA_FILES::replaceFile(path, device.file(), error);
}
