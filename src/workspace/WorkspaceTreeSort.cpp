#include "workspace/WorkspaceTreePrivate.h"

#include <QCollator>

#include <algorithm>
#include <numeric>
#include <vector>

namespace {

/// What a child is sorted by. Deliberate: with the kind in front, icon numbers compare as text, so that 10 comes before
/// 2, and a number may run on into the label; settings of hosts rely on the resulting order.
QString sortText(const QTreeWidgetItem &child, CWorkspaceBarTree::SortType type)
{
    const QString label = child.text(0);
    return type == CWorkspaceBarTree::SortByKind ? QString::number(CWorkspaceBarTree::GetItemImage(&child)) + label
                                                 : label;
}

} // namespace

int CWorkspaceBarTree::SortChildrenV(QTreeWidgetItem *parent, SortType type)
{
    if (!parent)
        return 0;
    d->sortType = type; // deliberate: also when it is no type that sorts
    if (type != SortByLabel && type != SortByKind)
        return 0;

    // As the user's language orders texts, letter case ignored. Each text is prepared once; the tree's own sort, which
    // keeps selection and expansion, then compares ranks.
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    const int count = parent->childCount();
    std::vector<QCollatorSortKey> keys;
    keys.reserve(size_t(count));
    for (int child = 0; child < count; ++child)
        keys.push_back(collator.sortKey(sortText(*parent->child(child), type).toCaseFolded()));
    std::vector<int> order(size_t(count), 0);
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&keys](int left, int right) { return keys[size_t(left)] < keys[size_t(right)]; });

    QList<WorkspaceTreeItem *> ranked;
    ranked.reserve(count);
    for (int rank = 0; rank < count; ++rank) {
        if (WorkspaceTreeItem *item = WorkspaceTreeItem::from(parent->child(order[size_t(rank)]))) {
            item->setSortRank(rank);
            ranked.append(item);
        }
    }
    parent->sortChildren(0, Qt::AscendingOrder);
    for (WorkspaceTreeItem *item : std::as_const(ranked))
        item->setSortRank(-1);
    viewport()->update();
    return 1;
}
