#include "engine/base/TxSqlite.h"
#include "engine/data/NativeSchema.h"
#include "engine/data/TxFieldValue.h"
#include "engine/data/TxRecordsetPrivate.h"
#include "engine/geometry/GeoCompound.h"
#include "engine/geometry/GeoLine.h"
#include "engine/geometry/GeoRegion.h"
#include "engine/geometry/GeoText.h"
#include "engine/geometry/OgrGeometry.h"

#include <ogrsf_frmts.h>

#include <algorithm>
#include <cmath>

namespace {

/// Why records of the dataset cannot be changed; empty when they can.
QString refusal(const CDatasetVector &dataset)
{
    const TxDataSourcePrivate &dataSource = TxDataSourcePrivate::of(*dataset.GetDataSource());
    if (dataSource.isReadOnly() || (dataset.GetOptions() & CTxDataset::ReadOnly) != 0)
        return QStringLiteral("“%1” is read-only").arg(dataset.GetName());
    if (!dataset.GetDataSource()->HasCapability(CTxDataSource::CanEditRecords))
        return QStringLiteral("Records of “%1” cannot be changed").arg(dataset.GetName());
    return QString();
}

bool isText(const CElemGeometry *geometry)
{
    return geometry->GetType() == CElemGeometry::Text || geometry->GetType() == CElemGeometry::Text3D;
}

/// Brings the fields that follow from the geometry in line with it. @p places are those of
/// TxRecordsetPrivate::derivedPlaces().
void deriveFields(OGRFeature &feature, const std::vector<int> &places, const CElemGeometry *geometry)
{
    enum Place { Length, Area, Perimeter, Text, TextAngle, TextHeight };
    const auto keep = [&](Place place, auto value) {
        if (places[place] >= 0)
            feature.SetField(places[place], value);
    };
    for (const int place : places) {
        if (place >= 0)
            feature.SetFieldNull(place);
    }
    if (const auto *line = dynamic_cast<const CGeoLine *>(geometry)) {
        keep(Length, line->GetLength());
    } else if (const auto *region = dynamic_cast<const CGeoRegion *>(geometry)) {
        keep(Area, region->GetArea());
        keep(Perimeter, region->GetPerimeter());
    } else if (const auto *text = dynamic_cast<const CGeoText *>(geometry)) {
        const QByteArray said = text->GetText().toUtf8();
        keep(Text, said.constData());
        keep(TextAngle, text->GetAngle());
        keep(TextHeight, text->GetHeight());
    }
}

/// @p geometry, or where it is a compound its members at whatever depth that are none.
std::vector<const CElemGeometry *> leavesOf(const CElemGeometry &geometry)
{
    const auto *compound = dynamic_cast<const CGeoCompound *>(&geometry);
    if (!compound)
        return {&geometry};
    const std::vector<CElemGeometry *> leaves = compound->GetLeaves();
    return {leaves.begin(), leaves.end()};
}

bool isPlace(const CPoint2D &point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

/// True when @p element, no compound, has a coordinate that is not finite. Databases cannot tell where such a thing
/// lies, and spatial indexes lose it. An empty point lies nowhere, which they can tell.
bool isOutOfPlace(const CElemGeometry *element)
{
    const auto *parts = dynamic_cast<const CGeoParts *>(element);
    if (parts)
        return !std::all_of(parts->GetPoints(), parts->GetPoints() + parts->GetPointCount(), isPlace);
    const auto *text = dynamic_cast<const CGeoText *>(element);
    const auto *point = text ? &text->GetAnchor() : dynamic_cast<const CGeoPoint *>(element);
    return point && !point->IsEmpty() && !isPlace(point->GetPoint());
}

/// Runs @p change on the dataset's layer. While no edit transaction is open it is one of its own in a GeoPackage, so
/// that what the driver notes of a table (its extent) is written with the record or not at all.
template<class Change>
bool changeRecords(TxVectorPrivate &vector, Change change)
{
    const TxDataSourcePrivate &dataSource = vector.dataSource();
    OGRLayer *layer = vector.keepsPlace() ? vector.layer() : vector.idleLayer();
    if (!layer)
        return false;
    if (dataSource.transaction || !dataSource.isGeoPackage())
        return change(*layer) == OGRERR_NONE;
    if (dataSource.gdal->StartTransaction() != OGRERR_NONE)
        return false;
    const bool done = TxSqlite::lockForWriting(*dataSource.gdal) && change(*layer) == OGRERR_NONE &&
                      layer->SyncToDisk() == OGRERR_NONE && dataSource.gdal->CommitTransaction() == OGRERR_NONE;
    if (!done)
        TxSqlite::rollback(*dataSource.gdal);
    return done;
}

} // namespace

bool TxRecordsetPrivate::isWritable(size_t index)
{
    if (m_writable.empty()) {
        // Deliberate: key fields can be written though CanUpdate() says no, or nobody could build a network.
        for (const TxRecordsetField &field : fields)
            m_writable.push_back(field.ogrIndex >= 0 &&
                                 (field.info.CanUpdate() || NativeSchema::isKeyField(field.info.GetName())));
    }
    return index < m_writable.size() && m_writable[index];
}

const std::vector<int> &TxRecordsetPrivate::derivedPlaces()
{
    if (m_derived.empty()) {
        for (const char *name : NativeSchema::derivedFields)
            m_derived.push_back(edited->GetFieldIndex(name));
    }
    return m_derived;
}

bool CTxRecordset::Edit()
{
    const QString reason = refusal(*d->dataset);
    if (!reason.isEmpty())
        return TxGdal::fail(reason);
    const qint64 id = d->currentId();
    if (id < 0)
        return TxGdal::fail(QStringLiteral("There is no current record to change"));
    const TxGdal::ErrorCollector errors;
    OGRLayer *layer = d->vector().layer();
    d->edited.reset(layer ? layer->GetFeature(id) : nullptr);
    if (!d->edited)
        return errors.fail(QStringLiteral("The record %1 of “%2” cannot be read").arg(id).arg(d->dataset->GetName()));
    d->editMode = TxRecordsetPrivate::EditMode::Change;
    return true;
}

bool CTxRecordset::AddNew()
{
    const QString reason = refusal(*d->dataset);
    if (!reason.isEmpty())
        return TxGdal::fail(reason);
    const TxGdal::ErrorCollector errors;
    OGRLayer *layer = d->cursor ? d->vector().layer() : nullptr; // none behind a close or a rollback
    if (!layer)
        return errors.fail(QStringLiteral("“%1” takes no records now").arg(d->dataset->GetName()));
    d->edited.reset(OGRFeature::CreateFeature(layer->GetLayerDefn()));
    d->edited->FillUnsetWithDefault(FALSE, nullptr);
    d->editMode = TxRecordsetPrivate::EditMode::Add;
    return true;
}

bool CTxRecordset::SetFieldValue(const QString &name, const CTxVariant &value)
{
    const int index = d->findField(name);
    return index >= 0 ? SetFieldValue(index, value)
                      : TxGdal::fail(
                            QStringLiteral("There is no field “%1” in “%2”").arg(name.left(80), d->dataset->GetName()));
}

bool CTxRecordset::SetFieldValue(int index, const CTxVariant &value)
{
    if (d->editMode == TxRecordsetPrivate::EditMode::None)
        return TxGdal::fail(QStringLiteral("No record is open for change"));
    if (index < 0 || index >= GetFieldCount())
        return TxGdal::fail(QStringLiteral("There is no field number %1").arg(index));
    const TxRecordsetField &field = d->fields[static_cast<size_t>(index)];
    if (!d->isWritable(static_cast<size_t>(index)))
        return TxGdal::fail(QStringLiteral("The field “%1” cannot be written").arg(field.info.GetName()));
    const QString reason = TxFieldValue::write(*d->edited, field.ogrIndex, field.info, value);
    return reason.isEmpty() || TxGdal::fail(QStringLiteral("The value “%1” for the field “%2” %3")
                                                .arg(value.toText().left(80), field.info.GetName(), reason));
}

bool CTxRecordset::SetGeometry(const CElemGeometry *geometry)
{
    if (d->editMode == TxRecordsetPrivate::EditMode::None)
        return TxGdal::fail(QStringLiteral("No record is open for change"));
    const QString name = d->dataset->GetName();
    OGRLayer *layer = d->vector().layer();
    if (!layer || (geometry && layer->GetGeomType() == wkbNone))
        return TxGdal::fail(QStringLiteral("“%1” keeps no geometries").arg(name));
    const std::vector<int> &places = d->derivedPlaces();
    constexpr size_t textPlace = 3;
    static_assert(NativeSchema::derivedFields[textPlace] == NativeSchema::text);
    const bool keepsText = places[textPlace] >= 0;
    std::vector<const CElemGeometry *> leaves;
    if (geometry)
        leaves = leavesOf(*geometry);
    // Members of compounds have no fields of their own to keep what a text says.
    const bool hasText = std::any_of(leaves.begin(), leaves.end(), isText);
    if (hasText && (!keepsText || geometry->GetType() == CElemGeometry::Compound))
        return TxGdal::fail(QStringLiteral("“%1” keeps no texts").arg(name));
    if (std::any_of(leaves.begin(), leaves.end(), isOutOfPlace))
        return TxGdal::fail(QStringLiteral("“%1” keeps no coordinates that are infinite or no number").arg(name));
    if (geometry && d->vector().awaitsShape()) {
        if (const std::unique_ptr<OGRGeometry> asItIs = OgrGeometry::toOgr(*geometry, wkbUnknown))
            d->vector().settleMeasures(*asItIs);
    }
    std::unique_ptr<OGRGeometry> made = geometry ? OgrGeometry::toOgr(*geometry, layer->GetGeomType()) : nullptr;
    if (geometry && !made && OgrGeometry::isNestedTooDeep(*geometry))
        return TxGdal::fail(QStringLiteral("“%1” keeps compounds nested up to %2 levels deep, not more")
                                .arg(name)
                                .arg(OgrGeometry::maximumDepth));
    if (geometry && !made)
        return TxGdal::fail(QStringLiteral("“%1” keeps no geometries of that kind").arg(name));
    if (made)
        made->assignSpatialReference(layer->GetSpatialRef());
    d->edited->SetGeometryDirectly(made.release());
    deriveFields(*d->edited, places, geometry);
    return true;
}

bool CTxRecordset::Update()
{
    using EditMode = TxRecordsetPrivate::EditMode;
    if (d->editMode == EditMode::None)
        return TxGdal::fail(QStringLiteral("No record is open for change"));
    const TxGdal::ErrorCollector errors;
    const QString failure = QStringLiteral("Cannot write the record to “%1”").arg(d->dataset->GetName());
    const bool adds = d->editMode == EditMode::Add;
    const bool done = changeRecords(d->vector(), [&](OGRLayer &target) {
        return adds ? target.CreateFeature(d->edited.get()) : target.SetFeature(d->edited.get());
    });
    if (!done || errors.hasFailure()) {
        if (adds)
            d->edited->SetFID(OGRNullFID); // a number may have been given that is not taken
        return errors.fail(failure);
    }
    if (adds && d->vector().dataSource().transaction)
        d->vector().countAdded();
    const qint64 id = d->edited->GetFID();
    d->edited.reset();
    d->editMode = EditMode::None;
    d->vector().contentChanged();
    d->pinWritten(id);
    return true;
}

void CTxRecordset::CancelUpdate()
{
    d->edited.reset();
    d->editMode = TxRecordsetPrivate::EditMode::None;
}

bool CTxRecordset::Delete()
{
    const QString reason = refusal(*d->dataset);
    if (!reason.isEmpty())
        return TxGdal::fail(reason);
    const qint64 id = d->currentId();
    if (id < 0)
        return TxGdal::fail(QStringLiteral("There is no current record to delete"));
    const TxGdal::ErrorCollector errors;
    if (!changeRecords(d->vector(), [id](OGRLayer &target) { return target.DeleteFeature(id); }))
        return errors.fail(QStringLiteral("Cannot delete the record %1 of “%2”").arg(id).arg(d->dataset->GetName()));
    CancelUpdate();
    d->vector().contentChanged();
    d->markGone();
    return true;
}
