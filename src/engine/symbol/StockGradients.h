#pragma once

#include "engine/symbol/Oklab.h"
#include "engine/symbol/TxStockGradient.h"

#include <QList>

#include <span>

/// The table of the stock ramps, and the colours between their control colours.
namespace StockGradients {

/// A control colour as designers write it, 0xRRGGBB.
using Hex = quint32;

/// How the colours between control colours are found.
enum class Path {
    Stored, ///< on straight lines in stored red, green and blue; the control colours are spread evenly
    Spread, ///< on straight lines in OKLab; the control colours are spread evenly
    Even    ///< on straight lines in OKLab, walked at one speed: all steps are equally large
};

/// One ramp. It has control colours, or a formula instead of them.
struct Row
{
    TxStockGradient style;
    const char *name; ///< English, translated in the context TdCommon
    TxStockGradientTraits traits;
    Path path;
    std::span<const Hex> colors;                   ///< from low to high; of a ramp with sea level: below the sea
    std::span<const Hex> landColors = {};          ///< of a ramp with sea level only
    Oklab::LinearRgb (*formula)(double) = nullptr; ///< for 0 (low) to 1 (high)
};

/// All ramps; row i has style i.
std::span<const Row> rows();
/// The row of a style, null when there is none.
const Row *find(qint32 style);

/// How many knots stand for a piece of a ramp: as many as an image with a colour table can show.
constexpr int knotCount = 256;
/// The ramp's colours at knotCount places, ends exact; of a ramp with sea level: those of the water, or of the land.
QList<COLORREF> knots(const Row &row, bool ofLand = false);

} // namespace StockGradients
