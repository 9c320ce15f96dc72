#include "basic/TdHostMessage.h"
#include "basic/TdOleDataNode.h"
#include "common/TdCommMethods.h"
#include "common/TdModule.h"
#include "common/TdSendMessage.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/map/TxWorkspace.h"
#include "res/StringId.h"

#include <QGuiApplication>
#include <QMessageBox>
#include <QPointer>

#include <functional>

// What the main window is told lets it do anything: close the datasource, the workspace or itself. Nothing here follows
// a pointer after a message or a question without asking whether its object still lives.

namespace {

using Message = CTdHostMessage::Message;
using DatasetHandle = TxHandle<const CTxDataset>;

/// Does @p work to @p dataset between the messages @p before and @p after. Without a main window nothing happens. What
/// was announced is always concluded, as long as there is somebody to tell.
void announced(const CTxDataSource *dataSource, const CTxDataset *dataset, Message before, Message after,
               const std::function<void()> &work)
{
    if (!dataSource || !dataset)
        return;
    if (dataset->GetDataSource() != dataSource) {
        // Windows would let go of another dataset than the one that goes.
        CTdCommMethods::PromptWrong(QStringLiteral(__FILE__), __LINE__);
        return;
    }
    const CTdOleDataNode node(CTdOleDataNode::WndNone, CTdOleDataNode::ItemDataset, dataset->GetName(),
                              dataSource->GetAlias(), 0, 0);
    const DatasetHandle living(dataset);
    CTdHostMessage announcement(before, &node);
    if (!TdSendMessageToMainWnd(announcement))
        return;
    if (living.get() && CTdModule::GetMainWnd())
        work();
    CTdHostMessage conclusion(after, &node);
    TdSendMessageToMainWnd(conclusion);
}

/// Calls @p work with the names in each item of @p node, in order, as long as the workspace lives.
void forEachItem(CTxWorkspace *workspace, const CTdOleDataNode *node,
                 const std::function<void(const QString &alias, const QString &name)> &work)
{
    if (!node)
        return;
    const TxHandle<CTxWorkspace> living(workspace);
    const QList<CTdOleDataNode::CTdOleData> items = node->entries; // the node may be of a tree item, and go with it
    // Deliberate: an item counts by its names, whatever its kind. Hosts put together the node of what is to go.
    for (const CTdOleDataNode::CTdOleData &item : items) {
        if (living.get())
            work(item.alias, item.itemName);
    }
}

/// Asks the user whether to close the dataset called @p name.
bool userAllowsToClose(const QString &name)
{
    const QString text = CTdModule::LoadString(TdStringId::AskCloseDataset).replace(QLatin1String("%s"), name);
    // On the heap: the main window, its parent, may go while the question is open.
    const QPointer<QMessageBox> box =
        new QMessageBox(QMessageBox::Warning, QGuiApplication::applicationDisplayName(), text,
                        QMessageBox::Yes | QMessageBox::No, CTdModule::GetMainWnd());
    box->setTextFormat(Qt::PlainText); // whatever a name looks like
    box->setWindowModality(Qt::ApplicationModal);
    const int answer = box->exec();
    delete box;
    return answer == QMessageBox::Yes;
}

} // namespace

void CTdCommMethods::GetDSandDT(const CTxWorkspace *workspace, const QString &alias, const QString &name,
                                CTxDataSource *&dataSource, CTxDataset *&dataset)
{
    dataSource = nullptr;
    dataset = nullptr;
    if (workspace && workspace->GetDataSources().Lookup(alias, dataSource))
        dataset = dataSource->GetDataset(name);
}

void CTdCommMethods::GetDSandDT(const CTxWorkspace *workspace, const CTdOleDataNode &node, CTxDataSource *&dataSource,
                                CTxDataset *&dataset)
{
    dataSource = nullptr;
    dataset = nullptr;
    if (!node.entries.isEmpty())
        GetDSandDT(workspace, node.entries.first().alias, node.entries.first().itemName, dataSource, dataset);
}

CTxDataset *CTdCommMethods::GetDataset(const CTxWorkspace *workspace, const CTdOleDataNode &node)
{
    if (node.entries.size() != 1 || node.entries.first().itemType != CTdOleDataNode::ItemDataset)
        return nullptr;
    CTxDataSource *dataSource = nullptr;
    CTxDataset *dataset = nullptr;
    GetDSandDT(workspace, node, dataSource, dataset);
    return dataset;
}

