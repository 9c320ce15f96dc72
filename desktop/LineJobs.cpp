#include "DatasetJobs.h"

#include "JobTools.h"
#include "common/TdCommMethods.h"
#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/GeoLine.h"
#include "engine/projection/TxPJCoordSys.h"

#include <QCoreApplication>

#include <algorithm>
#include <memory>
#include <vector>

// The jobs that make or change lines.

using namespace JobTools;

namespace {

constexpr size_t batchSize = 200; // records that are smoothed between two tellings

QString tr(const char *text)
{
    return QCoreApplication::translate("DatasetJobs", text);
}

/// The identifiers of all records, ascending.
std::vector<qint64> identifiers(CDatasetVector &dataset)
{
    CTxQueryDef query;
    query.fields = QStringList{QStringLiteral("TxID")};
    query.options = CTxQueryDef::SkipGeometry;
    std::vector<qint64> ids;
    if (const Records records(dataset, query); records)
        for (; !records->IsEOF(); records->MoveNext())
            ids.push_back(records->GetID());
    std::sort(ids.begin(), ids.end());
    return ids;
}

bool smoothBatch(CDatasetVector &dataset, qint64 first, qint64 last)
{
    CTxQueryDef query;
    query.filter = QStringLiteral("TxID >= %1 AND TxID <= %2").arg(first).arg(last);
    query.options = CTxQueryDef::SkipAttributes;
    const Records records(dataset, query);
    const int errors = TxGetErrorMsgObj().GetErrorCount();
    return records && CTdCommMethods::LineMakeSmooth(records.get()) && TxGetErrorMsgObj().GetErrorCount() == errors;
}

/// The line at @p distance from @p line, part by part; null when no part has one.
std::unique_ptr<CGeoLine> parallelTo(const CGeoLine &line, double distance)
{
    auto made = std::make_unique<CGeoLine>();
    const CPoint2D *points = line.GetPoints();
    for (const qint32 count : line.GetPolyCounts()) {
        CPoint2Ds part;
        const bool done = CTdCommMethods::ParallelLine(points, count, distance, part) && part.size() > 1;
        points += count;
        if (!done)
            continue;
        const auto size = static_cast<qint32>(part.size());
        if (made->GetPartCount() == 0)
            made->MakePolyline(part.data(), size);
        else
            made->AddSubPolyline(part.data(), size);
    }
    return made->GetPartCount() > 0 ? std::move(made) : nullptr;
}

CTxDataset *createLinesLike(const CDatasetVector &source, const DatasetJobs::Place &place)
{
    CTxDatasetDef def;
    def.name = place.name;
    def.type = CElemDatasetInfo::Line;
    def.encType = place.encoding;
    CTxPJCoordSys system;
    source.GetProjection(system);
    def.coordSys = system.ToWkt();
    CTxDataset *made = place.dataSource->CreateDataset(def);
    if (made)
        CTdCommMethods::CopyFieldInfo(&source, static_cast<CDatasetVector *>(made));
    return made;
}

bool addLine(CTxRecordset &target, const CTxRecordset &source, const CGeoLine &line)
{
    if (!target.AddNew() || !target.SetGeometry(&line))
        return false;
    CTdCommMethods::CopyFieldValue(&source, &target);
    return target.Update();
}

bool addParallels(CTxRecordset &target, const CTxRecordset &source, double distance, DatasetJobs::Side side,
                  qint64 &count)
{
    CElemGeometry *read = nullptr;
    if (!source.GetGeometry(read))
        return true; // a record without a geometry has no parallel
    const std::unique_ptr<CElemGeometry> geometry(read);
    const auto *line = dynamic_cast<const CGeoLine *>(geometry.get());
    if (!line)
        return true;
    for (const double sign : {1.0, -1.0}) {
        const bool wanted = side == DatasetJobs::Side::Both || (side == DatasetJobs::Side::Left) == (sign > 0);
        const std::unique_ptr<CGeoLine> made = wanted ? parallelTo(*line, sign * distance) : nullptr;
        if (made && !addLine(target, source, *made))
            return false;
        count += made ? 1 : 0;
    }
    return true;
}

DatasetJobs::Result fillParallels(CDatasetVector &source, CDatasetVector &target, double distance,
                                  DatasetJobs::Side side, Stoppable &work)
{
    const Opened openedSource(source), openedTarget(target);
    if (!openedSource || !openedTarget)
        return work.failure();
    const qint64 total = source.GetRecordCount();
    Transaction transaction(*target.GetDataSource());
    if (!transaction)
        return work.failure();
    DatasetJobs::Result result;
    {
        const Records from(source, CTxQueryDef()), to(target, CTxQueryDef());
        if (!from || !to)
            return work.failure();
        for (qint64 done = 0; !from->IsEOF(); from->MoveNext(), ++done)
            if (!work.tell(done, total) || !addParallels(*to.get(), *from.get(), distance, side, result.count))
                return work.failure();
    }
    return transaction.commit() ? result : work.failure();
}

} // namespace

DatasetJobs::Result DatasetJobs::smoothLines(CDatasetVector &dataset, const TxProgress &progress)
{
    Stoppable work(progress);
    const Opened opened(dataset);
    if (!opened)
        return work.failure();
    const std::vector<qint64> ids = identifiers(dataset);
    Transaction transaction(*dataset.GetDataSource());
    if (!transaction)
        return work.failure();
    const auto total = static_cast<qint64>(ids.size());
    Result result;
    for (size_t first = 0; first < ids.size(); first += batchSize) {
        const size_t last = std::min(first + batchSize, ids.size()) - 1;
        if (work.tell(static_cast<qint64>(first), total) && smoothBatch(dataset, ids[first], ids[last]))
            continue;
        result = work.failure();
        if (!transaction.canTakeBack() && first > 0)
            result.notes << tr("The datasource cannot take changes back: the lines of the first %1 of %2 records stay "
                               "smoothed.")
                                .arg(first)
                                .arg(total);
        return result;
    }
    result.count = total;
    return transaction.commit() ? result : work.failure();
}

DatasetJobs::Result DatasetJobs::parallelLines(CDatasetVector &source, const Place &place, double distance, Side side,
                                               const TxProgress &progress)
{
    Stoppable work(progress);
    CTxDataset *made = createLinesLike(source, place);
    if (!made)
        return work.failure();
    const QString name = made->GetName();
    Result result = fillParallels(source, static_cast<CDatasetVector &>(*made), distance, side, work);
    if (result.state != Result::Done)
        removeHalfMade(*place.dataSource, name, result);
    return result;
}
