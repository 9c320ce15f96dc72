#include "basic/OleDropTargetEx.h"

#include "basic/TdHostMessage.h"

#include <QAbstractScrollArea>
#include <QCoreApplication>
#include <QDropEvent>
#include <QWidget>

namespace {

CTdHostMessage::Message messageOf(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::DragEnter:
        return CTdHostMessage::DragEnter;
    case QEvent::DragMove:
        return CTdHostMessage::DragOver;
    default:
        return CTdHostMessage::Drop;
    }
}

} // namespace

COleDropTargetEx::COleDropTargetEx(QObject *parent) : QObject(parent) {}

COleDropTargetEx::~COleDropTargetEx()
{
    Revoke();
}

bool COleDropTargetEx::Register(QWidget *widget)
{
    if (!widget)
        return false;
    Revoke();
    m_widget = widget;
    const auto *scrollArea = qobject_cast<QAbstractScrollArea *>(widget);
    m_area = scrollArea ? scrollArea->viewport() : widget;
    m_area->setAcceptDrops(true);
    m_area->installEventFilter(this);
    return true;
}

void COleDropTargetEx::Revoke()
{
    if (m_area) {
        m_area->removeEventFilter(this);
        m_area->setAcceptDrops(false);
    }
    m_area.clear();
    m_widget.clear();
}

QWidget *COleDropTargetEx::GetWidget() const
{
    return m_widget;
}

bool COleDropTargetEx::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        if (watched == m_area && m_widget) {
            forward(static_cast<QDropEvent &>(*event));
            return true;
        }
        break;
    case QEvent::DragLeave:
        return watched == m_area;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void COleDropTargetEx::forward(QDropEvent &event) const
{
    const QPoint position = m_area->mapTo(m_widget, event.position().toPoint());
    CTdHostMessage message(messageOf(event), event.mimeData(), position, event.possibleActions());
    QCoreApplication::sendEvent(m_widget, &message);

    const auto action = static_cast<Qt::DropAction>(message.result());
    const bool wanted = action != Qt::IgnoreAction && event.possibleActions().testFlag(action);
    event.setDropAction(wanted ? action : Qt::IgnoreAction);
    // Qt sends no DragMove to a widget that ignored the DragEnter, so that one is always accepted.
    event.setAccepted(wanted || event.type() == QEvent::DragEnter);
}
