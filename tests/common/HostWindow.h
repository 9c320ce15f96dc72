#pragma once

#include "basic/TdHostMessage.h"
#include "basic/TdOleDataNode.h"
#include "common/TdModule.h"

#include <QList>
#include <QStringList>
#include <QWidget>

#include <functional>

/// A host's main window for tests: keeps what it is sent and answers with m_answer. It is the main window while it
/// lives.
class HostWindow : public QWidget
{
public:
    HostWindow() { CTdModule::SetMainWnd(this); }

    QList<int> m_messages;
    QStringList m_texts;
    QList<qint64> m_numbers;
    QList<CTdOleDataNode> m_nodes; // of the messages that have one
    qint64 m_answer = 0;
    std::function<void(const CTdHostMessage &)> m_reaction; // what else it does; may be the end of it

protected:
    bool event(QEvent *event) override
    {
        CTdHostMessage *message = CTdHostMessage::from(event);
        if (!message)
            return QWidget::event(event);
        m_messages.append(message->message());
        m_texts.append(message->text());
        m_numbers.append(message->number());
        if (message->node())
            m_nodes.append(*message->node());
        message->setResult(m_answer);
        if (const std::function<void(const CTdHostMessage &)> reaction = m_reaction)
            reaction(*message);
        return true;
    }
};
