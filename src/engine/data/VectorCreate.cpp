#include "engine/data/NativeCatalogue.h"
#include "engine/data/NativeSchema.h"
#include "engine/data/TxDatasetKind.h"
#include "engine/data/TxDatasetMaker.h"
#include "engine/data/TxFieldDefinition.h"
#include "engine/data/TxNameRules.h"
#include "engine/data/TxNewCoordSys.h"
#include "engine/data/TxSchemaChange.h"

#include <ogrsf_frmts.h>

#include <QSet>

namespace {

/// A layer that is to be made.
struct LayerPlan
{
    TxDatasetEntry entry;
    CTxFieldInfos fields; ///< all of them, in order
};

/// Makes the layers of one dataset with its child and its tile index.
class VectorMaker
{
public:
    VectorMaker(TxDataSourcePrivate &dataSource, const CTxDatasetDef &def)
        : m_d(dataSource), m_def(def), m_isNative(dataSource.engineType == CTxDataSourceStorage::Native),
          m_replaced(TxDatasetMaker::replacedNodes(dataSource, def))
    {
        plan();
    }

    /// Why the fields cannot be made; empty when they can.
    QString fieldRefusal(TxDatasetMaker::FieldNames names) const;
    /// Makes the layers; nodes that are replaced go in the same change.
    bool makeAll();
    /// Enters what was made in the list of datasets. @return the dataset itself.
    CTxDataset *enterAll();

private:
    NativeSchema::Role role() const;
    void plan();
    OGRLayer *makeLayer(const LayerPlan &layerPlan);

