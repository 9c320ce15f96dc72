#pragma once

#include "engine/geometry/Rect2D.h"

#include <QPointF>
#include <QSizeF>

#include <algorithm>
#include <cmath>

/// What part of the plane a window shows: the place in its middle and the map units of a pixel. A value type.
///
/// Pixels are device-independent, from the upper left corner downward; the map's y grows upward.
class MapView
{
public:
    /// Units of a pixel stay within these, so that nothing overflows however long somebody zooms.
    static constexpr double minimumScale = 1e-12;
    static constexpr double maximumScale = 1e12;

    MapView() = default;
    MapView(const CPoint2D &center, double unitsPerPixel, const QSizeF &size)
        : m_center(center), m_scale(std::clamp(unitsPerPixel, minimumScale, maximumScale)), m_size(size)
    {
    }

    /// The view of a window of @p size that shows all of @p bounds, in the middle, with @p margin pixels around. Bounds
    /// without extent are shown as a place: a thousandth of their coordinates (at least 0.001 units) around them.
    static MapView fitting(const CRect2D &bounds, const QSizeF &size, double margin = 0.0)
    {
        if (bounds.IsVoid() || !std::isfinite(bounds.Width()) || !std::isfinite(bounds.Height()))
            return MapView(CPoint2D(), 1.0, size);
        const CPoint2D center = bounds.CenterPoint();
        double width = bounds.Width();
        double height = bounds.Height();
        if (width <= 0 && height <= 0)
            width = std::max({0.002, std::abs(center.x) * 0.002, std::abs(center.y) * 0.002});
        const double scale = std::max(width / std::max(size.width() - 2 * margin, 1.0),
                                      height / std::max(size.height() - 2 * margin, 1.0));
        return MapView(center, scale, size);
    }

    const CPoint2D &center() const { return m_center; }
    /// Map units of a pixel.
    double scale() const { return m_scale; }
    const QSizeF &size() const { return m_size; }
    CRect2D bounds() const
    {
        const double dx = m_size.width() / 2 * m_scale;
        const double dy = m_size.height() / 2 * m_scale;
        return CRect2D(m_center.x - dx, m_center.y - dy, m_center.x + dx, m_center.y + dy);
    }

    QPointF toPixel(const CPoint2D &point) const
    {
        return QPointF((point.x - m_center.x) / m_scale + m_size.width() / 2,
                       (m_center.y - point.y) / m_scale + m_size.height() / 2);
    }
    CPoint2D toMap(const QPointF &pixel) const
    {
        return CPoint2D(m_center.x + (pixel.x() - m_size.width() / 2) * m_scale,
                        m_center.y - (pixel.y() - m_size.height() / 2) * m_scale);
    }

    /// Closer by @p factor (below 1: farther), with the place at @p about kept where it is.
    MapView zoomed(double factor, const QPointF &about) const
    {
        if (!(factor > 0) || !std::isfinite(factor))
            return *this;
        const double scale = std::clamp(m_scale / factor, minimumScale, maximumScale);
        const CPoint2D fixed = toMap(about);
        return MapView(CPoint2D(fixed.x - (about.x() - m_size.width() / 2) * scale,
                                fixed.y + (about.y() - m_size.height() / 2) * scale),
                       scale, m_size);
    }
    /// With the picture moved by @p pixels.
    MapView panned(const QPointF &pixels) const
    {
        return MapView(CPoint2D(m_center.x - pixels.x() * m_scale, m_center.y + pixels.y() * m_scale), m_scale, m_size);
    }
    /// The same place and scale in a window of another size.
    MapView resized(const QSizeF &size) const { return MapView(m_center, m_scale, size); }

    bool operator==(const MapView &other) const = default;

private:
    CPoint2D m_center;
    double m_scale = 1.0;
    QSizeF m_size;
};
