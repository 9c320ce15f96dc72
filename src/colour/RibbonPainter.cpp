#include "colour/RibbonPainter.h"

#include "colour/ChannelSlider.h"
#include "colour/PickerPaint.h"
#include "colour/RibbonColumns.h"
#include "colour/RibbonGeometry.h"

#include <QImage>
#include <QPainter>
#include <QTransform>

#include <algorithm>

namespace {

/// Puts a painter's state back at the end of a block.
class Restored
{
public:
    explicit Restored(QPainter &painter) : m_painter(painter) { m_painter.save(); }
    ~Restored() { m_painter.restore(); }
    Q_DISABLE_COPY_MOVE(Restored)

private:
    QPainter &m_painter;
};

/// Fills @p rect with columns of one logical pixel each. Lines of the device's own pixels are laid out below each
/// other: several times as fast as having the painter stretch one.
void drawColumns(QPainter &painter, const QRect &rect, const std::vector<QRgb> &pixels)
{
    const auto image = [](const std::vector<QRgb> &line) {
        const auto width = static_cast<int>(line.size());
        return QImage(reinterpret_cast<const uchar *>(line.data()), width, 1, width * int(sizeof(QRgb)),
                      QImage::Format_RGB32);
    };
    const QTransform toDevice = painter.deviceTransform();
    if (toDevice.type() > QTransform::TxScale || toDevice.m11() <= 0.0 || toDevice.m22() <= 0.0) {
        painter.drawImage(rect, image(pixels));
        return;
    }
    const QRectF exact = toDevice.mapRect(QRectF(rect));
    const QRect target = exact.toRect();
    std::vector<QRgb> line(static_cast<size_t>(target.width()));
    for (size_t i = 0; i < line.size(); ++i) {
        const double column = (target.left() - exact.left() + static_cast<double>(i) + 0.5) / toDevice.m11();
        line[i] = pixels[std::min(static_cast<size_t>(std::max(column, 0.0)), pixels.size() - 1)];
    }
    const QTransform world = painter.transform();
    painter.setTransform(toDevice.inverted() * world); // what is drawn is in the device's pixels now
    painter.setBrushOrigin(target.topLeft());
    painter.fillRect(target, image(line));
    painter.setTransform(world);
}

/// @p top on @p bottom, with a part of 0 to 1.
QColor mixed(const QColor &top, const QColor &bottom, float part)
{
    const auto mix = [part](float a, float b) { return b + (a - b) * part; };
    return QColor::fromRgbF(mix(top.redF(), bottom.redF()), mix(top.greenF(), bottom.greenF()),
                            mix(top.blueF(), bottom.blueF()));
}

} // namespace

QRgb RibbonPainter::shown(COLORREF color) const
{
    return TxColorRef::toRgb(m_preview ? m_preview(color) : color);
}

/// One pixel of line around @p rect, outside of it.
void RibbonPainter::drawFrame(const QRect &rect)
{
    const QColor color = mixed(m_palette.color(QPalette::WindowText), m_palette.color(QPalette::Window), 0.45F);
    const QRect outer = rect.adjusted(-1, -1, 1, 1);
    m_painter.fillRect(outer.left(), outer.top(), outer.width(), 1, color);
    m_painter.fillRect(outer.left(), outer.bottom(), outer.width(), 1, color);
    m_painter.fillRect(outer.left(), rect.top(), 1, rect.height(), color);
    m_painter.fillRect(outer.right(), rect.top(), 1, rect.height(), color);
}

void RibbonPainter::drawFocus(const QRect &rect)
{
    m_painter.setPen(QPen(m_palette.color(QPalette::WindowText), 1, Qt::DotLine));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(rect.adjusted(0, 0, -1, -1));
}

