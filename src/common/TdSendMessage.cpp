#include "common/TdSendMessage.h"

#include "basic/TdHostMessage.h"
#include "common/TdModule.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QThread>
#include <QWidget>

namespace {

Q_LOGGING_CATEGORY(lcMessage, "terravox.message")

bool onThreadOf(const QObject &object, const CTdHostMessage &message)
{
    if (QThread::currentThread() == object.thread())
        return true;
    qCWarning(lcMessage, "message %d was sent from another thread than the receiver's and is dropped", message.type());
    return false;
}

} // namespace

qint64 TdSendMessage(QObject *receiver, CTdHostMessage &message)
{
    if (!receiver || !onThreadOf(*receiver, message))
        return 0;
    QCoreApplication::sendEvent(receiver, &message);
    return message.result();
}

bool TdSendMessageToMainWnd(CTdHostMessage &message)
{
    // The application's thread is asked, not the window's: another thread must not touch the window, not even so far.
    if (!QCoreApplication::instance() || !onThreadOf(*QCoreApplication::instance(), message))
        return false;
    QWidget *window = CTdModule::GetMainWnd();
    if (!window)
        return false;
    TdSendMessage(window, message);
    return true;
}
