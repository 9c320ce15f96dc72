#include "workspace/WorkspaceBarTree.h"

#include "basic/TdHostMessage.h"
#include "basic/TdProfileFile.h"
#include "common/TdCommMethods.h"
#include "common/TdModule.h"
#include "engine/data/TxDataSource.h"
#include "engine/map/TxWorkspace.h"
#include "res/StringId.h"
#include "workspace/WorkspaceTreeDelegate.h"
#include "workspace/WorkspaceTreePrivate.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLoggingCategory>
#include <QMimeData>
#include <QToolTip>
#include <QUrl>

Q_LOGGING_CATEGORY(lcWorkspace, "terravox.workspace", QtInfoMsg)

namespace {

/// A bit of the show-item mask: what it brings along, and who may forbid it.
struct ShowItemRow
{
    CWorkspaceBarTree::ShowItem bit;
    qint32 added;                                ///< the bit with those that it implies
    bool (CTdProfileFile::*isPermitted)() const; ///< null for bits that need no permission
};

constexpr ShowItemRow showItemTable[] = {
    {CWorkspaceBarTree::ShowWorkspace, 0x1, &CTdProfileFile::IsTreeItemDispWS},
    {CWorkspaceBarTree::ShowDataSourceGroup, 0x2, &CTdProfileFile::IsTreeItemDispDSs},
    {CWorkspaceBarTree::ShowDataSources, 0x4, nullptr},
    {CWorkspaceBarTree::ShowDatasets, 0xc, nullptr},
    {CWorkspaceBarTree::ShowMapGroup, 0x10, &CTdProfileFile::IsTreeItemDispMAPs},
    {CWorkspaceBarTree::ShowMaps, 0x20, nullptr},
    {CWorkspaceBarTree::ShowLayouts, 0x40, nullptr},
    {CWorkspaceBarTree::ShowLayoutGroup, 0x80, &CTdProfileFile::IsTreeItemDispLYTs},
    {CWorkspaceBarTree::ShowResources, 0x100, &CTdProfileFile::IsTreeItemDispRESs},
    {CWorkspaceBarTree::ShowSceneGroup, 0x200, &CTdProfileFile::IsTreeItemDispScenes},
    {CWorkspaceBarTree::ShowScenes, 0x400, nullptr},
    {CWorkspaceBarTree::ShowSubDatasets, 0x80c, nullptr},
};

} // namespace

int workspaceTreeError(const std::source_location &where)
{
    const int line = int(where.line());
    CTdCommMethods::PromptWrong(QStringLiteral("WorkspaceBarTree"), line);
    qCDebug(lcWorkspace).nospace() << "WorkspaceBarTree: a fill stopped in " << where.function_name() << ", line "
                                   << line;
    return 0;
}

CWorkspaceBarTree::CWorkspaceBarTree(QWidget *parent)
    : QTreeWidget(parent), d(std::make_unique<WorkspaceTreePrivate>(this))
{
    InitTree();
}

CWorkspaceBarTree::~CWorkspaceBarTree()
{
    d->records.clear(); // the items outlive the records
}

void CWorkspaceBarTree::InitTree()
{
    setColumnCount(1);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setTextElideMode(Qt::ElideRight);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setDragEnabled(true);
    setItemDelegate(new WorkspaceTreeDelegate(this));
    setAccessibleName(CTdModule::LoadString(TdStringId::TreeAccessibleName));
    d->dropTarget.Register(this);
    d->images.InitImageList(1);
    setIconSize(d->images.imageSize());
}

void CWorkspaceBarTree::ConnectWorkspace(CTxWorkspace &workspace)
{
    d->workspace = &workspace;
    FillBasicItem();
}

void CWorkspaceBarTree::DisconnectWorkspace()
{
    DeleteAllItemsEx();
    d->workspace = nullptr;
}

CTxWorkspace *CWorkspaceBarTree::GetWorkspace() const
{
    return d->workspace;
}

void CWorkspaceBarTree::SetShowItemMask(qint32 mask)
{
    for (const ShowItemRow &row : showItemTable) {
        if ((mask & row.bit) && (!row.isPermitted || !d->profile || (d->profile->*row.isPermitted)()))
            d->showItemMask |= row.added; // deliberate: bits are never taken away, hosts add theirs one after another
    }
}

qint32 CWorkspaceBarTree::GetShowItemMask() const
{
    return d->showItemMask;
}

void CWorkspaceBarTree::SetDTDisplayMask(quint32 mask)
{
    d->datasetMask = mask;
}

quint32 CWorkspaceBarTree::GetDTDisplayMask() const
{
    return d->datasetMask;
}

