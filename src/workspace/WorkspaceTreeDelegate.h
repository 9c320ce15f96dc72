#pragma once

#include <QStyledItemDelegate>

/// Paints the items of the workspace tree. Names may be of any length and hold anything: a label is one line, and no
/// more of it is laid out than a window can show. The icon of a selected item stands on a light plate, since it is the
/// same as that of any other and would drown in the colour of the selection.
class WorkspaceTreeDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QString displayText(const QVariant &value, const QLocale &locale) const override;

    /// @p text on one line, control characters as spaces, cut to @p longest characters (an ellipsis tells so).
    static QString shownText(const QString &text, qsizetype longest);
};
