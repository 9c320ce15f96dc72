#pragma once

#include "engine/base/TxExport.h"
#include "engine/geometry/Rect2D.h"

#include <memory>

class OGRGeometry;

/// Cuts OGR geometries at the edge of a rectangle. Private to the engine.
namespace OgrClip {

/// What of @p geometry lies in @p bounds, its edge included; null for nothing.
///
/// Points keep their places, lines get points at the edge with heights and measures between those of their neighbours,
/// areas are cut by GEOS, which keeps heights but no measures. Collections keep the members that are left; pieces of a
/// lower dimension (the corner that a line only touches) are dropped. Curves must have been made lines before.
/// @param[out] failed an area is so broken that it cannot be cut; null is returned then
TX_EXPORT std::unique_ptr<OGRGeometry> toRectangle(const OGRGeometry &geometry, const CRect2D &bounds, bool &failed);

} // namespace OgrClip
