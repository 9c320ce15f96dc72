#include "basic/TdOleDataNode.h"
#include "common/TdCommMethods.h"
#include "engine/base/TxToolkit.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxDataSources.h"
#include "engine/map/TxWorkspace.h"

#include <QCoreApplication>

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

QString CTdCommMethods::GetAppDir()
{
    QString drive;
    QString dir;
    QString name;
    QString extension;
    CTxToolkit::SplitPath(QCoreApplication::applicationFilePath(), drive, dir, name, extension);
    return drive + dir;
}
