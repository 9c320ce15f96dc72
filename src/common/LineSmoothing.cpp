#include "common/TdCommMethods.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/GeoLine.h"
#include "engine/geometry/TxOperator.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <span>
#include <vector>

namespace {

constexpr quint32 linesAndCad = 0x12; // the filter bits of the kinds whose lines are smoothed
constexpr qint32 largestLine = 3000;  // points
constexpr qint32 density = 8;         // chords for each piece of the spline

/// An edit transaction around a change of many records, where the storage knows them and none is open already: taken
/// back unless it was committed.
class WholeChange
{
public:
    explicit WholeChange(CTxDataSource &dataSource) : m_dataSource(dataSource) {}
    ~WholeChange()
    {
        if (m_isOpen)
            m_dataSource.RollbackTrans();
    }
    Q_DISABLE_COPY_MOVE(WholeChange)

    bool begin()
    {
        if (m_dataSource.IsTransStarted() || !m_dataSource.HasCapability(CTxDataSource::CanTransact))
            return true;
        m_isOpen = m_dataSource.BeginTrans();
        return m_isOpen;
    }
    bool commit()
    {
        if (m_isOpen && !m_dataSource.CommitTrans())
            return false;
        m_isOpen = false;
        return true;
    }

private:
    CTxDataSource &m_dataSource;
    bool m_isOpen = false;
};

/// Smooths one part; its ends stay. @return false when memory runs out.
bool smoothPart(std::span<const CPoint2D> part, CPoint2Ds &smooth)
{
    CPoint2Ds control;
    control.reserve(part.size() + 4);
    control.assign(2, part.front());
    control.insert(control.end(), part.begin(), part.end());
    control.insert(control.end(), 2, part.back());
    qint32 count = 0;
    if (!CTxOperator::BSpline2Line(control.data(), static_cast<qint32>(control.size()), smooth, count, density))
        return false;
    smooth.front() = part.front();
    smooth.back() = part.back();
    return true;
}

/// The measures of one part, smoothed as its points are so that they still fit them.
bool smoothMeasures(std::span<const double> measures, std::vector<double> &smooth)
{
    CPoint2Ds places;
    for (const double measure : measures)
        places.emplace_back(measure, 0.0);
    CPoint2Ds smoothPlaces;
    if (!smoothPart(places, smoothPlaces))
        return false;
    smooth.clear();
    for (const CPoint2D &place : smoothPlaces)
        smooth.push_back(place.x);
    return true;
}

/// @p line smoothed part by part; null when memory runs out.
std::unique_ptr<CGeoLine> smoothed(const CGeoLine &line)
{
    auto made = std::make_unique<CGeoLine>();
    CPoint2Ds points;
    std::vector<double> measures;
    size_t first = 0;
    for (const qint32 count : line.GetPolyCounts()) {
        const size_t size = static_cast<size_t>(count);
        if (!smoothPart({line.GetPoints() + first, size}, points))
            return nullptr;
        if (line.GetMs() && !smoothMeasures({line.GetMs() + first, size}, measures))
            return nullptr;
        const double *ms = line.GetMs() ? measures.data() : nullptr;
        const auto total = static_cast<qint32>(points.size());
        if (first == 0)
            made->MakePolyline(points.data(), total, false, nullptr, ms);
        else
            made->AddSubPolyline(points.data(), total, nullptr, ms);
        first += size;
    }
    return made;
}

/// True for what is to be smoothed. A line with a place that is not finite would lose the places around it.
bool isSmoothable(const CElemGeometry *geometry)
{
    if (!geometry || geometry->GetType() != CElemGeometry::Line)
        return false;
    const auto &line = static_cast<const CGeoLine &>(*geometry);
    const CPoint2D *points = line.GetPoints();
    return points && line.GetPointCount() <= largestLine &&
           std::all_of(points, points + line.GetPointCount(),
                       [](const CPoint2D &point) { return std::isfinite(point.x) && std::isfinite(point.y); });
}

/// Smooths the line of the current record, if it has one. @return false when that cannot be done or written.
bool smoothRecord(CTxRecordset &record)
{
    CElemGeometry *geometry = nullptr;
    record.GetGeometry(geometry);
    const std::unique_ptr<CElemGeometry> owner(geometry);
    if (!isSmoothable(geometry))
        return true;
    const std::unique_ptr<CGeoLine> line = smoothed(static_cast<const CGeoLine &>(*geometry));
    return line && record.Edit() && record.SetGeometry(line.get()) && record.Update();
}

/// The identifiers of all records, each once, whatever the query joins.
std::vector<qint64> identifiers(CTxRecordset &records)
{
    std::vector<qint64> ids;
    for (bool found = records.MoveFirst(); found; found = records.MoveNext())
        ids.push_back(records.GetID());
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    return ids;
}

} // namespace

bool CTdCommMethods::LineMakeSmooth(CTxRecordset *recordset)
{
    const CDatasetVector *dataset = CTxRecordset::GetDatasetOf(recordset);
    if (!IsSupportDTType(dataset, linesAndCad))
        return false;
    try {
        // A record that changes while a walk goes over it may come again, stop the walk, or, where the walk follows the
        // spatial index, not be written at all: the walk is done before the first change.
        const std::vector<qint64> ids = identifiers(*recordset);
        WholeChange change(*dataset->GetDataSource());
        if (!change.begin())
            return false;
        for (const qint64 id : ids) {
            if (recordset->MoveToID(id) && !smoothRecord(*recordset))
                return false;
        }
        recordset->MoveNext(); // to the end, where a walk stands
        return change.commit();
    } catch (const std::bad_alloc &) {
        return false;
    }
}
