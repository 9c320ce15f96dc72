#include "controls/TdStyle.h"

#include "common/TdModule.h"
#include "engine/symbol/TxFillStyleLib.h"
#include "engine/symbol/TxGeoStyle.h"
#include "engine/symbol/TxLineStyleLib.h"
#include "engine/symbol/TxStyleSample.h"
#include "engine/symbol/TxSymbolLib.h"
#include "res/StringId.h"

#include <QPainter>

#include <algorithm>
#include <iterator>

namespace {

struct GradientRow
{
    TxGradientKind kind;
    quint32 name;
};

/// The entries behind the fills of the library.
constexpr GradientRow gradients[] = {
    {TxGradientKind::Linear, TdStringId::StyleGradientLinear},
    {TxGradientKind::Radial, TdStringId::StyleGradientRadial},
    {TxGradientKind::Conical, TdStringId::StyleGradientConical},
};

/// The id of each part of a style in its library.
constexpr qint32 CTxGeoStyle::*ids[] = {&CTxGeoStyle::lineStyle, &CTxGeoStyle::fillStyle, &CTxGeoStyle::symbolStyle};

/// The library that entries of @p kind come from.
const CTxStyleLibrary &libraryOf(TdStyle::Kind kind)
{
    static const CTxLineStyleLib lines;
    static const CTxFillStyleLib fills;
    static const CTxSymbolLib symbols;
    const CTxStyleLibrary *const libraries[] = {&lines, &fills, &symbols};
    return *libraries[kind];
}

bool isPale(const QColor &color)
{
    return color.alpha() < 40 || qGray(color.rgb()) > 225;
}

/// What a sample stands on: paper, unless it is as pale as that.
QColor backgroundOf(TdStyle::Kind kind, const CTxGeoStyle &style)
{
    const bool isLost = kind == TdStyle::Line   ? isPale(style.lineColor)
                        : kind == TdStyle::Fill ? isPale(style.fillColor) && isPale(style.fillBackColor)
                                                : isPale(style.symbolColor) && (style.symbolOutlineWidth <= 0 ||
                                                                                isPale(style.symbolOutlineColor));
    return isLost ? QColor(Qt::gray) : QColor(Qt::white);
}

} // namespace

int TdStyle::count(Kind kind)
{
    return libraryOf(kind).GetCount() + (kind == Fill ? static_cast<int>(std::size(gradients)) : 0);
}

QString TdStyle::nameAt(Kind kind, int index)
{
    const CTxStyleLibrary &library = libraryOf(kind);
    if (index < 0 || index >= count(kind))
        return QString();
    if (index < library.GetCount())
        return library.GetName(library.GetAt(index));
    return CTdModule::LoadString(gradients[index - library.GetCount()].name);
}

int TdStyle::indexOf(Kind kind, const CTxGeoStyle &style)
{
    const CTxStyleLibrary &library = libraryOf(kind);
    if (kind == Fill) {
        const auto *row =
            std::find_if(std::begin(gradients), std::end(gradients),
                         [&style](const GradientRow &gradient) { return gradient.kind == style.fillGradient; });
        if (row != std::end(gradients))
            return library.GetCount() + static_cast<int>(row - gradients);
    }
    return std::max(0, library.FindByID(style.*ids[kind]));
}

void TdStyle::choose(Kind kind, int index, CTxGeoStyle &style)
{
    if (index < 0 || index >= count(kind))
        return;
    const CTxStyleLibrary &library = libraryOf(kind);
    const bool isGradient = index >= library.GetCount();
    if (kind == Fill)
        style.fillGradient = isGradient ? gradients[index - library.GetCount()].kind : TxGradientKind::None;
    if (!isGradient)
        style.*ids[kind] = library.GetAt(index);
}

QString TdStyle::name(Kind kind, const CTxGeoStyle &style)
{
    return nameAt(kind, indexOf(kind, style));
}

void TdStyle::drawSample(QPainter &painter, const QRect &rect, Kind kind, const CTxGeoStyle &style)
{
    painter.save();
    painter.fillRect(rect, Qt::gray); // its edge, also where a pixel is half a unit
    const QRect place = rect.adjusted(1, 1, -1, -1);
    painter.setClipRect(place, Qt::IntersectClip);
    painter.fillRect(place, backgroundOf(kind, style));
    const QRect inner = place.adjusted(2, 2, -2, -2);
    if (kind == Line)
        TxStyleSample::drawLine(painter, inner, style);
    else if (kind == Fill)
        TxStyleSample::drawFill(painter, place, style, false);
    else
        TxStyleSample::drawSymbol(painter, inner, style);
    painter.restore();
}
