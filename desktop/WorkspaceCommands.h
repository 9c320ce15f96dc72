#pragma once

#include "basic/TdOleDataNode.h"

#include <QObject>

class Actions;
class CTxDataset;
class CTxLayer;
class CTxDataSource;
class DocumentArea;
class MapWindow;
class Prompts;
class QMenu;
class WorkspaceDocument;
class WorkspacePane;

/// The commands on items of the workspace tree: what the context menu, the Data menu and a double click do.
///
/// Its actions are enabled by what is selected. Each command looks its engine objects up by name when it runs.
class WorkspaceCommands : public QObject
{
    Q_OBJECT
public:
    WorkspaceCommands(WorkspaceDocument &document, WorkspacePane &pane, DocumentArea &area, Actions &actions,
                      Prompts &prompts, QWidget *window);

    /// What a double click on the item does: a dataset or a tile is added to the current map, a map's window opens.
    void activate(const CTdOleDataNode &node);
    /// Adds the datasets that @p node names to @p view's map.
    void addToMap(const CTdOleDataNode &node, MapWindow *view);
    /// Opens the attribute table of a layer's dataset.
    void showTable(const CTxLayer *layer);
    /// Fills @p menu with what can be done with the selection.
    void fillMenu(QMenu &menu) const;
    /// Enables the actions that fit the selection.
    void updateActions();

    /// What the user is asked before datasets are deleted, and what more is said of it.
    static QString deleteQuestion(const QList<CTxDataset *> &datasets);
    static QString deleteExplanation(const QStringList &maps);
    /// The datasets that are selected in the tree.
    QList<CTxDataset *> selectedDatasets() const;

private:
    void addSelection(bool newMap);
    void showSelectedTables();
    void showProperties();
    void closeSelectedDatasets();
    void closeDataSources();
    void refreshDataSources();
    void rename();
    void renameDataset(const CTdOleDataNode::CTdOleData &entry);
    void deleteSelection();
    void deleteDatasets(const QList<CTxDataset *> &datasets);
    void listTiles();
    void openMaps();

    QList<CTxDataSource *> selectedDataSources() const;
    QStringList selectedMaps() const;
    CTxDataset *find(const CTdOleDataNode::CTdOleData &entry) const;
    CTxDataset *findTile(const CTdOleDataNode &node) const;

    WorkspaceDocument &m_document;
    WorkspacePane &m_pane;
    DocumentArea &m_area;
    Actions &m_actions;
    Prompts &m_prompts;
    QWidget *m_window; // parent of dialogs, not owned
};
