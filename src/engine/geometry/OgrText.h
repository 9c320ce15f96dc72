#pragma once

#include "engine/geometry/GeoText.h"

#include <QByteArray>

/// Texts as drawing formats (DXF, DGN, MIF) give them: points with a label in OGR's style language. Private to the
/// engine.
namespace OgrText {

/// The text that the first label of @p style says at @p anchor; null when the style holds no label. A height that is
/// not given in map units is left to the layer's style.
TX_EXPORT std::unique_ptr<CElemGeometry> fromStyle(const QByteArray &style, const CGeoPoint &anchor);

} // namespace OgrText
