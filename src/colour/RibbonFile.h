#pragma once

#include "common/TdCommonExport.h"

#include <QString>

class RibbonStops;

/// The ribbon editor's colour-set table files (see ColorsetTable).
namespace RibbonFile {

/// Writes the range and every stop, value and colour, to the file @p path; a file that is there is replaced when the
/// new one is complete. @return false when that fails
TDCOMMON_API bool SaveRibbon(const RibbonStops &ribbon, const QString &path);
/// Reads range and stops from the file @p path; an undo step of @p ribbon, nothing is selected afterwards. One more
/// stop is added at the maximum, with the last stop's colour, when the last value is not exactly the maximum. What the
/// range and the values are is not checked.
/// @return false, with @p ribbon as it was, for a file that is no colour-set table, holds no stop or cannot be read
TDCOMMON_API bool LoadRibbon(RibbonStops &ribbon, const QString &path);

} // namespace RibbonFile
