#include "engine/data/DatasetRaster.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/NativeSchema.h"
#include "engine/data/ShapefileFields.h"
#include "engine/data/TxDatasetKind.h"
#include "engine/data/TxDatasetMaker.h"
#include "engine/projection/TxPJCoordSys.h"

namespace {

/// True when the datasource can hold datasets of the kind @p kind and will know them as such when it is opened again.
bool canHold(const TxDataSourcePrivate &dataSource, CElemDatasetInfo::Type kind)
{
    const bool isNative = dataSource.engineType == CTxDataSourceStorage::Native;
    if (NativeSchema::holdsCells(kind))
        return dataSource.isGeoPackage() && (isNative || kind != CElemDatasetInfo::DEM);
    if (!NativeSchema::holdsRecords(kind))
        return false;
    if (isNative)
        return true;
    if (kind == CElemDatasetInfo::CAD) // a shapefile's geometry type is fixed by its first record
        return dataSource.engineType != CTxDataSourceStorage::Shapefile;
    return TxDatasetKind::ofGeometry(TxDatasetKind::geometryOf(kind)) == kind;
}

/// Why the dataset that is to be the parent cannot be it; empty when it can or none is wanted.
QString parentRefusal(const TxDataSourcePrivate &dataSource, const CTxDatasetDef &def)
{
    const QString &name = def.parentDataset;
    if (name.isEmpty())
        return QString();
    if (dataSource.engineType != CTxDataSourceStorage::Native)
        return QStringLiteral("“%1” keeps no child datasets").arg(dataSource.alias);
    const CTxDataset *parent = dataSource.find(name);
    if (!parent)
        return QStringLiteral("There is no dataset “%1” to be the parent").arg(name);
    if (parent->GetChildDataset() && !TxDatasetMaker::replacedNodes(dataSource, def))
        return QStringLiteral("“%1” has a child dataset already").arg(name);
    return QString();
}

QString refusal(const TxDataSourcePrivate &dataSource, const CTxDatasetDef &def)
{
    const QString shownName = def.name.left(80);
    if (dataSource.isTaken(def.name))
        return QStringLiteral("There is a dataset “%1” already").arg(shownName);
    if (!dataSource.q->IsAvailableDatasetName(def.name))
        return QStringLiteral("“%1” cannot be the name of a dataset").arg(shownName);
    if (!canHold(dataSource, def.type))
        return QStringLiteral("“%1” cannot hold datasets of the kind of “%2”").arg(dataSource.alias, shownName);
    if (!CElemDataEnc::isKnown(def.encType))
        return QStringLiteral("There is no encoding number %1").arg(def.encType);
    if ((def.options & CTxDataset::Library) != 0 && dataSource.engineType != CTxDataSourceStorage::Native)
        return QStringLiteral("“%1” keeps no library datasets").arg(dataSource.alias);
    return parentRefusal(dataSource, def);
}

/// Calls the fields @p infos what a shapefile calls them.
void cutNames(CTxFieldInfos &infos)
{
    QStringList names;
    for (const CTxFieldInfo &info : infos)
        names << info.GetName();
    const QStringList cut = ShapefileFields::cutNames(names);
    for (qsizetype i = 0; i < infos.size(); ++i)
        infos[i].SetName(cut[i]);
}

} // namespace

CTxDataset *CTxDataSource::CreateDataset(const CTxDatasetDef &def)
{
    return TxDatasetMaker::make(*d, def, TxDatasetMaker::FieldNames::Checked);
}

CTxDataset *CTxDataSource::CreateDatasetFrom(const QString &name, const CTxDataset *source,
                                             CElemDataEnc::encType encoding)
{
    if (!source) {
        TxGdal::fail(QStringLiteral("No template was given for the dataset “%1”").arg(name));
        return nullptr;
    }
    CTxDatasetDef def;
    def.name = name;
    def.type = source->GetType();
    def.encType = encoding;
    CTxPJCoordSys coordSys;
    // Its own alone: what it takes over from its datasource it would keep for ever in another one.
    TxDataSourcePrivate::of(*source->GetDataSource()).ownProjection(*source, coordSys);
    def.coordSys = coordSys.ToWkt();
    std::optional<double> noData;
    if (source->IsVector()) {
        const auto &vector = static_cast<const CDatasetVector &>(*source);
        CTxFieldInfo info;
        for (int i = 0; i < vector.GetFieldCount(); ++i) {
            const bool isUsers = vector.GetFieldInfo(i, info) && !info.IsSystemField() &&
                                 info.GetName().compare(QLatin1String(NativeSchema::userId), Qt::CaseInsensitive);
            if (isUsers)
                def.fields.append(info);
        }
        if (d->engineType == CTxDataSourceStorage::Shapefile)
            cutNames(def.fields);
    } else {
        const bool isNative = d->engineType == CTxDataSourceStorage::Native;
        const QString reason =
            TxDatasetMaker::describeRaster(static_cast<const CDatasetRaster &>(*source), isNative, def, noData);
        if (!reason.isEmpty()) {
            TxGdal::fail(QStringLiteral("Cannot create the dataset “%1” like “%2”, which %3")
                             .arg(name.left(80), source->GetName(), reason));
            return nullptr;
        }
    }
    return TxDatasetMaker::make(*d, def, TxDatasetMaker::FieldNames::AsTheyAre, noData);
}

CTxDataset *TxDatasetMaker::replacedNodes(const TxDataSourcePrivate &dataSource, const CTxDatasetDef &def)
{
    const CTxDataset *parent = dataSource.find(def.parentDataset);
    if (def.type != CElemDatasetInfo::Point || !parent || parent->GetType() != CElemDatasetInfo::Network)
        return nullptr;
    CTxDataset *nodes = parent->GetChildDataset();
    const bool isEmpty =
        nodes && nodes->IsVector() && static_cast<const CDatasetVector *>(nodes)->GetRecordCount() == 0;
    return isEmpty ? nodes : nullptr;
}

CTxDataset *TxDatasetMaker::make(TxDataSourcePrivate &dataSource, const CTxDatasetDef &def, FieldNames names,
                                 std::optional<double> noData)
{
    const QString reason = refusal(dataSource, def);
    if (!reason.isEmpty()) {
        TxGdal::fail(reason);
        return nullptr;
    }
    return NativeSchema::holdsCells(def.type) ? makeRaster(dataSource, def, noData)
                                              : makeVector(dataSource, def, names);
}
