#include "engine/base/TxNumberText.h"
#include "engine/data/TxCursors.h"
#include "engine/data/TxFieldTypes.h"

#include <ogrsf_frmts.h>

namespace {

/// A result layer, given back to the GDAL dataset it came from.
struct ResultReleaser
{
    GDALDataset *gdal;
    void operator()(OGRLayer *layer) const { gdal->ReleaseResultSet(layer); }
};
using Result = std::unique_ptr<OGRLayer, ResultReleaser>;

class ResultCursor : public TxCursor
{
public:
    ResultCursor(TxVectorPrivate &vector, const TxQueryPlan &plan) : m_plan(plan)
    {
        TxDataSourcePrivate &source = vector.dataSource();
        m_isNative = source.driver == "PostgreSQL" || source.driver == "GPKG";
        if (m_isNative) {
            m_gdal = source.gdal.get();
        } else {
            m_plan.readJoinedWhole();
            source.gdal->FlushCache(false); // what was changed here must be seen there
            m_own =
                TxGdal::open(source.gdalName, GDAL_OF_VECTOR, source.gdalOptions, {QString::fromUtf8(source.driver)});
            m_gdal = m_own.get();
        }
        OGRLayer *layer = vector.layer();
        m_idName = TxGdal::quoteIdentifier(idColumn()(vector));
        if (layer && layer->GetGeomType() != wkbNone) {
            const QString column = QString::fromUtf8(layer->GetGeometryColumn());
            m_boundsColumn = column.isEmpty() && !m_isNative ? QStringLiteral("GEOMETRY") : column;
        }
        // Without a spatial function in the dialect the rectangle is looked at here.
        m_testsBounds = !plan.query().bounds.IsVoid() && source.driver != "PostgreSQL";
        if (plan.wantsGeometry() || m_testsBounds)
            m_geometryColumn = m_boundsColumn;
        for (const TxRecordsetField &field : plan.fields())
            m_types.push_back(field.info.GetType());
    }

    bool first() override
    {
        m_result = run(m_plan, {});
        return m_result && next();
    }

    bool next() override
    {
        do
            m_feature.reset(m_result ? m_result->GetNextFeature() : nullptr);
        while (m_feature && m_testsBounds && !meetsBounds(*m_feature));
        return m_feature != nullptr;
    }

    bool isAccepted()
    {
        m_result = run(m_plan, {});
        return m_result != nullptr;
    }

    qint64 id() const override { return m_feature->GetFieldAsInteger64(0); }

    void value(int index, CTxVariant &value) const override { value = read(*m_feature, index); }

    TxRawValue raw(int index) const override { return TxFieldTypes::rawOf(*m_feature, index); }

    std::unique_ptr<OGRGeometry> geometry() const override
    {
        const OGRGeometry *geometry = m_plan.wantsGeometry() ? m_feature->GetGeometryRef() : nullptr;
        return std::unique_ptr<OGRGeometry>(geometry ? geometry->clone() : nullptr);
    }

    bool fetch(qint64 id, bool matching, TxRecord &record) override
    {
        const TxQueryPlan plan = matching ? m_plan : m_plan.unfiltered();
        const Result one = run(plan, QStringList{idCondition(id)});
        const OGRFeatureUniquePtr feature(one ? one->GetNextFeature() : nullptr);
        if (!feature || (matching && m_testsBounds && !meetsBounds(*feature)))
            return false;
        record.id = id;
        record.values.clear();
        for (int i = 0; i < static_cast<int>(m_types.size()); ++i)
            record.values.push_back(read(*feature, i));
        record.geometry.reset(feature->StealGeometry());
        return true;
    }

