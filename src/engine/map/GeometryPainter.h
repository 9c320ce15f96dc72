#pragma once

#include "engine/map/ScreenPath.h"
#include "engine/map/TxLayerStyle.h"
#include "engine/symbol/TxFillStyle.h"
#include "engine/symbol/TxHeightColors.h"
#include "engine/symbol/TxLineStyleObj.h"

#include <QBrush>
#include <QFont>
#include <QImage>
#include <QPainterPath>
#include <QPen>

#include <memory>
#include <optional>
#include <vector>

class CElemGeometry;
class CGeoLine;
class CGeoParts;
class CGeoPoint;
class CGeoRegion;
class CGeoText;
class QPainter;

/// Draws geometry elements of any kind in the style of a layer. One for each drawing of a layer: what the style is
/// drawn with is made once.
class GeometryPainter
{
public:
    /// How far beyond the window, in pixels, what is drawn there may reach in: symbols, wide lines, texts.
    static double reach(const TxLayerStyle &style);

    /// @p pixelRatio is that of the picture that is drawn on, @p font that of texts which have no height of their own.
    GeometryPainter(const MapView &view, const TxLayerStyle &style, std::shared_ptr<const TxReprojector> reprojector,
                    qreal pixelRatio, const QFont &font);

    /// True when a geometry may take a hundred times as long as a plain one: with a line of another style, or an area
    /// whose every pixel is worked out.
    bool isSlow() const;

    /// Shades regions with heights face by face, as a surface between @p lowest and @p highest.
    void setSurface(double lowest, double highest);

    /// Draws @p geometry. @p painter must be antialiasing, with device-independent pixels.
    void draw(QPainter &painter, const CElemGeometry &geometry);
    /// Where the label of a geometry belongs.
    struct LabelPlace
    {
        QPointF place; ///< the middle of what is seen of it
        double extent; ///< how much room there is, in pixels: the wider the more important
        bool isSymbol; ///< a point symbol stands there, the label belongs above it
    };
    /// Nothing when nothing of @p geometry is in the window.
    std::optional<LabelPlace> labelPlace(const CElemGeometry &geometry);

private:
    void drawPoint(QPainter &painter, const CGeoPoint &point);
    void drawLine(QPainter &painter, const CGeoLine &line);
    void drawRegion(QPainter &painter, const CGeoRegion &region);
    void drawSurface(QPainter &painter, const CGeoRegion &surface);
    void drawText(QPainter &painter, const CGeoText &text);
    void stroke(QPainter &painter, const QPolygonF &line) const;
    void strokeStyled(QPainter &painter, const CGeoParts &parts);
    void fill(QPainter &painter, const QPainterPath &path, const QRectF &bounds);
    /// The fill's brush, on @p painter; its pattern stays where it is on the map.
    QBrush makeBrush(const QPainter &painter);
    /// The path of what is seen of a region, and in @p bounds what the whole of it covers.
    QPainterPath regionPath(const CGeoRegion &region, QRectF &bounds);
    /// Where a region is widest along a line through the middle of what is seen of it, and how wide; -1 when unseen.
    std::pair<QPointF, double> widestSpan(const CGeoRegion &region);
    /// True when nothing was drawn in this picture at the pixel of @p place yet; marks it.
    bool takePixel(const QPointF &place);

    ScreenPath m_path;
    CTxGeoStyle m_style;
    qreal m_pixelRatio;
    QFont m_font;
    QPen m_pen; // of plain lines
    bool m_strokesSegments = false;
    std::unique_ptr<CTxLineStyleObj> m_line; // of all others, else null
    CTxFillStyle m_fill;
    std::optional<QBrush> m_brush; // of the fill, once it is needed
    QImage m_symbol;
    QSize m_deviceSize;
    std::vector<bool> m_taken; // the device pixels that a point symbol stands on
    std::optional<std::pair<double, double>> m_surface;
    TxHeightColors m_heights; // of the surface, none for the usual ones
};