CTdOleDataNode *CWorkspaceBarTree::GetDisplayItems()
{
    return &d->displayItems;
}

void CWorkspaceBarTree::SetProfileFile(CTdProfileFile *profile)
{
    d->profile = profile;
}

int CWorkspaceBarTree::SetAutoHide(int autoHide)
{
    return std::exchange(d->autoHide, autoHide);
}

int CWorkspaceBarTree::GetAutoHide() const
{
    return d->autoHide;
}

void CWorkspaceBarTree::SetRelatedListCtrl(CWorkspaceBarListCtrl *listCtrl)
{
    d->listCtrl = listCtrl;
}

CWorkspaceBarListCtrl *CWorkspaceBarTree::GetRelatedListCtrl() const
{
    return d->listCtrl;
}

CWorkspaceBarTree::SortType CWorkspaceBarTree::GetSortType() const
{
    return d->sortType;
}

const CTdWkspImageList &CWorkspaceBarTree::GetWkspImageList() const
{
    return d->images;
}

void CWorkspaceBarTree::SetExpand(FillType type)
{
    if (QTreeWidgetItem *group = d->group(WorkspaceGroup::DataSources); group && type == FillTypeDataset)
        group->setExpanded(true);
}

QStringList CWorkspaceBarTree::mimeTypes() const
{
    return {CTdOleDataNode::mimeType(), QStringLiteral("text/plain"), QStringLiteral("text/uri-list")};
}

/// One node for all of @p items: kind and names of the first, an entry for each; and the files of datasources, for
/// other programs.
QMimeData *CWorkspaceBarTree::mimeData(const QList<QTreeWidgetItem *> &items) const
{
    CTdOleDataNode dragged;
    QList<QUrl> files;
    for (const QTreeWidgetItem *item : items) {
        const CTdOleDataNode *node = GetItemNode(item);
        if (!node)
            continue;
        if (dragged.entries.isEmpty())
            dragged = *node;
        else
            dragged.entries += node->entries;
        const CTxDataSource *source =
            node->itemType == CTdOleDataNode::ItemDataSource ? d->dataSource(node->name) : nullptr;
        if (source && QFileInfo::exists(source->GetPath()))
            files.append(QUrl::fromLocalFile(QFileInfo(source->GetPath()).absoluteFilePath()));
    }
    if (dragged.entries.isEmpty())
        return nullptr;
    auto mime = std::make_unique<QMimeData>();
    dragged.toMime(*mime);
    if (!files.isEmpty())
        mime->setUrls(files);
    return mime.release();
}

bool CWorkspaceBarTree::event(QEvent *event)
{
    // What is dragged over the tree is the parent's business; its answer goes back with the message.
    if (const CTdHostMessage *message = CTdHostMessage::from(event)) {
        switch (message->message()) {
        case CTdHostMessage::DragEnter:
        case CTdHostMessage::DragOver:
        case CTdHostMessage::Drop:
            if (parentWidget())
                QCoreApplication::sendEvent(parentWidget(), event);
            return true;
        default:
            break;
        }
    }
    return QTreeWidget::event(event);
}

bool CWorkspaceBarTree::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const QTreeWidgetItem *item = itemAt(help->pos());
        const QString text = item ? toolTipOf(item) : QString();
        if (!text.isEmpty()) {
            QToolTip::showText(help->globalPos(), text, viewport(), visualItemRect(item));
            return true;
        }
    }
    return QTreeWidget::viewportEvent(event);
}

/// The whole label, and what the item is: the kind of a dataset, the path of a datasource.
QString CWorkspaceBarTree::toolTipOf(const QTreeWidgetItem *item) const
{
    constexpr qsizetype longest = 400;
    const CTdOleDataNode *node = GetItemNode(item);
    if (!node || node->entries.isEmpty())
        return QString();
    QStringList lines{WorkspaceTreeDelegate::shownText(item->text(0), longest)};
    const CTdOleDataNode::CTdOleData &entry = node->entries.first();
    if (entry.itemType == CTdOleDataNode::ItemDataset && entry.datasetType != CTdOleDataNode::noDatasetType)
        lines << CTdCommMethods::GetDatasetTypeName(entry.datasetType);
    if (entry.itemType == CTdOleDataNode::ItemDataSource) {
        if (const CTxDataSource *dataSource = d->dataSource(entry.itemName))
            lines << WorkspaceTreeDelegate::shownText(dataSource->GetPath(), longest);
    }
    for (QString &line : lines)
        line = line.toHtmlEscaped();
    return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(lines.join(QStringLiteral("<br>")));
}
