#include "colour/RgbCubeProjection.h"

#include <algorithm>
#include <cmath>

namespace {

using Position = RgbCubeProjection::Position;

constexpr double most = 255.0;
constexpr double halfRoot3 = 0.86602540378443864676; // the cosine of 30 degrees

/// One of the positions that stand at the same point, they differ by the same amount in all parts.
Position anyAt(const QPointF &offset)
{
    const double red = offset.x() / halfRoot3;
    return {red, red / 2.0 - offset.y(), 0.0};
}

void add(Position &position, double amount)
{
    for (double &part : position)
        part += amount;
}

/// The position on the outside of the cube, with the channel that is 255; beyond the outline others are below 0.
int moveToOutside(Position &position)
{
    const auto largest = std::max_element(position.begin(), position.end());
    add(position, most - *largest);
    return static_cast<int>(largest - position.begin());
}

void keepInside(Position &position)
{
    for (double &part : position)
        part = std::clamp(part, 0.0, most);
}

} // namespace

Position RgbCubeProjection::positionOf(const RGBType &color)
{
    return {static_cast<double>(color.red), static_cast<double>(color.green), static_cast<double>(color.blue)};
}

RGBType RgbCubeProjection::rounded(const Position &position)
{
    const auto whole = [](double part) { return static_cast<qint32>(std::lround(part)); };
    return {whole(position[0]), whole(position[1]), whole(position[2])};
}

QPointF RgbCubeProjection::pointOf(const Position &position) const
{
    const auto [red, green, blue] = position;
    return centre + QPointF(halfRoot3 * (red - blue), (red + blue) / 2.0 - green) * (edge / most);
}

QPolygonF RgbCubeProjection::outline() const
{
    QPolygonF corners;
    for (const Position &corner : {Position{0, most, 0}, Position{most, most, 0}, Position{most, 0, 0},
                                   Position{most, 0, most}, Position{0, 0, most}, Position{0, most, most}})
        corners << pointOf(corner);
    return corners;
}

bool RgbCubeProjection::contains(const QPointF &point) const
{
    if (edge <= 0.0)
        return false;
    Position position = anyAt((point - centre) * (most / edge));
    moveToOutside(position);
    return *std::min_element(position.begin(), position.end()) >= 0.0;
}

RgbCubeProjection::Hit RgbCubeProjection::surfaceAt(const QPointF &point, const RGBType &color) const
{
    if (edge <= 0.0)
        return {positionOf(color), 0};
    Hit hit{anyAt((point - centre) * (most / edge)), 0};
    hit.channel = moveToOutside(hit.position);
    keepInside(hit.position);
    // Look into the cut, as far as to the first of its planes.
    const Position cut = positionOf(color);
    Position depths;
    std::transform(hit.position.begin(), hit.position.end(), cut.begin(), depths.begin(), std::minus<>());
    const auto nearest = std::min_element(depths.begin(), depths.end());
    if (*nearest > 0.0) {
        hit.channel = static_cast<int>(nearest - depths.begin());
        add(hit.position, -*nearest);
    }
    return hit;
}

Position RgbCubeProjection::onPlane(const QPointF &point, int channel, double fixed) const
{
    Position position{fixed, fixed, fixed};
    if (edge <= 0.0)
        return position;
    position = anyAt((point - centre) * (most / edge));
    add(position, fixed - position[static_cast<std::size_t>(channel)]);
    keepInside(position);
    return position;
}

QImage RgbCubeProjection::outerPicture(int width, int height, double scale) const
{
    QImage image(width, height, QImage::Format_ARGB32);
    const double pixelsInside = halfRoot3 * edge / most * scale; // from the outline for each 1 of the least part
    for (int y = 0; y < height; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const QPointF point((x + 0.5) / scale, (y + 0.5) / scale);
            Position position = anyAt((point - centre) * (most / edge));
            moveToOutside(position);
            const double least = std::min(std::min(position[0], position[1]), position[2]);
            const double coverage = std::clamp(least * pixelsInside + 0.5, 0.0, 1.0);
            keepInside(position);
            // All parts are positive here.
            const auto whole = [](double part) { return static_cast<int>(part + 0.5); };
            line[x] = qRgba(whole(position[0]), whole(position[1]), whole(position[2]), whole(coverage * 255.0));
        }
    }
    return image;
}

void RgbCubeProjection::cutPicture(const QImage &outer, const RGBType &color, QImage &picture)
{
    if (picture.size() != outer.size())
        picture = QImage(outer.size(), QImage::Format_ARGB32_Premultiplied);
    const int width = outer.width();
    for (int y = 0; y < outer.height(); ++y) {
        const auto *from = reinterpret_cast<const QRgb *>(outer.constScanLine(y));
        auto *to = reinterpret_cast<QRgb *>(picture.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const QRgb pixel = from[x];
            const int red = qRed(pixel) - color.red;
            const int green = qGreen(pixel) - color.green;
            const int blue = qBlue(pixel) - color.blue;
            const int depth = std::max(std::min(std::min(red, green), blue), 0);
            const QRgb cut = pixel - static_cast<QRgb>(depth) * 0x010101U;
            to[x] = pixel >= 0xFF000000U ? cut : qPremultiply(cut);
        }
    }
}
