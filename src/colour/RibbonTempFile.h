#pragma once

#include "common/TdCommonExport.h"

#include <QString>

class RibbonStops;

/// The file in the temporary folder that keeps the ramp that was edited last.
///
/// The folder may be shared with other users, and the name is known to them: only a file of one's own is read, and
/// writing puts a new file in the place of whatever has the name, without following a link to its target.
namespace RibbonTempFile {

TDCOMMON_API QString path();
/// Reads the file. @return false, and @p ribbon stays as it is, when there is none of the user's own or it is no ramp
TDCOMMON_API bool read(RibbonStops &ribbon);
/// Replaces the file. @return false when the folder, or another user who holds the name, does not allow it
TDCOMMON_API bool write(const RibbonStops &ribbon);

} // namespace RibbonTempFile