    TxDataSourcePrivate &m_d;
    const CTxDatasetDef &m_def;
    const bool m_isNative;
    CTxDataset *const m_replaced; // not owned; null for none
    QList<LayerPlan> m_plans;     // the dataset itself first
    TxNewCoordSys m_coordSys;
};

NativeSchema::Role VectorMaker::role() const
{
    const CTxDataset *parent = m_d.find(m_def.parentDataset);
    if (m_def.type == CElemDatasetInfo::Point && parent && parent->GetType() == CElemDatasetInfo::Network)
        return NativeSchema::Role::Nodes;
    const bool isIndex = m_def.type == CElemDatasetInfo::Region && (m_def.options & CTxDataset::Internal) != 0;
    return isIndex ? NativeSchema::Role::TileIndex : NativeSchema::Role::Own;
}

void VectorMaker::plan()
{
    LayerPlan main;
    main.entry.name = m_def.name;
    main.entry.type = m_def.type;
    main.entry.encType = m_def.encType;
    main.entry.parent = m_def.parentDataset;
    if (m_isNative) {
        main.entry.options = m_def.options & (CTxDataset::Library | CTxDataset::Internal | CTxDataset::Temporary);
        main.fields = NativeSchema::fields(m_def.type, role());
    }
    main.fields.append(m_def.fields);

    QStringList taken = {m_def.name};
    if (m_isNative && m_def.type == CElemDatasetInfo::Network) {
        LayerPlan nodes;
        nodes.entry.name = m_d.q->GetUnoccupiedDatasetName(m_def.name + QStringLiteral("_Node"), &taken);
        nodes.entry.type = CElemDatasetInfo::Point;
        nodes.entry.parent = m_def.name;
        nodes.fields = NativeSchema::fields(nodes.entry.type, NativeSchema::Role::Nodes);
        taken.append(nodes.entry.name);
        m_plans.append(nodes);
    }
    if (main.entry.options & CTxDataset::Library) {
        LayerPlan index;
        const bool exists = !m_def.tileIndex.isEmpty() && m_d.findExact(m_def.tileIndex);
        index.entry.name =
            exists ? m_def.tileIndex
                   : m_d.q->GetUnoccupiedDatasetName(
                         m_def.tileIndex.isEmpty() ? m_def.name + QStringLiteral("_Tile") : m_def.tileIndex, &taken);
        index.entry.type = CElemDatasetInfo::Region;
        index.entry.options = CTxDataset::Internal;
        index.fields = NativeSchema::fields(index.entry.type, NativeSchema::Role::TileIndex);
        main.entry.tileIndex = index.entry.name;
        if (!exists)
            m_plans.append(index);
    }
    m_plans.prepend(main);
}

QString VectorMaker::fieldRefusal(TxDatasetMaker::FieldNames names) const
{
    QSet<QString> taken;
    for (const CTxFieldInfo &info : NativeSchema::fields(m_def.type, role()))
        taken.insert(info.GetName().toCaseFolded());
    for (const CTxFieldInfo &info : m_def.fields) {
        const QString &name = info.GetName();
        const bool isAllowed =
            names == TxDatasetMaker::FieldNames::Checked ? TxNameRules::isFieldName(name) : !name.trimmed().isEmpty();
        if (!isAllowed || info.IsSystemField())
            return QStringLiteral("“%1” cannot be the name of a field").arg(name.left(80));
        if (taken.contains(name.toCaseFolded()))
            return QStringLiteral("There are two fields “%1”").arg(name);
        taken.insert(name.toCaseFolded());
    }
    return QString();
}

OGRLayer *VectorMaker::makeLayer(const LayerPlan &layerPlan)
{
    CPLStringList options;
    if (m_isNative) {
        options.SetNameValue("FID", NativeSchema::idColumn);
        options.SetNameValue("GEOMETRY_NAME", NativeSchema::geometryColumn);
    } else if (m_d.engineType == CTxDataSourceStorage::PostgreSQL || m_d.engineType == CTxDataSourceStorage::SQLite) {
        options.SetNameValue("LAUNDER", "NO"); // names stay as they were given
    } else if (m_d.engineType == CTxDataSourceStorage::Shapefile) {
        options.SetNameValue("ENCODING", "UTF-8"); // else question marks take the place of most scripts' letters
    }
    OGRwkbGeometryType geometry = TxDatasetKind::geometryOf(layerPlan.entry.type);
    if (m_isNative && layerPlan.entry.type == CElemDatasetInfo::TIN)
        geometry = wkbMultiPolygon25D; // what every GeoPackage reader knows; the catalogue tells that it is a TIN
    OGRLayer *layer =
        m_d.gdal->CreateLayer(layerPlan.entry.source.constData(), m_coordSys.reference(), geometry, options.List());
    return layer && TxFieldDefinition::addTo(*layer, layerPlan.fields, m_d.driver) ? layer : nullptr;
}

bool VectorMaker::makeAll()
{
    const TxGdal::ErrorCollector errors;
    const QString failure = QStringLiteral("Cannot create the dataset “%1”").arg(m_def.name);
    if (!m_coordSys.read(m_def.coordSys))
        return errors.fail(failure + QStringLiteral(": its coordinate system cannot be read"));
    if (m_replaced)
        m_d.endRecordsets(); // SQLite drops no table while a statement of the connection reads
    TxSchemaChange change(m_d);
    if (!change.isOpen())
        return errors.fail(failure);
    bool done = !m_replaced || TxDatasetMaker::removeStored(m_d, *m_replaced);
    for (LayerPlan &layerPlan : m_plans) {
        if (!done)
            break;
        layerPlan.entry.source = layerPlan.entry.name.toUtf8();
        OGRLayer *layer = makeLayer(layerPlan);
        // Drivers put off what they can; the tables have to stand before the change is committed.
        done = layer && layer->SyncToDisk() == OGRERR_NONE && !m_coordSys.hasFailed(errors);
        if (done && m_isNative)
            done = NativeCatalogue::addDataset(*m_d.gdal, layerPlan.entry) &&
                   NativeCatalogue::addFields(*m_d.gdal, layerPlan.entry.name, layerPlan.fields);
    }
    const bool undoesItself = change.undoesItself();
    const bool isCommitted = done && change.commit();
    if (isCommitted && !m_coordSys.hasFailed(errors))
        return true;
    if (isCommitted && undoesItself) {
        m_d.reopen(); // the driver saw only now that its database refuses the table, and goes on telling of it
    } else if (!undoesItself) {
        for (int i = m_d.gdal->GetLayerCount() - 1; i >= 0; --i) {
            if (qstrcmp(m_d.gdal->GetLayer(i)->GetName(), m_plans.front().entry.source) == 0)
                m_d.gdal->DeleteLayer(i);
        }
    }
    return errors.fail(failure);
}

CTxDataset *VectorMaker::enterAll()
{
    if (m_replaced)
        m_d.removeDataset(m_replaced);
    for (const LayerPlan &layerPlan : m_plans) {
        CTxDataset *made = m_d.addDataset(layerPlan.entry);
        if (!layerPlan.entry.parent.isEmpty())
            m_d.attachChild(m_d.find(layerPlan.entry.parent), made);
    }
    return m_d.findExact(m_def.name);
}

} // namespace

CTxDataset *TxDatasetMaker::makeVector(TxDataSourcePrivate &dataSource, const CTxDatasetDef &def, FieldNames names)
{
    QString reason = TxSchemaChange::refusal(dataSource);
    VectorMaker maker(dataSource, def);
    if (reason.isEmpty())
        reason = maker.fieldRefusal(names);
    if (!reason.isEmpty()) {
        TxGdal::fail(reason);
        return nullptr;
    }
    if (!maker.makeAll())
        return nullptr;
    // The server's driver would gather the first records of a table that it made itself, and tell no identifiers. That
    // of shapefiles puts off the heads of the files that it made, which an append cannot keep then.
    const bool isPutOff = dataSource.engineType == CTxDataSourceStorage::PostgreSQL ||
                          dataSource.engineType == CTxDataSourceStorage::Shapefile;
    if (isPutOff && !dataSource.reopen())
        return nullptr;
    return maker.enterAll();
}
