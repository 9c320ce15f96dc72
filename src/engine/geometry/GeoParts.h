#pragma once

#include "engine/geometry/ElemGeometry.h"

#include <QList>

#include <vector>

/// The base of the elements that are made of parts (polylines, regions): the points of all parts stand in one array,
/// one part behind the other, and a second array tells how many points each part has.
///
/// Heights and measures stand in arrays of their own, as long as the array of points; an element that has none of them
/// keeps no such array.
class TX_EXPORT CGeoParts : public CElemGeometry
{
public:
    /// The rectangle around all points; points with a coordinate that is not finite are left out.
    CRect2D GetBounds() const override;

    /// The points of all parts; null when there is none. Dead after the next change of the element.
    const CPoint2D *GetPoints() const { return m_points.empty() ? nullptr : m_points.data(); }
    /// How many points all parts have together.
    qint32 GetPointCount() const { return static_cast<qint32>(m_points.size()); }
    /// How many points each part has.
    const QList<qint32> &GetPolyCounts() const { return m_counts; }
    /// How many parts there are.
    qint32 GetPartCount() const { return static_cast<qint32>(m_counts.size()); }

    /// Heights of all points in the units of the coordinate system; null for a plane element.
    const double *GetZs() const { return m_hasZ && !m_zs.empty() ? m_zs.data() : nullptr; }
    /// Measures of all points along a route; null where none are kept.
    const double *GetMs() const { return m_hasM && !m_ms.empty() ? m_ms.data() : nullptr; }
    bool HasZ() const { return m_hasZ; }
    bool HasM() const { return m_hasM; }
    /// Makes the element one with heights (those that are missing become 0), or takes the heights away.
    void SetHasZ(bool on);
    /// Makes the element one with measures (those that are missing become NaN, "not measured"), or takes them away.
    void SetHasM(bool on);

protected:
    CGeoParts() = default;
    CGeoParts(const CGeoParts &) = default;
    CGeoParts &operator=(const CGeoParts &) = default;

    /// Adds a part of @p count points; @p zs and @p ms may be null. A @p closed part gets its first point once more at
    /// its end unless it ends there already. @return false, and nothing changes, for a null array, a count below 1, and
    /// when the element would hold more than 2^31 - 1 points.
    bool appendPart(const CPoint2D *points, qint32 count, bool closed, const double *zs, const double *ms);
    /// The plane length of all parts, in the units of the coordinate system.
    double partsLength() const;

private:
    std::vector<CPoint2D> m_points;
    std::vector<double> m_zs;
    std::vector<double> m_ms;
    QList<qint32> m_counts;
    bool m_hasZ = false;
    bool m_hasM = false;
};
