#include "controls/TdDragListCtrl.h"

#include "controls/ReportModel.h"
#include "controls/TdHeaderCtrl.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimerEvent>

#include <algorithm>
#include <numeric>

namespace {

constexpr int scrollInterval = 50; // milliseconds
constexpr int scrollMargin = 12;   // pixels from the edge in which a drag scrolls

/// The order of @p count rows once @p from (ascending) stand before row @p to.
std::vector<int> orderAfter(int count, const QList<int> &from, int to)
{
    std::vector<int> order;
    order.reserve(size_t(count));
    const auto appendOthers = [&](int first, int behind) {
        auto moved = std::lower_bound(from.begin(), from.end(), first);
        for (int row = first; row < behind; ++row) {
            if (moved != from.end() && *moved == row)
                ++moved;
            else
                order.push_back(row);
        }
    };
    appendOthers(0, to);
    order.insert(order.end(), from.begin(), from.end());
    appendOthers(to, count);
    return order;
}

/// True when @p from (ascending) stand before row @p to already, together.
bool standsAt(const QList<int> &from, int to)
{
    return from.isEmpty() ||
           (from.last() - from.first() == from.size() - 1 && to >= from.first() && to <= from.last() + 1);
}

/// True for the keys that move rows.
bool isMoveKey(const QKeyEvent &event)
{
    constexpr int keys[] = {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End};
    return (event.modifiers() & ~Qt::KeypadModifier) == Qt::AltModifier &&
           std::find(std::begin(keys), std::end(keys), event.key()) != std::end(keys);
}

} // namespace

CTdDragListCtrl::CTdDragListCtrl(QWidget *parent) : CTdListCtrl(parent)
{
    // Row numbers kept from before a change would name other rows.
    const auto giveUp = [this] { stopDrag(m_drag == Drag::Running ? Drag::Spent : Drag::None); };
    connect(model(), &QAbstractItemModel::rowsAboutToBeInserted, this, giveUp);
    connect(model(), &QAbstractItemModel::rowsAboutToBeRemoved, this, giveUp);
    connect(model(), &QAbstractItemModel::layoutAboutToBeChanged, this, giveUp);
    connect(model(), &QAbstractItemModel::modelAboutToBeReset, this, giveUp);
}

CTdDragListCtrl::~CTdDragListCtrl() = default;

bool CTdDragListCtrl::CanMove(const QList<int> &, int) const
{
    return true;
}

bool CTdDragListCtrl::MoveItems(const QList<int> &from, int to)
{
    QList<int> rows = from;
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    const int count = GetItemCount();
    if (standsAt(rows, to) || rows.first() < 0 || rows.last() >= count || to < 0 || to > count)
        return false;
    reportModel()->permute(orderAfter(count, rows, to));
    if (CTdHeaderCtrl *header = GetHeaderCtrl())
        header->SetSortMark(-1);
    return true;
}

void CTdDragListCtrl::moveForUser(const QList<int> &from, int to)
{
    if (standsAt(from, to) || !CanMove(from, to) || !MoveItems(from, to))
        return;
    scrollTo(currentIndex());
    Q_EMIT rowsMoved(from, to);
}

bool CTdDragListCtrl::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride: // before a menu takes them
        if (const auto *key = static_cast<QKeyEvent *>(event);
            isMoveKey(*key) || (IsDragging() && key->key() == Qt::Key_Escape)) {
            event->accept();
            return true;
        }
        break;
    case QEvent::Hide:
    case QEvent::FocusOut:
    case QEvent::WindowDeactivate:
    case QEvent::EnabledChange:
        if (m_drag == Drag::Running)
            stopDrag(Drag::Spent);
        break;
    default:
        break;
    }
    return CTdListCtrl::event(event);
}

void CTdDragListCtrl::keyPressEvent(QKeyEvent *event)
{
    if (IsDragging()) {
        if (event->key() == Qt::Key_Escape)
            stopDrag(Drag::Spent);
        return; // other keys would move the selection away from under the drag
    }
    if (!isMoveKey(*event)) {
        CTdListCtrl::keyPressEvent(event);
        return;
    }
    QList<int> rows = GetSelItems();
    if (rows.isEmpty() && GetCurItem() >= 0)
        rows = {GetCurItem()};
    if (rows.isEmpty())
        return;
    const int count = GetItemCount();
    const int key = event->key();
    moveForUser(rows, key == Qt::Key_Up     ? std::max(rows.first() - 1, 0)
                      : key == Qt::Key_Down ? std::min(rows.last() + 2, count)
                      : key == Qt::Key_Home ? 0
                                            : count);
}

void CTdDragListCtrl::mousePressEvent(QMouseEvent *event)
{
    stopDrag(Drag::None);
    CTdListCtrl::mousePressEvent(event);
    const QModelIndex pressed = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !pressed.isValid() || !selectionModel()->isSelected(pressed))
        return;
    m_drag = Drag::Armed;
    m_mouse = event->position().toPoint();
}

