#include "DatasetJobs.h"

#include "JobTools.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/projection/TxPJCoordSys.h"

#include <QCoreApplication>

using namespace JobTools;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("DatasetJobs", text);
}

QStringList userFields(const CDatasetVector &dataset)
{
    QStringList names;
    CTxFieldInfo info;
    for (int i = 0; i < dataset.GetFieldCount(); ++i)
        if (dataset.GetFieldInfo(i, info) && !isKeptBySystem(info))
            names << info.GetName();
    return names;
}

/// What the user should know of the fields of @p copy, which was made like @p source: those that had to be called
/// otherwise, and those that it lacks.
QStringList fieldNotes(const CDatasetVector &source, const CDatasetVector &copy)
{
    const QStringList from = userFields(source), to = userFields(copy);
    QStringList renamed, lost;
    for (qsizetype i = 0; i < from.size(); ++i) {
        if (copy.FindField(from[i]) >= 0)
            continue;
        if (from.size() == to.size())
            renamed << tr("%1 is %2").arg(from[i], to[i]);
        else
            lost << from[i];
    }
    const QString separator = QStringLiteral(", ");
    QStringList notes;
    if (!renamed.isEmpty())
        notes << tr("The names of these fields were cut in the copy: %1.").arg(renamed.join(separator));
    if (!lost.isEmpty())
        notes << tr("The copy has no place for these fields: %1.").arg(lost.join(separator));
    return notes;
}

/// Appends everything of @p source, or what lies in @p bounds, to @p target.
DatasetJobs::Result appendRecords(CDatasetVector &source, CDatasetVector &target, const QString &tagField,
                                  const CRect2D &bounds, Stoppable &work)
{
    const Opened openedSource(source), openedTarget(target);
    if (!openedSource || !openedTarget)
        return work.failure();
    const qint64 before = target.GetRecordCount();
    CTxQueryDef query;
    CTxPJCoordSys from, to;
    source.GetProjection(from);
    target.GetProjection(to);
    if (from == to)
        query.bounds = bounds; // the source's own index finds them; the cutting is Append's
    const Records records(source, query);
    if (!records)
        return work.failure();
    CTxAppendDef def;
    def.tagField = tagField;
    def.bounds = bounds;
    def.progress = work.progress();
    if (!target.Append(records.get(), def))
        return work.failure();
    DatasetJobs::Result result;
    result.count = target.GetRecordCount() - before;
    return result;
}

DatasetJobs::Result fill(CTxDataset &source, CTxDataset &copy, Stoppable &work)
{
    if (!source.IsVector()) {
        const Opened openedSource(source), openedCopy(copy);
        DatasetJobs::Result result;
        result.count = -1;
        const bool done =
            openedSource && openedCopy &&
            static_cast<CDatasetRaster &>(copy).Append(&static_cast<CDatasetRaster &>(source), true, work.progress());
        return done ? result : work.failure();
    }
    auto &from = static_cast<CDatasetVector &>(source);
    auto &to = static_cast<CDatasetVector &>(copy);
    DatasetJobs::Result result = appendRecords(from, to, QString(), CRect2D(), work);
    result.notes << fieldNotes(from, to);
    CTxDataset *child = source.GetChildDataset();
    if (result.state != DatasetJobs::Result::Done || !child || !child->IsVector())
        return result;
    if (!copy.GetChildDataset()) {
        result.notes << tr("The datasource keeps no child datasets: “%1” was not copied.").arg(child->GetName());
        return result;
    }
    const DatasetJobs::Result ofChild =
        appendRecords(static_cast<CDatasetVector &>(*child), static_cast<CDatasetVector &>(*copy.GetChildDataset()),
                      QString(), CRect2D(), work);
    return ofChild.state == DatasetJobs::Result::Done ? result : ofChild;
}

} // namespace

bool DatasetJobs::canChange(const CTxDataset &dataset)
{
    return dataset.GetDataSource()->HasCapability(CTxDataSource::CanEditRecords) &&
           !(dataset.GetOptions() & CTxDataset::ReadOnly);
}

DatasetJobs::Result DatasetJobs::copy(CTxDataset &source, const Place &place, const TxProgress &progress)
{
    Stoppable work(progress);
    CTxDataset *made = place.dataSource->CreateDatasetFrom(place.name, &source, place.encoding);
    if (!made)
        return work.failure();
    const QString name = made->GetName();
    Result result = fill(source, *made, work);
    if (result.state != Result::Done)
        removeHalfMade(*place.dataSource, name, result);
    return result;
}

DatasetJobs::Result DatasetJobs::append(CDatasetVector &source, CDatasetVector &target, const QString &tagField,
                                        const CRect2D &bounds, const TxProgress &progress)
{
    Stoppable work(progress);
    return appendRecords(source, target, tagField, bounds, work);
}

DatasetJobs::Result DatasetJobs::append(CDatasetRaster &source, CDatasetRaster &target, bool replace,
                                        const TxProgress &progress)
{
    Stoppable work(progress);
    const Opened openedSource(source), openedTarget(target);
    Result result;
    result.count = -1;
    return openedSource && openedTarget && target.Append(&source, replace, work.progress()) ? result : work.failure();
}

DatasetJobs::Result DatasetJobs::append(const ImageFile &image, CDatasetRaster &target, bool replace,
                                        const TxProgress &progress)
{
    Stoppable work(progress);
    const Opened openedTarget(target);
    Result result;
    result.count = -1;
    return openedTarget && target.Append(image.path, image.bounds, CDatasetRaster::AutoDetect, replace, work.progress())
               ? result
               : work.failure();
}
