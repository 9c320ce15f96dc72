#include "WorkspacePane.h"

#include "DropContent.h"
#include "WorkspaceDocument.h"
#include "basic/TdHostMessage.h"
#include "workspace/WorkspaceBarTree.h"
#include "workspace/WorkspaceTreeFilterBox.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QVBoxLayout>

namespace {

/// A datasource with no more datasets than this is expanded when it is opened.
constexpr int expandedDatasets = 40;

constexpr qint32 everything = CWorkspaceBarTree::ShowWorkspace | CWorkspaceBarTree::ShowDataSourceGroup |
                              CWorkspaceBarTree::ShowMapGroup | CWorkspaceBarTree::ShowMaps |
                              CWorkspaceBarTree::ShowLayouts | CWorkspaceBarTree::ShowLayoutGroup |
                              CWorkspaceBarTree::ShowResources | CWorkspaceBarTree::ShowSceneGroup |
                              CWorkspaceBarTree::ShowScenes | CWorkspaceBarTree::ShowSubDatasets;

} // namespace

WorkspacePane::WorkspacePane(WorkspaceDocument &document, CTdProfileFile &profile, QWidget *parent)
    : QWidget(parent), m_document(document), m_tree(new CWorkspaceBarTree(this)),
      m_filter(new CWorkspaceTreeFilterBox(this))
{
    m_tree->SetProfileFile(&profile);
    m_tree->SetShowItemMask(everything);
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tree->setExpandsOnDoubleClick(false); // a double click opens what can be opened
    m_filter->SetTree(m_tree);

    auto *filterPlace = new QHBoxLayout;
    filterPlace->setContentsMargins(4, 4, 4, 4);
    filterPlace->addWidget(m_filter);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(filterPlace);
    layout->addWidget(m_tree, 1);
    setFocusProxy(m_tree);
    setTabOrder(m_filter, m_tree);

    connect(m_tree, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem *item) {
        const CTdOleDataNode *node = CWorkspaceBarTree::GetItemNode(item);
        if (node && !node->entries.isEmpty() && item->childCount() == 0)
            Q_EMIT activated(CTdOleDataNode(*node));
        else if (node && node->itemType == CTdOleDataNode::ItemDataset)
            Q_EMIT activated(CTdOleDataNode(*node)); // its children are an aside
        else
            item->setExpanded(!item->isExpanded());
    });
    connect(m_tree, &QTreeWidget::itemSelectionChanged, this, &WorkspacePane::selectionChanged);
    connect(m_tree, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &position) { Q_EMIT menuRequested(m_tree->viewport()->mapToGlobal(position)); });
    connect(&document, &WorkspaceDocument::workspaceOpened, this, &WorkspacePane::refill);
    connect(&document, &WorkspaceDocument::dataSourceOpened, this, &WorkspacePane::fillDataSource);
    connect(&document, &WorkspaceDocument::dataSourceClosed, this, &WorkspacePane::removeDataSource);
    connect(&document, &WorkspaceDocument::dataSourceChanged, this, &WorkspacePane::onDataSourceChanged);
    connect(&document, &WorkspaceDocument::mapAdded, this, [this](const QString &name) {
        m_tree->FillTreeItem(CWorkspaceBarTree::FillTypeMap, name);
        if (QTreeWidgetItem *group = m_tree->FindFirstItem(CTdOleDataNode::ItemMaps))
            group->setExpanded(true);
    });
    connect(&document, &WorkspaceDocument::mapRemoved, this, [this](const QString &name) {
        if (QTreeWidgetItem *item = m_tree->FindHTreeItem(name, QString(), CTdOleDataNode::ItemMap, 0))
            m_tree->DeleteSubItems(item, 1);
    });
    connect(&document, &WorkspaceDocument::mapRenamed, this, [this](const QString &name, const QString &newName) {
        if (QTreeWidgetItem *item = m_tree->FindHTreeItem(name, QString(), CTdOleDataNode::ItemMap, 0))
            m_tree->DeleteSubItems(item, 1);
        m_tree->FillTreeItem(CWorkspaceBarTree::FillTypeMap, newName);
    });
    refill();
}

