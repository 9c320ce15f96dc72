#pragma once

#include "engine/base/TxExport.h"
#include "engine/map/GeometryPainter.h"
#include "engine/map/LabelPlacer.h"
#include "engine/map/MapView.h"
#include "engine/map/OpenedDatasets.h"
#include "engine/map/RasterPainter.h"
#include "engine/map/TxMap.h"

#include <QColor>
#include <QElapsedTimer>
#include <QFont>
#include <QHash>
#include <QImage>
#include <QList>
#include <QSet>

#include <memory>
#include <optional>

class CDatasetVector;
class CTxDataset;
class CTxRecordset;
class TxReprojector;

/// Draws a map into a picture, a slice of some milliseconds at a time. It knows no window.
///
/// Between slices anything may happen to the map: layers, datasets, datasources and the map itself may go. Each slice
/// therefore looks up anew whether the layer, its dataset and its recordset still live before it touches them.
/// Datasets that are closed are opened for drawing and stay open until their layer is gone, another map is set, or
/// release() is called.
class TX_EXPORT MapRenderer
{
public:
    /// What the picture is like.
    struct Settings
    {
        MapView view;
        qreal pixelRatio = 1.0;
        QColor background; ///< what the transparent picture will lie on
        QFont font;
    };
    struct Failure
    {
        QString layer;
        QString reason;
    };

    MapRenderer() = default;
    ~MapRenderer();
    MapRenderer(const MapRenderer &) = delete;
    MapRenderer &operator=(const MapRenderer &) = delete;

    /// Draws @p map (may be null) from now on; stops what is being drawn.
    void setMap(CTxMap *map);
    CTxMap *map() const { return m_map.get(); }

    /// Begins a new picture.
    void start(const Settings &settings);
    /// Draws for about @p milliseconds. @return true while something is left to draw.
    bool step(qint64 milliseconds);
    /// Drops the picture that is being drawn.
    void stop();
    bool isDrawing() const { return m_drawing; }
    /// How far the drawing has come, 0 to 100.
    int percent() const;
    /// The picture so far, transparent where nothing is.
    const QImage &image() const { return m_image; }
    const Settings &settings() const { return m_settings; }

    /// Gives back what it holds of @p dataset, closes it if it opened it, and leaves it alone until refresh().
    void release(const CTxDataset *dataset);
    /// To be called when the map or its data changed: forgets what was remembered of them, and closes datasets that it
    /// opened and no layer shows any more.
    void refresh();

    /// The layers that could not be drawn since the last call.
    QList<Failure> takeFailures() { return std::exchange(m_failures, {}); }
    /// True when a dataset was opened since the last call.
    bool takeOpened() { return m_opened.takeChange(); }

private:
    /// A layer to draw, or the nodes of a network.
    struct Task
    {
        const CTxLayer *layer; // compared, followed only while it is one of the map's
        QString name;
        TxLayerStyle style;
        bool nodes;
    };

    bool isLayerAlive(const CTxLayer *layer) const;
    CTxDataset *findDataset(const Task &task) const;
    CTxDataset *liveDataset() const;
    CTxRecordset *liveRecordset() const;
    void beginTask();
    void beginVector(CDatasetVector &dataset);
    bool query(CDatasetVector &dataset, bool everything);
    void drawTask(qint64 milliseconds);
    void drawRecords(CTxRecordset &recordset, qint64 milliseconds);
    void measureSurface(CTxRecordset &recordset, qint64 milliseconds);
    void drawTiles(qint64 milliseconds);
    void endTask();
    void releaseRecordset();
    void closeUnused();
    void fail(const QString &reason);

    TxHandle<CTxMap> m_map;
    Settings m_settings;
    QImage m_image;
    bool m_drawing = false;
    QElapsedTimer m_timer;

    QList<Task> m_tasks; // the lowest first
    qsizetype m_next = 0;
    bool m_inTask = false;
    CTxDataset *m_dataset = nullptr;    // of the task; see liveDataset()
    TxHandle<CTxRecordset> m_recordset; // of the dataset
    int m_labelField = -1;
    std::shared_ptr<TxReprojector> m_reprojector;
    std::optional<GeometryPainter> m_geometries;
    std::optional<RasterPainter> m_raster;
    std::optional<CRect2D> m_surface; // heights found so far, as an interval of x, while a surface is measured
    QImage m_layerImage;              // of a layer that is not opaque
    LabelPlacer m_labels;

    QHash<const CTxDataset *, std::pair<double, double>> m_surfaces; // lowest and highest of those measured
    QSet<const CTxDataset *> m_released;
    OpenedDatasets m_opened;
    QList<Failure> m_failures;
};