void CTdCommMethods::CloseDataset(CTxDataSource *dataSource, CTxDataset *dataset)
{
    announced(dataSource, dataset, Message::DatasetClosing, Message::DatasetClosed, [dataset] { dataset->Close(); });
}

void CTdCommMethods::CloseDataset(CTxDataSource *dataSource, const QString &name)
{
    CloseDataset(dataSource, dataSource ? dataSource->GetDataset(name) : nullptr);
}

void CTdCommMethods::CloseDataset(CTxWorkspace *workspace, const QString &alias, const QString &name)
{
    CTxDataSource *dataSource = nullptr;
    CTxDataset *dataset = nullptr;
    GetDSandDT(workspace, alias, name, dataSource, dataset);
    CloseDataset(dataSource, dataset);
}

void CTdCommMethods::CloseDatasets(CTxWorkspace *workspace, const CTdOleDataNode *node)
{
    forEachItem(workspace, node,
                [workspace](const QString &alias, const QString &name) { CloseDataset(workspace, alias, name); });
}

void CTdCommMethods::DeleteDataset(CTxDataSource *dataSource, const CTxDataset *dataset)
{
    announced(dataSource, dataset, Message::DatasetDeleting, Message::DatasetDeleted, [dataSource, dataset] {
        const QString name = dataset->GetName(); // it goes with the dataset
        dataSource->DeleteDataset(name);
    });
}

void CTdCommMethods::DeleteDataset(CTxDataSource *dataSource, const QString &name)
{
    DeleteDataset(dataSource, dataSource ? dataSource->GetDataset(name) : nullptr);
}

void CTdCommMethods::DeleteDataset(CTxWorkspace *workspace, const QString &alias, const QString &name)
{
    CTxDataSource *dataSource = nullptr;
    CTxDataset *dataset = nullptr;
    GetDSandDT(workspace, alias, name, dataSource, dataset);
    DeleteDataset(dataSource, dataset);
}

void CTdCommMethods::DeleteDatasets(CTxWorkspace *workspace, const CTdOleDataNode *node)
{
    forEachItem(workspace, node,
                [workspace](const QString &alias, const QString &name) { DeleteDataset(workspace, alias, name); });
}

// Deliberate: hosts close their datasources themselves, after asking for unsaved changes, and call these before.
void CTdCommMethods::CloseDataSource(CTxDataSource *) {}
void CTdCommMethods::CloseDataSource(CTxWorkspace *, const QString &) {}
void CTdCommMethods::CloseDataSources(CTxWorkspace *, const CTdOleDataNode *) {}

bool CTdCommMethods::PromoteCloseDataset(CTxDataset *dataset)
{
    if (!dataset)
        return false;
    CTxDataset *child = dataset->IsVector() ? dataset->GetChildDataset() : nullptr;
    const TxHandle<CTxDataset> released(child ? child : dataset);
    CTdHostMessage request(Message::ReleaseDataset, released.get());
    // Without a main window (it may also have gone by now) nothing is closed, so there is nothing to ask.
    if (!TdSendMessageToMainWnd(request) || !CTdModule::GetMainWnd())
        return released.get() && !released.get()->IsOpen();
    bool result = false;
    if (request.result() == 0 && released.get()) {
        CloseDataset(released.get()->GetDataSource(), released.get());
        result = true;
    }
    if (!released.get())
        return false; // whoever answered did more than let it go
    if (!released.get()->IsOpen())
        return result; // Deliberate: false when the host took care of it, whose operation it then is
    if (!userAllowsToClose(released.get()->GetName()) || !released.get())
        return false;
    CloseDataset(released.get()->GetDataSource(), released.get());
    return true;
}

bool CTdCommMethods::PromoteCloseDataset(CTxWorkspace *workspace, const QString &alias, const QString &name)
{
    CTxDataSource *dataSource = nullptr;
    CTxDataset *dataset = nullptr;
    GetDSandDT(workspace, alias, name, dataSource, dataset);
    return PromoteCloseDataset(dataset);
}
