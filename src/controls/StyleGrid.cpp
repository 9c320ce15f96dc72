#include "controls/StyleGrid.h"

#include "common/TdModule.h"
#include "res/StringId.h"

#include <QAbstractListModel>
#include <QEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include <algorithm>

namespace {

/// The table's shape: how many samples stand side by side, and their size in heights of a line of text.
struct TableShape
{
    int columns;
    double width, height;
};
constexpr TableShape shapes[] = {{3, 6.5, 2.2}, {6, 3.6, 2.6}, {8, 2.8, 2.8}}; // by TdStyle::Kind

/// The names of the entries, for typing, tool tips and readers of the screen.
class EntryModel : public QAbstractListModel
{
public:
    EntryModel(TdStyle::Kind kind, QObject *parent) : QAbstractListModel(parent), m_kind(kind) {}

    int rowCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : TdStyle::count(m_kind); }
    QVariant data(const QModelIndex &index, int role) const override
    {
        return role == Qt::DisplayRole || role == Qt::ToolTipRole ? TdStyle::nameAt(m_kind, index.row()) : QVariant();
    }

private:
    const TdStyle::Kind m_kind;
};

/// Paints an entry as its sample alone.
class SampleDelegate : public QStyledItemDelegate
{
public:
    SampleDelegate(TdStyle::Kind kind, const CTxGeoStyle &style, QListView *view)
        : QStyledItemDelegate(view), m_kind(kind), m_style(style), m_view(view)
    {
    }

    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override { return m_view->gridSize(); }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const bool isSelected = option.state & QStyle::State_Selected;
        if (isSelected)
            painter->fillRect(option.rect, option.palette.color(QPalette::Highlight));
        // Alike in all but the entry, so that the entries can be told from each other.
        CTxGeoStyle sample;
        sample.lineColor = m_style.lineColor;
        sample.lineBackColor = m_style.lineBackColor;
        sample.fillColor = m_style.fillColor;
        sample.fillBackColor = m_style.fillBackColor;
        sample.gradientColors = m_style.gradientColors;
        sample.symbolColor = m_style.symbolColor;
        sample.symbolOutlineColor = m_style.symbolOutlineColor;
        sample.symbolOutlineWidth = std::min(m_style.symbolOutlineWidth, 1.5);
        sample.fillSize = option.rect.height() / 3.0;
        sample.symbolSize = option.rect.height();
        TdStyle::choose(m_kind, index.row(), sample);
        TdStyle::drawSample(*painter, option.rect.adjusted(3, 3, -3, -3), m_kind, sample);
    }

private:
    const TdStyle::Kind m_kind;
    const CTxGeoStyle &m_style; ///< the view's
    const QListView *const m_view;
};

} // namespace

StyleGrid::StyleGrid(TdStyle::Kind kind, QWidget *parent) : QListView(parent), m_kind(kind)
{
    setModel(new EntryModel(kind, this));
    setItemDelegate(new SampleDelegate(kind, m_style, this));
    setViewMode(IconMode);
    setMovement(Static);
    setResizeMode(Adjust);
    setUniformItemSizes(true);
    setDragEnabled(false);
    setSelectionRectVisible(false);
    setVerticalScrollMode(ScrollPerPixel);
    setAccessibleName(CTdModule::LoadString(TdStringId::StyleGridName));
    fitCells();
}

void StyleGrid::fitCells()
{
    const TableShape &shape = shapes[m_kind];
    setGridSize((QSizeF(shape.width, shape.height) * fontMetrics().height()).toSize());
    setMinimumWidth(sizeHint().width());
}

QSize StyleGrid::sizeHint() const
{
    const int columns = shapes[m_kind].columns;
    const int rows = (TdStyle::count(m_kind) + columns - 1) / columns;
    const int edge = 2 * frameWidth() + 2;
    return {columns * gridSize().width() + verticalScrollBar()->sizeHint().width() + edge,
            rows * gridSize().height() + edge};
}

void StyleGrid::setColorsOf(const CTxGeoStyle &style)
{
    m_style = style;
    viewport()->update();
}

void StyleGrid::setCurrentEntry(int index)
{
    const QSignalBlocker blocker(this);
    setCurrentIndex(model()->index(index, 0));
}

QModelIndex StyleGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    // On at the end of a row to the next one, as reading goes.
    if (action == MoveLeft || action == MoveRight) {
        const int step = (action == MoveRight) != isRightToLeft() ? 1 : -1;
        return model()->index(std::clamp(currentIndex().row() + step, 0, model()->rowCount() - 1), 0);
    }
    return QListView::moveCursor(action, modifiers);
}

void StyleGrid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QListView::currentChanged(current, previous);
    Q_EMIT currentEntryChanged(current.row());
}

void StyleGrid::changeEvent(QEvent *event)
{
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitCells();
}
