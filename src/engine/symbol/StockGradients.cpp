#include "engine/symbol/StockGradients.h"

#include "engine/symbol/StockFormulas.h"

#include <QtGlobal>

#include <algorithm>
#include <vector>

// Where the control colours come from:
// - "Matplotlib": the colour maps of S. van der Walt, N. Smith and E. Firing, given to the public domain (CC0).
// - "ColorBrewer": colours by Cynthia A. Brewer, Mark Harrower and The Pennsylvania State University, colorbrewer2.org,
//   Apache License 2.0. "Mirrored": the OKLab lightness of both sides is changed to their mean.
// - "own": chosen here in OKLab for lightness that rises, falls, or mirrors at the middle, and checked by the tests.

namespace {

using StockGradients::Hex;
using StockGradients::Path;
using StockGradients::Row;
using Traits = TxStockGradientTraits;

constexpr Hex grey[] = {0x000000, 0xFFFFFF};
constexpr Hex greyReversed[] = {0xFFFFFF, 0x000000};

// Matplotlib
constexpr Hex viridis[] = {0x440154, 0x472D7B, 0x3B528B, 0x2C728E, 0x21918C, 0x28AE80, 0x5EC962, 0xADDC30, 0xFDE725};
constexpr Hex magma[] = {0x000004, 0x180F3D, 0x440F76, 0x721F81, 0x9E2F7F,
                         0xCD4071, 0xF1605D, 0xFD9668, 0xFECA8D, 0xFCFDBF};
constexpr Hex plasma[] = {0x0D0887, 0x46039F, 0x7201A8, 0x9C179E, 0xBD3786,
                          0xD8576B, 0xED7953, 0xFB9F3A, 0xFDCA26, 0xF0F921};
constexpr Hex inferno[] = {0x000004, 0x1B0C41, 0x4A0C6B, 0x781C6D, 0xA52C60,
                           0xCF4446, 0xED6925, 0xFB9B06, 0xF7D13D, 0xFCFFA4};

// ColorBrewer
constexpr Hex blues[] = {0xF7FBFF, 0xDEEBF7, 0xC6DBEF, 0x9ECAE1, 0x6BAED6, 0x4292C6, 0x2171B5, 0x08519C, 0x08306B};
constexpr Hex greens[] = {0xF7FCF5, 0xE5F5E0, 0xC7E9C0, 0xA1D99B, 0x74C476, 0x41AB5D, 0x238B45, 0x006D2C, 0x00441B};
constexpr Hex yellowGreenBlue[] = {0xFFFFD9, 0xEDF8B1, 0xC7E9B4, 0x7FCDBB, 0x41B6C4,
                                   0x1D91C0, 0x225EA8, 0x253494, 0x081D58};
constexpr Hex yellowOrangeRed[] = {0xFFFFCC, 0xFFEDA0, 0xFED976, 0xFEB24C, 0xFD8D3C,
                                   0xFC4E2A, 0xE31A1C, 0xBD0026, 0x800026};
constexpr Hex blueRed[] = {0x053061, 0x2166AC, 0x4393C3, 0x92C5DE, 0xD1E5F0, 0xF7F7F7,
                           0xFDDBC7, 0xF4A582, 0xD6604D, 0xB2182B, 0x67001F};
constexpr Hex brownTeal[] = {0x543005, 0x8C510A, 0xBF812D, 0xDFC27D, 0xF6E8C3, 0xF5F5F5,
                             0xC7EAE5, 0x80CDC1, 0x35978F, 0x01665E, 0x003C30};
constexpr Hex redYellowGreen[] = {0xA50026, 0xD73027, 0xF46D43, 0xFDAE61, 0xFEE08B, 0xFFFFBF,
                                  0xD9EF8B, 0xA6D96A, 0x66BD63, 0x1A9850, 0x006837};
constexpr Hex spectral[] = {0x5E4FA2, 0x3288BD, 0x66C2A5, 0xABDDA4, 0xE6F598, 0xFFFFBF,
                            0xFEE08B, 0xFDAE61, 0xF46D43, 0xD53E4F, 0x9E0142};
constexpr Hex temperature[] = {0x313695, 0x4575B4, 0x74ADD1, 0xABD9E9, 0xE0F3F8, 0xFFFFBF,
                               0xFEE090, 0xFDAE61, 0xF46D43, 0xD73027, 0xA50026};

// ColorBrewer, mirrored
constexpr Hex purpleOrange[] = {0x461F68, 0x6C41A4, 0x8F82BD, 0xBDB6DE, 0xDDDFF0, 0xF7F7F7,
                                0xF9DBB1, 0xF1AD57, 0xCE7200, 0x973E00, 0x601F00};
constexpr Hex purpleGreen[] = {0x4A0C55, 0x81358E, 0xA47BB6, 0xCFB1DC, 0xEDDAEE, 0xF7F7F7,
                               0xD3E9CD, 0x9ACE94, 0x4FA356, 0x076E2D, 0x003B12};

// own
constexpr Hex blueYellow[] = {0x0B2A66, 0x3F4A6E, 0x6B6C78, 0x968F76, 0xC6B564, 0xF7DF3E};
constexpr Hex heat[] = {0x180000, 0x7A0A00, 0xC83200, 0xF07A00, 0xFCC040, 0xFFFFF0};
constexpr Hex blueOrangeEven[] = {0x12457A, 0x5C8FC0, 0xEDEDED, 0xC17F42, 0x6B3500};
constexpr Hex aspect[] = {0xE8504A, 0xF2D43C, 0x1B4A3A, 0x5F9BF5, 0xE8504A}; // north, east, south, west, north
constexpr Hex phase[] = {0xEDE9E4, 0xE09A5A, 0x7E3B2E, 0x1E1B2E, 0x2C4E86, 0x7FA6CC, 0xEDE9E4};
constexpr Hex elevation[] = {0x2F7D4A, 0x86B05C, 0xDDD28A, 0xC49A5E, 0x96694A, 0xB9A79C, 0xFFFFFF};
constexpr Hex sea[] = {0x06204F, 0x0E4A86, 0x2F7FB8, 0x79B7DB, 0xCBE7F4};
constexpr Hex land[] = {0x3E8E4E, 0x9CBF6A, 0xEBDD98, 0xC99B5F, 0x8F5F42, 0xC0B0A8, 0xFFFFFF};
constexpr Hex seaSoft[] = {0x1F3354, 0x45648C, 0x7F9DBD, 0xC2D3E2};
constexpr Hex landSoft[] = {0x5B4A32, 0x8D7550, 0xBFA67A, 0xE3D4B4, 0xFBF7EE};
constexpr Hex aridElevation[] = {0x7A4B3A, 0xB0704A, 0xD39A66, 0xE8C491, 0xF5E7C8, 0xFFFFFF};
constexpr Hex bathymetry[] = {0x06163A, 0x0F3A6E, 0x1D6A9C, 0x46A0C0, 0x93CFD8, 0xE3F6F2};
constexpr Hex slope[] = {0xFBFBF2, 0xF4DE9A, 0xE8A85C, 0xC8623E, 0x8A2A33, 0x3E0F24};
constexpr Hex precipitation[] = {0xF7F0DC, 0xCFE3B4, 0x86C9A8, 0x3F9FB4, 0x2C68AC, 0x3B2E83, 0x2B0B4A};
constexpr Hex vegetation[] = {0xB08D6E, 0xE2CFA0, 0xEDEBB0, 0xA9CF73, 0x5BA345, 0x1F7030, 0x0A3D1C};
constexpr Hex rainbow[] = {0x8000FF, 0x0000FF, 0x00FFFF, 0x00FF00, 0xFFFF00, 0xFF8000, 0xFF0000};

constexpr Traits plainOrder{Traits::Sequential, false, true};
constexpr Traits evenOrder{Traits::Sequential, true, true};
constexpr Traits safeSides{Traits::Diverging, false, true};

using Style = TxStockGradient;

const Row table[] = {
    {Style::Grey, QT_TRANSLATE_NOOP("TdCommon", "Grey"), evenOrder, Path::Stored, grey},
    {Style::GreyReversed, QT_TRANSLATE_NOOP("TdCommon", "Grey, White to Black"), evenOrder, Path::Stored, greyReversed},
    {Style::Viridis, QT_TRANSLATE_NOOP("TdCommon", "Viridis"), evenOrder, Path::Even, viridis},
    {Style::Magma, QT_TRANSLATE_NOOP("TdCommon", "Magma"), plainOrder, Path::Spread, magma},
    {Style::Plasma, QT_TRANSLATE_NOOP("TdCommon", "Plasma"), plainOrder, Path::Spread, plasma},
    {Style::Inferno, QT_TRANSLATE_NOOP("TdCommon", "Inferno"), plainOrder, Path::Spread, inferno},
    {Style::BlueYellow, QT_TRANSLATE_NOOP("TdCommon", "Blue to Yellow"), evenOrder, Path::Even, blueYellow},
    {Style::Cubehelix,
     QT_TRANSLATE_NOOP("TdCommon", "Cubehelix"),
     plainOrder,
     Path::Spread,
     {},
     {},
     StockFormulas::cubehelix},
    {Style::Blues, QT_TRANSLATE_NOOP("TdCommon", "Blues"), evenOrder, Path::Even, blues},
    {Style::Greens, QT_TRANSLATE_NOOP("TdCommon", "Greens"), evenOrder, Path::Even, greens},
    {Style::YellowGreenBlue, QT_TRANSLATE_NOOP("TdCommon", "Yellow, Green, Blue"), evenOrder, Path::Even,
     yellowGreenBlue},
    {Style::YellowOrangeRed, QT_TRANSLATE_NOOP("TdCommon", "Yellow, Orange, Red"), evenOrder, Path::Even,
     yellowOrangeRed},
    {Style::Heat, QT_TRANSLATE_NOOP("TdCommon", "Heat"), plainOrder, Path::Spread, heat},
    {Style::BlackBody,
     QT_TRANSLATE_NOOP("TdCommon", "Black Body"),
     {Traits::Theme},
     Path::Spread,
     {},
     {},
     StockFormulas::blackBody},
    {Style::BlueRed, QT_TRANSLATE_NOOP("TdCommon", "Blue, White, Red"), safeSides, Path::Spread, blueRed},
    {Style::BrownTeal, QT_TRANSLATE_NOOP("TdCommon", "Brown, White, Teal"), safeSides, Path::Spread, brownTeal},
    {Style::PurpleOrange, QT_TRANSLATE_NOOP("TdCommon", "Purple, White, Orange"), safeSides, Path::Spread,
     purpleOrange},
    {Style::PurpleGreen, QT_TRANSLATE_NOOP("TdCommon", "Purple, White, Green"), safeSides, Path::Spread, purpleGreen},
    {Style::BlueOrangeEven,
     QT_TRANSLATE_NOOP("TdCommon", "Blue, Grey, Orange"),
     {Traits::Diverging, true, true},
     Path::Even,
     blueOrangeEven},
    {Style::RedYellowGreen,
     QT_TRANSLATE_NOOP("TdCommon", "Red, Yellow, Green"),
     {Traits::Diverging},
     Path::Spread,
     redYellowGreen},
    {Style::HueCircle,
     QT_TRANSLATE_NOOP("TdCommon", "Hue Circle"),
     {Traits::Cyclic, true},
     Path::Spread,
     {},
     {},
     StockFormulas::hueCircle},
    {Style::Aspect, QT_TRANSLATE_NOOP("TdCommon", "Aspect"), {Traits::Cyclic}, Path::Spread, aspect},
    {Style::Phase, QT_TRANSLATE_NOOP("TdCommon", "Phase"), {Traits::Cyclic, true, true}, Path::Even, phase},
    {Style::Elevation, QT_TRANSLATE_NOOP("TdCommon", "Elevation"), {Traits::Relief}, Path::Spread, elevation},
    {Style::Hypsometric,
     QT_TRANSLATE_NOOP("TdCommon", "Hypsometric with Sea"),
     {Traits::Relief, false, true, true},
     Path::Spread,
     sea,
     land},
    {Style::HypsometricSoft,
     QT_TRANSLATE_NOOP("TdCommon", "Hypsometric with Sea, Soft"),
     {Traits::Relief, true, true, true},
     Path::Even,
     seaSoft,
     landSoft},
    {Style::AridElevation,
     QT_TRANSLATE_NOOP("TdCommon", "Arid Elevation"),
     {Traits::Relief, true, true},
     Path::Even,
     aridElevation},
    {Style::Bathymetry,
     QT_TRANSLATE_NOOP("TdCommon", "Bathymetry"),
     {Traits::Relief, true, true},
     Path::Even,
     bathymetry},
    {Style::Slope, QT_TRANSLATE_NOOP("TdCommon", "Slope"), {Traits::Sequential, true, true}, Path::Even, slope},
    {Style::Temperature, QT_TRANSLATE_NOOP("TdCommon", "Temperature"), safeSides, Path::Spread, temperature},
    {Style::Precipitation, QT_TRANSLATE_NOOP("TdCommon", "Precipitation"), evenOrder, Path::Even, precipitation},
    {Style::Vegetation, QT_TRANSLATE_NOOP("TdCommon", "Vegetation (NDVI)"), {Traits::Theme}, Path::Spread, vegetation},
    {Style::Spectral, QT_TRANSLATE_NOOP("TdCommon", "Spectral"), {Traits::Theme}, Path::Spread, spectral},
    {Style::Rainbow,
     QT_TRANSLATE_NOOP("TdCommon", "Rainbow (Not Recommended)"),
     {Traits::Theme},
     Path::Stored,
     rainbow},
};

COLORREF colorOf(Hex hex)
{
    return TxColorRef::fromRgb(hex);
}

Oklab::Lab between(const Oklab::Lab &from, const Oklab::Lab &to, double part)
{
    return {from.lightness + (to.lightness - from.lightness) * part, from.a + (to.a - from.a) * part,
            from.b + (to.b - from.b) * part};
}

/// knotCount places on the line through @p corners, whose places are @p at (0 at the first, rising).
QList<COLORREF> walked(const std::vector<Oklab::Lab> &corners, const std::vector<double> &at)
{
    QList<COLORREF> knots;
    knots.reserve(StockGradients::knotCount);
    size_t next = 1;
    for (int i = 0; i < StockGradients::knotCount; ++i) {
        const double place = at.back() * i / (StockGradients::knotCount - 1);
        while (next + 1 < corners.size() && at[next] < place)
            ++next;
        const double length = at[next] - at[next - 1];
        knots.append(Oklab::toColor(between(corners[next - 1], corners[next],
                                            length > 0 ? std::min((place - at[next - 1]) / length, 1.0) : 1.0)));
    }
    return knots;
}

} // namespace

