#include "workspace/WorkspaceTreeFilter.h"

#include "common/TdCommMethods.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxDataset.h"
#include "engine/map/TxWorkspace.h"
#include "workspace/WorkspaceTreePrivate.h"

#include <QScopedValueRollback>

namespace {

/// How long the filter works before it lets events through, in milliseconds.
constexpr int sliceLength = 8;
/// How many steps are done between two looks at the clock.
constexpr size_t stepsPerLook = 64;

/// Kinds that are there for what stands below them.
bool isFrame(qint32 kind)
{
    switch (kind) {
    case CTdOleDataNode::ItemWorkspace:
    case CTdOleDataNode::ItemDataSources:
    case CTdOleDataNode::ItemMaps:
    case CTdOleDataNode::ItemLayouts:
    case CTdOleDataNode::ItemResources:
    case CTdOleDataNode::ItemScenes:
        return true;
    default:
        return false;
    }
}

} // namespace

WorkspaceTreeFilter::WorkspaceTreeFilter(CWorkspaceBarTree *tree, QObject *parent) : QObject(parent), m_tree(tree)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &WorkspaceTreeFilter::runSlice);

    const auto onChange = [this] {
        if (!m_filling && (isActive() || isRunning()))
            restart(MatchPhase); // what the host takes out is not filled in again
    };
    const QAbstractItemModel *model = tree->model();
    connect(model, &QAbstractItemModel::rowsInserted, this, onChange);
    connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this, onChange);
    connect(model, &QAbstractItemModel::modelAboutToBeReset, this, onChange);
    connect(model, &QAbstractItemModel::layoutChanged, this, onChange);
}

WorkspaceTreeFilter::~WorkspaceTreeFilter() = default;

void WorkspaceTreeFilter::setText(const QString &text)
{
    const QStringList words = text.simplified().split(u' ', Qt::SkipEmptyParts);
    if (words == m_words)
        return;
    m_words = words;
    restart(isActive() ? FillPhase : MatchPhase);
}

QTreeWidgetItem *WorkspaceTreeFilter::firstMatch() const
{
    return m_tree ? m_tree->itemFromIndex(m_firstMatch) : nullptr;
}

void WorkspaceTreeFilter::restart(Phase from)
{
    m_places.clear();
    m_toUnfold.clear();
    m_next = 0;
    m_nextDataSource = 0;
    m_nextDataset = 0;
    m_found = 0;
    m_firstMatch = QPersistentModelIndex();
    m_phase = from;
    m_timer.start();
}

void WorkspaceTreeFilter::runSlice()
{
    if (!m_tree)
        return;
    const QDeadlineTimer slice(sliceLength);
    bool done = true;
    while (done && m_phase != Idle) {
        switch (m_phase) {
        case FillPhase:
            if ((done = fillSome(slice)))
                m_phase = MatchPhase;
            break;
        case MatchPhase:
            if ((done = matchSome(slice))) {
                settleVisibility();
                m_phase = HidePhase;
            }
            break;
        case HidePhase:
            if ((done = hideSome(slice))) {
                m_places = {};
                if (!isActive())
                    foldAgain();
                m_phase = UnfoldPhase;
            }
            break;
        case UnfoldPhase:
            if ((done = unfoldSome(slice)) && m_phase == UnfoldPhase) // a host may have begun to fill meanwhile
                m_phase = Idle;
            break;
        case Idle:
            break;
        }
        done = done && !slice.hasExpired();
    }
    if (m_phase != Idle)
        m_timer.start();
    else
        Q_EMIT finished(m_found);
}

bool WorkspaceTreeFilter::textMatches(const QString &label) const
{
    return std::all_of(m_words.cbegin(), m_words.cend(),
                       [&label](const QString &word) { return label.contains(word, Qt::CaseInsensitive); });
}

