#pragma once

#include <QStyledItemDelegate>

class CTxLayer;
class QListWidgetItem;

/// The legend of a layer of heights, below its name in a list of layers: a strip of its colours, and what it begins and
/// ends with.
namespace LayerLegend {

/// Gives @p item the legend of @p layer; none when it shows no heights. A dataset that is closed stays closed, and the
/// legend of one with the usual colours says no heights then.
void set(QListWidgetItem &item, const CTxLayer &layer);

} // namespace LayerLegend

/// Draws the items of a list, with their legends.
class LayerLegendDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
