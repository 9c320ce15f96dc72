#include "engine/map/RasterPainter.h"

#include "engine/data/DatasetRaster.h"
#include "engine/map/HeightRamp.h"
#include "engine/projection/TxReprojector.h"

#include <QImage>
#include <QPainter>

#include <array>
#include <cmath>
#include <vector>

namespace {

constexpr int tileSize = 256; // device pixels
constexpr int gridStep = 16;  // device pixels between places that are really reprojected

const QList<QRgb> &rampOf(const CDatasetRaster &dataset)
{
    static const QList<QRgb> none;
    const bool isGrid = dataset.GetType() == CElemDatasetInfo::Grid || dataset.GetType() == CElemDatasetInfo::DEM;
    return isGrid ? HeightRamp::table() : none;
}

} // namespace

RasterPainter::RasterPainter(const MapView &view, qreal pixelRatio, std::shared_ptr<const TxReprojector> reprojector,
                             const CRect2D &bounds, TxHeightColors heights)
    : m_view(view), m_pixelRatio(pixelRatio), m_reprojector(std::move(reprojector)), m_heights(std::move(heights))
{
    CRect2D onMap = m_reprojector ? m_reprojector->transform(bounds) : bounds;
    const CRect2D window = view.bounds();
    if (onMap.IsVoid() || !onMap.Intersects(window))
        return;
    onMap = CRect2D(std::max(onMap.left, window.left), std::max(onMap.bottom, window.bottom),
                    std::min(onMap.right, window.right), std::min(onMap.top, window.top));
    const QPointF topLeft = view.toPixel(CPoint2D(onMap.left, onMap.top)) * pixelRatio;
    const QPointF bottomRight = view.toPixel(CPoint2D(onMap.right, onMap.bottom)) * pixelRatio;
    m_area = QRectF(topLeft, bottomRight).toAlignedRect() & QRectF(QPointF(), view.size() * pixelRatio).toAlignedRect();
    m_columns = (m_area.width() + tileSize - 1) / tileSize;
    m_rows = (m_area.height() + tileSize - 1) / tileSize;
}

CRect2D RasterPainter::mapBounds(const QRect &devicePixels) const
{
    const CPoint2D topLeft = m_view.toMap(QPointF(devicePixels.topLeft()) / m_pixelRatio);
    const CPoint2D bottomRight = m_view.toMap(
        QPointF(devicePixels.left() + devicePixels.width(), devicePixels.top() + devicePixels.height()) / m_pixelRatio);
    return CRect2D(topLeft.x, bottomRight.y, bottomRight.x, topLeft.y);
}

bool RasterPainter::drawNext(QPainter &painter, const CDatasetRaster &dataset)
{
    const int column = m_next % m_columns;
    const int row = m_next / m_columns;
    ++m_next;
    const QRect tile =
        QRect(m_area.left() + column * tileSize, m_area.top() + row * tileSize, tileSize, tileSize) & m_area;
    QImage image = m_reprojector ? warp(tile, dataset) : render(tile, dataset);
    if (image.isNull())
        return false;
    image.setDevicePixelRatio(m_pixelRatio);
    painter.drawImage(QPointF(tile.topLeft()) / m_pixelRatio, image);
    return true;
}

QImage RasterPainter::render(const QRect &tile, const CDatasetRaster &dataset) const
{
    return read(mapBounds(tile), tile.size(), dataset);
}

QImage RasterPainter::read(const CRect2D &bounds, const QSize &size, const CDatasetRaster &dataset) const
{
    return m_heights.isEmpty() ? dataset.Render(bounds, size, rampOf(dataset))
                               : dataset.Render(bounds, size, m_heights);
}

QImage RasterPainter::warp(const QRect &tile, const CDatasetRaster &dataset) const
{
    QImage result(tile.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);

    // Where the corners of small squares come from; between them the way is straight enough.
    const int columns = (tile.width() + gridStep - 1) / gridStep + 1;
    const int rows = (tile.height() + gridStep - 1) / gridStep + 1;
    std::vector<CPoint2D> grid;
    grid.reserve(static_cast<size_t>(columns * rows));
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            grid.push_back(
                m_view.toMap(QPointF(tile.left() + column * gridStep, tile.top() + row * gridStep) / m_pixelRatio));
    }
    m_reprojector->inverse(grid);
    CRect2D source;
    for (const CPoint2D &place : grid) {
        if (!std::isnan(place.x))
            source.Union(CRect2D(place.x, place.y, place.x, place.y));
    }
    if (source.IsVoid() || source.Width() <= 0 || source.Height() <= 0)
        return result;
    const QSize size(tile.width() * 3 / 2 + 1, tile.height() * 3 / 2 + 1);
    const QImage original = read(source, size, dataset).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (original.isNull())
        return original;

    for (int y = 0; y < tile.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(result.scanLine(y));
        const int row = y / gridStep;
        const double v = (y % gridStep + 0.5) / gridStep;
        for (int x = 0; x < tile.width(); ++x) {
            const size_t corner = static_cast<size_t>(row * columns + x / gridStep);
            const double u = (x % gridStep + 0.5) / gridStep;
            const CPoint2D &a = grid[corner];
            const CPoint2D &b = grid[corner + 1];
            const CPoint2D &c = grid[corner + static_cast<size_t>(columns)];
            const CPoint2D &d = grid[corner + static_cast<size_t>(columns) + 1];
            const double px = (a.x * (1 - u) + b.x * u) * (1 - v) + (c.x * (1 - u) + d.x * u) * v;
            const double py = (a.y * (1 - u) + b.y * u) * (1 - v) + (c.y * (1 - u) + d.y * u) * v;
            const double sx = (px - source.left) / source.Width() * size.width();
            const double sy = (source.top - py) / source.Height() * size.height();
            if (sx >= 0 && sy >= 0 && sx < size.width() && sy < size.height()) // false for NaN
                line[x] =
                    reinterpret_cast<const QRgb *>(original.constScanLine(static_cast<int>(sy)))[static_cast<int>(sx)];
        }
    }
    return result;
}
