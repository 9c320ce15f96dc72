#include "engine/projection/TxReprojector.h"

#include "engine/base/TxGdal.h"
#include "engine/projection/TxPJCoordSys.h"

#include <ogr_spatialref.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr int edgePoints = 21; // along each edge of a rectangle

bool transformPoints(OGRCoordinateTransformation &transformation, std::span<CPoint2D> points)
{
    constexpr size_t chunk = 1024;
    double xs[chunk];
    double ys[chunk];
    int success[chunk];
    bool all = true;
    for (size_t done = 0; done < points.size(); done += chunk) {
        const size_t count = std::min(chunk, points.size() - done);
        for (size_t i = 0; i < count; ++i) {
            xs[i] = points[done + i].x;
            ys[i] = points[done + i].y;
        }
        transformation.Transform(static_cast<int>(count), xs, ys, nullptr, success);
        for (size_t i = 0; i < count; ++i) {
            const bool ok = success[i] && std::isfinite(xs[i]) && std::isfinite(ys[i]);
            constexpr double none = std::numeric_limits<double>::quiet_NaN();
            points[done + i] = ok ? CPoint2D(xs[i], ys[i]) : CPoint2D(none, none);
            all = all && ok;
        }
    }
    return all;
}

/// A grid of points is transformed rather than the edges alone: the image of a rectangle that holds a pole, or reaches
/// beyond what the system can show, is bounded by points inside it.
CRect2D transformRect(OGRCoordinateTransformation &transformation, const CRect2D &bounds)
{
    CRect2D result;
    if (bounds.IsVoid())
        return result;
    std::vector<CPoint2D> points;
    points.reserve(edgePoints * edgePoints);
    for (int row = 0; row < edgePoints; ++row) {
        for (int column = 0; column < edgePoints; ++column)
            points.emplace_back(bounds.left + bounds.Width() * column / (edgePoints - 1),
                                bounds.bottom + bounds.Height() * row / (edgePoints - 1));
    }
    transformPoints(transformation, points);
    for (const CPoint2D &point : points) {
        if (!std::isnan(point.x))
            result.Union(CRect2D(point.x, point.y, point.x, point.y));
    }
    return result;
}

} // namespace

void TxReprojector::Free::operator()(OGRCoordinateTransformation *transformation) const
{
    OGRCoordinateTransformation::DestroyCT(transformation);
}

TxReprojector::TxReprojector(Transformation forward, Transformation backward)
    : m_forward(std::move(forward)), m_backward(std::move(backward))
{
}

TxReprojector::~TxReprojector() = default;

std::shared_ptr<TxReprojector> TxReprojector::make(const CTxPJCoordSys &from, const CTxPJCoordSys &to, bool &failed)
{
    failed = false;
    if (from.GetType() == CTxPJCoordSys::None || to.GetType() == CTxPJCoordSys::None || from == to)
        return nullptr;
    const TxGdal::ErrorCollector errors;
    OGRSpatialReference source;
    OGRSpatialReference target;
    source.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    target.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    failed = true;
    if (source.importFromWkt(from.ToWkt().toUtf8().constData()) != OGRERR_NONE ||
        target.importFromWkt(to.ToWkt().toUtf8().constData()) != OGRERR_NONE)
        return nullptr;
    Transformation forward(OGRCreateCoordinateTransformation(&source, &target));
    Transformation backward(OGRCreateCoordinateTransformation(&target, &source));
    if (!forward || !backward)
        return nullptr;
    // A drawing may hold thousands of places beyond what a system can show; they are not worth a message each.
    forward->SetEmitErrors(false);
    backward->SetEmitErrors(false);
    failed = false;
    return std::shared_ptr<TxReprojector>(new TxReprojector(std::move(forward), std::move(backward)));
}

bool TxReprojector::transform(std::span<CPoint2D> points) const
{
    return transformPoints(*m_forward, points);
}

CRect2D TxReprojector::transform(const CRect2D &bounds) const
{
    return transformRect(*m_forward, bounds);
}

CRect2D TxReprojector::inverse(const CRect2D &bounds) const
{
    return transformRect(*m_backward, bounds);
}

bool TxReprojector::inverse(std::span<CPoint2D> points) const
{
    return transformPoints(*m_backward, points);
}
