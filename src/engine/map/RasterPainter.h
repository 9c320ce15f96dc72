#pragma once

#include "engine/map/MapView.h"
#include "engine/symbol/TxHeightColors.h"

#include <QRect>

#include <memory>

class CDatasetRaster;
class QImage;
class QPainter;
class TxReprojector;

/// Draws a raster dataset tile by tile, so that between tiles something else can be done.
class RasterPainter
{
public:
    /// @p bounds is the dataset's place in its own coordinate system, @p heights the colours of a grid, none for the
    /// usual ones.
    RasterPainter(const MapView &view, qreal pixelRatio, std::shared_ptr<const TxReprojector> reprojector,
                  const CRect2D &bounds, TxHeightColors heights);

    bool isDone() const { return m_next >= m_columns * m_rows; }
    int percent() const { return isDone() ? 100 : m_next * 100 / (m_columns * m_rows); }
    /// Draws the next tile. @return false when the dataset gives no picture of it.
    bool drawNext(QPainter &painter, const CDatasetRaster &dataset);

private:
    QImage render(const QRect &tile, const CDatasetRaster &dataset) const;
    QImage warp(const QRect &tile, const CDatasetRaster &dataset) const;
    QImage read(const CRect2D &bounds, const QSize &size, const CDatasetRaster &dataset) const;
    CRect2D mapBounds(const QRect &devicePixels) const;

    MapView m_view;
    qreal m_pixelRatio;
    std::shared_ptr<const TxReprojector> m_reprojector;
    TxHeightColors m_heights;
    QRect m_area; // device pixels that the dataset covers in the window
    int m_columns = 0;
    int m_rows = 0;
    int m_next = 0;
};
