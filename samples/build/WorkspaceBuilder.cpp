#include "WorkspaceBuilder.h"

#include "SampleTable.h"

#include "engine/base/TxErrorMsg.h"
#include "engine/data/TxDataset.h"
#include "engine/map/TxWorkspace.h"
#include "engine/symbol/TxColorFolder.h"
#include "engine/symbol/TxStockGradient.h"

#include <QFile>

namespace {

constexpr const char *database = "Terravox";

/// A stock ramp over a range of heights.
struct HeightSample
{
    TxStockGradient ramp;
    double floor;
    double ceiling;
    qint32 count;   ///< of colours
    bool stepped;   ///< not blended
    double opacity; ///< of the layer
};

/// A layer of a sample map; colours are 0xAARRGGBB.
struct LayerSample
{
    const char *alias;
    const char *dataset; ///< null for the datasource's first
    QRgb line;
    QRgb fill;
    double lineWidth;
    double symbolSize;
    const char *labelField; ///< null for none
    bool selectable;
    const HeightSample *heights = nullptr; ///< null for none
    qint32 lineStyle = 0;                  ///< id in CTxLineStyleLib
    qint32 symbolStyle = 0;                ///< id in CTxSymbolLib
};

constexpr qint32 dashed = 1, longDashed = 5; // lines
constexpr qint32 ringWithDot = 2, tower = 24, harbour = 27, summit = 39;

struct MapSample
{
    const char *name;
    QRgb background;
    CRect2D view;
    std::span<const LayerSample> layers; ///< from the bottom to the top
};

constexpr LayerSample worldLayers[] = {
    {database, "Graticule", 0xffb4c6d4, 0x00000000, 0.7, 6, nullptr, false},
    {database, "Countries", 0xffa89b80, 0xfff1ead8, 0.8, 6, nullptr, true},
    {database, "Rivers", 0xff7aa9cf, 0x00000000, 0.8, 6, nullptr, true},
    {database, "TimeZoneCities", 0xff8a8f98, 0xff8a8f98, 0.5, 3, nullptr, true},
    {database, "LargeCities", 0xffffffff, 0xffc0392b, 1.0, 10, "Name", true, nullptr, 0, ringWithDot},
};

// The sea level is in the middle, and between two steps: the shore is sharp.
constexpr HeightSample seaAndLand = {TxStockGradient::Hypsometric, -2400, 2400, 240, true, 1.0};
constexpr HeightSample hills = {TxStockGradient::Elevation, 200, 1100, 64, false, 1.0};
constexpr HeightSample slopes = {TxStockGradient::Elevation, 200, 1100, 64, false, 0.5}; // their faces shine through

constexpr LayerSample salishLayers[] = {
    {"ReliefPicture", nullptr, 0xff404040, 0x00000000, 1.0, 6, nullptr, false},
    {"ReliefGrid", nullptr, 0xff404040, 0x00000000, 1.0, 6, nullptr, false, &seaAndLand},
    {database, "SheetIndex", 0x60405060, 0x00000000, 0.6, 6, nullptr, false, nullptr, longDashed},
    {database, "Coast", 0xff4a5d6e, 0x00000000, 0.7, 6, nullptr, true},
    {database, "Ferries", 0xff8e2c63, 0x00000000, 1.6, 6, nullptr, true, nullptr, dashed},
    {database, "Ferries_Node", 0xffffffff, 0xff8e2c63, 1.2, 14, nullptr, true, nullptr, 0, harbour},
    {database, "Stations", 0xffffffff, 0xff12395c, 1.0, 11, nullptr, true, nullptr, 0, tower},
    {database, "Labels", 0xff22303c, 0x00000000, 1.0, 6, nullptr, true},
};

constexpr LayerSample jacksboroLayers[] = {
    {database, "Surface", 0xff404040, 0x00000000, 1.0, 6, nullptr, false, &hills},
    {database, "Terrain", 0xff404040, 0x00000000, 1.0, 6, nullptr, false, &slopes},
    {database, "Contours3D", 0x808a5a33, 0x00000000, 0.6, 6, nullptr, true},
    {database, "Summits3D", 0xffffffff, 0xff5b2c1f, 1.0, 12, nullptr, true, nullptr, 0, summit},
    {database, "SummitLabels3D", 0xff22303c, 0x00000000, 1.0, 6, nullptr, true},
};

constexpr MapSample maps[] = {
    {"World", 0xffdcebf5, {-180, -90, 180, 90}, worldLayers},
    {"Salish Sea", 0xffffffff, {276000, 5315000, 576000, 5543000}, salishLayers},
    {"Jacksboro Fault", 0xffffffff, {732000, 4037640, 761040, 4067160}, jacksboroLayers},
};

TxLayerStyle styleOf(const LayerSample &sample)
{
    TxLayerStyle style;
    style.geoStyle =
        plainStyle(QColor::fromRgba(sample.line), QColor::fromRgba(sample.fill), sample.lineWidth, sample.symbolSize);
    style.geoStyle.lineStyle = sample.lineStyle;
    style.geoStyle.symbolStyle = sample.symbolStyle;
    style.labelField = QString::fromUtf8(sample.labelField);
    if (const HeightSample *heights = sample.heights) {
        CTxColorFolder ramp;
        ramp.MakeStockGradient(heights->count, static_cast<qint32>(heights->ramp));
        for (const COLORREF color : ramp.GetColors())
            style.colors.AddColor(color);
        style.colors.SetZFloor(heights->floor);
        style.colors.SetZCeiling(heights->ceiling);
        style.stepped = heights->stepped;
        style.opacity = heights->opacity;
    }
    return style;
}

/// A landscape page with the map of the region, its title, and the map of the world as a key.
const char layoutContent[] = R"(<layout units="mm" width="297" height="210" margin="12">
  <map name="Salish Sea" x="12" y="26" width="205" height="160" frame="0.3"/>
  <map name="World" x="225" y="136" width="60" height="50" frame="0.3"/>
  <legend map="Salish Sea" x="225" y="30" width="60" height="98"/>
  <scalebar map="Salish Sea" x="16" y="176" width="60" unit="km"/>
  <northarrow x="203" y="30" size="10"/>
  <text x="12" y="19" size="18" bold="true">The Salish Sea</text>
  <text x="12" y="199" size="8">Shorelines: GSHHG. Relief: topobathy grid of Matplotlib's samples. Not for navigation.</text>
</layout>
)";

