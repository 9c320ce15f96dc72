#pragma once

#include "engine/geometry/Rect2D.h"

#include <ogr_feature.h>

#include <QString>

#include <memory>

class TxReprojector;

/// Makes geometries of one dataset fit another: its kind, its coordinate system, a rectangle. A private header.
///
/// Within a kind everything is converted: single and multi-part, curves to chords, surfaces to their faces, heights and
/// measures added (as 0) or dropped. A dataset of mixed kinds takes everything as it is. One kind never becomes
/// another, and several parts never become one: those are refused.
class AppendGeometry
{
public:
    /// @param layer        the target's; what it holds is asked of it for each geometry
    /// @param takesParts   the layer takes several parts where its type says one, as shapefiles do
    /// @param reprojector  null to leave coordinates as they are
    /// @param bounds       void to cut nothing
    AppendGeometry(const OGRFeatureDefn &layer, bool takesParts, const TxReprojector *reprojector,
                   const CRect2D &bounds);

    enum class Result { Fits, Outside, Refused };
    /// Makes @p geometry (null stays null) fit. Outside tells that nothing of it lies in the rectangle; a record
    /// without a geometry never does.
    Result fit(std::unique_ptr<OGRGeometry> &geometry);
    /// Why the last one was refused, in words that follow "its geometry".
    const QString &reason() const { return m_reason; }

private:
    bool reproject(OGRGeometry &geometry);
    bool clip(std::unique_ptr<OGRGeometry> &geometry);
    bool adapt(std::unique_ptr<OGRGeometry> &geometry);

    const OGRFeatureDefn &m_layer;
    OGRwkbGeometryType m_type = wkbUnknown; // of the layer
    const bool m_takesParts;
    const TxReprojector *const m_reprojector;
    const CRect2D m_bounds;
    QString m_reason;
};
