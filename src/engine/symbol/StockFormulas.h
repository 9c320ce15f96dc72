#pragma once

#include "engine/symbol/Oklab.h"

/// Stock ramps that are formulas of a place on the ramp, 0 (low) to 1 (high).
namespace StockFormulas {

/// A helix of colours around the greys, of steadily rising lightness. Source: D. A. Green, "A colour scheme for the
/// display of astronomical intensity images", Bull. Astr. Soc. India 39 (2011), with its own defaults.
Oklab::LinearRgb cubehelix(double place);
/// The colour of a glowing black body, from 1000 K to 20000 K in equal steps of 1 / temperature, as bright as the
/// screen can show it. Source: Planck's law of radiation; the eye's answer to it by the sums of bells of C. Wyman,
/// P.-P. Sloan and P. Shirley, "Simple analytic approximations to the CIE XYZ color matching functions", JCGT 2 (2013);
/// the matrix from XYZ is that of IEC 61966-2-1.
Oklab::LinearRgb blackBody(double place);
/// Once around the hues, of one lightness and one strength in OKLab; both ends are the same colour.
Oklab::LinearRgb hueCircle(double place);

} // namespace StockFormulas
