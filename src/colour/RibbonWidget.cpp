#include "colour/RibbonWidget.h"

#include "colour/RibbonAccessible.h"
#include "colour/RibbonGeometry.h"
#include "colour/RibbonPainter.h"
#include "common/TdModule.h"
#include "engine/base/TxNumberText.h"
#include "res/StringId.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace {

QString colorName(COLORREF color)
{
    return TxColorRef::toQColor(color).name().toUpper();
}

} // namespace

RibbonWidget::RibbonWidget(QWidget *parent) : QWidget(parent), m_columns({RibbonStop()}, RibbonGeometry(QRect()))
{
    RibbonAccessible::install();
    setFocusPolicy(Qt::TabFocus); // a click gives the focus only where it hits a marker
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMouseTracking(true);
}

RibbonWidget::~RibbonWidget() = default;

void RibbonWidget::setRibbon(RibbonStops *ribbon)
{
    m_isDragging = false;
    m_ribbon = ribbon;
    refresh();
}

RibbonGeometry RibbonWidget::ribbonGeometry() const
{
    return RibbonGeometry(rect());
}

void RibbonWidget::refresh()
{
    if (!m_ribbon)
        return;
    RibbonColumns columns(m_ribbon->stops(), ribbonGeometry());
    const bool isOther = columns.pixels() != m_columns.pixels();
    if (isOther)
        repaintColumns(columns);
    m_columns = std::move(columns);
    repaintMarkers();
    if (isOther)
        Q_EMIT columnsChanged();
}

void RibbonWidget::repaintColumns(const RibbonColumns &next)
{
    const std::vector<QRgb> &was = m_columns.pixels();
    const std::vector<QRgb> &now = next.pixels();
    if (was.size() != now.size() || m_columns.left() != next.left()) {
        update();
        return;
    }
    const auto first = std::ranges::mismatch(was, now).in1 - was.begin();
    const auto end = std::mismatch(was.rbegin(), was.rend(), now.rbegin()).first.base() - was.begin();
    const QRect band = ribbonGeometry().band();
    update(QRect(next.left() + static_cast<int>(first), band.top(), static_cast<int>(end - first), band.height()));
}

void RibbonWidget::repaintMarkers()
{
    const RibbonGeometry geometry = ribbonGeometry();
    const std::vector<RibbonStop> &stops = m_ribbon->stops();
    const size_t common = std::min(stops.size(), m_shownStops.size());
    // From the first changed marker to the last: a region of a million of them takes longer than painting them.
    constexpr qint32 beside = 10; // a marker there cannot be seen, wherever beyond it stands
    qint32 first = width() + beside;
    qint32 last = -beside;
    const auto add = [&](const std::vector<RibbonStop> &from, size_t i) {
        if (i < from.size()) {
            const qint32 position = std::clamp(from[i].position, -beside, width() + beside);
            first = std::min(first, position);
            last = std::max(last, position);
        }
    };
    for (size_t i = 0; i < std::max(stops.size(), m_shownStops.size()); ++i) {
        const auto index = static_cast<qint32>(i);
        if (i < common && stops[i] == m_shownStops[i] && (index == m_shownSelection) == (index == m_ribbon->selected()))
            continue;
        add(stops, i);
        add(m_shownStops, i);
    }
    if (first <= last) {
        const QRect changed = geometry.marker(first).boundingRect() | geometry.marker(last).boundingRect();
        update(changed.adjusted(-3, -3, 3, 3) & geometry.markerStrip().adjusted(-3, -3, 3, 3));
    }
    const bool isOtherSelection = m_shownSelection != m_ribbon->selected();
    const bool areOther = m_shownStops != stops;
    if (isOtherSelection && hasFocus())
        update(); // the focus mark goes round the band or the marker
    if (areOther)
        m_shownStops = stops;
    m_shownSelection = m_ribbon->selected();
    if (isOtherSelection || areOther)
        RibbonAccessible::announce(*this, isOtherSelection);
}

void RibbonWidget::select(qint32 index)
{
    m_ribbon->select(index);
    refresh();
    Q_EMIT selectionChanged();
}

