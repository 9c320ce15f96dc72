#include "workspace/WorkspaceTreeItem.h"

#include "common/TdCommMethods.h"
#include "workspace/WorkspaceTreeRecords.h"

WorkspaceTreeItem::WorkspaceTreeItem(const QString &label, int imageIndex, const QIcon &icon,
                                     std::shared_ptr<CTdOleDataNode> node)
    : QTreeWidgetItem(itemClass), m_label(label), m_icon(icon), m_node(std::move(node)), m_imageIndex(imageIndex)
{
}

WorkspaceTreeItem::~WorkspaceTreeItem()
{
    if (m_records)
        m_records->remove(this);
}

const CTdOleDataNode::CTdOleData *WorkspaceTreeItem::entry() const
{
    return m_node && !m_node->entries.isEmpty() ? &m_node->entries.first() : nullptr;
}

QVariant WorkspaceTreeItem::data(int column, int role) const
{
    if (column != 0)
        return QTreeWidgetItem::data(column, role);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return m_label;
    case Qt::DecorationRole:
        return m_icon;
    case NodeRole:
        return m_node ? QVariant::fromValue(m_node.get()) : QVariant();
    case ImageIndexRole:
        return m_imageIndex;
    case Qt::AccessibleDescriptionRole:
        if (const auto *described = entry(); described && described->datasetType != CTdOleDataNode::noDatasetType)
            return CTdCommMethods::GetDatasetTypeName(described->datasetType);
        return QVariant();
    default:
        return QTreeWidgetItem::data(column, role);
    }
}

void WorkspaceTreeItem::setData(int column, int role, const QVariant &value)
{
    if (column == 0 && (role == NodeRole || role == ImageIndexRole))
        return; // the tree's own
    if (column == 0 && (role == Qt::DisplayRole || role == Qt::EditRole)) {
        m_label = value.toString();
        emitDataChanged();
    } else if (column == 0 && role == Qt::DecorationRole) {
        m_icon = value.value<QIcon>();
        emitDataChanged();
    } else {
        QTreeWidgetItem::setData(column, role, value);
    }
}

QTreeWidgetItem *WorkspaceTreeItem::clone() const
{
    auto copy = std::make_unique<WorkspaceTreeItem>(m_label, m_imageIndex, m_icon, m_node);
    for (int child = 0; child < childCount(); ++child)
        copy->addChild(this->child(child)->clone());
    return copy.release();
}

bool WorkspaceTreeItem::operator<(const QTreeWidgetItem &other) const
{
    if (other.type() == itemClass) {
        const auto &otherItem = static_cast<const WorkspaceTreeItem &>(other);
        if (m_sortRank >= 0 && otherItem.m_sortRank >= 0)
            return m_sortRank < otherItem.m_sortRank;
    }
    return QTreeWidgetItem::operator<(other);
}

bool WorkspaceTreeItem::setImage(int imageIndex, const QIcon &icon)
{
    if (m_imageIndex == imageIndex)
        return false;
    m_imageIndex = imageIndex;
    m_icon = icon;
    emitDataChanged();
    return true;
}

void WorkspaceTreeItem::releaseNode()
{
    if (m_records)
        m_records->remove(this);
    m_node.reset();
}
