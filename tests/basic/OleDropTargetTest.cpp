#include "basic/OleDropTargetEx.h"
#include "basic/TdHostMessage.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace {

/// A tree that keeps the messages it gets and answers them with m_answer.
class Receiver : public QTreeWidget
{
public:
    QList<int> m_messages;
    QPoint m_position;
    QString m_text;
    Qt::DropAction m_answer = Qt::CopyAction;

protected:
    bool event(QEvent *event) override
    {
        CTdHostMessage *message = CTdHostMessage::from(event);
        if (!message)
            return QTreeWidget::event(event);
        m_messages.append(message->message());
        m_position = message->position();
        m_text = message->mime()->text();
        message->setResult(m_answer);
        return true;
    }
};

class OleDropTarget : public testing::Test
{
protected:
    OleDropTarget()
    {
        m_mime.setText(QStringLiteral("dragged"));
        m_receiver.setHeaderLabel(QStringLiteral("Header"));
        m_receiver.resize(200, 200);
        m_receiver.show();
        m_target.Register(&m_receiver);
    }

    /// Sends an event, which the receiver answers with @p answer. @return the action if Qt is told to accept it
    template<class Event, class Point = QPoint>
    Qt::DropAction send(Qt::DropAction answer = Qt::CopyAction)
    {
        m_receiver.m_answer = answer;
        Event event(Point(5, 6), Qt::CopyAction | Qt::MoveAction, &m_mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_receiver.viewport(), &event);
        EXPECT_TRUE(event.type() == QEvent::DragEnter || event.isAccepted() || event.dropAction() == Qt::IgnoreAction);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }

    QMimeData m_mime;
    Receiver m_receiver;
    COleDropTargetEx m_target;
};

TEST_F(OleDropTarget, TurnsADragIntoMessagesToTheWidget)
{
    EXPECT_EQ(send<QDragEnterEvent>(), Qt::CopyAction);
    EXPECT_EQ(send<QDragMoveEvent>(), Qt::CopyAction);
    EXPECT_EQ((send<QDropEvent, QPointF>(Qt::MoveAction)), Qt::MoveAction);
    EXPECT_EQ(m_receiver.m_messages, (QList<int>{1137, 1138, 1135}));
    EXPECT_EQ(m_receiver.m_text, QStringLiteral("dragged"));
    EXPECT_EQ(m_receiver.m_position, m_receiver.viewport()->mapTo(&m_receiver, QPoint(5, 6)));
    EXPECT_NE(m_receiver.m_position, QPoint(5, 6)) << "the header is part of the widget, not of its viewport";
}

TEST_F(OleDropTarget, RefusedEnterIsAskedAgainOnTheMove)
{
    send<QDragEnterEvent>(Qt::IgnoreAction);
    EXPECT_EQ(send<QDragMoveEvent>(Qt::IgnoreAction), Qt::IgnoreAction);
    EXPECT_EQ(send<QDragMoveEvent>(Qt::LinkAction), Qt::IgnoreAction) << "an action that the drag does not offer";
    EXPECT_EQ(send<QDragMoveEvent>(Qt::CopyAction), Qt::CopyAction);
    EXPECT_EQ(m_receiver.m_messages, (QList<int>{1137, 1138, 1138, 1138}));
}

TEST_F(OleDropTarget, LetsTheWidgetGo)
{
    EXPECT_FALSE(m_target.Register(nullptr));
    EXPECT_EQ(m_target.GetWidget(), &m_receiver);
    m_target.Revoke();
    send<QDragEnterEvent>();
    EXPECT_TRUE(m_receiver.m_messages.isEmpty());
    EXPECT_FALSE(m_receiver.viewport()->acceptDrops());

    auto widget = std::make_unique<Receiver>();
    EXPECT_TRUE(m_target.Register(widget.get()));
    widget.reset();
    EXPECT_EQ(m_target.GetWidget(), nullptr);
}

} // namespace
