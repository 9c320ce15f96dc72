#pragma once

#include "engine/symbol/StyleDrawing.h"
#include "engine/symbol/TxStyleLibrary.h"

#include <span>

/// The table of the fill styles.
namespace FillStyles {

/// How wide a tile is in the units of its drawing.
inline constexpr double tileWidth = 16;

enum class Kind { Solid, Empty, Pattern };

struct Row
{
    TxStyleKey key;
    Kind kind;
    /// The height of the tile, in the units of its drawing. What reaches over its edges goes on at the other side.
    double tileHeight = tileWidth;
    std::span<const StyleShape> shapes = {};
};

std::span<const Row> rows();
/// The row of @p id, the first one for an id that does not exist.
const Row &row(qint32 id);

} // namespace FillStyles
