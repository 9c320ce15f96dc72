#include "TreeText.h"

#include "common/TdCommMethods.h"
#include "common/TdModule.h"
#include "engine/data/DatasetVector.h"
#include "engine/map/TxWorkspace.h"
#include "res/StringId.h"

#include <QCoreApplication>
#include <QList>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("TreeText", text);
}

/// A line of the tree and what is below it.
struct Node
{
    QString text;
    QList<Node> children;
};

QString describe(const CTxDataset &dataset)
{
    QString text = dataset.GetName() + QStringLiteral("  [") + CTdCommMethods::GetDatasetTypeName(dataset.GetType());
    if (dataset.IsVector()) {
        const qint64 records = static_cast<const CDatasetVector &>(dataset).GetRecordCount();
        if (records >= 0)
            text += QStringLiteral(", ") + QString::number(records);
    }
    return text + QLatin1Char(']');
}

Node describe(const CTxDataSource &source)
{
    const CTxDataSourceStorage::Entry *entry = CTxDataSourceStorage::find(source.GetEngineType());
    Node node{source.GetAlias() + (entry ? QStringLiteral("  [") + entry->caption + QLatin1Char(']') : QString()), {}};
    for (qint32 i = 0; i < source.GetDatasetCount(); ++i) {
        const CTxDataset *dataset = source.GetDatasetAt(i);
        Node child{describe(*dataset), {}};
        if (const CTxDataset *sub = dataset->GetChildDataset())
            child.children << Node{describe(*sub), {}};
        node.children << child;
    }
    return node;
}

void print(const Node &node, const QString &indent, QString &text)
{
    for (qsizetype i = 0; i < node.children.size(); ++i) {
        const bool last = i + 1 == node.children.size();
        text += indent + (last ? QStringLiteral("└── ") : QStringLiteral("├── ")) + node.children[i].text +
                QLatin1Char('\n');
        print(node.children[i], indent + (last ? QStringLiteral("    ") : QStringLiteral("│   ")), text);
    }
}

} // namespace

QString treeText(CTxWorkspace &workspace)
{
    Node root{
        workspace.GetName().isEmpty() ? CTdModule::LoadString(TdStringId::UntitledWorkspace) : workspace.GetName(), {}};
    Node sources{CTdModule::LoadString(TdStringId::TreeDataSources), {}};
    for (int i = 0; i < workspace.GetDataSources().GetCount(); ++i)
        sources.children << describe(*workspace.GetDataSources().GetAt(i));
    Node maps{CTdModule::LoadString(TdStringId::TreeMaps), {}};
    for (int i = 0; i < workspace.GetMaps().GetCount(); ++i) {
        const CTxMap *map = workspace.GetMaps().GetAt(i);
        Node node{map->GetName(), {}};
        for (int l = 0; l < map->GetLayers().GetCount(); ++l)
            node.children << Node{map->GetLayers().GetLayerAt(l)->GetName(), {}};
        maps.children << node;
    }
    Node scenes{CTdModule::LoadString(TdStringId::TreeScenes), {}};
    for (int i = 0; i < workspace.GetScenes().GetCount(); ++i)
        scenes.children << Node{workspace.GetScenes().GetAt(i)->GetName(), {}};
    Node layouts{CTdModule::LoadString(TdStringId::TreeLayouts), {}};
    for (int i = 0; i < workspace.GetLytStorages().GetCount(); ++i)
        layouts.children << Node{workspace.GetLytStorages().GetAt(i)->GetName(), {}};
    Node resources{CTdModule::LoadString(TdStringId::TreeResources), {}};
    for (const TdStringId::Id library :
         {TdStringId::TreeSymbolLibrary, TdStringId::TreeLineLibrary, TdStringId::TreeFillLibrary})
        resources.children << Node{CTdModule::LoadString(library), {}};
    root.children << sources << maps << scenes << layouts << resources;
    if (!workspace.GetMissingDataSources().isEmpty()) {
        Node missing{tr("Missing datasources"), {}};
        for (const TxMissingDataSource &source : workspace.GetMissingDataSources())
            missing.children << Node{QStringLiteral("%1  (%2)").arg(source.alias, source.path), {}};
        root.children << missing;
    }
    QString text = root.text + QLatin1Char('\n');
    print(root, QString(), text);
    return text;
}
