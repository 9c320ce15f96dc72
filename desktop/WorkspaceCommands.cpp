#include "WorkspaceCommands.h"

#include "Actions.h"
#include "AttributeTable.h"
#include "DatasetUse.h"
#include "DocumentArea.h"
#include "LayerDefaults.h"
#include "MapWindow.h"
#include "Prompts.h"
#include "PropertiesDialog.h"
#include "WorkspaceDocument.h"
#include "WorkspacePane.h"
#include "common/TdCommMethods.h"
#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "workspace/WorkspaceBarTree.h"

#include <QAction>
#include <QMenu>
#include <QSet>

#include <algorithm>

WorkspaceCommands::WorkspaceCommands(WorkspaceDocument &document, WorkspacePane &pane, DocumentArea &area,
                                     Actions &actions, Prompts &prompts, QWidget *window)
    : QObject(window), m_document(document), m_pane(pane), m_area(area), m_actions(actions), m_prompts(prompts),
      m_window(window)
{
    const auto on = [&](Actions::Id id, auto &&command) { connect(actions[id], &QAction::triggered, this, command); };
    on(Actions::AddToMap, [this] { addSelection(false); });
    on(Actions::AddToNewMap, [this] { addSelection(true); });
    on(Actions::ShowTable, [this] { showSelectedTables(); });
    on(Actions::Properties, [this] { showProperties(); });
    on(Actions::CloseDataset, [this] { closeSelectedDatasets(); });
    on(Actions::CloseDataSource, [this] { closeDataSources(); });
    on(Actions::RefreshDataSource, [this] { refreshDataSources(); });
    on(Actions::Rename, [this] { rename(); });
    on(Actions::Delete, [this] { deleteSelection(); });
    on(Actions::ListTiles, [this] { listTiles(); });
    on(Actions::OpenMap, [this] { openMaps(); });
    connect(&pane, &WorkspacePane::selectionChanged, this, &WorkspaceCommands::updateActions);
    connect(&pane, &WorkspacePane::activated, this, &WorkspaceCommands::activate);
    connect(&area, &DocumentArea::itemsDropped, this, &WorkspaceCommands::addToMap);
    updateActions();
}

CTxDataset *WorkspaceCommands::find(const CTdOleDataNode::CTdOleData &entry) const
{
    if (entry.itemType != CTdOleDataNode::ItemDataset && entry.itemType != CTdOleDataNode::ItemSubDataset)
        return nullptr;
    const CTxDataSource *source = m_document.workspace().GetDataSources().find(entry.alias);
    return source ? source->GetDataset(entry.itemName) : nullptr;
}

QList<CTxDataset *> WorkspaceCommands::selectedDatasets() const
{
    QList<CTxDataset *> datasets;
    for (const CTdOleDataNode &node : m_pane.selection())
        if (CTxDataset *dataset = find(node.entries.first()))
            datasets << dataset;
    return datasets;
}

QList<CTxDataSource *> WorkspaceCommands::selectedDataSources() const
{
    QList<CTxDataSource *> sources;
    for (const CTdOleDataNode &node : m_pane.selection()) {
        if (node.itemType != CTdOleDataNode::ItemDataSource)
            continue;
        if (CTxDataSource *source = m_document.workspace().GetDataSources().find(node.entries.first().itemName))
            sources << source;
    }
    return sources;
}

QStringList WorkspaceCommands::selectedMaps() const
{
    QStringList maps;
    for (const CTdOleDataNode &node : m_pane.selection())
        if (node.itemType == CTdOleDataNode::ItemMap)
            maps << node.entries.first().itemName;
    return maps;
}

