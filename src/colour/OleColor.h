#pragma once

#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"

#include <optional>

/// The colour that an automation client means by 32 bits. The high byte says how to read the others:
/// - 0x00 and 0x02: red, green and blue, as in a COLORREF;
/// - 0x80: the number of a system colour (0 to 30), which is a role of the application's palette;
/// - 0x01, a palette's entry, names nothing, because there is no palette, and so do all others.
/// @return the colour, nothing when none is meant
TDCOMMON_API std::optional<COLORREF> translateOleColor(quint32 oleColor);
