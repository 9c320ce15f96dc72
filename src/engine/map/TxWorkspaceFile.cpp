#include "engine/map/TxWorkspaceFile.h"

#include "engine/base/TxErrorMsg.h"
#include "engine/data/TxDataSource.h"
#include "engine/map/TxPortablePath.h"
#include "engine/map/TxWorkspaceReader.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSaveFile>
#include <QSet>

#include <unistd.h>

namespace {

QString folderOf(const QString &path)
{
    return path.isEmpty() ? QString() : QFileInfo(path).absolutePath();
}

TxLayerRecord flagsOf(const CTxLayer &layer)
{
    TxLayerRecord record;
    record.alias = layer.GetDataSourceAlias();
    record.dataset = layer.GetDatasetName();
    record.visible = layer.IsVisible();
    record.selectable = layer.IsSelectable();
    record.snapable = layer.IsSnapable();
    record.editable = layer.IsEditable();
    record.editableLock = layer.IsEditableLock();
    record.style = layer.style();
    return record;
}

} // namespace

TxDataSourceRecord TxWorkspaceFile::toRecord(const CTxDataSource &dataSource,
                                             const TxWorkspacePrivate::FileEntry *entry, const QString &folder)
{
    TxDataSourceRecord record;
    record.alias = dataSource.GetAlias();
    record.engineType = dataSource.GetEngineType();
    record.options = dataSource.GetOpenOptions();
    if (entry) {
        // A storage that happens to be read-only now shall not be opened so for ever.
        const quint32 readOnly = CTxDataSource::OpenReadOnly;
        record.options = (record.options & ~readOnly) | (entry->record.options & readOnly);
        record.unknown = entry->record.unknown;
    }
    // A password that the program was given is not written; one that somebody wrote into the file stays there.
    const bool fromFile = entry && entry->record.path == dataSource.GetPath();
    record.path = TxPortablePath::toStored(
        fromFile ? dataSource.GetPath() : TxPortablePath::withoutPassword(dataSource.GetPath()), folder);
    return record;
}

QList<TxDataSourceRecord> TxWorkspaceFile::dataSourceRecords(const TxWorkspacePrivate &workspace, const QString &folder)
{
    QSet<const CTxDataSource *> open;
    for (int i = 0; i < workspace.dataSources.GetCount(); ++i)
        open.insert(workspace.dataSources.GetAt(i));

    QList<TxDataSourceRecord> records;
    QSet<const CTxDataSource *> written;
    for (const TxWorkspacePrivate::FileEntry &entry : workspace.fileEntries) {
        const CTxDataSource *dataSource = entry.dataSource;
        const bool isMissing = !dataSource;
        if (isMissing) // one that was opened under its alias takes its place
            dataSource = workspace.dataSources.find(entry.record.alias);
        if (open.contains(dataSource) && !written.contains(dataSource)) {
            // A new datasource may stand where a closed one stood in memory.
            const bool isSame =
                !isMissing && (dataSource->GetPath() == entry.record.path ||
                               TxPortablePath::withoutPassword(dataSource->GetPath()) == entry.record.path);
            records.append(toRecord(*dataSource, isSame ? &entry : nullptr, folder));
            written.insert(dataSource);
        } else if (isMissing && !dataSource) {
            records.append(entry.record);
            records.back().path = TxPortablePath::toStored(entry.record.path, folder);
        }
    }
    for (int i = 0; i < workspace.dataSources.GetCount(); ++i) {
        const CTxDataSource *dataSource = workspace.dataSources.GetAt(i);
        if (!written.contains(dataSource))
            records.append(toRecord(*dataSource, nullptr, folder));
    }
    return records;
}

TxMapRecord TxWorkspaceFile::toRecord(const CTxMap &map)
{
    TxMapRecord record;
    record.name = map.GetName();
    record.view = map.GetViewBounds();
    record.background = map.GetBackground();
    record.unknown = map.m_unknownXml;
    for (int i = 0; i < map.GetLayers().GetCount(); ++i) {
        const CTxLayer &layer = *map.GetLayers().GetLayerAt(i);
        record.layers.append(flagsOf(layer));
        record.layers.back().name = layer.m_name;
        record.layers.back().unknown = layer.m_unknownXml;
        record.layers.back().unknownColorset = layer.m_unknownColorset;
        record.layers.back().unknownGeoStyle = layer.m_unknownGeoStyle;
    }
    return record;
}

