#pragma once

#include "engine/geometry/Point2D.h"

#include <vector>

/// An ordered, growable array of points.
using CPoint2Ds = std::vector<CPoint2D>;
