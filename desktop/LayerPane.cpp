#include "LayerPane.h"

#include "LayerLegend.h"
#include "MapWindow.h"
#include "engine/data/TxDataset.h"
#include "engine/map/TxMap.h"
#include "engine/map/TxMapWnd.h"

#include <QAction>
#include <QListWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

LayerPane::LayerPane(QWidget *parent) : QWidget(parent), m_list(new QListWidget)
{
    m_images.InitImageList(1);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setAccessibleName(tr("Layers of the map"));
    m_list->setDragDropMode(QAbstractItemView::InternalMove);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setIconSize(LayerLegend::sampleSize);
    m_list->viewport()->installEventFilter(this);
    m_list->setItemDelegate(new LayerLegendDelegate(m_list));
    m_remove = new QAction(tr("&Remove from Map"), this);
    m_remove->setShortcut(QKeySequence::Delete);
    m_remove->setShortcutContext(Qt::WidgetShortcut);
    m_list->addAction(m_remove);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list);
    setFocusProxy(m_list);

    connect(m_list, &QListWidget::itemChanged, this, &LayerPane::onItemChanged);
    connect(m_list, &QListWidget::itemSelectionChanged, this, &LayerPane::selectionChanged);
    connect(m_list, &QListWidget::customContextMenuRequested, this, &LayerPane::showMenu);
    connect(m_list, &QListWidget::itemDoubleClicked, this,
            [this](const QListWidgetItem *item) { zoomTo(m_list->row(item)); });
    connect(m_list->model(), &QAbstractItemModel::rowsMoved, this,
            [this](const QModelIndex &, int first, int, const QModelIndex &, int row) {
                onMoved(first, row > first ? row - 1 : row);
            });
    connect(m_remove, &QAction::triggered, this, &LayerPane::removeSelected);
}

void LayerPane::setView(MapWindow *view)
{
    m_view = view;
    refresh();
}

void LayerPane::refresh()
{
    const QSignalBlocker blocker(m_list);
    const int row = m_list->currentRow();
    m_list->clear();
    const CTxMap *map = m_view ? m_view->map() : nullptr;
    m_list->setEnabled(map);
    for (int i = 0; map && i < map->GetLayers().GetCount(); ++i) {
        const CTxLayer *layer = map->GetLayers().GetLayerAt(i);
        const CTxDataset *dataset = layer->GetDataset();
        auto *item = new QListWidgetItem(layer->GetName(), m_list);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(layer->IsVisible() ? Qt::Checked : Qt::Unchecked);
        const QIcon sample = LayerLegend::sample(*layer, *m_list);
        item->setIcon(sample.isNull() ? m_images.icon(m_images.GetImageIndex(dataset, 1)) : sample);
        item->setToolTip(dataset ? layer->GetName() : tr("%1: the dataset is missing").arg(layer->GetName()));
        LayerLegend::set(*item, *layer);
        if (!dataset)
            item->setForeground(palette().brush(QPalette::PlaceholderText));
    }
    m_list->setCurrentRow(std::min(row, m_list->count() - 1));
    m_remove->setEnabled(m_list->count() > 0);
    Q_EMIT selectionChanged();
}

CTxLayer *LayerPane::selectedLayer() const
{
    const QList<QListWidgetItem *> selected = m_list->selectedItems();
    const bool isOne = m_view && m_view->map() && selected.size() == 1;
    return isOne ? m_view->map()->GetLayers().GetLayerAt(m_list->row(selected.first())) : nullptr;
}

CTxLayer *LayerPane::currentLayer() const
{
    return m_view && m_view->map() ? m_view->map()->GetLayers().GetLayerAt(m_list->currentRow()) : nullptr;
}

void LayerPane::onItemChanged(QListWidgetItem *item)
{
    CTxLayer *layer = m_view && m_view->map() ? m_view->map()->GetLayers().GetLayerAt(m_list->row(item)) : nullptr;
    const bool visible = item->checkState() == Qt::Checked;
    if (!layer || layer->IsVisible() == visible)
        return;
    layer->SetVisible(visible);
    m_view->refresh();
    Q_EMIT changed();
}

void LayerPane::onMoved(int from, int to)
{
    if (!m_view || !m_view->map() || !m_view->map()->GetLayers().Move(from, to))
        return;
    m_view->refresh();
    Q_EMIT changed();
}

void LayerPane::removeSelected()
{
    if (!m_view || !m_view->map())
        return;
    QList<int> rows;
    for (const QListWidgetItem *item : m_list->selectedItems())
        rows << m_list->row(item);
    std::sort(rows.begin(), rows.end(), std::greater<>());
    for (const int row : rows)
        m_view->map()->GetLayers().Remove(row);
    if (rows.isEmpty())
        return;
    refresh();
    m_view->refresh();
    Q_EMIT changed();
}

void LayerPane::zoomTo(int row)
{
    CRect2D bounds = m_view && m_view->map() ? m_view->map()->GetLayerBounds(row) : CRect2D();
    if (bounds.IsVoid())
        return;
    // A single point has no extent to fill the window with.
    const double margin = std::max({bounds.Width(), bounds.Height(), 1e-6}) * 0.05;
    bounds.InflateRect(margin, margin);
    m_view->canvas()->SetViewBounds(bounds);
}

bool LayerPane::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonDblClick) {
        const auto *click = static_cast<const QMouseEvent *>(event);
        const QListWidgetItem *item = m_list->itemAt(click->position().toPoint());
        if (item && LayerLegend::sampleRect(*m_list, *item).contains(click->position().toPoint())) {
            Q_EMIT styleWanted();
            return true; // else the map zooms to the layer
        }
    }
    return QWidget::eventFilter(watched, event);
}

void LayerPane::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        refresh(); // samples are made to be seen on it
}

void LayerPane::showMenu(const QPoint &position)
{
    const CTxLayer *layer = m_list->itemAt(position) ? currentLayer() : nullptr;
    if (!layer)
        return;
    const CTxDataset *dataset = layer->GetDataset();
    QMenu menu(this);
    QAction *zoom = menu.addAction(tr("&Zoom to Layer"));
    zoom->setEnabled(dataset);
    connect(zoom, &QAction::triggered, this, [this] { zoomTo(m_list->currentRow()); });
    QAction *table = menu.addAction(tr("Attribute &Table"));
    table->setEnabled(dataset && dataset->IsVector());
    connect(table, &QAction::triggered, this, [this, layer] { Q_EMIT tableWanted(layer); });
    menu.addSeparator();
    for (QAction *command : m_commands)
        if (command->isEnabled())
            menu.addAction(command);
    menu.addSeparator();
    menu.addAction(m_remove);
    menu.exec(m_list->viewport()->mapToGlobal(position));
}