void WorkspaceCommands::updateActions()
{
    const QList<CTxDataset *> datasets = selectedDatasets();
    const QList<CTxDataSource *> sources = selectedDataSources();
    const QStringList maps = selectedMaps();
    const bool anyVector = std::any_of(datasets.begin(), datasets.end(), [](const auto *d) { return d->IsVector(); });
    const bool anyDrawable =
        std::any_of(datasets.begin(), datasets.end(), [](const auto *d) { return LayerDefaults::isDrawable(*d); });
    const bool anyOpen = std::any_of(datasets.begin(), datasets.end(), [](const auto *d) { return d->IsOpen(); });
    const bool anyLibrary = std::any_of(datasets.begin(), datasets.end(),
                                        [](const CTxDataset *d) { return d->GetOptions() & CTxDataset::Library; });
    const auto can = [](const CTxDataset *d, CTxDataSource::Capability what) {
        return d->GetDataSource()->HasCapability(what);
    };
    const bool canDelete = !datasets.isEmpty() && std::all_of(datasets.begin(), datasets.end(), [&](const auto *d) {
        return can(d, CTxDataSource::CanDeleteDatasets);
    });
    const qsizetype named = datasets.size() + sources.size() + maps.size();
    m_actions[Actions::AddToMap]->setEnabled(anyDrawable);
    m_actions[Actions::AddToNewMap]->setEnabled(anyDrawable);
    m_actions[Actions::ShowTable]->setEnabled(anyVector);
    m_actions[Actions::Properties]->setEnabled(datasets.size() + sources.size() == 1);
    m_actions[Actions::CloseDataset]->setEnabled(anyOpen);
    m_actions[Actions::CloseDataSource]->setEnabled(!sources.isEmpty());
    m_actions[Actions::RefreshDataSource]->setEnabled(!sources.isEmpty());
    m_actions[Actions::Rename]->setEnabled(
        named == 1 && (datasets.isEmpty() || can(datasets.first(), CTxDataSource::CanRenameDatasets)));
    m_actions[Actions::Delete]->setEnabled(sources.isEmpty() && (canDelete || (datasets.isEmpty() && !maps.isEmpty())));
    m_actions[Actions::ListTiles]->setEnabled(anyLibrary);
    m_actions[Actions::OpenMap]->setEnabled(!maps.isEmpty());
}

void WorkspaceCommands::fillMenu(QMenu &menu) const
{
    const auto add = [&](std::initializer_list<Actions::Id> ids) {
        menu.addSeparator();
        for (const Actions::Id id : ids)
            menu.addAction(m_actions[id]);
    };
    const QList<CTxDataset *> datasets = selectedDatasets();
    if (!datasets.isEmpty()) {
        menu.setDefaultAction(
            m_actions[LayerDefaults::isDrawable(*datasets.first()) ? Actions::AddToMap : Actions::ShowTable]);
        add({Actions::AddToMap, Actions::AddToNewMap, Actions::ShowTable});
        if (m_actions[Actions::ListTiles]->isEnabled())
            add({Actions::ListTiles});
        add({Actions::CopyDataset, Actions::Append});
        for (const Actions::Id id : {Actions::SmoothLines, Actions::ParallelLine})
            if (m_actions[id]->isEnabled())
                menu.addAction(m_actions[id]);
        add({Actions::CloseDataset, Actions::Rename, Actions::Delete});
        add({Actions::Properties});
    } else if (!selectedDataSources().isEmpty()) {
        add({Actions::RefreshDataSource, Actions::Rename, Actions::CloseDataSource});
        add({Actions::Properties});
    } else if (!selectedMaps().isEmpty()) {
        menu.setDefaultAction(m_actions[Actions::OpenMap]);
        add({Actions::OpenMap});
        add({Actions::Rename, Actions::Delete});
    } else {
        add({Actions::OpenFiles, Actions::OpenFolder, Actions::OpenDatabase});
        add({Actions::NewMap});
    }
}

void WorkspaceCommands::activate(const CTdOleDataNode &node)
{
    switch (node.itemType) {
    case CTdOleDataNode::ItemMap:
        m_area.showMap(node.entries.first().itemName);
        break;
    case CTdOleDataNode::ItemTile:
        m_area.addToMap(findTile(node));
        break;
    case CTdOleDataNode::ItemDataset:
    case CTdOleDataNode::ItemSubDataset:
        m_area.addToMap(find(node.entries.first()));
        break;
    case CTdOleDataNode::ItemLayout:
    case CTdOleDataNode::ItemScene:
    case CTdOleDataNode::ItemSymbolLibrary:
    case CTdOleDataNode::ItemLineLibrary:
    case CTdOleDataNode::ItemFillLibrary:
        Q_EMIT m_document.told(tr("“%1” cannot be shown: this desktop draws maps only.").arg(node.name));
        break;
    default:
        break;
    }
}

