#pragma once

#include "engine/symbol/StyleDrawing.h"
#include "engine/symbol/TxStyleLibrary.h"

#include <span>

/// The table of the line styles. All lengths are in widths of the line.
namespace LineStyles {

/// The colour of a stroke or mark.
enum class Ink {
    Line, ///< the line's colour
    Back, ///< the line's back colour
    Tint, ///< the line's colour, thinned
};

/// A corner of a stroke that swings about the line.
struct Swing
{
    double along; ///< from the beginning of the period
    double aside; ///< positive is to the right as one goes along the line
};

/// One of the strokes that lie on one another.
struct Stroke
{
    Ink ink = Ink::Line;
    double width = 1;
    double offset = 0;                  ///< to the right of the line
    std::span<const double> dash = {};  ///< lengths of dash, gap, dash …; a dash of length 0 is a round dot
    std::span<const Swing> swings = {}; ///< corners of one period, the last of which begins the next; none for straight
};

/// A drawing that is repeated along the line: x goes along it, y to the right, (0, 0) lies on it.
struct Mark
{
    StyleShape shape;
    double period;
    double first; ///< the place of the first one
    Ink ink = Ink::Line;
};

struct Row
{
    TxStyleKey key;
    std::span<const Stroke> strokes;
    std::span<const Mark> marks = {};
};

std::span<const Row> rows();
/// The row of @p id, the first one for an id that does not exist.
const Row &row(qint32 id);
/// How far the style reaches on the side where it reaches farthest, in widths of the line.
double reach(const Row &row);

} // namespace LineStyles
