#include "tests/engine/map/MapWndFixture.h"

#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/GeoLine.h"
#include "engine/geometry/GeoPoint.h"
#include "engine/geometry/GeoRegion.h"
#include "engine/geometry/GeoText.h"
#include "engine/projection/TxPJCoordSys.h"

#include <ogr_spatialref.h>

namespace {

class MapWndDrawing : public MapWndFixture
{
protected:
    /// How many pixels of the picture are as @p wanted says.
    template<typename Wanted>
    int count(Wanted wanted) const
    {
        int found = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                found += wanted(picture.pixel(x, y));
        }
        return found;
    }
};

/// Red from 20, green from 40, blue from 60 to 80.
TxLayerStyle coloured()
{
    TxLayerStyle style;
    style.colors.SetZFloor(20);
    style.colors.SetZCeiling(80);
    for (const COLORREF color : {0x0000FFU, 0x00FF00U, 0xFF0000U})
        style.colors.AddColor(color);
    style.stepped = true;
    return style;
}

/// Styles of a library, in red and blue.
CTxGeoStyle styled(qint32 line, qint32 fill, qint32 symbol)
{
    CTxGeoStyle style = plainStyle(QColor(0, 0, 0xff), QColor(0xff, 0, 0), 3, 40);
    style.lineStyle = line;
    style.lineBackColor = Qt::green;
    style.fillStyle = fill;
    style.fillBackColor = Qt::green;
    style.fillSize = 20;
    style.symbolStyle = symbol;
    return style;
}

TEST_F(MapWndDrawing, RegionsHaveHolesAndOutlines)
{
    add(data.writeSquare("square"), "square");
    draw();
    expect({{2, 2, red},
            {8, 8, red},
            {5, 5, paper, "in the hole"},
            {-2, 5, paper},
            {0, 5, blue},
            {4, 5, blue, "the hole's edge"}});
}

TEST_F(MapWndDrawing, EveryKindOfGeometryIsSeen)
{
    const QByteArray point = R"({"type":"Point","coordinates":[1,1]})";
    const QByteArray line = R"({"type":"LineString","coordinates":[[0,5],[10,5]]})";
    const QByteArray lines = R"({"type":"MultiLineString","coordinates":[[[0,7,9],[10,7,9]],[[0,8,1],[10,8,1]]]})";
    const QByteArray region = R"({"type":"Polygon","coordinates":[[[6,0],[9,0],[9,3],[6,3],[6,0]]]})";
    const QByteArray mixed =
        R"({"type":"GeometryCollection","geometries":[{"type":"MultiPoint","coordinates":[[1,11],[3,11,5]]},)"
        R"({"type":"GeometryCollection","geometries":[{"type":"LineString","coordinates":[[5,11],[10,11]]}]}]})";
    add(data.writeGeoJson("cad", {point, line, lines, region, mixed}), "cad");
    draw();
    expect({{1, 1, red, "point"},
            {5, 5, blue, "line"},
            {5, 7, blue, "lines in space"},
            {5, 8, blue, "lines in space"},
            {7.5, 1.5, red, "region"},
            {1, 11, red, "points of a collection"},
            {3, 11, red, "points of a collection"},
            {7, 11, blue, "line of a collection in a collection"},
            {3, 3, paper}});
}

TEST_F(MapWndDrawing, LayersHaveTheStylesOfTheLibraries)
{
    constexpr qint32 road = 8, ring = 1, noFill = 1, checks = 11;
    CTxLayer *layer =
        add(data.writeGeoJson("cad", {R"({"type":"Point","coordinates":[-2,12]})",
                                      R"({"type":"LineString","coordinates":[[-4,-2],[14,-2]]})",
                                      R"({"type":"Polygon","coordinates":[[[0,0],[10,0],[10,10],[0,10],[0,0]]]})"}),
            "cad");
    const auto drawAs = [&](const CTxGeoStyle &geoStyle) {
        TxLayerStyle style;
        style.geoStyle = geoStyle;
        layer->setStyle(style);
        draw();
    };
    drawAs(styled(road, noFill, ring));
    expect({{5, -2, Qt::green, "between the casings"},
            {5, -1.5, blue, "the road's edge"},
            {0, 5, Qt::green, "the region's edge is a road too"},
            {5, 5, paper, "no fill"},
            {-2, 12, paper, "in the ring"},
            {-3.1, 12, red, "the ring"}});
    drawAs(styled(0, checks, 0));
    const int area = 150 * 150; // pixels
    EXPECT_NEAR(count([](QRgb pixel) { return pixel == qRgb(0, 255, 0); }), area / 2, area / 10);
    expect({{5, -2, blue}, {-2, 12, red, "a circle"}});

    CTxGeoStyle gradient = styled(0, 0, 0);
    gradient.fillGradient = TxGradientKind::Linear;
    drawAs(gradient);
    const QColor left = at(0.5, 5), right = at(9.5, 5);
    EXPECT_GT(left.red(), 200);
    EXPECT_GT(right.green(), 200);
    wnd.SetViewBounds(CRect2D(0, 0, 1, 1));
    refresh();
    EXPECT_TRUE(isNear(at(0.5, 0.5), left)) << "a part has the colours of its place in the whole";
}

