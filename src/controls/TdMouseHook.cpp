#include "controls/TdMouseHook.h"

#include <QApplication>
#include <QMouseEvent>

#include <algorithm>
#include <utility>

namespace {

/// What the user sees at the place of @p event, which may have gone to another widget that holds the mouse.
QWidget *widgetUnder(QWidget *receiver, const QMouseEvent &event)
{
    const QPoint place = event.position().toPoint();
    if (!receiver->rect().contains(place))
        return QApplication::widgetAt(event.globalPosition().toPoint());
    QWidget *child = receiver->childAt(place);
    return child ? child : receiver;
}

} // namespace

CTdMouseHook::CTdMouseHook(QObject *parent) : QObject(parent)
{
    SetActive(true);
}

CTdMouseHook::~CTdMouseHook() = default; // Qt forgets a filter that is gone, also while it calls it

void CTdMouseHook::SetInside(const QList<QWidget *> &widgets)
{
    m_inside = QList<QPointer<QWidget>>(widgets.cbegin(), widgets.cend());
    m_inside.removeAll(nullptr);
    m_isMouseInside = std::any_of(m_inside.cbegin(), m_inside.cend(), [](const auto &w) { return w->underMouse(); });
}

void CTdMouseHook::SetActive(bool active)
{
    if (active == m_isActive)
        return;
    m_isActive = active;
    m_last = {};
    if (active)
        qApp->installEventFilter(this);
    else
        qApp->removeEventFilter(this);
}

bool CTdMouseHook::isPassedOn(QWidget *receiver, const QMouseEvent &event)
{
    // Qt offers an event that a widget does not take to its parents in turn, each time past the filters.
    const bool isSame = m_last.receiver && m_last.receiver->parentWidget() == receiver && m_last.type == event.type() &&
                        m_last.time == event.timestamp() && m_last.place == event.globalPosition();
    m_last = {receiver, event.type(), event.timestamp(), event.globalPosition()};
    return isSame;
}

bool CTdMouseHook::isInside(const QWidget *widget) const
{
    if (m_inside.isEmpty())
        return widget != nullptr;
    for (; widget; widget = widget->parentWidget()) { // a window's parent is who opened it
        if (m_inside.contains(const_cast<QWidget *>(widget)))
            return true;
    }
    return false;
}

void CTdMouseHook::cross(bool inside)
{
    if (std::exchange(m_isMouseInside, inside) != inside)
        Q_EMIT crossed(inside);
}

void CTdMouseHook::tell(QWidget *under, const QMouseEvent &event)
{
    // Whoever is told may delete the hook, or what is under the mouse.
    const QPointer<CTdMouseHook> alive(this);
    const QPointer<QWidget> shown(under);
    const QPoint place = event.globalPosition().toPoint();
    const bool inside = isInside(under);
    cross(inside);
    if (!alive || !m_isActive || (inside && !m_inside.isEmpty()))
        return;
    if (event.type() == QEvent::MouseMove)
        Q_EMIT moved(shown, place);
    else if (event.type() == QEvent::MouseButtonRelease)
        Q_EMIT released(shown, place, event.button());
    else
        Q_EMIT pressed(shown, place, event.button());
}

bool CTdMouseHook::eventFilter(QObject *watched, QEvent *event)
{
    if (!watched->isWidgetType())
        return false;
    const QPointer<QWidget> receiver = static_cast<QWidget *>(watched);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove: {
        const auto &mouse = *static_cast<QMouseEvent *>(event);
        if (!isPassedOn(receiver, mouse))
            tell(widgetUnder(receiver, mouse), mouse);
        break;
    }
    case QEvent::Leave:
        // Out of the window; where it went is told by the next move.
        if (receiver->isWindow())
            cross(false);
        break;
    default:
        return false;
    }
    if (receiver)
        return false;
    event->accept(); // nobody is left to get it
    return true;
}
