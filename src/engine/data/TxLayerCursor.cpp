#include "engine/data/TxCursors.h"
#include "engine/data/TxFieldTypes.h"

#include <ogrsf_frmts.h>

namespace {

class LayerCursor : public TxCursor
{
public:
    LayerCursor(TxVectorPrivate &vector, const TxQueryPlan &plan)
        : m_vector(vector), m_plan(plan), m_bounds(plan.query().bounds),
          m_filter(plan.layerFilter(idName(vector)).toUtf8())
    {
        for (const TxRecordsetField &field : plan.fields())
            m_fields.push_back({field.ogrIndex, field.info.GetType()});
    }

    ~LayerCursor() override
    {
        if (m_vector.walker == this)
            m_vector.idleLayer();
    }

    /// Makes the layer's reading position this cursor's, before the first record.
    bool takeOver()
    {
        m_layer = m_vector.idleLayer();
        if (!m_layer)
            return false;
        m_vector.walker = this;
        if (!m_filter.isEmpty() && m_layer->SetAttributeFilter(m_filter.constData()) != OGRERR_NONE)
            return false;
        if (!m_bounds.IsVoid())
            m_layer->SetSpatialFilterRect(m_bounds.left, m_bounds.bottom, m_bounds.right, m_bounds.top);
        // Features without some of their fields must not come near a layer that is edited.
        if (m_vector.dataSource().isReadOnly())
            ignoreUnwanted();
        m_layer->ResetReading();
        return true;
    }

    bool first() override
    {
        m_taken = 0;
        return takeOver() && next();
    }

    bool next() override
    {
        if (m_vector.walker != this && !resume())
            return false;
        m_feature.reset(m_layer->GetNextFeature());
        if (m_feature)
            ++m_taken;
        return m_feature != nullptr;
    }

    qint64 id() const override { return m_feature->GetFID(); }

    void value(int index, CTxVariant &value) const override
    {
        value = read(*m_feature, m_fields[static_cast<size_t>(index)]);
    }

    TxRawValue raw(int index) const override
    {
        const int ogrIndex = m_fields[static_cast<size_t>(index)].ogrIndex;
        return ogrIndex < 0 ? TxRawValue::ofInteger(m_feature->GetFID()) : TxFieldTypes::rawOf(*m_feature, ogrIndex);
    }

    std::unique_ptr<OGRGeometry> geometry() const override { return copiedGeometry(*m_feature); }

    std::unique_ptr<OGRGeometry> takeGeometry() override
    {
        return std::unique_ptr<OGRGeometry>(m_plan.wantsGeometry() ? m_feature->StealGeometry() : nullptr);
    }

    QByteArray style() const override { return m_feature->GetStyleString(); }

    bool fetch(qint64 id, bool matching, TxRecord &record) override
    {
        OGRLayer *layer = m_vector.layer();
        if (!layer)
            return false;
        const bool keepsPlace = m_vector.keepsPlace();
        if (!keepsPlace && m_vector.walker)
            layer = m_vector.idleLayer();
        OGRFeatureUniquePtr feature(layer->GetFeature(id));
        // Reading on is quick where a file is read by lines, but a driver may find only what lies ahead.
        if (!feature && !keepsPlace) {
            layer->ResetReading();
            feature.reset(layer->GetFeature(id));
        }
        if (!feature || (matching && !matches(*layer, *feature)))
            return false;
        record.id = id;
        record.values.clear();
        for (const Field &field : m_fields)
            record.values.push_back(read(*feature, field));
        record.geometry = copiedGeometry(*feature);
        record.style = feature->GetStyleString();
        return true;
    }

    qint64 count() override
    {
        // Counting may move the reading position: the walk finds its place again afterwards.
        if (!takeOver())
            return -1;
        const qint64 result = m_layer->GetFeatureCount(TRUE);
        m_vector.idleLayer();
        return result;
    }

private:
    struct Field
    {
        int ogrIndex;
        qint16 type;
    };

    /// What a condition calls the identifier: the column where the driver hands conditions to a database.
    static QString idName(TxVectorPrivate &vector)
    {
        const QByteArray &driver = vector.dataSource().driver;
        OGRLayer *layer = vector.layer();
        const bool isDatabase = driver == "PostgreSQL" || driver == "SQLite" || driver == "GPKG";
        const QString column = layer ? QString::fromUtf8(layer->GetFIDColumn()) : QString();
        return isDatabase && !column.isEmpty() ? TxGdal::quoteIdentifier(column) : QStringLiteral("FID");
    }

