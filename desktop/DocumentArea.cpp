#include "DocumentArea.h"

#include "AttributeTable.h"
#include "Icons.h"
#include "LayerDefaults.h"
#include "MapWindow.h"
#include "WelcomePage.h"
#include "WorkspaceDocument.h"
#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetVector.h"
#include "engine/map/TxMapWnd.h"
#include "workspace/WkspImageList.h"

#include <QTabBar>
#include <QTabWidget>

namespace {

/// Names of what a table shows, kept so that it finds its dataset again after the datasource was read anew.
constexpr const char *aliasProperty = "datasourceAlias";
constexpr const char *nameProperty = "datasetName";

/// The icon that maps have in the workspace tree.
QIcon mapIcon()
{
    CTdWkspImageList images;
    images.InitImageList(1);
    return images.icon(images.GetImageIndex(CTdWkspImageList::ImageMap));
}

} // namespace

DocumentArea::DocumentArea(WorkspaceDocument &document, QWidget *parent)
    : QStackedWidget(parent), m_document(document), m_tabs(new QTabWidget)
{
    m_tabs->setDocumentMode(true);
    m_tabs->setTabsClosable(true);
    m_tabs->setMovable(true);
    m_tabs->setElideMode(Qt::ElideMiddle);
    m_tabs->setUsesScrollButtons(true);
    m_tabs->tabBar()->setAccessibleName(tr("Open windows"));
    addWidget(new WelcomePage);
    addWidget(m_tabs);

    connect(m_tabs, &QTabWidget::currentChanged, this, &DocumentArea::onCurrentChanged);
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, &DocumentArea::closeTab);
    connect(&document, &WorkspaceDocument::workspaceClosing, this, &DocumentArea::closeAll);
    connect(&document, &WorkspaceDocument::mapRemoving, this, [this](const QString &name) {
        if (MapWindow *view = findMap(name))
            closeTab(m_tabs->indexOf(view));
    });
    connect(&document, &WorkspaceDocument::mapRenamed, this, &DocumentArea::renameMap);
    connect(&document, &WorkspaceDocument::dataSourceOpened, this, &DocumentArea::refreshMaps);
    connect(&document, &WorkspaceDocument::dataSourceClosing, this,
            [this](const QString &alias) { releaseDataSource(alias, false); });
    connect(&document, &WorkspaceDocument::dataSourceClosed, this, &DocumentArea::refreshMaps);
    connect(&document, &WorkspaceDocument::dataSourceRefreshing, this,
            [this](const QString &alias) { releaseDataSource(alias, true); });
    connect(&document, &WorkspaceDocument::dataSourceChanged, this, &DocumentArea::restoreTables);
}

QWidget *DocumentArea::current() const
{
    return m_tabs->currentWidget();
}

MapWindow *DocumentArea::currentMap() const
{
    return m_lastMap;
}

AttributeTable *DocumentArea::currentTable() const
{
    return qobject_cast<AttributeTable *>(current());
}

QList<MapWindow *> DocumentArea::maps() const
{
    QList<MapWindow *> list;
    for (int i = 0; i < m_tabs->count(); ++i)
        if (auto *view = qobject_cast<MapWindow *>(m_tabs->widget(i)))
            list << view;
    return list;
}

QList<AttributeTable *> DocumentArea::tables() const
{
    QList<AttributeTable *> list;
    for (int i = 0; i < m_tabs->count(); ++i)
        if (auto *table = qobject_cast<AttributeTable *>(m_tabs->widget(i)))
            list << table;
    return list;
}

MapWindow *DocumentArea::findMap(const QString &name) const
{
    for (MapWindow *view : maps())
        if (view->map() && view->map()->GetName() == name)
            return view;
    return nullptr;
}

MapWindow *DocumentArea::showMap(const QString &name)
{
    if (MapWindow *view = findMap(name)) {
        m_tabs->setCurrentWidget(view);
        return view;
    }
    CTxMap *map = m_document.workspace().GetMaps().find(name);
    if (!map)
        return nullptr;
    auto *view = new MapWindow;
    connect(view, &MapWindow::itemsDropped, this,
            [this, view](const CTdOleDataNode &node) { Q_EMIT itemsDropped(node, view); });
    connect(view, &MapWindow::filesDropped, this, &DocumentArea::filesDropped);
    connect(view->canvas(), &CTxMapWnd::drawingFailed, this, [this](const QString &layer, const QString &reason) {
        Q_EMIT m_document.told(tr("The layer %1 could not be drawn: %2").arg(layer, reason));
    });
    connect(view->canvas(), &CTxMapWnd::datasetsOpened, this, &DocumentArea::datasetsOpened);
    view->setMap(map);
    addTab(view, mapIcon(), name, tr("Map %1").arg(name));
    view->setFocus();
    return view;
}

