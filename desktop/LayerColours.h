#pragma once

#include "colour/ColorRamp.h"
#include "colour/RibbonStop.h"
#include "engine/symbol/TxColorsetEx.h"

#include <QList>

#include <optional>
#include <utility>

class CTxDataset;
class CTxLayer;

/// Colours of the heights of a map's layer, as the commands and dialogs pass them on.
namespace LayerColours {

/// True when @p layer shows heights: a grid, an elevation model or a surface of triangles that is there.
bool showsHeights(const CTxLayer *layer);
/// Lowest and highest value of a dataset that shows heights; of a surface, all its records are read. Never without
/// extent: a plain of one height is taken to be one unit high, or a millionth of a huge height.
/// Nothing when there are none.
std::optional<std::pair<double, double>> heightRange(CTxDataset &dataset);
/// The colours that @p layer shows: its own, or the usual ones over the range of its heights.
CTxColorsetEx shown(const CTxLayer &layer);

/// The stock ramp @p style in @p count colours from @p floor to @p ceiling. With @p toSeaLevel the water of a ramp that
/// has a sea level ends at height 0, wherever in the range that is: land alone has no water, water no land.
CTxColorsetEx stock(qint32 style, bool reverse, int count, double floor, double ceiling, bool toSeaLevel);

/// The colours as stops of a ramp: no more than a straight way between them needs.
QList<RibbonStop> toStops(const CTxColorsetEx &colors);
/// A ramp as @p count colours. With 0, as many as it needs: the very stops where they are spread evenly. Less than two
/// stops make none.
CTxColorsetEx fromStops(QList<RibbonStop> stops, int count);

/// The colours that @p layer shows as a ramp to be saved: colours in steps have hard steps between them. Nothing when
/// the layer's range is none.
std::optional<ColorRamp> toRamp(const CTxLayer &layer);
/// The colours of a ramp that was loaded for heights from @p heights.first to @p heights.second. A ramp that leaves out
/// more than nine tenths of them was not made for them, and is stretched over them.
CTxColorsetEx fromRamp(const ColorRamp &ramp, const std::pair<double, double> &heights);

} // namespace LayerColours