    /// Goes on after another walk has used the layer.
    bool resume()
    {
        if (!takeOver())
            return false;
        if (m_layer->TestCapability(OLCFastSetNextByIndex))
            return m_layer->SetNextByIndex(m_taken) == OGRERR_NONE;
        if (m_taken == 0 || !m_feature)
            return m_taken == 0;
        // Behind the record taken last or, where that was deleted, behind those before it.
        for (qint64 passed = 1;; ++passed) {
            const OGRFeatureUniquePtr feature(m_layer->GetNextFeature());
            if (!feature)
                break;
            if (feature->GetFID() == m_feature->GetFID()) {
                m_taken = passed;
                return true;
            }
        }
        --m_taken;
        m_layer->ResetReading();
        for (qint64 i = 0; i < m_taken; ++i) {
            if (!OGRFeatureUniquePtr(m_layer->GetNextFeature()))
                return false;
        }
        return true;
    }

    void ignoreUnwanted()
    {
        if (!m_layer->TestCapability(OLCIgnoreFields))
            return;
        const OGRFeatureDefn &definition = *m_layer->GetLayerDefn();
        std::vector<bool> wanted(static_cast<size_t>(definition.GetFieldCount()), false);
        for (const Field &field : m_fields) {
            if (field.ogrIndex >= 0)
                wanted[static_cast<size_t>(field.ogrIndex)] = true;
        }
        CPLStringList ignored;
        for (int i = 0; i < definition.GetFieldCount(); ++i) {
            if (!wanted[static_cast<size_t>(i)])
                ignored.AddString(definition.GetFieldDefn(i)->GetNameRef());
        }
        if (!m_plan.wantsGeometry() && m_bounds.IsVoid())
            ignored.AddString("OGR_GEOMETRY");
        if (!ignored.empty())
            m_layer->SetIgnoredFields(const_cast<const char **>(ignored.List()));
    }

    bool matches(OGRLayer &layer, OGRFeature &feature) const
    {
        if (!m_bounds.IsVoid()) {
            const OGRGeometry *geometry = feature.GetGeometryRef();
            OGREnvelope box;
            if (!geometry || geometry->IsEmpty())
                return false;
            geometry->getEnvelope(&box);
            if (!CRect2D(box.MinX, box.MinY, box.MaxX, box.MaxY).Intersects(m_bounds))
                return false;
        }
        if (m_filter.isEmpty())
            return true;
        OGRFeatureQuery condition;
        return condition.Compile(&layer, m_filter.constData(), TRUE, nullptr) == OGRERR_NONE &&
               condition.Evaluate(&feature) != 0;
    }

    static CTxVariant read(const OGRFeature &feature, const Field &field)
    {
        return field.ogrIndex < 0 ? TxFieldTypes::wholeNumber(feature.GetFID())
                                  : TxFieldTypes::fromFeature(feature, field.ogrIndex, field.type);
    }

    std::unique_ptr<OGRGeometry> copiedGeometry(const OGRFeature &feature) const
    {
        const OGRGeometry *geometry = m_plan.wantsGeometry() ? feature.GetGeometryRef() : nullptr;
        return std::unique_ptr<OGRGeometry>(geometry ? geometry->clone() : nullptr);
    }

    TxVectorPrivate &m_vector;
    const TxQueryPlan m_plan;
    const CRect2D m_bounds;
    const QByteArray m_filter;
    std::vector<Field> m_fields;
    OGRLayer *m_layer = nullptr; // while this is the walker
    OGRFeatureUniquePtr m_feature;
    qint64 m_taken = 0; // records read since the beginning
};

} // namespace

std::unique_ptr<TxCursor> TxCursors::makeLayer(TxVectorPrivate &vector, const TxQueryPlan &plan)
{
    const TxGdal::ErrorCollector errors;
    auto cursor = std::make_unique<LayerCursor>(vector, plan);
    // Databases look at a condition only when the first record is asked for.
    if (!cursor->takeOver() || (!cursor->first() && errors.hasFailure())) {
        errors.fail(QStringLiteral("“%1” cannot be queried").arg(vector.q->GetName()));
        return nullptr;
    }
    return cursor;
}
