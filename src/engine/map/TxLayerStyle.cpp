#include "engine/map/TxLayerStyle.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

struct RegionColours
{
    QRgb fill;
    QRgb line;
};

/// Muted fills with a darker outline of the same hue.
constexpr std::array regionColours = {
    RegionColours{0xffdfe8cf, 0xff8ea072}, RegionColours{0xfff1e3c6, 0xffb59a66}, RegionColours{0xffcfe0ec, 0xff7a9db8},
    RegionColours{0xffecd3d0, 0xffb5857f}, RegionColours{0xffddd5ea, 0xff9486b2}, RegionColours{0xffcfe9e2, 0xff72a698},
};

/// Clear but not loud, for lines and point symbols.
constexpr std::array<QRgb, 8> strongColours = {0xff2f74b5, 0xffc0563b, 0xff3d8b57, 0xff8659a6,
                                               0xffb8862b, 0xff2a8c95, 0xffb0476f, 0xff5d6b78};

enum class Look { Region, Line, Symbol, Text };

struct KindLook
{
    CElemDatasetInfo::Type kind;
    Look look;
    double lineWidth;
    double symbolSize;
    quint32 parts;
};

using Parts = TxStyleParts;

constexpr quint32 everything = Parts::Line | Parts::Fill | Parts::Symbol | Parts::Text;

constexpr std::array kindLooks = {
    KindLook{CElemDatasetInfo::Point, Look::Symbol, 1.0, 7.0, Parts::Symbol},
    KindLook{CElemDatasetInfo::Point3D, Look::Symbol, 1.0, 7.0, Parts::Symbol},
    KindLook{CElemDatasetInfo::PointGL3D, Look::Symbol, 1.0, 7.0, Parts::Symbol},
    KindLook{CElemDatasetInfo::Line, Look::Line, 1.4, 6.0, Parts::Line},
    KindLook{CElemDatasetInfo::Line3D, Look::Line, 1.4, 6.0, Parts::Line},
    KindLook{CElemDatasetInfo::Network, Look::Line, 1.8, 5.0, Parts::Line | Parts::Symbol}, // edges and nodes
    KindLook{CElemDatasetInfo::Route, Look::Line, 2.2, 6.0, Parts::Line},
    KindLook{CElemDatasetInfo::Traverse, Look::Line, 1.2, 5.0, Parts::Line},
    KindLook{CElemDatasetInfo::Region, Look::Region, 0.8, 6.0, Parts::Line | Parts::Fill},
    KindLook{CElemDatasetInfo::Parcel, Look::Region, 0.8, 6.0, Parts::Line | Parts::Fill},
    KindLook{CElemDatasetInfo::Region3D, Look::Region, 0.8, 6.0, Parts::Line | Parts::Fill},
    KindLook{CElemDatasetInfo::Text, Look::Text, 1.0, 6.0, Parts::Text},
    KindLook{CElemDatasetInfo::Text3D, Look::Text, 1.0, 6.0, Parts::Text},
    KindLook{CElemDatasetInfo::CAD, Look::Line, 1.2, 5.0, everything},
};

/// The row of @p kind; of kinds of heights and pictures, and others that have none, one without parts.
KindLook lookOf(CElemDatasetInfo::Type kind)
{
    const auto at =
        std::find_if(kindLooks.begin(), kindLooks.end(), [kind](const KindLook &row) { return row.kind == kind; });
    return at == kindLooks.end() ? KindLook{kind, Look::Region, 0.8, 6.0, 0} : *at;
}

/// The relative luminance of @p colour, 0 (black) to 1 (white), as contrast ratios are made of it.
double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)}); // a list: values, not references
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace

quint32 TxStyleParts::of(CElemDatasetInfo::Type kind)
{
    return lookOf(kind).parts;
}

CTxGeoStyle plainStyle(const QColor &line, const QColor &fill, double lineWidth, double symbolSize)
{
    CTxGeoStyle style;
    style.lineColor = line;
    style.lineWidth = lineWidth;
    style.fillColor = style.symbolColor = fill;
    style.symbolOutlineColor = line;
    style.symbolOutlineWidth = std::min(lineWidth, symbolSize / 3); // else it would cover the circle
    style.symbolSize = symbolSize - style.symbolOutlineWidth;
    return style;
}

TxLayerStyle defaultStyle(CElemDatasetInfo::Type kind, int index)
{
    const KindLook row = lookOf(kind);
    const size_t number = static_cast<size_t>(std::max(index, 0));
    const QColor strong = QColor::fromRgb(strongColours[number % strongColours.size()]);

    TxLayerStyle style;
    QColor line = style.geoStyle.lineColor;
    QColor fill = style.geoStyle.fillColor;
    switch (row.look) {
    case Look::Region:
        fill = QColor::fromRgb(regionColours[number % regionColours.size()].fill);
        line = QColor::fromRgb(regionColours[number % regionColours.size()].line);
        break;
    case Look::Line:
        line = strong;
        fill = QColor(strong.red(), strong.green(), strong.blue(), 70);
        break;
    case Look::Symbol:
        fill = strong;
        line = QColor(Qt::white);
        break;
    case Look::Text:
        break;
    }
    style.geoStyle = plainStyle(line, fill, row.lineWidth, row.symbolSize);
    return style;
}

TxLayerStyle legibleStyle(const TxLayerStyle &style, const QColor &background)
{
    constexpr double enough = 2.2;
    TxLayerStyle result = style;
    QColor &line = result.geoStyle.lineColor;
    if (contrast(line, background) >= enough)
        return result;
    const double step = luminance(background) < 0.18 ? 0.05 : -0.05;
    float hue = 0;
    float saturation = 0;
    float lightness = 0;
    float alpha = 0;
    line.getHslF(&hue, &saturation, &lightness, &alpha);
    for (int i = 0; i < 20 && contrast(line, background) < enough; ++i) {
        lightness = std::clamp(lightness + static_cast<float>(step), 0.0F, 1.0F);
        line = QColor::fromHslF(std::max(hue, 0.0F), saturation, lightness, alpha);
    }
    return result;
}
