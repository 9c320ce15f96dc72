#pragma once

#include "engine/geometry/ElemGeometry.h"

#include <ogr_core.h>

#include <memory>

class OGRGeometry;

/// The bridge between the engine's geometry elements and those of OGR. Private to the engine.
namespace OgrGeometry {

/// @p geometry as an engine element; null for null.
///
/// Points, lines and polygons become points, lines and regions, their multi forms too; a multipoint of several points
/// and a collection become compounds. Curves become lines of short chords (about a degree of arc each). The faces of a
/// TIN or polyhedral surface become the parts of a region with heights. Heights and measures are kept; empty parts are
/// left out; an empty geometry becomes an element without points.
TX_EXPORT std::unique_ptr<CElemGeometry> fromOgr(const OGRGeometry *geometry);

/// How many levels of compounds may be nested in a file: OGR, which recurses, reads no more than 32 back. Layers of
/// points, lines or areas keep no nesting, so there the depth does not matter.
inline constexpr int maximumDepth = 30;
/// True for a compound nested deeper than that.
TX_EXPORT bool isNestedTooDeep(const CElemGeometry &geometry);

/// @p geometry as an OGR geometry that fits a layer of the geometry type @p target (wkbUnknown: the plainest type that
/// holds it). A text gives its anchor.
/// @return null when the element has no form in a layer of that type (an area in a layer of points, for example), and
/// for a compound nested deeper than maximumDepth.
TX_EXPORT std::unique_ptr<OGRGeometry> toOgr(const CElemGeometry &geometry, OGRwkbGeometryType target = wkbUnknown);

} // namespace OgrGeometry