QString RibbonWidget::stopName(qint32 index) const
{
    if (!m_ribbon || index < 0 || index >= m_ribbon->count())
        return {};
    const RibbonStop &stop = m_ribbon->stops()[static_cast<size_t>(index)];
    return CTdModule::LoadString(TdStringId::RibbonStopName)
        .arg(QString::number(index + 1), QString::number(m_ribbon->count()), TxNumberText::fixed(stop.value, 2),
             QString::number(TxColorRef::red(stop.color)), QString::number(TxColorRef::green(stop.color)),
             QString::number(TxColorRef::blue(stop.color)));
}

QSize RibbonWidget::sizeHint() const
{
    return {520, 116};
}

QSize RibbonWidget::minimumSizeHint() const
{
    return {160, 100};
}

bool RibbonWidget::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && m_ribbon) {
        const QPoint point = static_cast<QHelpEvent *>(event)->pos();
        const QPoint global = static_cast<QHelpEvent *>(event)->globalPos();
        const RibbonGeometry geometry = ribbonGeometry();
        if (const qint32 hit = geometry.stopAt(point, m_ribbon->stops()); hit >= 0)
            QToolTip::showText(global, stopName(hit), this);
        else if (geometry.bandContains(point) && geometry.isUsable(point.x()))
            QToolTip::showText(global,
                               QStringLiteral("%1  %2").arg(TxNumberText::fixed(m_ribbon->Position2Value(point.x()), 2),
                                                            colorName(m_columns.colorAt(point.x()))),
                               this);
        else
            QToolTip::hideText();
        return true;
    }
    return QWidget::event(event);
}

void RibbonWidget::paintEvent(QPaintEvent *)
{
    if (!m_ribbon)
        return;
    QPainter device(this);
    RibbonPainter painter(device, palette());
    const RibbonGeometry geometry = ribbonGeometry();
    painter.drawBand(geometry, m_columns, hasFocus() && m_ribbon->selected() < 0);
    painter.drawMarkers(geometry, *m_ribbon, hasFocus());
}

void RibbonWidget::resizeEvent(QResizeEvent *)
{
    if (!m_ribbon)
        return;
    const RibbonGeometry geometry = ribbonGeometry();
    m_ribbon->setBand(geometry.usableLeft(), geometry.usableWidth());
    refresh();
}

void RibbonWidget::hideEvent(QHideEvent *)
{
    endDrag(); // the mouse may be let go where nobody tells
}

void RibbonWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_ribbon)
        return;
    endDrag();
    const qint32 hit = ribbonGeometry().stopAt(event->position().toPoint(), m_ribbon->stops());
    if (hit >= 0) {
        setFocus(Qt::MouseFocusReason);
        m_ribbon->beginEdit();
        m_isDragging = true;
    }
    select(hit);
}

void RibbonWidget::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint point = event->position().toPoint();
    if (!m_isDragging || !event->buttons().testFlag(Qt::LeftButton)) {
        showCursor(point);
        return;
    }
    if (ribbonGeometry().isUsable(point.x()) && m_ribbon->ChangeStopPos(point.x())) {
        refresh();
        Q_EMIT stopMoved();
    }
}

void RibbonWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_ribbon)
        return;
    const QPoint point = event->position().toPoint();
    // The end of a drag above the markers is no click on the band.
    if (m_isDragging)
        endDrag();
    else if (ribbonGeometry().bandContains(point))
        Q_EMIT insertRequested(point.x());
}

void RibbonWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    const bool isHit = event->button() == Qt::LeftButton && m_ribbon &&
                       ribbonGeometry().stopAt(event->position().toPoint(), m_ribbon->stops()) >= 0;
    mousePressEvent(event);
    if (isHit) {
        endDrag();
        Q_EMIT colorRequested();
    }
}

void RibbonWidget::endDrag()
{
    if (std::exchange(m_isDragging, false))
        m_ribbon->endEdit();
}

void RibbonWidget::showCursor(QPoint point)
{
    if (!m_ribbon)
        return;
    const RibbonGeometry geometry = ribbonGeometry();
    const qint32 hit = geometry.stopAt(point, m_ribbon->stops());
    const bool isInterior = hit > 0 && hit < m_ribbon->count() - 1;
    if (isInterior)
        setCursor(Qt::SizeHorCursor);
    else if (hit >= 0)
        setCursor(Qt::PointingHandCursor);
    else if (geometry.bandContains(point))
        setCursor(Qt::CrossCursor);
    else
        unsetCursor();
}
