// SPDX-License-Identifier: Apache-2.0
#include "svg_device.h"

#include <QBuffer>
#include <QFontInfo>
#include <QPaintEngine>
#include <QPainterPath>
#include <QXmlStreamWriter>

namespace {

constexpr int kDotsPerInch = 96; // a pixel of SVG
constexpr double kMillimetersPerInch = 25.4;

}

class SvgEngine : public QPaintEngine {
public:
    SvgEngine()
        : QPaintEngine(AllFeatures)
        , m_xml(&m_text)
    {
        m_xml.setAutoFormatting(true);
        m_xml.setAutoFormattingIndent(0);
    }

    QByteArray text() const { return m_text; }

    bool begin(QPaintDevice* device) override
    {
        const QString width = QString::number(device->width());
        const QString height = QString::number(device->height());
        m_xml.writeStartDocument();
        m_xml.writeStartElement("svg");
        m_xml.writeDefaultNamespace("http://www.w3.org/2000/svg");
        m_xml.writeAttribute("width", width);
        m_xml.writeAttribute("height", height);
        m_xml.writeAttribute("viewBox", QString("0 0 %1 %2").arg(width, height));
        return true;
    }

    bool end() override
    {
        m_xml.writeEndDocument();
        return true;
    }

    Type type() const override { return SVG; }

    void updateState(const QPaintEngineState& state) override
    {
        m_pen = state.pen();
        m_brush = state.brush();
        m_font = state.font();
        m_move = {state.transform().dx(), state.transform().dy()};
    }

    void drawRects(const QRectF* rects, int count) override
    {
        for (int i = 0; i < count; ++i) {
            const QRectF rect = rects[i].translated(m_move).normalized();
            if (rect.isEmpty())
                continue;
            m_xml.writeEmptyElement("rect");
            writeNumber("x", rect.x());
            writeNumber("y", rect.y());
            writeNumber("width", rect.width());
            writeNumber("height", rect.height());
            writeLook();
        }
    }

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override
    {
        QStringList texts;
        for (int i = 0; i < count; ++i)
            texts += QString("%1,%2").arg(
                numberText(points[i].x() + m_move.x()), numberText(points[i].y() + m_move.y()));
        m_xml.writeEmptyElement(mode == PolylineMode ? "polyline" : "polygon");
        m_xml.writeAttribute("points", texts.join(' '));
        writeLook();
    }

    void drawTextItem(const QPointF& point, const QTextItem& item) override
    {
        if (item.text().trimmed().isEmpty())
            return;
        const QFont font = item.font();
        m_xml.writeStartElement("text");
        writeNumber("x", point.x() + m_move.x());
        writeNumber("y", point.y() + m_move.y());
        m_xml.writeAttribute("font-family",
            QString("'%1', %2")
                .arg(QFontInfo(font).family().remove('\''),
                    QFontInfo(font).fixedPitch() ? "monospace" : "sans-serif"));
        writeNumber("font-size", QFontInfo(font).pixelSize());
        if (font.bold())
            m_xml.writeAttribute("font-weight", "bold");
        if (font.italic())
            m_xml.writeAttribute("font-style", "italic");
        writeColor("fill", m_pen.color());
        m_xml.writeAttribute("xml:space", "preserve");
        m_xml.writeCharacters(item.text());
        m_xml.writeEndElement();
    }

    void drawPixmap(const QRectF& place, const QPixmap& pixmap, const QRectF& part) override
    {
        QBuffer png;
        png.open(QIODevice::WriteOnly);
        pixmap.copy(part.toRect()).save(&png, "PNG");
        const QRectF rect = place.translated(m_move);
        m_xml.writeEmptyElement("image");
        writeNumber("x", rect.x());
        writeNumber("y", rect.y());
        writeNumber("width", rect.width());
        writeNumber("height", rect.height());
        m_xml.writeAttribute("href", "data:image/png;base64," + png.data().toBase64());
    }

private:
    static QString numberText(double number) { return QString::number(number, 'g', 8); }

    void writeNumber(const char* name, double number)
    {
        m_xml.writeAttribute(name, numberText(number));
    }

    void writeColor(const QString& name, const QColor& color)
    {
        m_xml.writeAttribute(name, color.name());
        if (color.alpha() < 255)
            writeNumber(qPrintable(name + "-opacity"), color.alphaF());
    }

    void writeLook()
    {
        if (m_brush.style() == Qt::NoBrush)
            m_xml.writeAttribute("fill", "none");
        else
            writeColor("fill", m_brush.color());
        if (m_pen.style() != Qt::NoPen)
            writeColor("stroke", m_pen.color());
    }

    QByteArray m_text;
    QXmlStreamWriter m_xml;
    QPen m_pen;
    QBrush m_brush;
    QFont m_font;
    QPointF m_move;
};

SvgDevice::SvgDevice(const QSize& size)
    : m_size(size)
    , m_engine(std::make_unique<SvgEngine>())
{
}

SvgDevice::~SvgDevice() = default;

QByteArray SvgDevice::file() const { return m_engine->text(); }

QPaintEngine* SvgDevice::paintEngine() const { return m_engine.get(); }

int SvgDevice::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth:
        return m_size.width();
    case PdmHeight:
        return m_size.height();
    case PdmWidthMM:
        return qRound(m_size.width() * kMillimetersPerInch / kDotsPerInch);
    case PdmHeightMM:
        return qRound(m_size.height() * kMillimetersPerInch / kDotsPerInch);
    case PdmNumColors:
        return INT_MAX;
    case PdmDepth:
        return 32;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return kDotsPerInch;
    default:
        return QPaintDevice::metric(metric);
    }
}