/// Else they would crawl while a map is moved, and jump at the end.
TEST_F(MapWndDrawing, PatternsOfLinesAndRegionsMoveWithTheMap)
{
    constexpr qint32 railway = 12, bricks = 17;
    const QByteArray huge = R"({"type":"Polygon","coordinates":[[[-900,3],[900,3],[900,900],[-900,900],[-900,3]]]})";
    for (const double angle : {0.0, 30.0}) {
        const QByteArray alias = QByteArray::number(angle);
        CTxLayer *layer = add(data.writeGeoJson(alias.constData(), {huge}), alias.constData());
        TxLayerStyle style;
        style.geoStyle = styled(railway, bricks, 0);
        style.geoStyle.fillAngle = angle;
        layer->setStyle(style);
        draw();
        const QImage before = picture;
        constexpr QPoint way(37, -23);
        wnd.Pan(way);
        refresh();
        const QRect inner = picture.rect().adjusted(60, 60, -60, -60);
        int different = 0;
        for (int y = inner.top(); y <= inner.bottom(); ++y) {
            for (int x = inner.left(); x <= inner.right(); ++x)
                different += !isNear(picture.pixelColor(QPoint(x, y) + way), before.pixelColor(x, y), 40);
        }
        EXPECT_LT(different, inner.width() * inner.height() / 200) << angle;
    }
}

TEST_F(MapWndDrawing, UpperLayersCoverLowerOnesAndHiddenOnesAreNotSeen)
{
    const QString square = data.writeSquare("square");
    add(square, "below", style(red, red));
    CTxLayer *above = add(square, "above", style(blue, blue));
    draw();
    expect({{2, 2, blue}});
    map->GetLayers().Move(0, 1);
    draw();
    expect({{2, 2, red}});
    map->GetLayers().Move(0, 1);
    TxLayerStyle half = above->style();
    half.opacity = 0.5;
    above->setStyle(half);
    draw();
    expect({{2, 2, QColor(0x80, 0, 0x80)}});
    above->SetVisible(false);
    refresh();
    expect({{2, 2, red}});
}

TEST_F(MapWndDrawing, LabelsAreWritten)
{
    TxLayerStyle labelled = style(Qt::transparent, Qt::transparent, 1);
    CTxLayer *layer = add(data.writeGrid("grid", 2), "grid");
    const auto darkPixels = [&](const char *field) {
        labelled.labelField = field;
        layer->setStyle(labelled);
        draw();
        return count([](QRgb pixel) { return qGray(pixel) < 80; });
    };
    const int without = darkPixels("no_such_field");
    const int with = darkPixels("name");
    EXPECT_GT(with, without + 40);
    EXPECT_LT(with, without + 4000) << "labels do not cover one another";
}

TEST_F(MapWndDrawing, LayersOfAnotherCoordinateSystemLieWhereTheyBelong)
{
    add(data.writeSquare("square"), "square");
    // The same square from (2, 2) to (8, 8) degrees, in metres.
    const QByteArray metres =
        R"({"type":"FeatureCollection","name":"metres","crs":{"type":"name","properties":{"name":"urn:ogc:def:crs:EPSG::3857"}},)"
        R"("features":[{"type":"Feature","properties":{},"geometry":{"type":"Polygon","coordinates":)"
        R"([[[222639,222684],[890556,222684],[890556,893464],[222639,893464],[222639,222684]]]}}]})";
    add(data.write("metres.geojson", metres), "metres", style(Qt::green, Qt::green, 1));
    draw();
    expect({{5, 5, Qt::green}, {2.2, 7.8, Qt::green}, {1.5, 1.5, red}, {8.5, 8.5, red}});
    const CRect2D all = map->GetBounds();
    EXPECT_NEAR(all.right, 10, 1e-9);
    EXPECT_NEAR(all.left, 0, 1e-9);
}

