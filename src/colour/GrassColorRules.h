#pragma once

#include "colour/RampReport.h"

#include <utility>

/// Colour rules of GRASS GIS: a value, or a part of the range of the data in percent, and a colour a line.
/// docs/ramp-files.md tells what is kept.
namespace GrassColorRules {

/// Lowest and highest value of the data.
using Range = std::pair<double, double>;

/// Reads rules. Percentages are of @p dataRange, widened to hold the values that stand among them. Without it, rules
/// of percentages alone come out over 0 to 100, and others that have some are refused.
TDCOMMON_API RampReading read(const QByteArray &bytes, const std::optional<Range> &dataRange = {});
/// Writes rules that read() reads back as they were. Nothing is lost.
TDCOMMON_API RampWriting write(const ColorRamp &ramp);

} // namespace GrassColorRules
