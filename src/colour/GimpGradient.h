#pragma once

#include "colour/RampReport.h"

/// Gradients of GIMP (".ggr"): segments from 0 to 1, each with a middle and a way of blending. docs/ramp-files.md tells
/// what is kept.
namespace GimpGradient {

/// Reads a gradient; it comes out over 0 to 1.
TDCOMMON_API RampReading read(const QByteArray &bytes);
/// Writes the ramp's colours over 0 to 1, under a name that is shown to the user of the file. read() reads them back
/// as ramp.mapped(0, 1).
TDCOMMON_API RampWriting write(const ColorRamp &ramp, const QString &name);

} // namespace GimpGradient
