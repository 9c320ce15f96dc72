#pragma once

#include "basic/TdOleDataNode.h"

#include <QStringList>
#include <QWidget>

class CTdProfileFile;
class CTxDataset;
class CTxDataSource;
class CWorkspaceBarTree;
class CWorkspaceTreeFilterBox;
class QTreeWidgetItem;
class WorkspaceDocument;

/// The workspace tree with its filter line above; keeps the tree in step with the document.
class WorkspacePane : public QWidget
{
    Q_OBJECT
public:
    /// @param profile captions and permissions of the tree's groups (not owned, outlives this)
    WorkspacePane(WorkspaceDocument &document, CTdProfileFile &profile, QWidget *parent = nullptr);

    CWorkspaceBarTree *tree() const { return m_tree; }
    CWorkspaceTreeFilterBox *filterBox() const { return m_filter; }
    /// Fills the whole tree anew.
    void refill();
    /// Empties the tree, for good.
    void detach();
    /// Puts the cursor into the filter line.
    void focusFilter();
    /// Shows which datasets are open.
    void updateDatasets();
    /// Shows the state of @p dataset: open or closed.
    void updateDataset(const CTxDataset *dataset);
    /// Shows a dataset that is new, and selects it.
    void addDataset(const QString &alias, const QString &name);
    /// Takes the item of a dataset that is no longer there out of the tree.
    void removeDataset(const QString &alias, const QString &name);
    /// What is selected, one entry an item; copies, so they may be kept.
    QList<CTdOleDataNode> selection() const;

Q_SIGNALS:
    /// The user double-clicked an item or pressed Enter on it.
    void activated(const CTdOleDataNode &node);
    /// The user wants the menu of the selection at a place of the screen.
    void menuRequested(const QPoint &globalPosition);
    void selectionChanged();
    /// Files were dropped on the tree.
    void filesDropped(const QStringList &paths);

protected:
    bool event(QEvent *event) override;

private:
    void fillDataSource(const QString &alias);
    void removeDataSource(const QString &alias);
    void onDataSourceChanged(const QString &alias, const QString &oldAlias);
    void expandGroups();
    void select(QTreeWidgetItem *item);

    WorkspaceDocument &m_document;
    CWorkspaceBarTree *m_tree;
    CWorkspaceTreeFilterBox *m_filter;
};