std::span<const StockGradients::Row> StockGradients::rows()
{
    return table;
}

const StockGradients::Row *StockGradients::find(qint32 style)
{
    return style >= 0 && static_cast<size_t>(style) < std::size(table) ? &table[style] : nullptr;
}

QList<COLORREF> StockGradients::knots(const Row &row, bool ofLand)
{
    QList<COLORREF> colors;
    if (row.formula) {
        for (int i = 0; i < knotCount; ++i)
            colors.append(Oklab::toColor(row.formula(double(i) / (knotCount - 1))));
        return colors;
    }
    for (const Hex hex : ofLand ? row.landColors : row.colors)
        colors.append(colorOf(hex));
    if (row.path == Path::Stored)
        return colors;
    std::vector<Oklab::Lab> corners;
    std::vector<double> at;
    for (const COLORREF color : std::as_const(colors)) {
        corners.push_back(Oklab::toLab(color));
        const bool isFirst = at.empty();
        const double step = isFirst                  ? 0
                            : row.path == Path::Even ? Oklab::distance(corners.end()[-2], corners.back())
                                                     : 1;
        at.push_back(isFirst ? 0 : at.back() + step);
    }
    QList<COLORREF> knots = walked(corners, at);
    knots.first() = colors.first();
    knots.last() = colors.last();
    return knots;
}

TxStockGradientTraits TxGetStockGradientTraits(qint32 style)
{
    const StockGradients::Row *row = StockGradients::find(style);
    return row ? row->traits : TxStockGradientTraits();
}
