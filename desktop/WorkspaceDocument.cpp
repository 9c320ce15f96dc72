#include "WorkspaceDocument.h"

#include "Prompts.h"
#include "common/TdModule.h"
#include "engine/base/TxErrorMsg.h"
#include "engine/data/TxDataSourceStorage.h"
#include "res/StringId.h"
#include "workspace/WaitCursor.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QWidget>

#include <algorithm>

namespace {

bool isWorkspaceFile(const QString &path)
{
    return QFileInfo(path).suffix().compare(QLatin1String(CTxWorkspace::extension), Qt::CaseInsensitive) == 0;
}

/// @p path as users read it.
QString shown(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

/// The answer of @p work, which runs under a wait cursor.
template<class Work>
auto waiting(Work &&work)
{
    const WaitCursor wait;
    return work();
}

/// Why the engine refused.
QString lastError()
{
    const QString text = TxGetErrorMsgObj().GetErrorMessage();
    return text.isEmpty() ? QCoreApplication::translate("WorkspaceDocument", "The reason is not known.") : text;
}

} // namespace

WorkspaceDocument::WorkspaceDocument(Prompts &prompts, QWidget *window)
    : QObject(window), m_prompts(prompts), m_window(window), m_workspace(std::make_unique<CTxWorkspace>())
{
}

WorkspaceDocument::~WorkspaceDocument() = default;

QString WorkspaceDocument::title() const
{
    if (!m_workspace->GetPath().isEmpty())
        return QFileInfo(m_workspace->GetPath()).completeBaseName();
    return CTdModule::LoadString(TdStringId::UntitledWorkspace);
}

bool WorkspaceDocument::isModified() const
{
    const CTxWorkspace &w = *m_workspace;
    // Looking around in a map changes nothing that users would want to be asked about; saving keeps the view all the
    // same. A fresh workspace counts as modified by its default name alone; nobody wants to be asked about that.
    const bool empty = w.GetDataSources().GetCount() == 0 && w.GetMaps().GetCount() == 0 &&
                       w.GetLytStorages().GetCount() == 0 && w.GetScenes().GetCount() == 0;
    return !(empty && w.GetPath().isEmpty()) && w.IsModified(CTxWorkspace::Compared::AllButViews);
}

bool WorkspaceDocument::mayClose()
{
    if (!isModified())
        return true;
    switch (m_prompts.unsaved(m_window, title())) {
    case Prompts::Unsaved::Save:
        return save();
    case Prompts::Unsaved::Discard:
        return true;
    case Prompts::Unsaved::Cancel:
        break;
    }
    return false;
}

bool WorkspaceDocument::newWorkspace()
{
    if (!mayClose())
        return false;
    replaceWorkspace(std::make_unique<CTxWorkspace>());
    return true;
}

bool WorkspaceDocument::openWorkspace(const QString &path)
{
    if (!mayClose())
        return false;
    // Read beside the old one, so that a file that turns out to be no workspace costs nothing.
    auto workspace = std::make_unique<CTxWorkspace>();
    if (!waiting([&] { return workspace->Open(path); })) {
        Q_EMIT failed(tr("%1 could not be opened.").arg(shown(path)), lastError());
        return false;
    }
    QStringList held;
    for (int index = 0; index < m_workspace->GetDataSources().GetCount(); ++index)
        held.append(m_workspace->GetDataSources().GetAt(index)->GetPath());
    replaceWorkspace(std::move(workspace));
    // What the old workspace kept locked, by a transaction that was open, is free now.
    const QList<TxMissingDataSource> missing = m_workspace->GetMissingDataSources();
    for (const TxMissingDataSource &source : missing) {
        if (held.contains(source.path))
            m_workspace->RetryMissingDataSource(source.alias);
    }
    Q_EMIT used(path);
    Q_EMIT told(tr("Opened the workspace %1.").arg(QFileInfo(path).fileName()));
    tellMissing();
    return true;
}

void WorkspaceDocument::replaceWorkspace(std::unique_ptr<CTxWorkspace> workspace)
{
    Q_EMIT workspaceClosing();
    std::swap(m_workspace, workspace);
    m_closed.clear();
    Q_EMIT workspaceOpened();
    workspace.reset(); // after every view has turned to the new one
    Q_EMIT missingChanged();
    Q_EMIT changed();
}

void WorkspaceDocument::tellMissing()
{
    for (const TxMissingDataSource &source : m_workspace->GetMissingDataSources())
        Q_EMIT told(tr("Missing datasource %1 (%2): %3").arg(source.alias, shown(source.path), source.reason));
    if (!m_workspace->GetMissingDataSources().isEmpty())
        Q_EMIT told(tr("The command Missing Datasources of the File menu locates or removes them."));
    Q_EMIT missingChanged();
}

bool WorkspaceDocument::save()
{
    if (m_workspace->GetPath().isEmpty())
        return saveAs();
    return saveAs(m_workspace->GetPath());
}

bool WorkspaceDocument::saveAs()
{
    const QString start = m_workspace->GetPath().isEmpty()
                              ? title() + QLatin1Char('.') + QLatin1String(CTxWorkspace::extension)
                              : m_workspace->GetPath();
    const QString path = m_prompts.saveFile(m_window, tr("Save Workspace As"), start, workspaceFilters(),
                                            QLatin1String(CTxWorkspace::extension));
    return !path.isEmpty() && saveAs(path);
}

bool WorkspaceDocument::saveAs(const QString &path)
{
    const bool ok = path == m_workspace->GetPath() ? m_workspace->Save() : m_workspace->SaveAs(path);
    if (ok) {
        Q_EMIT used(path);
        Q_EMIT told(tr("Workspace saved to %1.").arg(shown(path)));
    } else {
        Q_EMIT failed(tr("%1 could not be saved.").arg(shown(path)), lastError());
    }
    Q_EMIT changed();
    return ok;
}

bool WorkspaceDocument::openFile(const QString &path)
{
    return isWorkspaceFile(path) ? openWorkspace(path) : openDataSource(path) != nullptr;
}

int WorkspaceDocument::openFiles(const QStringList &paths)
{
    QStringList sorted = paths;
    std::stable_partition(sorted.begin(), sorted.end(), isWorkspaceFile);
    return static_cast<int>(
        std::count_if(sorted.cbegin(), sorted.cend(), [this](const QString &p) { return openFile(p); }));
}

CTxDataSource *WorkspaceDocument::openDataSource(const QString &path)
{
    CTxDataSources &sources = m_workspace->GetDataSources();
    const QString known = m_closed.value(path);
    CTxDataSource *source = waiting([&] { return sources.Open(path, sources.find(known) ? QString() : known); });
    if (!source) {
        Q_EMIT failed(tr("%1 could not be opened.").arg(shown(path)), lastError());
        return nullptr;
    }
    Q_EMIT dataSourceOpened(source->GetAlias());
    const qint32 count = source->GetDatasetCount();
    Q_EMIT told(count == 1 ? tr("Opened %1: 1 dataset.").arg(source->GetAlias())
                           : tr("Opened %1: %2 datasets.").arg(source->GetAlias()).arg(count));
    Q_EMIT used(path);
    Q_EMIT changed();
    return source;
}

bool WorkspaceDocument::closeDataSource(const QString &alias)
{
    CTxDataSource *source = m_workspace->GetDataSources().find(alias);
    if (!source)
        return false;
    if (source->IsTransStarted() &&
        !m_prompts.confirm(m_window, tr("Close “%1” with uncommitted changes?").arg(alias),
                           tr("The changes since the transaction began are taken back."), tr("Close Datasource")))
        return false;
    const QString name = alias; // the argument may be the datasource's own
    const QString path = source->GetPath();
    Q_EMIT dataSourceClosing(name);
    const bool ok = m_workspace->GetDataSources().Close(name);
    if (ok) {
        m_closed.insert(path, name);
        Q_EMIT dataSourceClosed(name);
    }
    Q_EMIT changed();
    return ok;
}

bool WorkspaceDocument::renameDataSource(const QString &alias, const QString &newAlias)
{
    const QString oldName = alias;
    if (!m_workspace->GetDataSources().Rename(oldName, newAlias)) {
        Q_EMIT failed(tr("“%1” could not be renamed.").arg(oldName),
                      tr("Another datasource is called “%1”, or the name is empty.").arg(newAlias));
        return false;
    }
    CTxMaps &maps = m_workspace->GetMaps();
    for (int m = 0; m < maps.GetCount(); ++m) {
        CTxLayers &layers = maps.GetAt(m)->GetLayers();
        for (int i = 0; i < layers.GetCount(); ++i)
            if (layers.GetLayerAt(i)->GetDataSourceAlias() == oldName)
                layers.GetLayerAt(i)->SetDataSourceAlias(newAlias);
    }
    Q_EMIT dataSourceChanged(newAlias, oldName);
    Q_EMIT changed();
    return true;
}

bool WorkspaceDocument::refreshDataSource(const QString &alias)
{
    CTxDataSource *source = m_workspace->GetDataSources().find(alias);
    if (!source)
        return false;
    Q_EMIT dataSourceRefreshing(alias);
    const bool ok = source->Refresh();
    if (!ok)
        Q_EMIT failed(tr("“%1” could not be read again.").arg(alias), lastError());
    Q_EMIT dataSourceChanged(alias, alias);
    return ok;
}

bool WorkspaceDocument::locateMissing(const QString &alias, const QString &path)
{
    if (!m_workspace->RetryMissingDataSource(alias, path)) {
        Q_EMIT failed(tr("The datasource “%1” could not be opened.").arg(alias), lastError());
        Q_EMIT missingChanged();
        return false;
    }
    Q_EMIT dataSourceOpened(alias);
    Q_EMIT missingChanged();
    Q_EMIT changed();
    return true;
}

bool WorkspaceDocument::removeMissing(const QString &alias)
{
    const bool ok = m_workspace->RemoveMissingDataSource(alias);
    Q_EMIT missingChanged();
    Q_EMIT changed();
    return ok;
}

CTxMap *WorkspaceDocument::addMap(const QString &proposal)
{
    CTxMaps &maps = m_workspace->GetMaps();
    CTxMap *map = maps.Add(maps.GetUnoccupiedName(proposal));
    if (map) {
        Q_EMIT mapAdded(map->GetName());
        Q_EMIT changed();
    }
    return map;
}

bool WorkspaceDocument::removeMap(const QString &name)
{
    if (!m_workspace->GetMaps().find(name))
        return false;
    const QString gone = name;
    Q_EMIT mapRemoving(gone);
    m_workspace->GetMaps().Remove(gone);
    Q_EMIT mapRemoved(gone);
    Q_EMIT changed();
    return true;
}

bool WorkspaceDocument::renameMap(const QString &name, const QString &newName)
{
    const QString oldName = name;
    if (newName.isEmpty() || !m_workspace->GetMaps().Rename(oldName, newName)) {
        Q_EMIT failed(tr("“%1” could not be renamed.").arg(oldName),
                      tr("Another map is called “%1”, or the name is empty.").arg(newName));
        return false;
    }
    Q_EMIT mapRenamed(oldName, newName);
    Q_EMIT changed();
    return true;
}

QStringList WorkspaceDocument::workspaceFilters()
{
    return {tr("Workspaces (*.%1)").arg(QLatin1String(CTxWorkspace::extension)), tr("All files (*)")};
}

QStringList WorkspaceDocument::dataSourceFilters()
{
    QStringList filters;
    QStringList every;
    for (const CTxDataSourceStorage::Entry &entry : CTxDataSourceStorage::table()) {
        if (entry.isDatabase || entry.extensions.isEmpty())
            continue;
        QStringList patterns;
        for (const QString &extension : entry.extensions)
            patterns << QStringLiteral("*.") + extension << QStringLiteral("*.") + extension.toUpper();
        filters << entry.caption + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')');
        every += patterns;
    }
    filters.prepend(tr("All datasources (%1)").arg(every.join(QLatin1Char(' '))));
    filters << tr("All files (*)");
    return filters;
}
