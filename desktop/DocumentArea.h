#pragma once

#include "basic/TdOleDataNode.h"

#include <QStackedWidget>
#include <QStringList>

class AttributeTable;
class CDatasetVector;
class CTxDataset;
class CTxDataSource;
class MapWindow;
class QTabWidget;
class WorkspaceDocument;

/// The middle of the main window: the windows of maps and attribute tables, one a tab, and a hint while there is none.
///
/// It follows the workspace: a window whose map goes is closed, a dataset that goes is let go of in time.
class DocumentArea : public QStackedWidget
{
    Q_OBJECT
public:
    explicit DocumentArea(WorkspaceDocument &document, QWidget *parent = nullptr);

    /// The window in front, null when there is none.
    QWidget *current() const;
    /// The map in front, or the one that was last in front; null when no map is open.
    MapWindow *currentMap() const;
    /// The attribute table in front, null when none is.
    AttributeTable *currentTable() const;
    QList<MapWindow *> maps() const;
    QList<AttributeTable *> tables() const;

    /// Opens the window of the map called @p name, or brings it to the front. @return null when there is no such map.
    MapWindow *showMap(const QString &name);
    /// Opens the attribute table of @p dataset, or brings it to the front. @return null when it cannot be read.
    AttributeTable *showTable(CDatasetVector *dataset);
    /// Adds @p dataset to @p view's map, to the current or a new map when it is null, and draws it. A dataset without
    /// geometry opens its attribute table in place of that. @return false when it cannot be read.
    bool addToMap(CTxDataset *dataset, MapWindow *view = nullptr);
    /// Makes a map and adds @p dataset to it.
    bool addToNewMap(CTxDataset *dataset);

    /// The windows that show @p dataset, as users call them ("the map Trip"); empty when none does.
    QStringList windowsOf(const CTxDataset *dataset) const;
    /// Lets go of @p dataset: maps read no more of it, its attribute table closes.
    void release(const CTxDataset *dataset);
    /// Closes the attribute tables whose dataset the datasource called @p alias no longer has, and reads the others of
    /// it again: a change of a storage's structure ends every cursor.
    void refreshTables(const QString &alias);
    /// Reads nothing of @p sources while work changes them, until resume(). Tables keep what they show on the screen.
    void pause(const QList<CTxDataSource *> &sources);
    /// Shows everything again as it is now.
    void resume();
    /// Draws the maps anew, where @p dataset is one of the layers (or all of them for null).
    void refreshMaps();
    /// Shows all of the map in front.
    void fitAll();
    /// Zooms the map in front about its middle.
    void zoom(double factor);
    /// Draws the map in front anew, or reads the table's records again.
    void refreshCurrent();
    /// Goes @p count windows further, round and round.
    void step(int count);
    /// Closes the window in front.
    void closeCurrent();
    /// Closes every window.
    void closeAll();

Q_SIGNALS:
    /// Another window is in front, or none.
    void currentChanged();
    /// The layers of a map have changed.
    void layersChanged();
    /// Drawing a map or showing a table opened datasets.
    void datasetsOpened();
    /// Datasets were dropped on @p view from the workspace tree.
    void itemsDropped(const CTdOleDataNode &node, MapWindow *view);
    void filesDropped(const QStringList &paths);

private:
    void addTab(QWidget *window, const QIcon &icon, const QString &title, const QString &toolTip);
    void closeTab(int index);
    void updatePage();
    void onCurrentChanged();
    void releaseMaps(const CTxDataSource *source);
    void releaseDataSource(const QString &alias, bool keepTables);
    void restoreTables(const QString &alias, const QString &oldAlias);
    void renameMap(const QString &name, const QString &newName);
    MapWindow *findMap(const QString &name) const;

    WorkspaceDocument &m_document;
    QTabWidget *m_tabs;
    MapWindow *m_lastMap = nullptr; // one of the tabs
};