CTxDataset *WorkspaceCommands::findTile(const CTdOleDataNode &node) const
{
    // The node of a tile names the library, and its number is the record of the tile index.
    const CTdOleDataNode::CTdOleData &entry = node.entries.first();
    const CTxDataSource *source = m_document.workspace().GetDataSources().find(entry.alias);
    const auto *library = source ? dynamic_cast<CDatasetVector *>(source->GetDataset(entry.itemName)) : nullptr;
    auto *index = library ? dynamic_cast<CDatasetVector *>(source->GetDataset(library->GetTileIndexName())) : nullptr;
    if (!index || !index->Open())
        return nullptr;
    CTxRecordset *records = index->Query(CTxQueryDef());
    CTxVariant name;
    if (records && records->MoveToID(node.number))
        records->GetFieldValue(QStringLiteral("TxLibTileName"), name);
    CTdCommMethods::ReleaseRecordset(records);
    CTxDataset *tile = source->GetDataset(name.toText());
    if (!tile)
        Q_EMIT m_document.told(tr("The tile “%1” is not there.").arg(name.toText()));
    return tile;
}

void WorkspaceCommands::addToMap(const CTdOleDataNode &node, MapWindow *view)
{
    for (const CTdOleDataNode::CTdOleData &entry : node.entries)
        m_area.addToMap(find(entry), view);
}

void WorkspaceCommands::addSelection(bool newMap)
{
    bool makeMap = newMap;
    for (CTxDataset *dataset : selectedDatasets()) {
        if (!LayerDefaults::isDrawable(*dataset))
            continue;
        // All of them go into the one new map.
        makeMap ? m_area.addToNewMap(dataset) : m_area.addToMap(dataset);
        makeMap = false;
    }
}

void WorkspaceCommands::showTable(const CTxLayer *layer)
{
    CTxDataset *dataset = layer->GetDataset();
    if (dataset && dataset->IsVector())
        m_area.showTable(static_cast<CDatasetVector *>(dataset));
}

void WorkspaceCommands::showSelectedTables()
{
    for (CTxDataset *dataset : selectedDatasets())
        if (dataset->IsVector())
            m_area.showTable(static_cast<CDatasetVector *>(dataset));
}

void WorkspaceCommands::showProperties()
{
    const QList<CTxDataset *> datasets = selectedDatasets();
    const QList<CTxDataSource *> sources = selectedDataSources();
    if (!datasets.isEmpty())
        PropertiesDialog(*datasets.first(), m_window).exec();
    else if (!sources.isEmpty())
        PropertiesDialog(*sources.first(), m_window).exec();
}

void WorkspaceCommands::closeSelectedDatasets()
{
    CTdOleDataNode chosen;
    for (const CTdOleDataNode &node : m_pane.selection())
        if (find(node.entries.first())) // a datasource may be called like a dataset of it
            chosen.entries << node.entries.first();
    CTdCommMethods::CloseDatasets(&m_document.workspace(), &chosen);
}

void WorkspaceCommands::closeDataSources()
{
    QStringList aliases;
    for (const CTxDataSource *source : selectedDataSources())
        aliases << source->GetAlias();
    for (const QString &alias : aliases)
        m_document.closeDataSource(alias);
}

void WorkspaceCommands::refreshDataSources()
{
    QStringList aliases;
    for (const CTxDataSource *source : selectedDataSources())
        aliases << source->GetAlias();
    for (const QString &alias : aliases)
        m_document.refreshDataSource(alias);
}

void WorkspaceCommands::rename()
{
    const QList<CTdOleDataNode> nodes = m_pane.selection();
    if (nodes.size() != 1)
        return;
    const CTdOleDataNode &node = nodes.first();
    if (find(node.entries.first())) {
        renameDataset(node.entries.first());
        return;
    }
    const QString old = node.entries.first().itemName;
    const std::optional<QString> name = m_prompts.text(m_window, tr("Rename"), tr("&New name of “%1”:").arg(old), old);
    if (!name || name->trimmed() == old)
        return;
    if (node.itemType == CTdOleDataNode::ItemDataSource)
        m_document.renameDataSource(old, name->trimmed());
    else if (node.itemType == CTdOleDataNode::ItemMap)
        m_document.renameMap(old, name->trimmed());
}

