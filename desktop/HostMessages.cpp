#include "HostMessages.h"

#include "DatasetUse.h"
#include "DocumentArea.h"
#include "OutputPane.h"
#include "WorkspaceCommands.h"
#include "WorkspaceDocument.h"
#include "WorkspacePane.h"
#include "basic/TdHostMessage.h"
#include "basic/TdOleDataNode.h"
#include "engine/base/TxErrorMsg.h"
#include "engine/data/TxDataset.h"

#include <QLocale>

#include <functional>

HostMessages::HostMessages(WorkspaceDocument &document, WorkspacePane &pane, DocumentArea &area,
                           WorkspaceCommands &commands, OutputPane &output, QObject *parent)
    : QObject(parent), m_document(document), m_pane(pane), m_area(area), m_commands(commands), m_output(output)
{
}

namespace {

/// Calls @p use with each dataset that the message names and that exists.
void forEachDataset(const WorkspaceDocument &document, const CTdHostMessage &message,
                    const std::function<void(CTxDataset *)> &use)
{
    if (!message.node())
        return;
    for (const CTdOleDataNode::CTdOleData &entry : message.node()->entries) {
        const CTxDataSource *source = document.workspace().GetDataSources().find(entry.alias);
        if (CTxDataset *dataset = source ? source->GetDataset(entry.itemName) : nullptr)
            use(dataset);
    }
}

} // namespace

bool HostMessages::handle(CTdHostMessage &message)
{
    switch (message.message()) {
    case CTdHostMessage::OutputText:
        m_output.print(message.text());
        return true;
    case CTdHostMessage::DatasetClosing:
    case CTdHostMessage::DatasetDeleting:
        release(message);
        return true;
    case CTdHostMessage::DatasetClosed:
        afterClose(message);
        return true;
    case CTdHostMessage::DatasetDeleted:
        afterDelete(message);
        return true;
    case CTdHostMessage::ReleaseDataset:
        answerRelease(message);
        return true;
    case CTdHostMessage::ContextHelp:
        m_output.print(tr("There is no help for this window yet (topic %1).").arg(message.number()));
        return true;
    default:
        return false;
    }
}

void HostMessages::release(const CTdHostMessage &message)
{
    forEachDataset(m_document, message, [this, &message](const CTxDataset *dataset) {
        m_area.release(dataset);
        const CTxDataset *child = dataset->GetChildDataset();
        if (child && message.message() == CTdHostMessage::DatasetDeleting)
            m_area.release(child); // it goes along
    });
}

/// A dataset that a window shows is left to the library's question whether to close it, and the output pane says which
/// window; any other may go.
void HostMessages::answerRelease(CTdHostMessage &message)
{
    const CTxDataset *dataset = message.dataset();
    const QStringList windows = dataset && dataset->IsOpen() ? m_area.windowsOf(dataset) : QStringList();
    if (windows.isEmpty())
        return;
    m_output.print(tr("“%1” is shown by %2.").arg(dataset->GetName(), QLocale().createSeparatedList(windows)));
    message.setResult(1);
}

void HostMessages::afterClose(const CTdHostMessage &message)
{
    const QString reason = TxGetErrorMsgObj().GetErrorMessage();
    forEachDataset(m_document, message, [&](const CTxDataset *dataset) {
        m_pane.updateDataset(dataset);
        if (dataset->IsOpen())
            Q_EMIT m_document.failed(tr("“%1” could not be closed.").arg(dataset->GetName()), reason);
    });
    m_commands.updateActions();
}

void HostMessages::afterDelete(const CTdHostMessage &message)
{
    if (!message.node())
        return;
    const QString reason = TxGetErrorMsgObj().GetErrorMessage();
    for (const CTdOleDataNode::CTdOleData &entry : message.node()->entries) {
        const CTxDataSource *source = m_document.workspace().GetDataSources().find(entry.alias);
        const CTxDataset *dataset = source ? source->GetDataset(entry.itemName) : nullptr;
        const bool isThere = dataset && dataset->GetName() == entry.itemName;
        if (!isThere) {
            m_pane.removeDataset(entry.alias, entry.itemName);
            DatasetUse::removeLayers(m_document.workspace(), entry.alias, entry.itemName);
        }
        m_area.refreshTables(entry.alias);
        if (isThere)
            Q_EMIT m_document.failed(tr("“%1” could not be deleted.").arg(entry.itemName), reason);
    }
    m_area.refreshMaps();
    m_commands.updateActions();
    m_document.touch();
}
