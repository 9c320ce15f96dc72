#pragma once

#include "colour/RampReport.h"

/// Colour palette tables of GMT (".cpt"): slices of values with a colour at either end, in all forms that versions 3 to
/// 6 write. docs/ramp-files.md tells what is kept.
namespace GmtPalette {

/// Reads a table. One of parts of a range ("# RANGE") comes out over that range.
TDCOMMON_API RampReading read(const QByteArray &bytes);
/// Writes a table that read() reads back as it was.
TDCOMMON_API RampWriting write(const ColorRamp &ramp);

} // namespace GmtPalette
