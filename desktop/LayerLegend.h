#pragma once

#include <QIcon>
#include <QSize>
#include <QStyledItemDelegate>

class CTxLayer;
class QListWidget;
class QListWidgetItem;

/// The legends in a list of layers: a sample of the layer's style before its name, and below the name of a layer of
/// heights a strip of its colours with what it begins and ends with.
namespace LayerLegend {

/// Gives @p item the legend of @p layer; none when it shows no heights. A dataset that is closed stays closed, and the
/// legend of one with the usual colours says no heights then.
void set(QListWidgetItem &item, const CTxLayer &layer);

/// The size of samples, in device-independent pixels.
inline constexpr QSize sampleSize(26, 16);
/// A sample of the line, the region or the symbol that @p layer is drawn with, to be seen on @p list; null for a layer
/// that has none of them or no dataset.
QIcon sample(const CTxLayer &layer, const QListWidget &list);
/// Where the sample of @p item is in the viewport of @p list.
QRect sampleRect(const QListWidget &list, const QListWidgetItem &item);

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