/// At the bottom of the map, in a database whose other datasets lie in degrees.
TEST_F(MapWndDrawing, ALayerWithoutACoordinateSystemKeepsNoOtherFromDrawing)
{
    CTxDataSource *database =
        workspace.GetDataSources().Create(data.path("all.tdb"), "all", CTxDataSourceStorage::Native);
    ASSERT_TRUE(database);
    const auto make = [&](const char *name, const char *coordSys, const CGeoPoint &place, const QColor &color) {
        CTxDatasetDef definition;
        definition.name = name;
        definition.type = CElemDatasetInfo::Point;
        definition.coordSys = coordSys;
        auto *dataset = dynamic_cast<CDatasetVector *>(database->CreateDataset(definition));
        ASSERT_TRUE(dataset && dataset->Open()) << name;
        CTxRecordset *records = dataset->Query(CTxQueryDef());
        ASSERT_TRUE(records && records->AddNew() && records->SetGeometry(&place) && records->Update()) << name;
        dataset->ReleaseRecordset(records);
        map->GetLayers()
            .Add(std::make_unique<CTxLayer>(&workspace.GetDataSources(), "all", definition.name))
            ->setStyle(style(color, color));
    };
    make("Degrees", "EPSG:4326", CGeoPoint(-123, 48.75), Qt::green); // 500000, 5399600 or so
    make("Metres", "EPSG:32610", CGeoPoint(500000, 5400000), red);
    make("Plan", "", CGeoPoint(500400, 5400000), blue);
    const int bottom = map->GetLayers().GetCount() - 1;
    ASSERT_TRUE(map->GetLayers().Move(bottom, 0));
    ASSERT_TRUE(map->GetLayers().Move(1, bottom));
    wnd.SetMap(map);
    wnd.FinishDrawing();
    picture = wnd.grab().toImage();
    CTxPJCoordSys utm;
    map->GetProjection(utm);
    EXPECT_EQ(utm.GetDistUnits(), 10000) << "metres";
    const CRect2D all = map->GetBounds();
    expect({{500000, 5400000, red}, {500400, 5400000, blue}, {500000, all.bottom, Qt::green}});
}

TEST_F(MapWndDrawing, RastersAreDrawnInTheirPlace)
{
    CTxLayer *layer =
        add(data.write("grid.asc",
                       "ncols 2\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 5\nNODATA_value -9\n1 -9\n50 100\n"),
            "grid");
    draw();
    EXPECT_FALSE(isNear(at(2.5, 2.5), paper));
    EXPECT_FALSE(isNear(at(2.5, 7.5), paper));
    EXPECT_FALSE(isNear(at(2.5, 2.5), at(7.5, 2.5))) << "other heights, other colours";
    expect({{7.5, 7.5, paper, "no data"}, {12, 5, paper}, {-1, 5, paper}});
    layer->setStyle(coloured());
    refresh();
    expect({{2.5, 7.5, red, "below"}, {2.5, 2.5, Qt::green}, {7.5, 2.5, blue}, {7.5, 7.5, paper}});
}

TEST_F(MapWndDrawing, RastersOfAnotherCoordinateSystemLieWhereTheyBelong)
{
    add(data.writeSquare("square"), "square");
    // From (0, 0) to about (9, 9) degrees, in metres; the western half low, the eastern high.
    OGRSpatialReference mercator;
    mercator.importFromEPSG(3857);
    char *wkt = nullptr;
    mercator.exportToWkt(&wkt);
    data.write("metres.prj", wkt);
    CPLFree(wkt);
    add(data.write("metres.asc",
                   "ncols 2\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 500000\nNODATA_value -9\n1 100\n1 100\n"),
        "metres");
    draw();
    const QColor west = at(2, 2);
    EXPECT_FALSE(isNear(west, red)) << "it lies above the square";
    expect({{4, 8, west}});
    EXPECT_FALSE(isNear(at(5, 5), west)) << "the border is at 4.49 degrees";
    expect({{9.5, 9.5, red, "it ends at 8.98 degrees"}});
}

