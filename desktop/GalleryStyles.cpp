#include "GalleryStyles.h"

#include "DocumentArea.h"
#include "GalleryData.h"
#include "GalleryStage.h"
#include "LayerPane.h"
#include "LayerStyleDialog.h"
#include "MapWindow.h"
#include "WorkspaceDocument.h"
#include "controls/TdNumEdit.h"
#include "engine/data/TxDataSource.h"
#include "engine/map/TxMap.h"

#include <QFile>

using namespace GalleryStage;

namespace {

/// One layer of a made-up country; ids are those of the libraries.
struct LayerRow
{
    const char *name;
    const char *type;        ///< of its one GeoJSON geometry
    const char *coordinates; ///< of that
    qint32 style;
    QRgb colour;
    QRgb backColour;
    double size; ///< width of the line, tile of the fill, or size of the symbol
};

constexpr LayerRow country[] = {
    {"Land", "Polygon", "[[[0,0],[12,0],[12,8],[0,8],[0,0]]]", 0, 0xfff4f0e4, 0xffffffff, 8},
    {"Meadow", "Polygon", "[[[0.4,3.6],[3.4,3.2],[4.6,5],[3.2,7.4],[0.6,7.2],[0.4,3.6]]]", 22, 0xff6f9a4f, 0xffe6efd2,
     22},
    {"Wood", "Polygon", "[[[5,4.6],[7.4,4.9],[8.6,6.4],[7.9,7.6],[5.6,7.5],[4.8,6],[5,4.6]]]", 19, 0xff4d8a57,
     0xffcfe4c8, 22},
    {"Marsh", "Polygon", "[[[8.6,0.6],[11.4,0.5],[11.7,2.2],[9.9,2.9],[8.6,2],[8.6,0.6]]]", 23, 0xff3b7fa8, 0xffe3eee9,
     20},
    {"Vineyard", "Polygon", "[[[0.6,0.5],[2.9,0.5],[3,2],[1,2.4],[0.6,0.5]]]", 24, 0xff8a5a83, 0xfff2e6ee, 18},
    {"Lake", "Polygon", "[[[9.2,4.2],[10.6,3.9],[11.6,4.8],[11.4,6.3],[10.1,6.9],[9.1,6],[9.2,4.2]]]", -2, 0xff4f95c9,
     0xffcfe6f5, 8},
    {"Power line", "LineString", "[[0.3,7.7],[4.6,5.6],[8.6,3.6],[11.8,3.3]]", 16, 0xff59606b, 0xffffffff, 1.1},
    {"Embankment", "LineString", "[[0.6,2.8],[2,2.9],[3.4,2.5],[4.6,2.6]]", 21, 0xff8a6a45, 0xffffffff, 1.2},
    {"Border", "LineString", "[[5.2,0],[5.6,1.2],[7.2,2],[7.7,3.2],[9,3.4],[12,2.9]]", 29, 0xffa0528d, 0xffffffff, 1.4},
    {"Railway", "LineString", "[[0,1.2],[2.6,2.2],[4.2,3.9],[6.9,4.3],[8.9,6.9],[9.3,8]]", 12, 0xff333333, 0xffffffff,
     1.2},
    {"Road", "LineString", "[[0,5.4],[2.5,4.4],[4.4,3.3],[7.4,2.9],[8.4,1],[8.2,0]]", 8, 0xff9a6b35, 0xfff7d488, 1.1},
    {"Motorway", "LineString", "[[3.4,0],[3.9,2.2],[5.9,3.7],[8.6,3.9],[12,7.4]]", 9, 0xffb5403a, 0xffffc9a3, 1.2},
    {"Capital", "Point", "[4.5,3.4]", 14, 0xffb02a2a, 0xffffffff, 24},
    {"Castle", "Point", "[6.6,6.3]", 20, 0xff5d4037, 0xffffffff, 20},
    {"Church", "Point", "[1.9,5.9]", 16, 0xff37474f, 0xffffffff, 20},
    {"Airport", "Point", "[6.8,1]", 26, 0xff34557a, 0xffffffff, 22},
    {"Lighthouse", "Point", "[9.9,4.8]", 28, 0xff34557a, 0xffffffff, 20},
    {"Summit", "Point", "[10.8,7.3]", 39, 0xff7a4b28, 0xffffffff, 18},
};

CTxGeoStyle styleOf(const LayerRow &row)
{
    CTxGeoStyle style = plainStyle(QColor(0x8c, 0x90, 0x86), QColor::fromRgba(row.colour), 0.8, 6);
    if (row.style < 0) {
        style.fillGradient = static_cast<TxGradientKind>(-row.style);
    } else {
        style.fillStyle = row.style;
        style.symbolStyle = row.style;
    }
    style.fillBackColor = style.lineBackColor = style.symbolOutlineColor = QColor::fromRgba(row.backColour);
    style.fillSize = style.symbolSize = row.size;
    style.symbolOutlineWidth = 1.5;
    if (qstrcmp(row.type, "LineString") == 0) {
        style.lineStyle = row.style;
        style.lineColor = QColor::fromRgba(row.colour);
        style.lineWidth = row.size;
    }
    return style;
}

QString write(const QTemporaryDir &folder, const LayerRow &row)
{
    QFile file(folder.filePath(QStringLiteral("%1.geojson").arg(QLatin1String(row.name))));
    if (file.open(QIODevice::WriteOnly))
        file.write(QByteArray(R"({"type":"FeatureCollection","features":[{"type":"Feature","properties":{"name":")") +
                   row.name + R"("},"geometry":{"type":")" + row.type + R"(","coordinates":)" + row.coordinates +
                   "}}]}");
    return file.fileName();
}

} // namespace

QPixmap GalleryStyles::drawDialog(CElemDatasetInfo::Type kind, bool isWrong)
{
    TxLayerStyle style;
    style.geoStyle = styleOf(country[kind == CElemDatasetInfo::Point ? 12 : 2]);
    style.geoStyle.lineStyle = 12;
    style.geoStyle.lineColor = QColor(0x33, 0x33, 0x33);
    LayerStyleDialog dialog(QStringLiteral("Woods"), kind, style, QColor(0xf4, 0xf0, 0xe4));
    if (isWrong)
        dialog.findChildren<CTdNumEdit *>().last()->clear();
    dialog.resize(dialog.sizeHint()); // a small screen at twice the size would limit it
    return photograph(dialog);
}

QPixmap GalleryStyles::drawMap(const GalleryData &)
{
    Stage stage({});
    stage.window.show();
    DocumentArea &area = stage.window.documentArea();
    MapWindow *view = area.showMap(stage.window.document().addMap(QStringLiteral("Country"))->GetName());
    for (const LayerRow &row : country) {
        stage.window.openFiles({write(stage.folder, row)}, false);
        const CTxDataSources &sources = stage.window.document().workspace().GetDataSources();
        area.addToMap(sources.GetAt(sources.GetCount() - 1)->GetDatasetAt(0), view);
        CTxLayers &layers = view->map()->GetLayers();
        for (int i = 0; i < layers.GetCount(); ++i) {
            CTxLayer *layer = layers.GetLayerAt(i);
            if (layer->GetDataSourceAlias() != QLatin1String(row.name))
                continue;
            TxLayerStyle style = layer->style();
            style.geoStyle = styleOf(row);
            layer->setStyle(style);
            layer->SetName(QLatin1String(row.name));
        }
    }
    area.refreshMaps();
    stage.window.layerPane().refresh();
    area.fitAll();
    return photograph(stage.window);
}
