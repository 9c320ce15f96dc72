#include "MapWindow.h"

#include "DropContent.h"
#include "engine/map/TxMap.h"
#include "engine/map/TxMapWnd.h"
#include "engine/projection/TxPJCoordSys.h"

#include <QDragEnterEvent>
#include <QVBoxLayout>

#include <cmath>
#include <numbers>

MapWindow::MapWindow(QWidget *parent) : QWidget(parent), m_canvas(new CTxMapWnd(this))
{
    setAcceptDrops(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_canvas);
    setFocusProxy(m_canvas);
    m_canvas->setAccessibleName(tr("Map"));
    m_canvas->setFocusPolicy(Qt::StrongFocus);
}

void MapWindow::setMap(CTxMap *map)
{
    m_canvas->SetMap(map);
    if (map)
        setWindowTitle(map->GetName());
}

CTxMap *MapWindow::map() const
{
    return m_canvas->GetMap();
}

void MapWindow::refresh()
{
    m_canvas->Refresh();
}

double MapWindow::scaleDenominator() const
{
    const CRect2D view = m_canvas->GetViewBounds();
    if (!map() || view.IsVoid() || m_canvas->width() < 1)
        return 0;
    // Without a dataset there is nobody to tell the unit of the coordinates.
    const CTxLayers &layers = map()->GetLayers();
    int layer = 0;
    while (layer < layers.GetCount() && !layers.GetLayerAt(layer)->GetDataset())
        ++layer;
    if (layer == layers.GetCount())
        return 0;
    constexpr double metresPerDegree = 6378137.0 * std::numbers::pi / 180.0; // along the equator of WGS 84
    CTxPJCoordSys system;
    map()->GetProjection(system);
    const qint32 tenthsOfMillimetre = system.GetDistUnits();
    const double metresPerUnit = tenthsOfMillimetre > 0
                                     ? tenthsOfMillimetre / 10000.0
                                     : metresPerDegree * std::cos(view.CenterPoint().y * std::numbers::pi / 180.0);
    const double metresPerPixel = 0.0254 / m_canvas->logicalDpiX();
    return std::abs(view.Width() * metresPerUnit / m_canvas->width() / metresPerPixel);
}

void MapWindow::dragEnterEvent(QDragEnterEvent *event)
{
    const DropContent content(*event->mimeData());
    if (!content.datasets.entries.isEmpty() || !content.files.isEmpty())
        event->acceptProposedAction();
}

void MapWindow::dragMoveEvent(QDragMoveEvent *event)
{
    event->acceptProposedAction();
}

void MapWindow::dropEvent(QDropEvent *event)
{
    const DropContent content(*event->mimeData());
    if (!content.datasets.entries.isEmpty())
        Q_EMIT itemsDropped(content.datasets);
    else if (!content.files.isEmpty())
        Q_EMIT filesDropped(content.files);
    else
        return;
    event->acceptProposedAction();
}