AttributeTable *DocumentArea::showTable(CDatasetVector *dataset)
{
    if (!dataset)
        return nullptr;
    for (AttributeTable *table : tables()) {
        if (table->dataset() == dataset) {
            m_tabs->setCurrentWidget(table);
            return table;
        }
    }
    auto table = std::make_unique<AttributeTable>();
    if (!table->setDataset(dataset)) {
        Q_EMIT m_document.failed(tr("The records of %1 cannot be read.").arg(dataset->GetName()), table->error());
        return nullptr;
    }
    const QString alias = dataset->GetDataSource()->GetAlias();
    table->setProperty(aliasProperty, alias);
    table->setProperty(nameProperty, dataset->GetName());
    addTab(table.get(), Icons::action(QStringLiteral("table")), dataset->GetName(),
           tr("Records of %1 in %2").arg(dataset->GetName(), alias));
    Q_EMIT datasetsOpened();
    table->setFocus();
    return table.release();
}

bool DocumentArea::addToMap(CTxDataset *dataset, MapWindow *view)
{
    if (!dataset)
        return false;
    if (!LayerDefaults::isDrawable(*dataset))
        return showTable(static_cast<CDatasetVector *>(dataset)) != nullptr; // only tables cannot be drawn
    if (!dataset->Open()) {
        Q_EMIT m_document.failed(tr("%1 could not be opened.").arg(dataset->GetName()),
                                 TxGetErrorMsgObj().GetErrorMessage());
        return false;
    }
    if (!view)
        view = m_lastMap;
    if (!view) {
        const CTxMap *map = m_document.addMap(dataset->GetName());
        view = map ? showMap(map->GetName()) : nullptr;
    }
    if (!view)
        return false;
    CTxLayers &layers = view->map()->GetLayers();
    const bool first = layers.GetCount() == 0;
    LayerDefaults::addLayer(layers, m_document.workspace().GetDataSources(), *dataset);
    view->refresh();
    if (first)
        view->canvas()->FitAll();
    m_tabs->setCurrentWidget(view);
    Q_EMIT datasetsOpened();
    Q_EMIT layersChanged();
    m_document.touch();
    return true;
}

bool DocumentArea::addToNewMap(CTxDataset *dataset)
{
    if (!dataset || !LayerDefaults::isDrawable(*dataset))
        return addToMap(dataset);
    const CTxMap *map = m_document.addMap(dataset->GetName());
    return map && addToMap(dataset, showMap(map->GetName()));
}

QStringList DocumentArea::windowsOf(const CTxDataset *dataset) const
{
    QStringList windows;
    for (const MapWindow *view : maps()) {
        const CTxLayers &layers = view->map()->GetLayers();
        bool shows = false;
        for (int i = 0; i < layers.GetCount() && !shows; ++i) {
            const CTxDataset *shown = layers.GetLayerAt(i)->GetDataset();
            shows = shown && (shown == dataset || shown->GetChildDataset() == dataset); // the nodes of a network too
        }
        if (shows)
            windows << tr("the map “%1”").arg(view->map()->GetName());
    }
    for (const AttributeTable *table : tables())
        if (table->dataset() == dataset)
            windows << tr("the attribute table of “%1”").arg(dataset->GetName());
    return windows;
}

void DocumentArea::release(const CTxDataset *dataset)
{
    for (AttributeTable *table : tables())
        if (table->dataset() == dataset)
            closeTab(m_tabs->indexOf(table));
    for (MapWindow *view : maps())
        view->canvas()->ReleaseDataset(dataset);
}

void DocumentArea::refreshTables(const QString &alias)
{
    const CTxDataSource *source = m_document.workspace().GetDataSources().find(alias);
    for (AttributeTable *table : tables()) {
        if (table->property(aliasProperty).toString() != alias)
            continue;
        const CTxDataset *dataset = table->dataset();
        if (dataset && source && source->GetDataset(dataset->GetName()) == dataset)
            table->refresh();
        else
            closeTab(m_tabs->indexOf(table));
    }
}

void DocumentArea::pause(const QList<CTxDataSource *> &sources)
{
    for (AttributeTable *table : tables())
        if (table->dataset() && sources.contains(table->dataset()->GetDataSource()))
            table->pause();
    for (const CTxDataSource *source : sources)
        releaseMaps(source);
}

void DocumentArea::resume()
{
    for (AttributeTable *table : tables())
        table->resume();
    refreshMaps();
}