void CTdDragListCtrl::mouseMoveEvent(QMouseEvent *event)
{
    if (m_drag == Drag::None) {
        CTdListCtrl::mouseMoveEvent(event);
        return;
    }
    if (!(event->buttons() & Qt::LeftButton)) { // the release went elsewhere
        stopDrag(Drag::None);
        return;
    }
    const QPoint mouse = event->position().toPoint();
    if (m_drag == Drag::Armed && (mouse - m_mouse).manhattanLength() >= QApplication::startDragDistance())
        startDrag();
    if (m_drag == Drag::Running) {
        m_mouse = mouse;
        followMouse();
    }
}

void CTdDragListCtrl::mouseReleaseEvent(QMouseEvent *event)
{
    const Drag drag = m_drag;
    if (drag == Drag::None || drag == Drag::Armed || event->button() != Qt::LeftButton) {
        if (event->button() == Qt::LeftButton)
            m_drag = Drag::None;
        CTdListCtrl::mouseReleaseEvent(event);
        return;
    }
    const QList<int> from = m_dragged;
    const int to = m_mark;
    stopDrag(Drag::None);
    if (drag == Drag::Running && to >= 0)
        moveForUser(from, to);
}

void CTdDragListCtrl::startDrag()
{
    m_dragged = GetSelItems();
    m_drag = m_dragged.isEmpty() ? Drag::Spent : Drag::Running;
    if (m_drag == Drag::Running)
        m_scrollTimer.start(scrollInterval, this);
}

void CTdDragListCtrl::stopDrag(Drag next)
{
    if (m_drag == Drag::Running) {
        m_scrollTimer.stop();
        viewport()->unsetCursor();
        viewport()->update();
    }
    m_drag = next;
    m_mark = -1;
    m_dragged.clear();
}

/// The place in front of or behind the row at @p y of the viewport, whichever is nearer.
int CTdDragListCtrl::placeAt(int y) const
{
    const int column = header()->logicalIndexAt(0);
    const QModelIndex row = indexAt(QPoint(0, std::clamp(y, 0, std::max(viewport()->height() - 1, 0))));
    if (!row.isValid() || column < 0)
        return GetItemCount();
    return y < visualRect(row).center().y() ? row.row() : row.row() + 1;
}

void CTdDragListCtrl::followMouse()
{
    const QList<int> rows = m_dragged;
    const int place = placeAt(m_mouse.y());
    const bool stays = standsAt(rows, place);
    const bool isAllowed = stays || CanMove(rows, place);
    if (m_drag != Drag::Running) // what was asked changed the rows
        return;
    viewport()->setCursor(isAllowed ? Qt::DragMoveCursor : Qt::ForbiddenCursor);
    const int mark = isAllowed && !stays ? place : -1;
    if (mark != m_mark) {
        m_mark = mark;
        viewport()->update();
    }
}

void CTdDragListCtrl::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_scrollTimer.timerId()) {
        CTdListCtrl::timerEvent(event);
        return;
    }
    // The farther out the mouse is, the faster.
    const int above = scrollMargin - m_mouse.y();
    const int below = m_mouse.y() - (viewport()->height() - scrollMargin);
    const int distance = above > 0 ? -above : below > 0 ? below : 0;
    if (distance == 0)
        return;
    const int lines = distance / scrollMargin + (distance > 0 ? 1 : -1);
    const int line = verticalScrollMode() == ScrollPerItem ? 1 : verticalScrollBar()->singleStep();
    verticalScrollBar()->setValue(verticalScrollBar()->value() + lines * line);
    followMouse();
}

void CTdDragListCtrl::paintEvent(QPaintEvent *event)
{
    CTdListCtrl::paintEvent(event);
    if (m_mark < 0 || GetItemCount() == 0)
        return;
    const bool isEnd = m_mark >= GetItemCount();
    const int column = header()->logicalIndexAt(0);
    const QRect row = visualRect(model()->index(isEnd ? GetItemCount() - 1 : m_mark, std::max(column, 0)));
    const int y = std::clamp(isEnd ? row.bottom() + 1 : row.top(), 1, std::max(viewport()->height() - 1, 1));
    const int right = viewport()->width() - 1;
    const int reach = fontMetrics().height() / 3;
    // In the text's color: the highlight would vanish between selected rows.
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Text), 2));
    painter.setBrush(palette().color(QPalette::Text));
    painter.drawLine(reach, y, right - reach, y);
    painter.setPen(Qt::NoPen);
    painter.drawPolygon(QPolygon({QPoint(0, y - reach), QPoint(reach, y), QPoint(0, y + reach)}));
    painter.drawPolygon(QPolygon({QPoint(right, y - reach), QPoint(right - reach, y), QPoint(right, y + reach)}));
}
