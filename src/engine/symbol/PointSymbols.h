#pragma once

#include "engine/symbol/StyleDrawing.h"
#include "engine/symbol/TxStyleLibrary.h"

#include <span>

/// The table of the point symbols.
namespace PointSymbols {

/// Drawings are made in a box from -halfBox to halfBox in both directions, which they fill in one of them; y is
/// downwards.
inline constexpr double halfBox = 12;

struct Row
{
    TxStyleKey key;
    std::span<const StyleShape> shapes;
};

TX_EXPORT std::span<const Row> rows();
/// The row of @p id, the first one for an id that does not exist.
TX_EXPORT const Row &row(qint32 id);

} // namespace PointSymbols
