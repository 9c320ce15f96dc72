#include "GalleryData.h"

#include "AttributeTable.h"
#include "DocumentArea.h"
#include "MainWindow.h"
#include "MapWindow.h"
#include "OutputPane.h"
#include "WorkspaceDocument.h"
#include "WorkspacePane.h"
#include "engine/data/DatasetVector.h"
#include "engine/map/TxMapWnd.h"
#include "workspace/WorkspaceBarTree.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace {

// A made-up island with a river and three towns.
constexpr const char *regions =
    R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"name":"North","area_km2":412.5,"mayor":null},"geometry":{"type":"Polygon","coordinates":[[[10,54],[10.6,54.2],[11.3,54.1],[11.5,53.8],[10.8,53.7],[10.1,53.75],[10,54]]]}},
{"type":"Feature","properties":{"name":"South","area_km2":287.25,"mayor":"A. Lund"},"geometry":{"type":"Polygon","coordinates":[[[10.1,53.75],[10.8,53.7],[11.5,53.8],[11.4,53.5],[10.9,53.3],[10.3,53.4],[10.1,53.75]]]}}]})";
constexpr const char *lines =
    R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"name":"Aa","length_km":61.3},"geometry":{"type":"LineString","coordinates":[[10.5,54.05],[10.6,53.9],[10.9,53.8],[10.8,53.6],[11,53.4]]}}]})";
constexpr const char *points =
    R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"name":"Havn","population":18250,"founded":"1231"},"geometry":{"type":"Point","coordinates":[10.9,54.05]}},
{"type":"Feature","properties":{"name":"Midby","population":4300,"founded":null},"geometry":{"type":"Point","coordinates":[10.85,53.75]}},
{"type":"Feature","properties":{"name":"Sund","population":9120,"founded":"1640"},"geometry":{"type":"Point","coordinates":[10.6,53.45]}}]})";

} // namespace

GalleryData::GalleryData(const QStringList &files) : m_files(files)
{
    if (m_files.isEmpty() && !sampleWorkspace().isEmpty())
        m_files << sampleWorkspace();
    if (m_files.isEmpty())
        m_files << write(QStringLiteral("districts.geojson"), regions) << write(QStringLiteral("rivers.geojson"), lines)
                << write(QStringLiteral("towns.geojson"), points);
}

QString GalleryData::write(const QString &name, const QByteArray &content) const
{
    QFile file(m_folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        return {};
    return file.fileName();
}

QString GalleryData::workspaceWithMissing() const
{
    const QString path = m_folder.filePath(QStringLiteral("field-trip.txw"));
    CTxWorkspace workspace;
    for (const char *name : {"stations.geojson", "boundaries.geojson", "archive.geojson"}) {
        const QString file = write(QLatin1String(name), points);
        workspace.GetDataSources().Open(file);
    }
    workspace.SaveAs(path);
    workspace.Close();
    for (const char *name : {"stations.geojson", "boundaries.geojson", "archive.geojson"})
        QFile::remove(m_folder.filePath(QLatin1String(name)));
    return path;
}

QString GalleryData::sampleWorkspace()
{
    const QString program = QCoreApplication::applicationDirPath();
    const QStringList places{program + QStringLiteral("/../share/terravox/samples/world.txw"),
                             QStringLiteral(TD_SOURCE_DIR "/samples/world.txw")};
    for (const QString &place : places)
        if (QFile::exists(place))
            return QDir::cleanPath(place);
    return {};
}

void GalleryData::populate(MainWindow &window)
{
    CTxWorkspace &workspace = window.document().workspace();
    DocumentArea &area = window.documentArea();
    const CTxDataSources &sources = workspace.GetDataSources();
    CDatasetVector *table = nullptr;
    const bool hasMaps = workspace.GetMaps().GetCount() > 0;
    for (int s = 0; s < sources.GetCount(); ++s) {
        for (qint32 i = 0; i < sources.GetAt(s)->GetDatasetCount(); ++i) {
            CTxDataset *dataset = sources.GetAt(s)->GetDatasetAt(i);
            if (!hasMaps)
                area.addToMap(dataset);
            if (!table && dataset->GetType() == CElemDatasetInfo::Point)
                table = static_cast<CDatasetVector *>(dataset);
        }
    }
    if (hasMaps)
        area.showMap(workspace.GetMaps().GetAt(0)->GetName());
    area.showTable(table);
    area.step(-1);
    if (sources.GetCount() > 0) {
        QTreeWidgetItem *first = window.workspacePane().tree()->FindHTreeItem(sources.GetAt(0)->GetAlias(), QString(),
                                                                              CTdOleDataNode::ItemDataSource, 0);
        first->setExpanded(true);
        window.workspacePane().tree()->scrollToTop();
    }
    for (MapWindow *view : area.maps())
        view->canvas()->FinishDrawing();
}
