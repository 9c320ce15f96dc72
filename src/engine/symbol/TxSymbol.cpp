#include "engine/symbol/TxSymbol.h"

#include "engine/symbol/PointSymbols.h"
#include "engine/symbol/TxGeoStyle.h"
#include "engine/symbol/TxSymbolLib.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace {

/// Larger symbols, in pixels, are drawn anew each time: their pictures would cost more than their drawing.
constexpr double largestPicture = 128;
/// Pictures at different angles are kept up to this size, in bytes: those of a large turned symbol would be 200 MB.
constexpr qsizetype mostPictures = 8 * 1024 * 1024;
/// By how many pixels the picture of a turned symbol may be off at its rim.
constexpr double turnTolerance = 0.125;
/// Beyond it nothing can be seen, and pixels cannot be counted.
constexpr double farthestPixel = 1e6;

/// How many pixels a unit of @p painter has when it only scales evenly upright and moves, else 0.
double plainScale(const QTransform &transform)
{
    if (transform.type() > QTransform::TxScale || transform.m11() <= 0)
        return 0;
    return std::abs(transform.m11() - transform.m22()) <= 1e-9 * transform.m11() ? transform.m11() : 0;
}

} // namespace

struct CTxSymbol::Private
{
    CTxGeoStyle style;
    StyleDrawing drawing;
    double pictureScale = 0;                  // that pictures are made for
    std::unordered_map<int, QImage> pictures; // by the number of the angle's step
    qsizetype pictureBytes = 0;               // of all of them

    double halfReach() const { return style.symbolSize / 2 * std::sqrt(2.0) + style.symbolOutlineWidth; }

    /// Paints it around the origin, at @p pixels a unit.
    void paint(QPainter &painter, double angle, double pixels) const
    {
        const double scale = style.symbolSize / (2 * PointSymbols::halfBox);
        painter.rotate(-angle);
        painter.scale(scale, scale);
        // A thin stroke fades away below a pixel; at half a dozen pixels in all, a whole one would fill the symbol.
        const double thinnest = std::min(1 / (scale * pixels), PointSymbols::halfBox / 3);
        if (style.symbolOutlineWidth > 0)
            drawing.paintOutline(painter, style.symbolOutlineColor, style.symbolOutlineWidth / scale, thinnest);
        drawing.paint(painter, style.symbolColor, thinnest);
    }

    const QImage &picture(double angle, double pixels)
    {
        if (pictureScale != pixels || pictureBytes >= mostPictures) {
            pictures.clear();
            pictureBytes = 0;
            pictureScale = pixels;
        }
        const int steps = std::max(4, 4 * static_cast<int>(std::ceil(M_PI_2 * halfReach() * pixels / turnTolerance)));
        const int step = static_cast<int>(std::lround(angle / 360 * steps)) % steps;
        QImage &image = pictures[step];
        if (image.isNull()) {
            const bool isUpright = step * 4 % steps == 0;
            const double reach = isUpright ? style.symbolSize / 2 + style.symbolOutlineWidth : halfReach();
            // As many pixels as the box has, and some more on each side: so the edges of the box lie between pixels.
            const int box = std::max(1, static_cast<int>(std::lround(style.symbolSize * pixels)));
            const int rim = 1 + std::max(0, static_cast<int>(std::ceil(reach * pixels - box / 2.0)));
            const int side = box + 2 * rim;
            image = QImage(side, side, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.translate(side / 2.0, side / 2.0);
            const double exact = box / style.symbolSize;
            painter.scale(exact, exact);
            paint(painter, 360.0 * step / steps, exact);
            painter.end();
            image.setDevicePixelRatio(pixels);
            pictureBytes += image.sizeInBytes();
        }
        return image;
    }
};

CTxSymbol::CTxSymbol(const CTxGeoStyle &style) : d(std::make_unique<Private>())
{
    d->style = style.inRange();
    d->drawing = StyleDrawing(PointSymbols::row(style.symbolStyle).shapes);
}

CTxSymbol::~CTxSymbol() = default;

QRectF CTxSymbol::GetBounds() const
{
    const double reach = d->halfReach();
    return QRectF(-reach, -reach, 2 * reach, 2 * reach);
}

bool CTxSymbol::Draw(QPainter *painter, const QPointF &point, double angle) const
{
    if (!painter || !painter->isActive() || !std::isfinite(point.x()) || !std::isfinite(point.y()))
        return false;
    const QTransform transform = painter->deviceTransform();
    const QPointF pixel = transform.map(point);
    if (!(std::abs(pixel.x()) < farthestPixel && std::abs(pixel.y()) < farthestPixel))
        return true;
    double turned = std::fmod((std::isfinite(angle) ? angle : 0) + d->style.symbolAngle, 360.0);
    if (turned < 0)
        turned += 360;
    const double scale = plainScale(transform);
    const bool hasPixels = painter->paintEngine()->type() == QPaintEngine::Raster;
    if (hasPixels && scale > 0 && d->style.symbolSize * scale <= largestPicture) {
        const QImage &image = d->picture(turned, scale);
        const QPointF corner(std::round(pixel.x() - image.width() / 2.0), std::round(pixel.y() - image.height() / 2.0));
        painter->drawImage(QPointF((corner.x() - transform.dx()) / scale, (corner.y() - transform.dy()) / scale),
                           image);
        return true;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(point);
    if (transform.determinant() < 0)
        painter->scale(1, -1);
    d->paint(*painter, turned, std::sqrt(std::abs(transform.determinant())));
    painter->restore();
    return true;
}

CTxSymbolLib::CTxSymbolLib()
    : CTxStyleLibrary(static_cast<qint32>(PointSymbols::rows().size()),
                      [](qint32 index) { return PointSymbols::rows()[static_cast<size_t>(index)].key; })
{
}

std::unique_ptr<CTxSymbol> CTxSymbolLib::CreateSymbol(const CTxGeoStyle &style) const
{
    return std::make_unique<CTxSymbol>(style);
}
