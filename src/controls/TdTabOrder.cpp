#include "controls/TdTabOrder.h"

#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QWidget>

#include <algorithm>

namespace {

bool sharesRow(const QRect &a, const QRect &b)
{
    const int shared = std::min(a.bottom(), b.bottom()) - std::max(a.top(), b.top()) + 1;
    return 2 * shared >= std::min(a.height(), b.height());
}

/// True for a control whose children are its own affair.
bool isCompound(const QWidget *widget)
{
    if (qobject_cast<const QTabWidget *>(widget) || qobject_cast<const QScrollArea *>(widget))
        return false;
    if (qobject_cast<const QAbstractSpinBox *>(widget) || qobject_cast<const QComboBox *>(widget) ||
        qobject_cast<const QTabBar *>(widget) || qobject_cast<const QAbstractScrollArea *>(widget))
        return true;
    const QWidget *proxy = widget->focusProxy();
    return proxy && widget->isAncestorOf(proxy);
}

/// The direct children of @p parent in reading order.
QList<QWidget *> childrenInOrder(const QWidget *parent)
{
    QList<QWidget *> children = parent->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    children.removeIf([](const QWidget *child) { return child->isWindow(); });
    std::stable_sort(children.begin(), children.end(),
                     [](const QWidget *a, const QWidget *b) { return a->y() < b->y(); });
    const bool fromRight = parent->isRightToLeft();
    // A row begins with its topmost control, and takes in what stands beside that; the comparison of any two would be
    // no order, since rows may be staggered.
    for (auto first = children.begin(); first != children.end();) {
        const QRect head = (*first)->geometry();
        const auto last = std::stable_partition(
            first, children.end(), [&head](const QWidget *child) { return sharesRow(head, child->geometry()); });
        std::stable_sort(first, last, [fromRight](const QWidget *a, const QWidget *b) {
            return fromRight ? a->geometry().right() > b->geometry().right() : a->x() < b->x();
        });
        first = last == first ? first + 1 : last; // a control without height shares no row, not even its own
    }
    return children;
}

void collate(const QWidget *parent, QList<QWidget *> &order)
{
    for (QWidget *child : childrenInOrder(parent)) {
        const bool compound = isCompound(child);
        const bool isContainer = qobject_cast<QTabWidget *>(child) != nullptr; // its bar is the control
        if (child->focusPolicy() != Qt::NoFocus && !isContainer)
            order.append(child);
        if (!compound)
            collate(child, order);
    }
}

} // namespace

QList<QWidget *> CTdTabOrder::Collate(const QWidget *window)
{
    QList<QWidget *> order;
    if (window)
        collate(window, order);
    return order;
}

int CTdTabOrder::Apply(QWidget *window)
{
    const QList<QWidget *> order = Collate(window);
    for (qsizetype i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);
    return static_cast<int>(order.size());
}
