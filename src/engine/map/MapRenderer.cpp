#include "engine/map/MapRenderer.h"

#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetRaster.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSources.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/GeoRegion.h"
#include "engine/map/LayerCoordSys.h"
#include "engine/projection/TxPJCoordSys.h"
#include "engine/projection/TxReprojector.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int recordsBetweenLooks = 8; // at the clock

/// The interval of heights of @p geometry, as left and right of a rectangle; void without heights.
CRect2D heightsOf(const CElemGeometry &geometry)
{
    CRect2D heights;
    const auto *parts = dynamic_cast<const CGeoParts *>(&geometry);
    const double *zs = parts ? parts->GetZs() : nullptr;
    for (qint32 i = 0; zs && i < parts->GetPointCount(); ++i)
        heights.Union(CRect2D(zs[i], 0, zs[i], 0));
    return heights;
}

bool isDrawable(CElemDatasetInfo::Type kind)
{
    return kind != CElemDatasetInfo::Tabular;
}

bool isPoint(CElemDatasetInfo::Type kind)
{
    return kind == CElemDatasetInfo::Point || kind == CElemDatasetInfo::Point3D || kind == CElemDatasetInfo::PointGL3D;
}

} // namespace

MapRenderer::~MapRenderer()
{
    stop();
    m_opened.closeOthers(m_map.get(), {});
}

void MapRenderer::setMap(CTxMap *map)
{
    stop();
    m_opened.closeOthers(m_map.get(), {});
    m_released.clear();
    m_surfaces.clear();
    m_map = TxHandle<CTxMap>(map);
}