void RibbonPainter::drawBand(const RibbonGeometry &geometry, const RibbonColumns &columns, bool hasFocus)
{
    const Restored restored(m_painter);
    m_painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform, false);
    const QRect ramp = geometry.ramp();
    if (ramp.isEmpty())
        return;
    std::vector<QRgb> pixels(columns.pixels().size());
    std::ranges::transform(columns.pixels(), pixels.begin(), [this](COLORREF color) { return shown(color); });
    drawColumns(m_painter, ramp, pixels);
    drawFrame(ramp);
    if (hasFocus)
        drawFocus(ramp.adjusted(-4, -2, 4, 4)); // above the ramp there are two pixels
}

void RibbonPainter::drawMarker(const RibbonGeometry &geometry, const RibbonStop &stop, bool isSelected)
{
    const QRect swatch = geometry.markerSwatch(stop.position);
    const QPolygonF outline = QPolygonF(geometry.marker(stop.position)).translated(0.5, 0.5);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(m_palette.brush(isSelected ? QPalette::Highlight : QPalette::Button));
    m_painter.drawPolygon(outline);
    m_painter.fillRect(swatch, QColor(shown(stop.color)));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.setPen(
        QPen(m_palette.color(isSelected ? QPalette::Highlight : QPalette::WindowText), isSelected ? 2 : 1));
    m_painter.drawPolygon(outline);
    m_painter.drawLine(outline[1], outline[4]);
}

void RibbonPainter::drawMarkers(const RibbonGeometry &geometry, const RibbonStops &ribbon, bool hasFocus)
{
    const Restored restored(m_painter);
    m_painter.setRenderHint(QPainter::Antialiasing);
    // Of stops at the same place only the last shows; so there is never more to draw than there are pixels.
    const QRect &frame = geometry.frame();
    const RibbonStop *selected = ribbon.selectedStop();
    std::vector<const RibbonStop *> topmost(static_cast<size_t>(qMax(frame.width(), 0)), nullptr);
    for (const RibbonStop &stop : ribbon.stops()) {
        const qint64 column = qint64(stop.position) - frame.left();
        if (column >= 0 && column < frame.width())
            topmost[static_cast<size_t>(column)] = &stop;
    }
    for (const RibbonStop *stop : topmost) {
        if (stop && stop != selected)
            drawMarker(geometry, *stop, false);
    }
    if (!selected)
        return;
    drawMarker(geometry, *selected, true);
    if (hasFocus) {
        m_painter.setRenderHint(QPainter::Antialiasing, false);
        drawFocus(geometry.marker(selected->position).boundingRect().adjusted(-3, -2, 3, 3));
    }
}

void RibbonPainter::drawSlider(const ChannelSlider &slider, RibbonStops::Target channel, qint32 value, bool isDragged,
                               bool hasFocus)
{
    const Restored restored(m_painter);
    m_painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform, false);
    const QRect gradient = slider.gradient();
    if (gradient.isEmpty())
        return;
    if (value < 0)
        m_painter.setOpacity(PickerPaint::disabledOpacity);
    const int shift = 8 * (3 - static_cast<int>(channel)); // of the channel in a pixel, red highest
    std::vector<QRgb> pixels(static_cast<size_t>(gradient.width()));
    for (int i = 0; i < gradient.width(); ++i)
        pixels[static_cast<size_t>(i)] = qRgb(0, 0, 0) | static_cast<QRgb>(slider.valueAt(gradient.left() + i))
                                                             << shift;
    drawColumns(m_painter, gradient, pixels);
    drawFrame(gradient);
    if (value >= 0) {
        m_painter.setRenderHint(QPainter::Antialiasing);
        m_painter.setPen(QPen(isDragged ? QColor(Qt::red) : m_palette.color(QPalette::WindowText), 1));
        m_painter.setBrush(m_palette.brush(QPalette::Button));
        m_painter.drawPolygon(QPolygonF(slider.marker(value)).translated(0.5, 0.5));
        m_painter.setRenderHint(QPainter::Antialiasing, false);
    }
    if (hasFocus)
        drawFocus(slider.frame().adjusted(-3, -3, 3, 3));
}
