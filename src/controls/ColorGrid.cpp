#include "controls/ColorGrid.h"

#include "common/TdModule.h"
#include "res/StringId.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr int gap = 2; // pixels between the cells, where the cursor is drawn

QString nameOf(COLORREF color)
{
    return CTdModule::LoadString(TdStringId::PickerCubeText)
        .arg(TxColorRef::red(color))
        .arg(TxColorRef::green(color))
        .arg(TxColorRef::blue(color));
}

} // namespace

ColorGrid::ColorGrid(const QList<COLORREF> &colors, int columns, QWidget *parent)
    : QWidget(parent), m_colors(colors), m_columns(columns)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(CTdModule::LoadString(TdStringId::ColorListAccessibleName));
}

void ColorGrid::setCurrentColor(std::optional<COLORREF> color)
{
    setCurrentCell(color ? static_cast<int>(m_colors.indexOf(*color)) : -1);
}

int ColorGrid::cellSide() const
{
    return std::max(14, fontMetrics().height());
}

QSize ColorGrid::sizeHint() const
{
    const int step = cellSide() + gap;
    const int rows = (static_cast<int>(m_colors.size()) + m_columns - 1) / m_columns;
    return {m_columns * step + gap, rows * step + gap};
}

QRect ColorGrid::cellRect(int cell) const
{
    const int step = cellSide() + gap;
    const int column = isRightToLeft() ? m_columns - 1 - cell % m_columns : cell % m_columns;
    return {gap + column * step, gap + cell / m_columns * step, cellSide(), cellSide()};
}

int ColorGrid::cellAt(const QPoint &point) const
{
    for (int cell = 0; cell < m_colors.size(); ++cell) {
        if (cellRect(cell).adjusted(0, 0, gap, gap).contains(point))
            return cell;
    }
    return -1;
}

void ColorGrid::setCurrentCell(int cell)
{
    if (cell == m_current)
        return;
    m_current = cell;
    // A reader of the screen says the colour that the cursor has come to.
    setAccessibleDescription(cell < 0 ? QString() : nameOf(m_colors[cell]));
    QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&changed);
    update();
}

void ColorGrid::choose(int cell)
{
    if (cell >= 0)
        Q_EMIT chosen(m_colors[cell]);
}

bool ColorGrid::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const int cell = cellAt(help->pos());
    QToolTip::showText(help->globalPos(), cell < 0 ? QString() : nameOf(m_colors[cell]), this);
    return true;
}

void ColorGrid::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    for (int cell = 0; cell < m_colors.size(); ++cell) {
        const QRect place = cellRect(cell);
        painter.fillRect(place, TxColorRef::toQColor(m_colors[cell]));
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawRect(place.adjusted(0, 0, -1, -1));
    }
    // Without a cursor the focus goes around all: Enter must not choose a colour that nobody pointed at.
    const QRect framed = m_current >= 0 ? cellRect(m_current) : rect().adjusted(1, 1, -1, -1);
    if (m_current < 0 && !hasFocus())
        return;
    painter.setPen(QPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::WindowText), 2));
    painter.drawRect(framed);
}

void ColorGrid::keyPressEvent(QKeyEvent *event)
{
    const int last = static_cast<int>(m_colors.size()) - 1;
    const int forward = isRightToLeft() ? -1 : 1;
    int cell = m_current;
    switch (event->key()) {
    case Qt::Key_Left:
        cell -= forward;
        break;
    case Qt::Key_Right:
        cell += forward;
        break;
    case Qt::Key_Up:
        cell -= cell >= m_columns ? m_columns : 0;
        break;
    case Qt::Key_Down:
        cell += cell + m_columns <= last ? m_columns : 0;
        break;
    case Qt::Key_Home:
        cell = 0;
        break;
    case Qt::Key_End:
        cell = last;
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        return choose(m_current);
    default:
        return QWidget::keyPressEvent(event);
    }
    setCurrentCell(m_current < 0 && cell != last ? 0 : std::clamp(cell, 0, last)); // the first key shows the cursor
}

void ColorGrid::mouseMoveEvent(QMouseEvent *event)
{
    if (const int cell = cellAt(event->pos()); cell >= 0)
        setCurrentCell(cell);
}

void ColorGrid::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        choose(cellAt(event->pos()));
}