/// Fills datasources that hold a match and have no datasets in the tree. @return true when none is left.
bool WorkspaceTreeFilter::fillSome(const QDeadlineTimer &slice)
{
    const QScopedValueRollback<bool> filling(m_filling, true);
    const WorkspaceTreePrivate &tree = *m_tree->d;
    if (!tree.workspace)
        return true;
    const CTxDataSources &dataSources = tree.workspace->GetDataSources();
    const qint32 mask = tree.showItemMask;
    if (tree.group(WorkspaceGroup::DataSources) && (mask & CWorkspaceBarTree::ShowDataSources)) {
        for (; m_nextDataSource < dataSources.GetCount(); ++m_nextDataSource) {
            const CTxDataSource *dataSource = dataSources.GetAt(m_nextDataSource);
            const QString &alias = dataSource->GetAlias();
            const QTreeWidgetItem *item =
                m_tree->FindHTreeItem(alias, QString(), CTdOleDataNode::ItemDataSource, false);
            const bool canGrow = (mask & CWorkspaceBarTree::ShowDatasets) && (!item || item->childCount() == 0);
            bool known = true;
            const bool wanted =
                (!item && textMatches(alias)) || (canGrow && holdsMatch(dataSource, alias, slice, known));
            if (!known)
                return false;
            m_nextDataset = 0;
            if (wanted)
                m_tree->FillDataSource(alias);
            if (slice.hasExpired()) {
                ++m_nextDataSource;
                return false;
            }
        }
    }
    fillNamedGroups();
    return true;
}

/// Looks for a dataset that matches and may be shown, from where the last slice stopped. @p known is false, and the
/// answer means nothing, when time ran out before that was settled.
bool WorkspaceTreeFilter::holdsMatch(const CTxDataSource *dataSource, const QString &alias, const QDeadlineTimer &slice,
                                     bool &known)
{
    const WorkspaceTreePrivate &tree = *m_tree->d;
    const WorkspaceDisplayFilter display(tree.displayItems);
    const qint32 count = dataSource->GetDatasetCount();
    size_t steps = 0;
    for (; m_nextDataset < count; ++m_nextDataset) {
        if (++steps % stepsPerLook == 0 && slice.hasExpired()) {
            known = false;
            return false;
        }
        const CTxDataset *dataset = dataSource->GetDatasetAt(m_nextDataset);
        if (dataset && textMatches(dataset->GetName()) && CTdCommMethods::IsSupportDTType(dataset, tree.datasetMask) &&
            display.shows(CTdOleDataNode::ItemDataset, dataset->GetName(), alias))
            return true;
    }
    return false;
}

/// Fills maps, layouts and scenes that are not in the tree and hold a match.
void WorkspaceTreeFilter::fillNamedGroups()
{
    const WorkspaceTreePrivate &tree = *m_tree->d;
    const auto isBare = [&tree](WorkspaceGroup which, qint32 bit) {
        const QTreeWidgetItem *group = tree.group(which);
        return group && group->childCount() == 0 && (tree.showItemMask & bit);
    };
    const auto anyMatches = [this](const auto &collection) {
        for (int index = 0; index < collection.GetCount(); ++index) {
            if (textMatches(collection.GetAt(index)->GetName()))
                return true;
        }
        return false;
    };
    if (isBare(WorkspaceGroup::Maps, CWorkspaceBarTree::ShowMaps) && anyMatches(tree.workspace->GetMaps()))
        m_tree->FillMaps();
    if (isBare(WorkspaceGroup::Layouts, CWorkspaceBarTree::ShowLayouts) && anyMatches(tree.workspace->GetLytStorages()))
        m_tree->FillLyts();
    if (isBare(WorkspaceGroup::Scenes, CWorkspaceBarTree::ShowScenes) && anyMatches(tree.workspace->GetScenes()))
        m_tree->FillScenes();
}

/// Lists the items, parents before their children, and marks those that match. @return true when all are listed.
bool WorkspaceTreeFilter::matchSome(const QDeadlineTimer &slice)
{
    const auto addChildren = [this](QTreeWidgetItem *parent, int place) {
        const int count = parent->childCount();
        if (place >= 0 && count > 0)
            m_places[size_t(place)].firstChild = int(m_places.size());
        for (int row = 0; row < count; ++row)
            m_places.push_back({parent->child(row), place, row, -1, false, false, false});
    };
    if (m_places.empty())
        addChildren(m_tree->invisibleRootItem(), -1);
    for (size_t step = 1; m_next < m_places.size(); ++step) {
        const int place = int(m_next++);
        QTreeWidgetItem *item = m_places[size_t(place)].item;
        const CTdOleDataNode *node = CWorkspaceBarTree::GetItemNode(item);
        const bool frame = node && !node->entries.isEmpty() && isFrame(node->entries.first().itemType);
        m_places[size_t(place)].matches = isActive() && !frame && textMatches(item->text(0));
        addChildren(item, place);
        if (step % stepsPerLook == 0 && slice.hasExpired())
            return m_next == m_places.size();
    }
    return true;
}