TxWorkspaceDocument TxWorkspaceFile::snapshot(const CTxWorkspace &workspace, const QString &path)
{
    const TxWorkspacePrivate &d = *workspace.d;
    TxWorkspaceDocument document;
    document.name = d.name;
    document.unknown = d.unknown;
    document.dataSources = dataSourceRecords(d, folderOf(path));
    for (int i = 0; i < d.maps.GetCount(); ++i)
        document.maps.append(toRecord(*d.maps.GetAt(i)));
    for (int i = 0; i < d.layouts.GetCount(); ++i) {
        const CTxLytStorage &layout = *d.layouts.GetAt(i);
        document.layouts.append({layout.GetName(), layout.GetContent(), layout.m_unknownXml});
    }
    for (int i = 0; i < d.scenes.GetCount(); ++i) {
        const CTxSceneStorage &scene = *d.scenes.GetAt(i);
        document.scenes.append({scene.GetName(), scene.GetContent(), scene.m_unknownXml});
    }
    return document;
}

void TxWorkspaceFile::buildMap(CTxMap &map, const TxMapRecord &record, const CTxDataSources &dataSources)
{
    map.m_viewBounds = record.view;
    map.m_background = record.background;
    map.m_unknownXml = record.unknown;
    for (auto at = record.layers.crbegin(); at != record.layers.crend(); ++at) { // Add() puts a layer on top
        auto layer = std::make_unique<CTxLayer>(&dataSources, at->alias, at->dataset);
        layer->m_name = at->name;
        layer->m_unknownXml = at->unknown;
        layer->m_unknownColorset = at->unknownColorset;
        layer->m_unknownGeoStyle = at->unknownGeoStyle;
        layer->m_style = at->style;
        layer->m_visible = at->visible;
        layer->m_selectable = at->selectable;
        layer->m_snapable = at->snapable;
        map.m_layers.Add(std::move(layer));
        if (at->editable)
            map.m_layers.SetEditableLayer(0);
        map.m_layers.GetLayerAt(0)->m_editableLock = at->editableLock;
    }
}

void TxWorkspaceFile::build(CTxWorkspace &workspace, const TxWorkspaceDocument &document, const QString &path)
{
    TxWorkspacePrivate &d = *workspace.d;
    d.name = document.name;
    d.unknown = document.unknown;
    const QString folder = folderOf(path);
    for (TxDataSourceRecord record : document.dataSources) {
        record.path = TxPortablePath::fromStored(record.path, folder);
        TxWorkspacePrivate::FileEntry entry{record, nullptr, QString()};
        entry.dataSource = d.dataSources.Open(record.path, record.alias, record.options);
        if (!entry.dataSource)
            entry.reason = TxGetErrorMsgObj().GetErrorMessage();
        d.fileEntries.append(entry);
    }
    for (const TxMapRecord &record : document.maps) {
        if (CTxMap *map = d.maps.Add(record.name))
            buildMap(*map, record, d.dataSources);
    }
    for (const TxContentRecord &record : document.layouts) {
        if (CTxLytStorage *layout = d.layouts.Add(record.name)) {
            layout->m_content = record.content;
            layout->m_unknownXml = record.unknown;
        }
    }
    for (const TxContentRecord &record : document.scenes) {
        if (CTxSceneStorage *scene = d.scenes.Add(record.name)) {
            scene->m_content = record.content;
            scene->m_unknownXml = record.unknown;
        }
    }
}

std::optional<TxWorkspaceDocument> TxWorkspaceFile::load(const QString &path, QString &error)
{
    const QFileInfo info(path);
    if (path.isEmpty()) {
        error = QStringLiteral("no path was given");
        return std::nullopt;
    }
    if (info.exists() && !info.isFile()) { // a folder, a device, a pipe
        error = QStringLiteral("it is no file");
        return std::nullopt;
    }
    if (info.size() > TxWorkspaceReader::maximumSize) {
        error = QStringLiteral("it is too large for a workspace file");
        return std::nullopt;
    }
    QFile file(path);
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (file.error() != QFileDevice::NoError) {
        error = file.errorString();
        return std::nullopt;
    }
    return TxWorkspaceReader::read(bytes, error);
}

bool TxWorkspaceFile::store(const QString &path, const QByteArray &bytes, QString &error)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) { // a folder, or a device, which a new file would replace
        error = QStringLiteral("it is no file");
        return false;
    }
    QSaveFile file(info.exists() ? info.canonicalFilePath() : path);
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() &&
                           ::fsync(file.handle()) == 0; // the content is on the disk before it gets the name
    if (isWritten && file.commit())
        return true;
    error = file.errorString();
    return false;
}
