#include "engine/map/TxWorkspace.h"

#include "engine/base/TxErrorMsg.h"
#include "engine/map/TxPortablePath.h"
#include "engine/map/TxWorkspaceFile.h"
#include "engine/map/TxWorkspacePrivate.h"
#include "engine/map/TxWorkspaceWriter.h"

#include <QFileInfo>

#include <algorithm>

namespace {

bool fail(const QString &path, const QString &what, const QString &reason)
{
    // Some of Qt's reasons end with a stop, ours and those of the rest of the engine do not.
    const QString unstopped = reason.endsWith(u'.') ? reason.chopped(1) : reason;
    TxGetErrorMsgObj().SetErrorMessage(
        QStringLiteral("The workspace file “%1” cannot be %2: %3").arg(path, what, unstopped));
    return false;
}

void updateMissing(const TxWorkspacePrivate &d)
{
    d.missing.clear();
    for (const TxWorkspacePrivate::FileEntry &entry : d.fileEntries) {
        if (!entry.dataSource && !d.dataSources.find(entry.record.alias))
            d.missing.append({entry.record.alias, entry.record.path, entry.record.options, entry.reason});
    }
}

QList<TxWorkspacePrivate::FileEntry>::iterator findMissing(TxWorkspacePrivate &d, const QString &alias)
{
    return std::find_if(d.fileEntries.begin(), d.fileEntries.end(), [&](const TxWorkspacePrivate::FileEntry &entry) {
        return !entry.dataSource && entry.record.alias == alias;
    });
}

/// True when @p path is a file that @p d reads its data from.
bool isData(const TxWorkspacePrivate &d, const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return false;
    const QString canonical = info.canonicalFilePath();
    for (int i = 0; i < d.dataSources.GetCount(); ++i) {
        if (QFileInfo(d.dataSources.GetAt(i)->GetPath()).canonicalFilePath() == canonical)
            return true;
    }
    return std::any_of(d.fileEntries.begin(), d.fileEntries.end(), [&](const TxWorkspacePrivate::FileEntry &entry) {
        return QFileInfo(entry.record.path).canonicalFilePath() == canonical;
    });
}

/// The file's content for @p document, with or without what part of the plane its maps show.
QByteArray written(TxWorkspaceDocument document, CTxWorkspace::Compared compared)
{
    if (compared == CTxWorkspace::Compared::AllButViews) {
        for (TxMapRecord &map : document.maps)
            map.view = CRect2D();
    }
    return TxWorkspaceWriter::write(document);
}

} // namespace

CTxWorkspace::CTxWorkspace() : d(std::make_unique<TxWorkspacePrivate>())
{
    Close();
}

CTxWorkspace::~CTxWorkspace() = default;

const QString &CTxWorkspace::GetName() const
{
    return d->name;
}

void CTxWorkspace::SetName(const QString &name)
{
    d->name = name;
}

const QString &CTxWorkspace::GetPath() const
{
    return d->path;
}

CTxDataSources &CTxWorkspace::GetDataSources()
{
    return d->dataSources;
}

const CTxDataSources &CTxWorkspace::GetDataSources() const
{
    return d->dataSources;
}

CTxMaps &CTxWorkspace::GetMaps()
{
    return d->maps;
}

const CTxMaps &CTxWorkspace::GetMaps() const
{
    return d->maps;
}

CTxLytStorages &CTxWorkspace::GetLytStorages()
{
    return d->layouts;
}

const CTxLytStorages &CTxWorkspace::GetLytStorages() const
{
    return d->layouts;
}

CTxScenes &CTxWorkspace::GetScenes()
{
    return d->scenes;
}

const CTxScenes &CTxWorkspace::GetScenes() const
{
    return d->scenes;
}

bool CTxWorkspace::Open(const QString &path)
{
    QString reason;
    const std::optional<TxWorkspaceDocument> document = TxWorkspaceFile::load(path, reason);
    if (!document)
        return fail(path, QStringLiteral("opened"), reason);
    const QString absolute = QFileInfo(path).absoluteFilePath();
    Close();
    d->path = absolute;
    TxWorkspaceFile::build(*this, *document, absolute);
    d->saved.reset();
    if (!document->repaired)
        d->saved = TxWorkspaceFile::snapshot(*this, absolute);
    return true;
}

bool CTxWorkspace::Save()
{
    return SaveAs(QString(d->path));
}

bool CTxWorkspace::SaveAs(const QString &path)
{
    if (path.isEmpty()) {
        TxGetErrorMsgObj().SetErrorMessage(QStringLiteral("The workspace has no file yet"));
        return false;
    }
    const QString absolute = QFileInfo(path).absoluteFilePath();
    QString reason = QStringLiteral("it is one of the workspace's datasources");
    TxWorkspaceDocument document = TxWorkspaceFile::snapshot(*this, absolute);
    if (isData(*d, absolute) || !TxWorkspaceFile::store(absolute, TxWorkspaceWriter::write(document), reason))
        return fail(path, QStringLiteral("written"), reason);
    d->path = absolute;
    d->saved = std::move(document);
    return true;
}

void CTxWorkspace::Close()
{
    d->scenes.RemoveAll();
    d->layouts.RemoveAll();
    d->maps.RemoveAll();
    d->dataSources.CloseAll();
    d->fileEntries.clear();
    d->name.clear();
    d->path.clear();
    d->unknown.clear();
    d->saved = TxWorkspaceDocument();
}

bool CTxWorkspace::IsModified(Compared compared) const
{
    return !d->saved || written(TxWorkspaceFile::snapshot(*this, d->path), compared) != written(*d->saved, compared);
}

bool CTxWorkspace::RenameDataSource(const QString &alias, const QString &newAlias)
{
    if (!d->dataSources.Rename(alias, newAlias))
        return false;
    for (int i = 0; i < d->maps.GetCount(); ++i) {
        const CTxLayers &layers = d->maps.GetAt(i)->GetLayers();
        for (int j = 0; j < layers.GetCount(); ++j) {
            CTxLayer *layer = layers.GetLayerAt(j);
            if (layer->GetDataSourceAlias() == alias)
                layer->SetDataSourceAlias(newAlias);
        }
    }
    return true;
}

const QList<TxMissingDataSource> &CTxWorkspace::GetMissingDataSources() const
{
    updateMissing(*d);
    return d->missing;
}

bool CTxWorkspace::RetryMissingDataSource(const QString &alias, const QString &path)
{
    const auto entry = findMissing(*d, alias);
    if (entry == d->fileEntries.end()) {
        TxGetErrorMsgObj().SetErrorMessage(QStringLiteral("No datasource called “%1” is missing").arg(alias));
        return false;
    }
    const QString place = path.isEmpty() ? entry->record.path : path;
    entry->dataSource = d->dataSources.Open(place, alias, entry->record.options);
    if (!entry->dataSource) {
        entry->reason = TxGetErrorMsgObj().GetErrorMessage();
        return false;
    }
    if (!path.isEmpty())
        entry->record.path = TxPortablePath::withoutPassword(path);
    return true;
}

bool CTxWorkspace::RemoveMissingDataSource(const QString &alias)
{
    const auto entry = findMissing(*d, alias);
    if (entry == d->fileEntries.end())
        return false;
    d->fileEntries.erase(entry);
    return true;
}