    qint64 count() override
    {
        if (m_testsBounds) {
            qint64 number = 0;
            const Result all = run(m_plan, {});
            while (const OGRFeatureUniquePtr feature{all ? all->GetNextFeature() : nullptr})
                number += meetsBounds(*feature) ? 1 : 0;
            return all ? number : -1;
        }
        const Result counting = execute(m_plan.selectCount(idColumn(), boundsConditions(m_plan)));
        const OGRFeatureUniquePtr row(counting ? counting->GetNextFeature() : nullptr);
        return row ? row->GetFieldAsInteger64(0) : -1;
    }

private:
    TxQueryPlan::IdColumn idColumn() const
    {
        if (!m_isNative)
            return [](TxVectorPrivate &) { return QStringLiteral("rowid"); };
        return [](TxVectorPrivate &vector) {
            OGRLayer *layer = vector.layer();
            return layer ? QString::fromUtf8(layer->GetFIDColumn()) : QString();
        };
    }

    QString idCondition(qint64 id) const
    {
        return m_plan.mainAlias() + u'.' + m_idName + QStringLiteral(" = ") + QString::number(id);
    }

    /// The rectangle as a condition of PostGIS.
    QStringList boundsConditions(const TxQueryPlan &plan) const
    {
        const CRect2D &bounds = plan.query().bounds;
        if (m_testsBounds || bounds.IsVoid() || m_boundsColumn.isEmpty())
            return {};
        return {QStringLiteral("%1 && ST_MakeEnvelope(%2, %3, %4, %5, ST_SRID(%1))")
                    .arg(plan.mainAlias() + u'.' + TxGdal::quoteIdentifier(m_boundsColumn),
                         TxNumberText::shortest(bounds.left), TxNumberText::shortest(bounds.bottom),
                         TxNumberText::shortest(bounds.right), TxNumberText::shortest(bounds.top))};
    }

    bool meetsBounds(const OGRFeature &feature) const
    {
        const OGRGeometry *geometry = feature.GetGeometryRef();
        if (!geometry || geometry->IsEmpty())
            return false;
        OGREnvelope box;
        geometry->getEnvelope(&box);
        return CRect2D(box.MinX, box.MinY, box.MaxX, box.MaxY).Intersects(m_plan.query().bounds);
    }

    Result run(const TxQueryPlan &plan, const QStringList &conditions)
    {
        return execute(plan.select(idColumn(), m_geometryColumn, conditions + boundsConditions(plan)));
    }

    Result execute(const QString &sql)
    {
        if (!m_gdal)
            return Result(nullptr, ResultReleaser{nullptr});
        const TxGdal::ErrorCollector errors;
        OGRLayer *layer = m_gdal->ExecuteSQL(sql.toUtf8().constData(), nullptr, m_isNative ? nullptr : "SQLITE");
        if (!layer)
            errors.fail(QStringLiteral("The query failed"));
        return Result(layer, ResultReleaser{m_gdal});
    }

    CTxVariant read(const OGRFeature &feature, int index) const
    {
        return index == 0 ? TxFieldTypes::wholeNumber(feature.GetFieldAsInteger64(0))
                          : TxFieldTypes::fromFeature(feature, index, m_types[static_cast<size_t>(index)]);
    }

    TxQueryPlan m_plan;
    bool m_isNative = false;
    TxGdal::DatasetPtr m_own; // where the datasource's GDAL dataset must not be disturbed
    GDALDataset *m_gdal = nullptr;
    QString m_geometryColumn; // empty when no geometry is wanted
    bool m_testsBounds = false;
    QString m_boundsColumn; // empty when the dataset has no geometry
    QString m_idName;       // quoted
    std::vector<qint16> m_types;
    Result m_result{nullptr, ResultReleaser{nullptr}};
    OGRFeatureUniquePtr m_feature;
};

} // namespace

std::unique_ptr<TxCursor> TxCursors::makeResult(TxVectorPrivate &vector, const TxQueryPlan &plan)
{
    auto cursor = std::make_unique<ResultCursor>(vector, plan);
    return cursor->isAccepted() ? std::move(cursor) : nullptr;
}