/// The terrain of the Jacksboro fault seen from the south-east.
const char sceneContent[] = R"(<scene coordsys="EPSG:32616" exaggeration="2">
  <camera x="775000" y="4025000" z="14000" heading="318" tilt="62"/>
  <light azimuth="315" altitude="40"/>
  <surface datasource="Terravox" dataset="Surface" colour="#C8D6B9"/>
  <layer datasource="Terravox" dataset="Steps3D" line="#8A6D4B" fill="#80D9C29C"/>
  <layer datasource="Terravox" dataset="Contours3D" line="#8A5A33" width="0.8"/>
  <layer datasource="Terravox" dataset="Summits3D" fill="#C0392B" size="7"/>
  <layer datasource="Terravox" dataset="SummitLabels3D" line="#22303C"/>
</scene>
)";

} // namespace

bool WorkspaceBuilder::fail(const QString &where)
{
    m_error = where + QStringLiteral(": ") + TxGetErrorMsgObj().GetErrorMessage();
    return false;
}

bool WorkspaceBuilder::build(const QString &path)
{
    CTxWorkspace workspace;
    workspace.SetName(QStringLiteral("Terravox samples"));
    if (!openSources(workspace) || !addMaps(workspace) || !addLayout(workspace) || !addScene(workspace))
        return false;
    QFile::remove(path);
    return workspace.SaveAs(path) || fail(path);
}

bool WorkspaceBuilder::openSources(CTxWorkspace &workspace)
{
    CTxDataSources &sources = workspace.GetDataSources();
    if (!sources.Open(m_folder + QStringLiteral("/terravox.tdb"), QString::fromUtf8(database)))
        return fail(QString::fromUtf8(database));
    for (const SourceSample &sample : sourceSamples()) {
        const QString path = m_folder + u'/' + QString::fromUtf8(sample.path);
        if (!sources.Open(path, QString::fromUtf8(sample.alias), CTxDataSource::Normal | CTxDataSource::OpenReadOnly))
            return fail(path);
    }
    return true;
}

bool WorkspaceBuilder::addMaps(CTxWorkspace &workspace)
{
    const CTxDataSources &sources = workspace.GetDataSources();
    for (const MapSample &sample : maps) {
        CTxMap *map = workspace.GetMaps().Add(QString::fromUtf8(sample.name));
        if (!map)
            return fail(QString::fromUtf8(sample.name));
        map->SetBackground(QColor::fromRgba(sample.background));
        map->SetViewBounds(sample.view);
        for (const LayerSample &row : sample.layers) {
            const QString alias = QString::fromUtf8(row.alias);
            CTxDataSource *source = sources.find(alias);
            CTxDataset *dataset = !source       ? nullptr
                                  : row.dataset ? source->GetDataset(QString::fromUtf8(row.dataset))
                                                : source->GetDatasetAt(0);
            if (!dataset)
                return fail(alias + u'.' + QString::fromUtf8(row.dataset));
            CTxLayer *layer = map->GetLayers().Add(std::make_unique<CTxLayer>(&sources, alias, dataset->GetName()));
            layer->setStyle(styleOf(row));
            layer->SetSelectable(row.selectable);
            layer->SetSnapable(row.selectable);
        }
    }
    return true;
}

bool WorkspaceBuilder::addLayout(CTxWorkspace &workspace)
{
    CTxLytStorage *layout = workspace.GetLytStorages().Add(QStringLiteral("Salish Sea A4"));
    if (!layout)
        return fail(QStringLiteral("layout"));
    layout->SetContent(QString::fromUtf8(layoutContent));
    return true;
}

bool WorkspaceBuilder::addScene(CTxWorkspace &workspace)
{
    CTxSceneStorage *scene = workspace.GetScenes().Add(QStringLiteral("Jacksboro fault"));
    if (!scene)
        return fail(QStringLiteral("scene"));
    scene->SetContent(QString::fromUtf8(sceneContent));
    return true;
}
