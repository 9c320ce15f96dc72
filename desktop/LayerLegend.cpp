#include "LayerLegend.h"

#include "LayerColours.h"
#include "engine/data/DatasetRaster.h"
#include "engine/map/TxLayer.h"
#include "engine/symbol/TxHeightColors.h"
#include "engine/symbol/TxStyleSample.h"

#include <QApplication>
#include <QCoreApplication>
#include <QListWidget>
#include <QLocale>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int legendRole = Qt::UserRole + 1;
constexpr int stripHeight = 8;
constexpr int gap = 3;

struct Legend
{
    CTxColorsetEx colors;
    bool stepped = false;
    bool hasRange = false;
};

QString numberText(double value)
{
    constexpr int digits = 6;
    return QLocale().toString(value, 'g', digits);
}

std::optional<Legend> legendOf(const QModelIndex &index)
{
    const QVariant value = index.data(legendRole);
    return value.canConvert<Legend>() ? std::optional(value.value<Legend>()) : std::nullopt;
}

QFont smallFont(QFont font)
{
    constexpr double scale = 0.85;
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * scale);
    return font;
}

void drawStrip(QPainter &painter, const QRect &strip, const Legend &legend)
{
    const TxHeightColors colors(legend.colors, legend.stepped);
    const double floor = legend.colors.GetZFloor(), span = legend.colors.GetZCeiling() - floor;
    QImage row(strip.width(), 1, QImage::Format_RGB32);
    for (int x = 0; x < row.width(); ++x)
        row.setPixel(x, 0, colors.at(floor + span * (x + 0.5) / row.width()));
    painter.drawImage(strip, row);
    QColor frame = painter.pen().color();
    frame.setAlphaF(0.35F);
    painter.setPen(frame);
    painter.drawRect(strip.adjusted(0, 0, -1, -1));
}

} // namespace

Q_DECLARE_METATYPE(Legend)

void LayerLegend::set(QListWidgetItem &item, const CTxLayer &layer)
{
    if (!LayerColours::showsHeights(&layer))
        return;
    Legend legend{layer.style().colors, layer.style().stepped, true};
    if (legend.colors.GetSize() == 0) {
        CTxDataset &dataset = *layer.GetDataset();
        const bool canTell = !dataset.IsVector() && dataset.IsOpen(); // a surface would have to be read whole
        const auto range = canTell ? LayerColours::heightRange(dataset) : std::nullopt;
        legend.hasRange = range.has_value();
        const auto [floor, ceiling] = range.value_or(std::pair(0.0, 1.0));
        legend.colors = usualColors(floor, ceiling);
        legend.stepped = false;
    }
    if (legend.hasRange)
        item.setData(Qt::AccessibleDescriptionRole,
                     QCoreApplication::translate("LayerPane", "Colours of heights from %1 to %2")
                         .arg(numberText(legend.colors.GetZFloor()), numberText(legend.colors.GetZCeiling())));
    item.setData(legendRole, QVariant::fromValue(legend));
}

QIcon LayerLegend::sample(const CTxLayer &layer, const QListWidget &list)
{
    const CTxDataset *dataset = layer.GetDataset();
    const quint32 parts = dataset ? TxStyleParts::of(dataset->GetType()) : 0;
    const bool isPoints = parts == TxStyleParts::Symbol;
    CTxGeoStyle style =
        (isPoints ? layer.style() : legibleStyle(layer.style(), list.palette().color(QPalette::Base))).geoStyle;
    if (!(parts & ~TxStyleParts::Text))
        return QIcon();
    constexpr double thinnest = 1.0; // a short stretch of a thinner line is hardly seen
    style.lineWidth = std::max(style.lineWidth, thinnest);
    QPixmap picture(sampleSize * list.devicePixelRatioF());
    picture.setDevicePixelRatio(list.devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setOpacity(layer.style().opacity);
    const QRectF place(QPointF(), sampleSize);
    if (parts & TxStyleParts::Fill)
        TxStyleSample::drawFill(painter, place.adjusted(1, 1, -1, -1), style);
    else if (parts & TxStyleParts::Line)
        TxStyleSample::drawLine(painter, place, style);
    else
        TxStyleSample::drawSymbol(painter, place, style);
    painter.end();
    QIcon icon(picture);
    icon.addPixmap(picture, QIcon::Selected); // not tinted: colours are what it shows
    return icon;
}

QRect LayerLegend::sampleRect(const QListWidget &list, const QListWidgetItem &item)
{
    QStyleOptionViewItem option;
    option.initFrom(&list);
    option.rect = list.visualItemRect(&item);
    option.decorationSize = sampleSize;
    option.features = QStyleOptionViewItem::HasDecoration | QStyleOptionViewItem::HasDisplay |
                      QStyleOptionViewItem::HasCheckIndicator;
    option.text = item.text();
    option.icon = item.icon();
    return list.style()->subElementRect(QStyle::SE_ItemViewItemDecoration, &option, &list);
}

void LayerLegendDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (legendOf(index)) // the name stays where it is without a legend
        option->displayAlignment = Qt::AlignLeft | Qt::AlignTop;
}

QSize LayerLegendDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    if (const auto legend = legendOf(index))
        size.rheight() +=
            stripHeight + 2 * gap + (legend->hasRange ? QFontMetrics(smallFont(option.font)).height() : 0);
    return size;
}

void LayerLegendDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const auto legend = legendOf(index);
    if (!legend) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem whole = option;
    initStyleOption(&whole, index);
    const QWidget *widget = option.widget;
    const QStyle *style = widget ? widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &whole, painter, widget);

    QStyleOptionViewItem line = whole; // the name's own, as of an item without a legend
    line.rect.setHeight(QStyledItemDelegate::sizeHint(option, index).height());
    const QRect text = style->subElementRect(QStyle::SE_ItemViewItemText, &line, widget);
    QStyledItemDelegate::paint(painter, line, index);

    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    painter->save();
    painter->setFont(smallFont(option.font));
    painter->setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    const QRect strip(text.left() + gap, line.rect.bottom() + gap, option.rect.right() - text.left() - 3 * gap,
                      stripHeight);
    if (legend->hasRange) {
        const QRect numbers(strip.left(), strip.bottom() + 1, strip.width(), painter->fontMetrics().height());
        painter->drawText(numbers, Qt::AlignLeft, numberText(legend->colors.GetZFloor()));
        painter->drawText(numbers, Qt::AlignRight, numberText(legend->colors.GetZCeiling()));
    }
    if (strip.width() > 2)
        drawStrip(*painter, strip, *legend);
    painter->restore();
}
