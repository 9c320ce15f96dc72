#pragma once

#include "colour/GrassColorRules.h"
#include "colour/RampReport.h"

#include <QStringList>

/// Ramp files of any kind: the end of the name tells which. ".cpt" are GMT's tables (see GmtPalette), ".ggr" GIMP's
/// gradients (GimpGradient), ".sct" colour-set tables (ColorsetTable), ".rules" GRASS's colour rules (GrassColorRules);
/// so is, when read, a name without an end or with ".txt".
namespace RampFile {

/// Longer files are not read; a .sct has its own limit.
inline constexpr qint64 maximumSize = 1 << 24;

/// Reads the file @p path. Parts of a range (GIMP, percentages of GRASS) are of @p dataRange where it is given.
TDCOMMON_API RampReading load(const QString &path, const std::optional<GrassColorRules::Range> &dataRange = {});
/// Writes @p ramp to the file @p path, which is replaced when the new one is complete.
/// @return what the file does not hold; a refusal when it was not written
TDCOMMON_API RampReport save(const QString &path, const ColorRamp &ramp);
/// The kinds of files as QFileDialog takes them: "GMT Color Palette Table (*.cpt)". Those to open begin with one for
/// all of them and one for any file.
TDCOMMON_API QStringList nameFilters(bool toOpen);

} // namespace RampFile
