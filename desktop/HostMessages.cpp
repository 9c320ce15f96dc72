#include "HostMessages.h"

#include "DocumentArea.h"
#include "OutputPane.h"
#include "WorkspaceCommands.h"
#include "WorkspaceDocument.h"
#include "WorkspacePane.h"
#include "basic/TdHostMessage.h"
#include "basic/TdOleDataNode.h"
#include "engine/data/TxDataset.h"

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
        releaseAll(message);
        return true;
    case CTdHostMessage::DatasetClosed:
        afterClose(message);
        return true;
    case CTdHostMessage::DatasetDeleted:
        afterDelete(message);
        return true;
    case CTdHostMessage::ReleaseDataset:
        // A dataset that a window shows is left to the library's question whether to close it; any other may go.
        message.setResult(m_area.isShown(message.dataset()) ? 1 : 0);
        return true;
    case CTdHostMessage::ContextHelp:
        m_output.print(tr("There is no help for this window yet (topic %1).").arg(message.number()));
        return true;
    default:
        return false;
    }
}

void HostMessages::releaseAll(const CTdHostMessage &message)
{
    forEachDataset(m_document, message, [this](const CTxDataset *dataset) { m_area.release(dataset); });
}

void HostMessages::afterClose(const CTdHostMessage &message)
{
    forEachDataset(m_document, message, [this](const CTxDataset *dataset) { m_pane.updateDataset(dataset); });
    m_commands.updateActions();
}

void HostMessages::afterDelete(const CTdHostMessage &message)
{
    if (!message.node())
        return;
    for (const CTdOleDataNode::CTdOleData &entry : message.node()->entries) {
        const CTxDataSource *source = m_document.workspace().GetDataSources().find(entry.alias);
        if (source && source->GetDataset(entry.itemName))
            continue; // the deletion failed
        m_pane.removeDataset(entry.alias, entry.itemName);
        m_commands.removeLayers(entry.alias, entry.itemName);
    }
    m_area.refreshMaps();
    m_document.touch();
}