/// Layers name their datasets, so those that a map may be reading are found through its layers.
void DocumentArea::releaseMaps(const CTxDataSource *source)
{
    for (MapWindow *view : maps()) {
        const CTxLayers &layers = view->map()->GetLayers();
        for (int i = 0; i < layers.GetCount(); ++i) {
            const CTxDataset *dataset = layers.GetLayerAt(i)->GetDataset();
            if (!dataset || dataset->GetDataSource() != source)
                continue;
            view->canvas()->ReleaseDataset(dataset);
            if (dataset->GetChildDataset()) // the nodes of a network are drawn with it
                view->canvas()->ReleaseDataset(dataset->GetChildDataset());
        }
    }
}

void DocumentArea::releaseDataSource(const QString &alias, bool keepTables)
{
    const CTxDataSource *source = m_document.workspace().GetDataSources().find(alias);
    for (AttributeTable *table : tables()) {
        if (table->dataset() && table->dataset()->GetDataSource() == source) {
            table->release();
            if (!keepTables)
                closeTab(m_tabs->indexOf(table));
        }
    }
    releaseMaps(source);
}

void DocumentArea::restoreTables(const QString &alias, const QString &oldAlias)
{
    CTxDataSource *source = m_document.workspace().GetDataSources().find(alias);
    for (AttributeTable *table : tables()) {
        if (table->property(aliasProperty).toString() != oldAlias)
            continue;
        table->setProperty(aliasProperty, alias);
        if (table->dataset()) {
            table->refresh(); // making and renaming datasets ends the cursors of the others
            continue;
        }
        CTxDataset *dataset = source ? source->GetDataset(table->property(nameProperty).toString()) : nullptr;
        if (!dataset || !dataset->IsVector() || !table->setDataset(static_cast<CDatasetVector *>(dataset)))
            closeTab(m_tabs->indexOf(table));
    }
    refreshMaps();
}

void DocumentArea::refreshMaps()
{
    for (MapWindow *view : maps())
        view->refresh();
    Q_EMIT layersChanged();
}

void DocumentArea::renameMap(const QString &, const QString &newName)
{
    if (MapWindow *view = findMap(newName)) {
        m_tabs->setTabText(m_tabs->indexOf(view), newName);
        m_tabs->setTabToolTip(m_tabs->indexOf(view), tr("Map %1").arg(newName));
        view->setWindowTitle(newName);
    }
}

void DocumentArea::addTab(QWidget *window, const QIcon &icon, const QString &title, const QString &toolTip)
{
    constexpr int longestTitle = 40;
    QString text = title.size() > longestTitle ? title.left(longestTitle) + QStringLiteral("…") : title;
    m_tabs->setCurrentIndex(m_tabs->addTab(window, icon, text.replace(QLatin1Char('&'), QLatin1String("&&"))));
    m_tabs->setTabToolTip(m_tabs->currentIndex(), toolTip);
    updatePage();
}

void DocumentArea::fitAll()
{
    if (auto *view = qobject_cast<MapWindow *>(current()))
        view->canvas()->FitAll();
}

void DocumentArea::zoom(double factor)
{
    if (auto *view = qobject_cast<MapWindow *>(current()))
        view->canvas()->Zoom(factor);
}

void DocumentArea::refreshCurrent()
{
    if (auto *view = qobject_cast<MapWindow *>(current()))
        view->refresh();
    else if (AttributeTable *table = currentTable())
        table->refresh();
}

void DocumentArea::step(int count)
{
    const int windows = m_tabs->count();
    if (windows > 0)
        m_tabs->setCurrentIndex(((m_tabs->currentIndex() + count) % windows + windows) % windows);
}

void DocumentArea::closeCurrent()
{
    closeTab(m_tabs->currentIndex());
}

void DocumentArea::closeAll()
{
    while (m_tabs->count() > 0)
        closeTab(m_tabs->count() - 1);
}

void DocumentArea::closeTab(int index)
{
    QWidget *window = m_tabs->widget(index);
    if (!window)
        return;
    if (window == m_lastMap)
        m_lastMap = nullptr;
    // What it shows may die before the window does, which may be the one whose event is handled now.
    if (auto *view = qobject_cast<MapWindow *>(window))
        view->setMap(nullptr);
    if (auto *table = qobject_cast<AttributeTable *>(window))
        table->release();
    m_tabs->removeTab(index);
    window->hide();
    window->deleteLater();
    if (!m_lastMap && !maps().isEmpty())
        m_lastMap = maps().constLast();
    updatePage();
    onCurrentChanged();
}

void DocumentArea::updatePage()
{
    setCurrentIndex(m_tabs->count() > 0 ? 1 : 0);
}

void DocumentArea::onCurrentChanged()
{
    if (auto *view = qobject_cast<MapWindow *>(current()))
        m_lastMap = view;
    Q_EMIT currentChanged();
}
