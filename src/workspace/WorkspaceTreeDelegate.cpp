#include "workspace/WorkspaceTreeDelegate.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>

namespace {

/// More than a line of the widest screen holds.
constexpr qsizetype longestLabel = 600;

/// A character that would break or reverse the line it stands in.
bool isTroublesome(QChar unit)
{
    const char16_t code = unit.unicode();
    return code < 0x20 || code == 0x7f || code == 0x2028 || code == 0x2029 || (code >= 0x80 && code < 0xa0);
}

} // namespace

QString WorkspaceTreeDelegate::shownText(const QString &text, qsizetype longest)
{
    QString shown = text;
    if (shown.size() > longest) {
        qsizetype end = longest - 1;
        if (shown.at(end - 1).isHighSurrogate())
            --end; // an emoji is kept or left out as a whole
        shown = shown.left(end) + QChar(0x2026);
    }
    if (std::any_of(shown.cbegin(), shown.cend(), isTroublesome))
        std::replace_if(shown.begin(), shown.end(), isTroublesome, QChar(u' '));
    return shown;
}

void WorkspaceTreeDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    if (!(option.state & QStyle::State_Selected))
        return;
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
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

QString WorkspaceTreeDelegate::displayText(const QVariant &value, const QLocale &) const
{
    return shownText(value.toString(), longestLabel);
}
