#pragma once

#include "basic/TdHostMessage.h"
#include "common/TdModule.h"

#include <QList>
#include <QStringList>
#include <QWidget>

/// A host's main window for tests: keeps what it is sent and answers with m_answer. It is the main window while it
/// lives.
class HostWindow : public QWidget
{
public:
    HostWindow() { CTdModule::SetMainWnd(this); }

    QList<int> m_messages;
    QStringList m_texts;
    QList<qint64> m_numbers;
    qint64 m_answer = 0;

protected:
    bool event(QEvent *event) override
    {
        CTdHostMessage *message = CTdHostMessage::from(event);
        if (!message)
            return QWidget::event(event);
        m_messages.append(message->message());
        m_texts.append(message->text());
        m_numbers.append(message->number());
        message->setResult(m_answer);
        return true;
    }
};