TEST_F(MapWndDrawing, KindsThatOnlyTheDatabaseHoldsAreDrawn)
{
    CTxDataSource *database =
        workspace.GetDataSources().Create(data.path("kinds.tdb"), "kinds", CTxDataSourceStorage::Native);
    ASSERT_TRUE(database);
    const auto make = [&](const char *name, CElemDatasetInfo::Type type, const CElemGeometry &geometry) {
        CTxDatasetDef definition;
        definition.name = name;
        definition.type = type;
        auto *dataset = dynamic_cast<CDatasetVector *>(database->CreateDataset(definition));
        ASSERT_TRUE(dataset && dataset->Open()) << name;
        CTxRecordset *records = dataset->Query(CTxQueryDef());
        ASSERT_TRUE(records && records->AddNew() && records->SetGeometry(&geometry) && records->Update()) << name;
        dataset->ReleaseRecordset(records);
        CTxLayer *layer =
            map->GetLayers().Add(std::make_unique<CTxLayer>(&workspace.GetDataSources(), "kinds", definition.name));
        layer->setStyle(style(red, blue));
    };
    CGeoRegion surface; // a low face in the south-west, a high one in the north-east
    const CPoint2D low[] = {{0, 0}, {10, 0}, {0, 10}};
    const CPoint2D high[] = {{10, 0}, {10, 10}, {0, 10}};
    const double lowZ[] = {0, 0, 0};
    const double highZ[] = {100, 100, 100};
    surface.AddSubPolygon(low, 3, lowZ);
    surface.AddSubPolygon(high, 3, highZ);
    make("surface", CElemDatasetInfo::TIN, surface);
    make("text", CElemDatasetInfo::Text, CGeoText(CPoint2D(0, 11), "MMMM", 0, 1.5));
    const CPoint2D ends[] = {{-4, -2}, {14, -2}};
    CGeoLine edge;
    edge.MakePolyline(ends, 2);
    make("net", CElemDatasetInfo::Network, edge);
    make("space", CElemDatasetInfo::Point3D, CGeoPoint(-3, 5, 17));
    draw();
    EXPECT_FALSE(isNear(at(2, 2), paper));
    EXPECT_FALSE(isNear(at(2, 2), at(8, 8), 25)) << "heights have colours";
    EXPECT_FALSE(isNear(at(2, 2), red)) << "and the layer's fill is not among them";
    int inked = 0;
    for (double x = 0; x < 5; x += 0.05)
        inked += !isNear(at(x, 11.7), paper, 60);
    EXPECT_GT(inked, 15) << "letters of the map's size";
    expect({{12, 11.7, paper}, {5, -2, blue, "the network's edge"}, {-3, 5, red, "the point in space"}});
    map->GetLayers().GetLayerAt(map->GetLayers().GetCount() - 1)->setStyle(coloured());
    refresh();
    expect({{2, 2, red}, {8, 8, blue}});
}

TEST_F(MapWndDrawing, WithoutAnythingToShowItSaysSo)
{
    for (CTxMap *shown : {static_cast<CTxMap *>(nullptr), map}) {
        wnd.SetMap(shown);
        EXPECT_EQ(wnd.Refresh(), shown != nullptr);
        wnd.FinishDrawing();
        wnd.Zoom(2);
        wnd.Pan(QPointF(5, 5));
        wnd.FitAll();
        EXPECT_TRUE(wnd.GetViewBounds().IsVoid());
        picture = wnd.grab().toImage();
        const QRgb corner = picture.pixel(0, 0);
        EXPECT_GT(count([corner](QRgb pixel) { return pixel != corner; }), 50);
    }
    EXPECT_FALSE(wnd.accessibleName().isEmpty());
}

TEST_F(MapWndDrawing, ThePaperIsThePalettesUnlessTheMapHasItsOwn)
{
    add(data.writeSquare("square"), "square", style(Qt::transparent, QColor(0x30, 0x30, 0x30)));
    QPalette dark = wnd.palette();
    dark.setColor(QPalette::Base, QColor(0x20, 0x20, 0x20));
    wnd.setPalette(dark);
    draw();
    expect({{-2, 5, paper}, {0, 5, QColor(0x30, 0x30, 0x30)}});
    map->SetBackground(QColor());
    draw();
    expect({{-2, 5, QColor(0x20, 0x20, 0x20)}});
    EXPECT_GT(at(0, 5).lightness(), 0x50) << "lines are made legible";
}

} // namespace
