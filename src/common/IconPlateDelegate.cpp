#include "common/IconPlateDelegate.h"

#include <QApplication>
#include <QPainter>

void IconPlateDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    if (!(option.state & QStyle::State_Selected))
        return;
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    if (item.icon.isNull())
        return;
    const QStyle *style = item.widget ? item.widget->style() : QApplication::style();
    const QRect icon = style->subElementRect(QStyle::SE_ItemViewItemDecoration, &item, item.widget);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(item.palette.base());
    painter->drawRoundedRect(QRectF(icon).adjusted(-1, -1, 1, 1), 2, 2);
    painter->restore();
    item.icon.paint(painter, icon, item.decorationAlignment);
}
