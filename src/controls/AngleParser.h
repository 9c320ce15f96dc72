#pragma once

#include "common/TdCommonExport.h"

#include <QString>

/// Reads angles as people write them: "45.5", "-45 30 15.2", "45:30:15.2", "45°30′15.2″S", "W 7° 30'".
namespace AngleParser {

/// An angle, or where its text goes wrong.
struct Result
{
    double degrees = 0.0; ///< south and west below 0
    qsizetype errorPosition =
        -1; ///< index of the first character that cannot be read (the length where text is missing)

    bool ok() const { return errorPosition < 0; }
};

/// Reads the whole of @p text: degrees, then minutes and seconds below 60, if any. They are separated by blanks, colons
/// or their signs (degree, prime, double prime, also ', " and ''). Only the last number may have a fraction, with a
/// point whatever the locale. The direction is a sign before the degrees or one of N, S, E, W before or behind, not
/// both.
TDCOMMON_API Result parse(const QString &text);

} // namespace AngleParser
