#include "HostWindow.h"

#include "common/TdSendMessage.h"

#include <QThread>

#include <gtest/gtest.h>

namespace {

TEST(SendMessage, ReachesTheMainWindowWhileThereIsOneAndBringsItsAnswer)
{
    CTdHostMessage message(CTdHostMessage::OutputText, QStringLiteral("line"));
    {
        HostWindow host;
        host.m_answer = 77;
        EXPECT_TRUE(TdSendMessageToMainWnd(message));
        EXPECT_EQ(message.result(), 77);
        EXPECT_EQ(host.m_messages, QList<int>{1124});
        EXPECT_EQ(host.m_texts, QStringList{QStringLiteral("line")});
    }
    EXPECT_FALSE(TdSendMessageToMainWnd(message));
    EXPECT_EQ(TdSendMessage(nullptr, message), 0);
}

TEST(SendMessage, FromAnotherThreadIsRefused)
{
    HostWindow host;
    host.m_answer = 1;
    bool sent = true;
    qint64 answer = 1;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        CTdHostMessage message(CTdHostMessage::OutputText, QStringLiteral("line"));
        sent = TdSendMessageToMainWnd(message);
        answer = TdSendMessage(&host, message);
    }));
    thread->start();
    thread->wait();
    EXPECT_FALSE(sent);
    EXPECT_EQ(answer, 0);
    EXPECT_TRUE(host.m_messages.isEmpty());
}

/// A receiver that answers a message by sending another one to itself, as hosts do while they close a dataset.
class Reentrant : public QObject
{
public:
    bool event(QEvent *event) override
    {
        CTdHostMessage *message = CTdHostMessage::from(event);
        if (!message)
            return QObject::event(event);
        CTdHostMessage inner(CTdHostMessage::DatasetClosed, message->number() + 1);
        message->setResult(message->number() < 12 ? TdSendMessage(this, inner) : message->number());
        return true;
    }
};

TEST(SendMessage, IsReentrant)
{
    Reentrant receiver;
    CTdHostMessage message(CTdHostMessage::DatasetClosing, 10);
    EXPECT_EQ(TdSendMessage(&receiver, message), 12);
}

} // namespace