void WorkspaceCommands::renameDataset(const CTdOleDataNode::CTdOleData &entry)
{
    CTxWorkspace &workspace = m_document.workspace();
    const QString alias = entry.alias;
    const QString old = entry.itemName;
    const std::optional<QString> text = m_prompts.text(m_window, tr("Rename"), tr("&New name of “%1”:").arg(old), old);
    const QString name = text.value_or(old).trimmed();
    // Only a closed dataset takes another name; whether a window has to let go of it is the user's decision.
    if (name == old || !CTdCommMethods::PromoteCloseDataset(&workspace, alias, old))
        return;
    CTdCommMethods::CloseDataset(&workspace, alias, old); // where it was its child that was closed
    CTxDataSource *source = workspace.GetDataSources().find(alias);
    if (!source)
        return;
    if (!source->RenameDataset(old, name)) {
        Q_EMIT m_document.failed(tr("“%1” could not be renamed.").arg(old), TxGetErrorMsgObj().GetErrorMessage());
        return;
    }
    DatasetUse::renameLayers(workspace, alias, old, name);
    Q_EMIT m_document.dataSourceChanged(alias, alias);
    m_document.touch();
}

void WorkspaceCommands::deleteSelection()
{
    const QList<CTxDataset *> datasets = selectedDatasets();
    if (!datasets.isEmpty()) {
        deleteDatasets(datasets);
        return;
    }
    const QStringList maps = selectedMaps();
    const QString question =
        maps.size() == 1 ? tr("Delete the map “%1”?").arg(maps.first()) : tr("Delete %1 maps?").arg(maps.size());
    if (maps.isEmpty() || !m_prompts.confirm(m_window, question, tr("The datasets that it shows stay."), tr("Delete")))
        return;
    for (const QString &map : maps)
        m_document.removeMap(map);
}

void WorkspaceCommands::deleteDatasets(const QList<CTxDataset *> &datasets)
{
    CTdOleDataNode chosen;
    QSet<QString> maps;
    for (const CTxDataset *dataset : datasets) {
        const QString alias = dataset->GetDataSource()->GetAlias();
        chosen.entries.append({alias, dataset->GetName(), CTdOleDataNode::ItemDataset, dataset->GetType()});
        for (const QString &map : DatasetUse::mapsOf(m_document.workspace(), alias, dataset->GetName()))
            maps.insert(map);
    }
    if (m_prompts.confirm(m_window, deleteQuestion(datasets), deleteExplanation({maps.begin(), maps.end()}),
                          tr("Delete")))
        CTdCommMethods::DeleteDatasets(&m_document.workspace(), &chosen);
}

QString WorkspaceCommands::deleteQuestion(const QList<CTxDataset *> &datasets)
{
    return datasets.size() == 1 ? tr("Delete the dataset “%1”?").arg(datasets.first()->GetName())
                                : tr("Delete %1 datasets?").arg(datasets.size());
}

QString WorkspaceCommands::deleteExplanation(const QStringList &maps)
{
    const QString loss = tr("The records are gone for good. This cannot be undone.");
    if (maps.isEmpty())
        return loss;
    const QString use = maps.size() == 1 ? tr("The map “%1” shows this data; its layers go too.").arg(maps.first())
                                         : tr("%1 maps show this data; their layers go too.").arg(maps.size());
    return use + QLatin1Char(' ') + loss;
}

void WorkspaceCommands::listTiles()
{
    for (const CTxDataset *dataset : selectedDatasets()) {
        if (!(dataset->GetOptions() & CTxDataset::Library))
            continue;
        const QString alias = dataset->GetDataSource()->GetAlias();
        QTreeWidgetItem *item = m_pane.tree()->FindHTreeItem(dataset->GetName(), alias, CTdOleDataNode::ItemDataset, 0);
        if (!item)
            continue;
        m_pane.tree()->DeleteSubItems(item, 0);
        m_pane.tree()->FillTreeItem(CWorkspaceBarTree::FillTypeTiles, alias, dataset->GetName());
        item->setExpanded(true);
    }
}

void WorkspaceCommands::openMaps()
{
    for (const QString &map : selectedMaps())
        m_area.showMap(map);
}