void WorkspacePane::refill()
{
    m_tree->ConnectWorkspace(m_document.workspace());
    m_tree->FillTreeItem(CWorkspaceBarTree::FillTypeWorkspace);
    expandGroups();
    Q_EMIT selectionChanged();
}

void WorkspacePane::detach()
{
    m_document.disconnect(this);
    m_tree->DisconnectWorkspace();
}

void WorkspacePane::focusFilter()
{
    m_filter->setFocus(Qt::ShortcutFocusReason);
}

void WorkspacePane::expandGroups()
{
    for (const qint32 kind : {CTdOleDataNode::ItemDataSources, CTdOleDataNode::ItemMaps}) {
        if (QTreeWidgetItem *group = m_tree->FindFirstItem(kind))
            group->setExpanded(true);
    }
    const CTxDataSources &sources = m_document.workspace().GetDataSources();
    if (sources.GetCount() != 1)
        return;
    QTreeWidgetItem *only =
        m_tree->FindHTreeItem(sources.GetAt(0)->GetAlias(), QString(), CTdOleDataNode::ItemDataSource, 0);
    if (only && only->childCount() <= expandedDatasets)
        only->setExpanded(true);
}

void WorkspacePane::fillDataSource(const QString &alias)
{
    m_tree->FillTreeItem(CWorkspaceBarTree::FillTypeDataSource, alias);
    m_tree->SetExpand(CWorkspaceBarTree::FillTypeDataset);
    QTreeWidgetItem *item = m_tree->FindHTreeItem(alias, QString(), CTdOleDataNode::ItemDataSource, 0);
    if (!item)
        return;
    if (item->childCount() <= expandedDatasets)
        item->setExpanded(true);
    select(item);
}

void WorkspacePane::removeDataSource(const QString &alias)
{
    if (QTreeWidgetItem *item = m_tree->FindHTreeItem(alias, QString(), CTdOleDataNode::ItemDataSource, 0))
        m_tree->DeleteSubItems(item, 1);
}

void WorkspacePane::onDataSourceChanged(const QString &alias, const QString &oldAlias)
{
    if (alias != oldAlias)
        removeDataSource(oldAlias);
    fillDataSource(alias);
}

void WorkspacePane::updateDatasets()
{
    m_tree->UpdateDatasetState();
}

void WorkspacePane::updateDataset(const CTxDataset *dataset)
{
    m_tree->ChangeItemState(dataset);
}

void WorkspacePane::addDataset(const QString &alias, const QString &name)
{
    m_tree->FillTreeItem(CWorkspaceBarTree::FillTypeDataset, alias, name);
    if (QTreeWidgetItem *item = m_tree->FindHTreeItem(name, alias, CTdOleDataNode::ItemDataset, 0))
        select(item);
}

void WorkspacePane::select(QTreeWidgetItem *item)
{
    m_tree->setCurrentItem(item, 0, QItemSelectionModel::ClearAndSelect); // also while Ctrl is held
    m_tree->scrollToItem(item);
}

void WorkspacePane::removeDataset(const QString &alias, const QString &name)
{
    if (QTreeWidgetItem *item = m_tree->FindHTreeItem(name, alias, CTdOleDataNode::ItemDataset, 0))
        m_tree->DeleteSubItems(item, 1);
}

QList<CTdOleDataNode> WorkspacePane::selection() const
{
    QList<CTdOleDataNode> nodes;
    for (const QTreeWidgetItem *item : m_tree->selectedItems()) {
        const CTdOleDataNode *node = CWorkspaceBarTree::GetItemNode(item);
        if (node && !node->entries.isEmpty())
            nodes << *node;
    }
    return nodes;
}

/// Drags over the tree come from the tree as messages to its parent: files are welcome, its own items are not.
bool WorkspacePane::event(QEvent *event)
{
    CTdHostMessage *message = CTdHostMessage::from(event);
    if (!message || !message->mime())
        return QWidget::event(event);
    const QStringList files = DropContent(*message->mime()).files;
    message->setResult(files.isEmpty() ? Qt::IgnoreAction : Qt::CopyAction);
    if (message->message() == CTdHostMessage::Drop && !files.isEmpty())
        Q_EMIT filesDropped(files);
    return true;
}
