#include "engine/data/AppendWriter.h"

#include "engine/data/AppendChange.h"
#include "engine/data/NativeSchema.h"
#include "engine/data/TxFieldTypes.h"
#include "engine/geometry/GeoText.h"
#include "engine/geometry/OgrText.h"

#include <ogrsf_frmts.h>

namespace {

/// Places in NativeSchema::derivedFields.
enum Derived { Length, Area, Perimeter, Said, Angle, Height };
static_assert(NativeSchema::derivedFields[Said] == NativeSchema::text);

/// Adds up what a line, an area or a collection of them measures.
double lengthOf(const OGRGeometry &geometry)
{
    const OGRwkbGeometryType type = geometry.getGeometryType();
    if (OGR_GT_IsCurve(type))
        return geometry.toCurve()->get_Length();
    double length = 0.0;
    if (OGR_GT_IsSubClassOf(type, wkbGeometryCollection)) {
        for (const OGRGeometry *member : *geometry.toGeometryCollection())
            length += lengthOf(*member);
    } else if (OGR_GT_IsSubClassOf(type, wkbPolygon)) {
        for (const OGRLinearRing *ring : *geometry.toPolygon())
            length += ring->get_Length();
    }
    return length;
}

double areaOf(const OGRGeometry &geometry)
{
    const OGRwkbGeometryType type = geometry.getGeometryType();
    if (OGR_GT_IsSubClassOf(type, wkbPolygon))
        return geometry.toPolygon()->get_Area();
    double area = 0.0;
    if (OGR_GT_IsSubClassOf(type, wkbGeometryCollection)) {
        for (const OGRGeometry *member : *geometry.toGeometryCollection())
            area += areaOf(*member);
    }
    return area;
}

} // namespace

AppendWriter::AppendWriter(const TxRecordsetPrivate &source, TxVectorPrivate &target, int tagIndex,
                           const TxReprojector *reprojector, const CRect2D &bounds)
    : m_source(source), m_target(target), m_layer(target.layer()), m_targetName(target.q->GetName()),
      m_fields(source, target, tagIndex),
      m_geometry(*m_layer->GetLayerDefn(), target.dataSource().driver == "ESRI Shapefile", reprojector, bounds),
      m_feature(OGRFeature::CreateFeature(m_layer->GetLayerDefn()))
{
    m_feature->FillUnsetWithDefault(FALSE, nullptr);
    for (size_t i = 0; i < m_derived.size(); ++i) {
        m_derived[i] = m_feature->GetFieldIndex(NativeSchema::derivedFields[i]);
        m_hasDerived = m_hasDerived || m_derived[i] >= 0;
    }
}

AppendWriter::Result AppendWriter::write(TxCursor &cursor, AppendChange &change)
{
    m_reason.clear();
    std::unique_ptr<OGRGeometry> geometry = m_layer->GetGeomType() == wkbNone ? nullptr : cursor.takeGeometry();
    m_text.isThere = false;
    if (geometry && wkbFlatten(geometry->getGeometryType()) == wkbPoint && !takeText(cursor, *geometry))
        return Result::Refused;
    if (geometry && m_target.awaitsShape())
        m_target.settleMeasures(*geometry);
    switch (m_geometry.fit(geometry)) {
    case AppendGeometry::Result::Fits:
        break;
    case AppendGeometry::Result::Outside:
        return Result::Outside;
    case AppendGeometry::Result::Refused:
        m_reason = QStringLiteral("its geometry ") + m_geometry.reason();
        return Result::Refused;
    }
    if (!writeFields(cursor, change))
        return Result::Refused;
    if (m_hasDerived)
        writeDerived(geometry.get());
    if (geometry)
        geometry->assignSpatialReference(m_layer->GetSpatialRef());
    if (m_feature->GetGeomFieldCount() > 0)
        m_feature->SetGeometryDirectly(geometry.release());
    m_feature->SetFID(OGRNullFID);
    return m_layer->CreateFeature(m_feature.get()) == OGRERR_NONE ? Result::Written : Result::Refused;
}

bool AppendWriter::writeFields(const TxCursor &cursor, AppendChange &change)
{
    for (const AppendFields::Pair &pair : m_fields.pairs()) {
        const TxRawValue value = cursor.raw(pair.from);
        const QString reason = m_fields.write(*m_feature, pair, value);
        if (!reason.isEmpty()) {
            m_reason =
                QStringLiteral("the value “%1” for the field “%2” %3")
                    .arg(TxFieldTypes::fromRaw(value, pair.fromType).toText().left(80), pair.info.GetName(), reason);
            return false;
        }
        if (m_fields.widens(pair, value) && !change.beforeWidening()) {
            m_reason = QStringLiteral("the table of “%1” cannot be copied before its field “%2” gets wider")
                           .arg(m_targetName, pair.info.GetName());
            return false;
        }
    }
    return true;
}

bool AppendWriter::takeText(const TxCursor &cursor, const OGRGeometry &geometry)
{
    const auto numberAt = [&](int field) {
        return field >= 0 ? TxFieldTypes::fromRaw(cursor.raw(field), CTxFieldInfo::Double).toDouble() : 0.0;
    };
    const TxRecordsetPrivate::TextFields &fields = m_source.textFields();
    const TxRawValue said = fields.text >= 0 ? cursor.raw(fields.text) : TxRawValue();
    if (said.kind != TxRawValue::Null) {
        m_text = {true, TxFieldTypes::fromRaw(said, CTxFieldInfo::Text).toText().toUtf8(), numberAt(fields.angle),
                  numberAt(fields.height)};
    } else {
        const QByteArray style = cursor.style();
        const OGRPoint &place = *geometry.toPoint();
        const std::unique_ptr<CElemGeometry> drawn =
            style.isEmpty() ? nullptr : OgrText::fromStyle(style, CGeoPoint(place.getX(), place.getY()));
        if (const auto *text = dynamic_cast<const CGeoText *>(drawn.get()))
            m_text = {true, text->GetText().toUtf8(), text->GetAngle(), text->GetHeight()};
    }
    if (!m_text.isThere || m_derived[Said] >= 0)
        return true;
    m_reason = QStringLiteral("its geometry is a text, and “%1” keeps no texts").arg(m_targetName);
    return false;
}

void AppendWriter::writeDerived(const OGRGeometry *geometry)
{
    for (const int place : m_derived) {
        if (place >= 0)
            m_feature->SetFieldNull(place);
    }
    const auto keep = [this](Derived which, auto value) {
        if (m_derived[which] >= 0)
            m_feature->SetField(m_derived[which], value);
    };
    if (m_text.isThere) {
        keep(Said, m_text.said.constData());
        keep(Angle, m_text.angle);
        keep(Height, m_text.height);
    }
    if (!geometry)
        return;
    if (m_derived[Length] >= 0)
        keep(Length, lengthOf(*geometry));
    if (m_derived[Area] >= 0)
        keep(Area, areaOf(*geometry));
    if (m_derived[Perimeter] >= 0)
        keep(Perimeter, lengthOf(*geometry));
}
