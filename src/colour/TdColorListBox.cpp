#include "colour/TdColorListBox.h"

#include "colour/ColorListModel.h"
#include "common/TdModule.h"
#include "engine/base/TxNumberText.h"
#include "res/StringId.h"

#include <QItemSelectionModel>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace {

// What a row is drawn of, in logical pixels.
constexpr int swatchLeft = 18; // where the swatch begins, at least
constexpr int labelLeft = 4;
constexpr int labelGap = 3; // between the label and the swatch
constexpr double disabledOpacity = 0.35;

/// Draws the rows: the index at the left, the colour in the rest.
class ColorRowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex & /*index*/) const override
    {
        return {64, option.fontMetrics.height() + 4};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const bool selected = option.state & QStyle::State_Selected;
        const QRect item = option.rect;
        // All swatches begin where the longest label leaves room, so that labels of many colours stay readable.
        const QString longest = TxNumberText::whole(index.model()->rowCount() - 1);
        const int left = std::max(swatchLeft, labelLeft + option.fontMetrics.horizontalAdvance(longest) + labelGap);

        painter->save();
        painter->fillRect(item, option.palette.brush(QPalette::Base));
        const QRect strip(item.left(), item.top(), left - 2, item.height());
        if (selected)
            painter->fillRect(strip, option.palette.brush(QPalette::Highlight));
        painter->setOpacity(option.state & QStyle::State_Enabled ? 1.0 : disabledOpacity);
        painter->fillRect(item.adjusted(left, 1, 0, -1), index.data(Qt::BackgroundRole).value<QColor>());
        painter->setOpacity(1.0);
        painter->setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
        painter->drawText(strip.adjusted(labelLeft, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          index.data().toString());
        if (selected) {
            painter->setPen(QPen(option.palette.color(QPalette::Text), 1, Qt::DotLine));
            painter->setBrush(Qt::NoBrush);
            painter->drawRect(item.adjusted(0, 0, -1, -1));
        }
        painter->restore();
    }
};

} // namespace

CTdColorListBox::CTdColorListBox(QWidget *parent) : QListView(parent), m_model(new ColorListModel(this))
{
    setItemDelegate(new ColorRowDelegate(this));
    setUniformItemSizes(true); // a million rows are laid out at once
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setModel(m_model);
    setAccessibleName(CTdModule::LoadString(TdStringId::ColorListAccessibleName));
}

CTdColorListBox::~CTdColorListBox() = default;

void CTdColorListBox::InitColor()
{
    SetColors({});
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    m_visibleRows = viewport()->height() / itemDelegate()->sizeHint(option, {}).height();
}

void CTdColorListBox::AddColor(COLORREF color)
{
    m_model->insert(m_model->colors().GetCount(), color);
}

void CTdColorListBox::InsertColor(qint32 index, COLORREF color)
{
    m_model->insert(index, color);
}

void CTdColorListBox::RemoveColor(qint32 index)
{
    const bool wasSelected = index >= 0 && index == GetSelIndex();
    const int row = m_model->mirrored(index);
    m_model->remove(index);
    if (wasSelected)
        SelectIndex(m_model->mirrored(std::min(row, m_model->rowCount() - 1)));
}

qint32 CTdColorListBox::GetSelIndex() const
{
    const QModelIndexList rows = selectedIndexes();
    return rows.isEmpty() ? -1 : m_model->mirrored(rows.first().row());
}

void CTdColorListBox::SelectIndex(qint32 index)
{
    const int row = m_model->mirrored(index);
    if (row >= 0)
        setCurrentIndex(m_model->index(row));
    else
        selectionModel()->clear();
}

void CTdColorListBox::SetColor(qint32 index, COLORREF color)
{
    m_model->set(index, color);
}

void CTdColorListBox::SetColors(const CTxColorFolder &colors)
{
    m_model->setAll(colors);
    Q_EMIT selectionMoved(); // a model that is filled anew takes the selection away silently
}

const CTxColorFolder &CTdColorListBox::GetColors() const
{
    return m_model->colors();
}

void CTdColorListBox::focusInEvent(QFocusEvent *event)
{
    QListView::focusInEvent(event);
    // Qt makes the first row the current one without selecting it, and the key that leads there would not do it either.
    if (GetSelIndex() < 0)
        selectionModel()->clearCurrentIndex();
}

void CTdColorListBox::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QListView::selectionChanged(selected, deselected);
    Q_EMIT selectionMoved();
}
