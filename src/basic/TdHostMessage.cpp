#include "basic/TdHostMessage.h"

#include <QCoreApplication>

namespace {

QEvent::Type eventType(CTdHostMessage::Message message)
{
    return static_cast<QEvent::Type>(message);
}

/// Takes the numbers out of the pool from which Qt gives free event types to others.
const bool numbersReserved = [] {
    using M = CTdHostMessage;
    for (const M::Message message :
         {M::OutputText, M::Drop, M::DragEnter, M::DragOver, M::WorkspaceClosed, M::DataSourceCreated,
          M::DataSourceOpened, M::DataSourceClosed, M::DatasetClosing, M::DatasetClosed, M::DatasetDeleting,
          M::DatasetDeleted, M::ReleaseDataset, M::Command, M::ContextHelp})
        QEvent::registerEventType(message);
    return true;
}();

} // namespace

CTdHostMessage::CTdHostMessage(Message message) : QEvent(eventType(message)) {}

CTdHostMessage::CTdHostMessage(Message message, const QString &text) : QEvent(eventType(message)), m_text(text) {}

CTdHostMessage::CTdHostMessage(Message message, const CTdOleDataNode *node) : QEvent(eventType(message)), m_node(node)
{
}

CTdHostMessage::CTdHostMessage(Message message, CTxDataset *dataset) : QEvent(eventType(message)), m_dataset(dataset) {}

CTdHostMessage::CTdHostMessage(Message message, qint64 number) : QEvent(eventType(message)), m_number(number) {}

CTdHostMessage::CTdHostMessage(Message message, const QMimeData *mime, const QPoint &position, Qt::DropActions possible)
    : QEvent(eventType(message)), m_mime(mime), m_position(position), m_possible(possible)
{
}

CTdHostMessage::~CTdHostMessage() = default;

CTdHostMessage *CTdHostMessage::clone() const
{
    return new CTdHostMessage(*this);
}

CTdHostMessage *CTdHostMessage::from(QEvent *event)
{
    return dynamic_cast<CTdHostMessage *>(event);
}