/// Settles what is shown: what matches, what leads to it, and everything below an item that matches and leads no
/// further.
void WorkspaceTreeFilter::settleVisibility()
{
    m_next = 0;
    for (size_t place = m_places.size(); place-- > 0;) {
        const Place &child = m_places[place];
        if (child.parent >= 0 && (child.matches || child.leadsToMatch))
            m_places[size_t(child.parent)].leadsToMatch = true;
        m_found += child.matches ? 1 : 0;
    }
    for (Place &place : m_places) {
        const Place *parent = place.parent >= 0 ? &m_places[size_t(place.parent)] : nullptr;
        const bool belowMatch = parent && parent->shown && !parent->leadsToMatch;
        place.shown = !isActive() || place.matches || place.leadsToMatch || belowMatch;
    }
    if (m_found > 0)
        m_firstMatch = m_tree->indexFromItem(m_places[topmostMatch()].item);
}

/// The place of the match that stands highest on the screen; there must be one.
size_t WorkspaceTreeFilter::topmostMatch() const
{
    size_t place = 0;
    while (!m_places[place].matches) {
        if (m_places[place].leadsToMatch)
            place = size_t(m_places[place].firstChild);
        else
            ++place; // its next sibling: the children of an item stand together
    }
    return place;
}

/// Hides and shows items. @return true when all are as they shall be.
bool WorkspaceTreeFilter::hideSome(const QDeadlineTimer &slice)
{
    const QTreeWidgetItem *lastParent = nullptr;
    QModelIndex parentIndex;
    for (size_t step = 1; m_next < m_places.size(); ++step) {
        const Place &place = m_places[m_next++];
        QTreeWidgetItem *parent = place.item->parent();
        if (parent != lastParent) {
            lastParent = parent;
            parentIndex = parent ? m_tree->indexFromItem(parent) : QModelIndex();
        }
        // Below a hidden item nothing needs to be hidden.
        const bool hide = !place.shown && (place.parent < 0 || m_places[size_t(place.parent)].shown);
        if (m_tree->isRowHidden(place.row, parentIndex) != hide) {
            foldForWork(parent);
            m_tree->setRowHidden(place.row, parentIndex, hide);
        }
        if (isActive() && place.leadsToMatch && !place.item->isExpanded()) {
            if (const QPersistentModelIndex index = m_tree->indexFromItem(place.item); !m_reopen.contains(index))
                m_toUnfold.append(index);
        }
        if (step % stepsPerLook == 0 && slice.hasExpired())
            return m_next == m_places.size();
    }
    return true;
}

/// Folds an item with many children before these are hidden or shown: each slice would have the view lay out all of
/// them anew. Hosts do not hear of it.
void WorkspaceTreeFilter::foldForWork(QTreeWidgetItem *parent)
{
    constexpr int many = 500;
    if (!parent || parent->childCount() < many || !parent->isExpanded())
        return;
    const QSignalBlocker silence(m_tree);
    m_reopen.append(m_tree->indexFromItem(parent));
    parent->setExpanded(false);
}

/// Unfolds what leads to matches, and what was folded for work. @return true when nothing is left.
bool WorkspaceTreeFilter::unfoldSome(const QDeadlineTimer &slice)
{
    {
        const QSignalBlocker silence(m_tree);
        const QList<QPersistentModelIndex> reopen = std::exchange(m_reopen, {});
        for (const QPersistentModelIndex &index : reopen)
            m_tree->setExpanded(index, true);
    }
    while (!m_toUnfold.isEmpty()) {
        const QPersistentModelIndex index = m_toUnfold.takeFirst();
        m_unfolded.append(index);
        m_tree->setExpanded(index, true);
        if (slice.hasExpired())
            return m_toUnfold.isEmpty();
    }
    return true;
}

/// Folds what the filter unfolded, but for what leads to the current item.
void WorkspaceTreeFilter::foldAgain()
{
    const QTreeWidgetItem *current = m_tree->currentItem();
    for (const QPersistentModelIndex &index : std::as_const(m_unfolded)) {
        QTreeWidgetItem *item = m_tree->itemFromIndex(index);
        const QTreeWidgetItem *above = current;
        while (above && above != item)
            above = above->parent();
        if (item && !above) {
            m_reopen.removeAll(index);
            item->setExpanded(false);
        }
    }
    m_unfolded.clear();
    if (current)
        m_tree->scrollToItem(current);
}
