#pragma once

#include <QStyledItemDelegate>

/// Paints the icon of a selected item as it is otherwise, on a plate in the list's background colour: an icon that is
/// made for that background would drown in the colour of the selection.
class IconPlateDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
