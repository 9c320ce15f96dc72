#pragma once

#include "VirtualSource.h"

#include "basic/TdOleDataNode.h"
#include "engine/map/TxWorkspace.h"
#include "workspace/WorkspaceBarTree.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Tree = CWorkspaceBarTree;
using Node = CTdOleDataNode;

/// Counts what the trees report as errors while it lives.
class ErrorCounter
{
public:
    ErrorCounter();
    ~ErrorCounter();
    int count() const;
};

/// A workspace with a tree on it.
class WorkspaceFixture : public testing::Test
{
protected:
    static constexpr qint32 everything = 0xfff;

    /// Opens a virtual datasource of @p layers under @p alias.
    CTxDataSource *openLayers(const QString &alias, const QList<LayerRow> &layers);
    /// Gives the workspace a map "m", a layout "l" and a scene "s".
    void addMapLayoutAndScene();
    /// Connects the tree with @p mask.
    void connect(qint32 mask = everything);
    /// Connects the tree with @p mask and fills everything.
    void fillAll(qint32 mask = everything);

    QTreeWidgetItem *find(qint32 kind, const QString &name, const QString &alias = QString()) const
    {
        return tree.FindHTreeItem(name, alias, kind, false);
    }
    QTreeWidgetItem *sourceItem(const QString &alias) const { return find(Node::ItemDataSource, alias); }
    QTreeWidgetItem *group(qint32 kind) const { return tree.FindFirstItem(kind); }
    static QStringList labels(const QTreeWidgetItem *parent);

    const QString a = u"a"_s;
    QTemporaryDir folder;
    CTxWorkspace workspace;
    Tree tree;
};