void MapRenderer::start(const Settings &settings)
{
    stop();
    m_settings = settings;
    m_image = QImage((settings.view.size() * settings.pixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
    m_image.setDevicePixelRatio(settings.pixelRatio);
    m_image.fill(Qt::transparent);
    QColor halo = settings.background;
    halo.setAlphaF(0.8F);
    m_labels.clear(settings.font, settings.view.size(), halo);
    m_tasks.clear();
    m_next = 0;
    const CTxMap *map = m_map.get();
    if (!map || m_image.isNull())
        return;
    const CTxLayers &layers = map->GetLayers();
    for (int i = layers.GetCount() - 1; i >= 0; --i) {
        const CTxLayer *layer = layers.GetLayerAt(i);
        if (!layer->IsVisible())
            continue;
        const CTxDataset *dataset = layer->GetDataset();
        // The outline of a point symbol only sets it off; white on white is fine.
        const bool isPoints = dataset && isPoint(dataset->GetType());
        const TxLayerStyle style = isPoints ? layer->style() : legibleStyle(layer->style(), settings.background);
        m_tasks.append({layer, layer->GetName(), style, false});
        if (dataset && dataset->GetType() == CElemDatasetInfo::Network && dataset->GetChildDataset())
            m_tasks.append({layer, layer->GetName(), style, true});
    }
    m_drawing = true;
}

void MapRenderer::stop()
{
    endTask();
    m_drawing = false;
}

int MapRenderer::percent() const
{
    if (!m_drawing)
        return 100;
    const int task = m_raster ? m_raster->percent() : 0;
    const auto count = static_cast<int>(m_tasks.size()) + 1; // the labels are the last one
    return std::min(99, (static_cast<int>(m_next) * 100 + task) / count);
}

bool MapRenderer::step(qint64 milliseconds)
{
    m_timer.start();
    while (m_drawing && m_timer.elapsed() < milliseconds) {
        if (!m_map.get()) {
            stop();
        } else if (m_inTask) {
            drawTask(milliseconds);
        } else if (m_next < m_tasks.size()) {
            beginTask();
        } else {
            QPainter painter(&m_image);
            painter.setRenderHint(QPainter::Antialiasing);
            if (m_labels.draw(painter, m_timer, milliseconds))
                m_drawing = false;
        }
    }
    return m_drawing;
}

bool MapRenderer::isLayerAlive(const CTxLayer *layer) const
{
    const CTxMap *map = m_map.get();
    return map && map->GetLayers().FindLayer(layer) >= 0;
}

CTxDataset *MapRenderer::findDataset(const Task &task) const
{
    if (!isLayerAlive(task.layer))
        return nullptr;
    CTxDataset *dataset = task.layer->GetDataset();
    return dataset && task.nodes ? dataset->GetChildDataset() : dataset;
}

CTxDataset *MapRenderer::liveDataset() const
{
    if (!m_inTask || !m_dataset || findDataset(m_tasks.at(m_next)) != m_dataset)
        return nullptr;
    return m_dataset->IsOpen() ? m_dataset : nullptr;
}

CTxRecordset *MapRenderer::liveRecordset() const
{
    return liveDataset() ? m_recordset.get() : nullptr;
}

void MapRenderer::beginTask()
{
    const Task &task = m_tasks.at(m_next);
    m_inTask = true;
    m_dataset = findDataset(task);
    if (!m_dataset || !isDrawable(m_dataset->GetType()) || m_released.contains(m_dataset)) {
        if (!m_dataset && isLayerAlive(task.layer))
            fail(QStringLiteral("The dataset “%1” is not there").arg(task.layer->GetDatasetName()));
        endTask();
        return;
    }
    if (!m_opened.open(*m_dataset, *task.layer)) {
        fail(TxGetErrorMsgObj().GetErrorMessage());
        endTask();
        return;
    }
    CTxPJCoordSys own;
    CTxPJCoordSys map;
    LayerCoordSys::stated(*m_dataset, own);
    m_map.get()->GetProjection(map);
    bool failed = false;
    m_reprojector = TxReprojector::make(own, map, failed);
    if (failed) {
        fail(QStringLiteral("There is no way from its coordinate system “%1” to that of the map, “%2”")
                 .arg(own.GetName(), map.GetName()));
        endTask();
        return;
    }
    if (task.style.opacity < 1) {
        m_layerImage = QImage(m_image.size(), m_image.format());
        m_layerImage.setDevicePixelRatio(m_settings.pixelRatio);
        m_layerImage.fill(Qt::transparent);
    }
    if (m_dataset->IsVector())
        beginVector(static_cast<CDatasetVector &>(*m_dataset));
    else
        m_raster.emplace(m_settings.view, m_settings.pixelRatio, m_reprojector, m_dataset->GetBounds(),
                         TxHeightColors(task.style.colors, task.style.stepped));
}

void MapRenderer::beginVector(CDatasetVector &dataset)
{
    const Task &task = m_tasks.at(m_next);
    m_geometries.emplace(m_settings.view, task.style, m_reprojector, m_settings.pixelRatio, m_settings.font);
    m_labels.nextLayer(m_settings.background.lightnessF() < 0.5F ? QColor(0xf0, 0xf0, 0xf0) : QColor(0x20, 0x20, 0x20));
    const bool isSurface = dataset.GetType() == CElemDatasetInfo::TIN;
    if (isSurface && m_surfaces.contains(&dataset))
        m_geometries->setSurface(m_surfaces[&dataset].first, m_surfaces[&dataset].second);
    else if (isSurface)
        m_surface.emplace();
    if (!query(dataset, m_surface.has_value()))
        endTask();
}

bool MapRenderer::query(CDatasetVector &dataset, bool everything)
{
    const Task &task = m_tasks.at(m_next);
    CTxQueryDef definition;
    definition.options = CTxQueryDef::SkipAttributes | CTxQueryDef::AnyOrder;
    const bool hasLabels = !everything && !task.nodes && dataset.FindField(task.style.labelField) >= 0;
    if (hasLabels) {
        definition.options = CTxQueryDef::AnyOrder;
        definition.fields = {task.style.labelField};
    }
    if (!everything) {
        definition.bounds = m_settings.view.bounds();
        const double room = GeometryPainter::reach(task.style) * m_settings.view.scale();
        definition.bounds.InflateRect(room, room);
        if (m_reprojector)
            definition.bounds = m_reprojector->inverse(definition.bounds);
        if (definition.bounds.IsVoid()) // nothing of this coordinate system lies here
            return false;
        const CRect2D all = dataset.GetBounds();
        if (definition.bounds.Contains(CPoint2D(all.left, all.bottom)) &&
            definition.bounds.Contains(CPoint2D(all.right, all.top)))
            definition.bounds = CRect2D(); // no need to ask for each record
    }
    CTxRecordset *recordset = dataset.Query(definition);
    m_recordset = TxHandle(recordset);
    if (!recordset)
        fail(TxGetErrorMsgObj().GetErrorMessage());
    m_labelField = recordset && hasLabels ? recordset->FindField(task.style.labelField) : -1;
    return recordset != nullptr;
}

void MapRenderer::drawTask(qint64 milliseconds)
{
    CTxRecordset *recordset = liveRecordset();
    if (!liveDataset() || (m_geometries && !recordset))
        endTask();
    else if (m_raster)
        drawTiles(milliseconds);
    else if (m_surface)
        measureSurface(*recordset, milliseconds);
    else
        drawRecords(*recordset, milliseconds);
}

void MapRenderer::drawRecords(CTxRecordset &recordset, qint64 milliseconds)
{
    QPainter painter(m_layerImage.isNull() ? &m_image : &m_layerImage);
    painter.setRenderHint(QPainter::Antialiasing);
    const int between = m_geometries->isSlow() ? 1 : recordsBetweenLooks;
    for (int count = 1; !recordset.IsEOF(); ++count) {
        CElemGeometry *raw = nullptr;
        recordset.GetGeometry(raw);
        if (const std::unique_ptr<CElemGeometry> geometry(raw); geometry) {
            m_geometries->draw(painter, *geometry);
            CTxVariant label;
            if (m_labelField >= 0 && m_labels.takesMore() && recordset.GetFieldValue(m_labelField, label)) {
                if (const auto place = m_geometries->labelPlace(*geometry))
                    m_labels.add(*place, label.toText());
            }
        }
        recordset.MoveNext();
        if (count % between == 0 && m_timer.elapsed() >= milliseconds)
            return;
    }
    painter.end();
    endTask();
}

void MapRenderer::measureSurface(CTxRecordset &recordset, qint64 milliseconds)
{
    for (int count = 1; !recordset.IsEOF(); ++count) {
        CElemGeometry *raw = nullptr;
        recordset.GetGeometry(raw);
        if (const std::unique_ptr<CElemGeometry> geometry(raw); geometry)
            m_surface->Union(heightsOf(*geometry));
        recordset.MoveNext();
        if (count % recordsBetweenLooks == 0 && m_timer.elapsed() >= milliseconds)
            return;
    }
    const std::pair<double, double> heights =
        m_surface->IsVoid() ? std::pair(0.0, 0.0) : std::pair(m_surface->left, m_surface->right);
    m_surface.reset();
    m_surfaces.insert(m_dataset, heights);
    m_geometries->setSurface(heights.first, heights.second);
    releaseRecordset();
    if (!query(static_cast<CDatasetVector &>(*m_dataset), false))
        endTask();
}

void MapRenderer::drawTiles(qint64 milliseconds)
{
    QPainter painter(m_layerImage.isNull() ? &m_image : &m_layerImage);
    while (!m_raster->isDone()) {
        if (!m_raster->drawNext(painter, static_cast<const CDatasetRaster &>(*m_dataset))) {
            fail(TxGetErrorMsgObj().GetErrorMessage());
            break;
        }
        if (m_timer.elapsed() >= milliseconds && !m_raster->isDone())
            return;
    }
    painter.end();
    endTask();
}

void MapRenderer::releaseRecordset()
{
    if (CTxRecordset *recordset = m_recordset.get())
        recordset->GetDataset()->ReleaseRecordset(recordset);
    m_recordset = {};
}

void MapRenderer::endTask()
{
    if (!m_inTask)
        return;
    releaseRecordset();
    if (!m_layerImage.isNull()) {
        QPainter painter(&m_image);
        painter.setOpacity(m_tasks.at(m_next).style.opacity);
        painter.drawImage(QPointF(), m_layerImage);
        painter.end();
        m_layerImage = QImage();
    }
    m_geometries.reset();
    m_raster.reset();
    m_surface.reset();
    m_reprojector.reset();
    m_dataset = nullptr;
    m_inTask = false;
    ++m_next;
}

void MapRenderer::release(const CTxDataset *dataset)
{
    if (!dataset)
        return;
    const CTxMap *map = m_map.get();
    for (int i = 0; map && i < map->GetLayers().GetCount(); ++i) { // the nodes of a network go with it
        const CTxDataset *shown = map->GetLayers().GetLayerAt(i)->GetDataset();
        if (shown == dataset && shown->GetChildDataset() && !m_released.contains(shown->GetChildDataset()))
            release(shown->GetChildDataset());
    }
    if (m_inTask && m_dataset == dataset)
        endTask();
    m_released.insert(dataset);
    m_surfaces.remove(dataset);
    m_opened.close(map, dataset);
}

void MapRenderer::refresh()
{
    m_released.clear();
    m_surfaces.clear();
    closeUnused();
}

void MapRenderer::closeUnused()
{
    QSet<const CTxDataset *> shown;
    const CTxMap *map = m_map.get();
    for (int i = 0; map && i < map->GetLayers().GetCount(); ++i) {
        const CTxDataset *dataset = map->GetLayers().GetLayerAt(i)->GetDataset();
        shown.insert(dataset);
        if (dataset)
            shown.insert(dataset->GetChildDataset());
    }
    m_opened.closeOthers(map, shown);
}

void MapRenderer::fail(const QString &reason)
{
    m_failures.append({m_tasks.at(m_next).name, reason});
}
