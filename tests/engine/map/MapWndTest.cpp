#include "engine/map/TxMapWnd.h"

#include "engine/data/DatasetVector.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/GeoLine.h"
#include "engine/geometry/GeoPoint.h"
#include "engine/geometry/GeoRegion.h"
#include "engine/geometry/GeoText.h"
#include "engine/map/TxWorkspace.h"
#include "tests/engine/map/MapTestData.h"

#include <QApplication>
#include <QImage>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

const QColor paper(Qt::white);
const QColor red(0xff, 0, 0);
const QColor blue(0, 0, 0xff);

bool isNear(const QColor &a, const QColor &b, int most = 8)
{
    return std::abs(a.red() - b.red()) <= most && std::abs(a.green() - b.green()) <= most &&
           std::abs(a.blue() - b.blue()) <= most;
}

TxLayerStyle plainStyle(const QColor &fill, const QColor &line, double lineWidth = 3)
{
    TxLayerStyle style;
    style.fill = fill;
    style.line = line;
    style.lineWidth = lineWidth;
    style.symbolSize = 12;
    return style;
}

/// A window of 400 x 300 that shows a map over files of known content.
class MapWnd : public testing::Test
{
protected:
    void SetUp() override
    {
        map = workspace.GetMaps().Add(QStringLiteral("Map"));
        map->SetBackground(paper);
        wnd.resize(400, 300);
        wnd.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&wnd));
    }

    /// Opens the file @p path under @p alias and puts a layer of it on top.
    CTxLayer *add(const QString &path, const char *alias, const TxLayerStyle &style = plainStyle(red, blue))
    {
        const QString name = QString::fromUtf8(alias);
        EXPECT_TRUE(workspace.GetDataSources().Open(path, name));
        CTxLayer *layer = addLayer(*map, workspace.GetDataSources(), name);
        layer->setStyle(style);
        return layer;
    }

    /// Shows the map from (-5, -5) to (15, 15) and draws it.
    void draw()
    {
        wnd.SetMap(map);
        wnd.SetViewBounds(CRect2D(-5, -5, 15, 15));
        wnd.FinishDrawing();
        picture = wnd.grab().toImage();
    }

    QColor at(double x, double y) const
    {
        const QPointF pixel = wnd.MapToPixel(CPoint2D(x, y)) * picture.devicePixelRatio();
        return picture.pixelColor(QPoint(int(std::floor(pixel.x())), int(std::floor(pixel.y()))));
    }

    void wheel(const QPointF &place, int delta)
    {
        QWheelEvent event(place, wnd.mapToGlobal(place), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&wnd, &event);
    }

    CDatasetVector *vector(const char *alias)
    {
        return dynamic_cast<CDatasetVector *>(
            workspace.GetDataSources().find(QString::fromUtf8(alias))->GetDatasetAt(0));
    }

    MapTestData data;
    CTxWorkspace workspace;
    CTxMap *map = nullptr;
    CTxMapWnd wnd;
    QImage picture;
};

TEST_F(MapWnd, RegionsHaveHolesAndOutlines)
{
    add(data.writeSquare(QStringLiteral("square")), "square");
    draw();
    EXPECT_TRUE(isNear(at(2, 2), red));
    EXPECT_TRUE(isNear(at(8, 8), red));
    EXPECT_TRUE(isNear(at(5, 5), paper)) << "in the hole";
    EXPECT_TRUE(isNear(at(-2, 5), paper));
    EXPECT_TRUE(isNear(at(0, 5), blue));
    EXPECT_TRUE(isNear(at(4, 5), blue)) << "the hole's edge";
}

TEST_F(MapWnd, EveryKindOfGeometryIsSeen)
{
    const QByteArray point = R"({"type":"Point","coordinates":[1,1]})";
    const QByteArray line = R"({"type":"LineString","coordinates":[[0,5],[10,5]]})";
    const QByteArray lines = R"({"type":"MultiLineString","coordinates":[[[0,7,9],[10,7,9]],[[0,8,1],[10,8,1]]]})";
    const QByteArray region = R"({"type":"Polygon","coordinates":[[[6,0],[9,0],[9,3],[6,3],[6,0]]]})";
    const QByteArray mixed =
        R"({"type":"GeometryCollection","geometries":[{"type":"MultiPoint","coordinates":[[1,11],[3,11,5]]},)"
        R"({"type":"GeometryCollection","geometries":[{"type":"LineString","coordinates":[[5,11],[10,11]]}]}]})";
    add(data.writeGeoJson(QStringLiteral("cad"), {point, line, lines, region, mixed}), "cad");
    draw();
    EXPECT_TRUE(isNear(at(1, 1), red)) << "point";
    EXPECT_TRUE(isNear(at(5, 5), blue)) << "line";
    EXPECT_TRUE(isNear(at(5, 7), blue) && isNear(at(5, 8), blue)) << "lines in space";
    EXPECT_TRUE(isNear(at(7.5, 1.5), red)) << "region";
    EXPECT_TRUE(isNear(at(1, 11), red) && isNear(at(3, 11), red)) << "points of a collection";
    EXPECT_TRUE(isNear(at(7, 11), blue)) << "line of a collection in a collection";
    EXPECT_TRUE(isNear(at(3, 3), paper));
}

TEST_F(MapWnd, UpperLayersCoverLowerOnesAndHiddenOnesAreNotSeen)
{
    const QString square = data.writeSquare(QStringLiteral("square"));
    add(square, "below", plainStyle(red, red));
    CTxLayer *above = add(square, "above", plainStyle(blue, blue));
    draw();
    EXPECT_TRUE(isNear(at(2, 2), blue));
    map->GetLayers().Move(0, 1);
    draw();
    EXPECT_TRUE(isNear(at(2, 2), red));
    map->GetLayers().Move(0, 1);
    TxLayerStyle half = above->style();
    half.opacity = 0.5;
    above->setStyle(half);
    draw();
    EXPECT_TRUE(isNear(at(2, 2), QColor(0x80, 0, 0x80)));
    above->SetVisible(false);
    EXPECT_TRUE(wnd.Refresh());
    wnd.FinishDrawing();
    picture = wnd.grab().toImage();
    EXPECT_TRUE(isNear(at(2, 2), red));
}

TEST_F(MapWnd, LabelsAreWritten)
{
    TxLayerStyle style = plainStyle(Qt::transparent, Qt::transparent, 1);
    const auto darkPixels = [&](const char *field) {
        style.labelField = QString::fromUtf8(field);
        map->GetLayers().GetLayerAt(0)->setStyle(style);
        draw();
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                count += qGray(picture.pixel(x, y)) < 80;
        }
        return count;
    };
    add(data.writeGrid(QStringLiteral("grid"), 2), "grid", style);
    map->GetLayers().GetLayerAt(0)->setStyle(style);
    const int without = darkPixels("no_such_field");
    const int with = darkPixels("name");
    EXPECT_GT(with, without + 40);
    EXPECT_LT(with, without + 4000) << "labels do not cover one another";
}

TEST_F(MapWnd, LayersOfAnotherCoordinateSystemLieWhereTheyBelong)
{
    add(data.writeSquare(QStringLiteral("square")), "square");
    // The same square from (2, 2) to (8, 8) degrees, in metres.
    const QByteArray metres =
        R"({"type":"FeatureCollection","name":"metres","crs":{"type":"name","properties":{"name":"urn:ogc:def:crs:EPSG::3857"}},)"
        R"("features":[{"type":"Feature","properties":{},"geometry":{"type":"Polygon","coordinates":)"
        R"([[[222639,222684],[890556,222684],[890556,893464],[222639,893464],[222639,222684]]]}}]})";
    add(data.write(QStringLiteral("metres.geojson"), metres), "metres", plainStyle(Qt::green, Qt::green, 1));
    draw();
    EXPECT_TRUE(isNear(at(5, 5), Qt::green));
    EXPECT_TRUE(isNear(at(2.2, 7.8), Qt::green));
    EXPECT_TRUE(isNear(at(1.5, 1.5), red));
    EXPECT_TRUE(isNear(at(8.5, 8.5), red));
    const CRect2D all = map->GetBounds();
    EXPECT_NEAR(all.right, 10, 1e-9);
    EXPECT_NEAR(all.left, 0, 1e-9);
}

TEST_F(MapWnd, RastersAreDrawnInTheirPlace)
{
    add(data.write(QStringLiteral("grid.asc"),
                   "ncols 2\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 5\nNODATA_value -9\n1 -9\n50 100\n"),
        "grid");
    draw();
    EXPECT_FALSE(isNear(at(2.5, 2.5), paper));
    EXPECT_FALSE(isNear(at(2.5, 7.5), paper));
    EXPECT_FALSE(isNear(at(2.5, 2.5), at(7.5, 2.5))) << "other heights, other colours";
    EXPECT_TRUE(isNear(at(7.5, 7.5), paper)) << "no data";
    EXPECT_TRUE(isNear(at(12, 5), paper));
    EXPECT_TRUE(isNear(at(-1, 5), paper));
}

TEST_F(MapWnd, RastersOfAnotherCoordinateSystemLieWhereTheyBelong)
{
    add(data.writeSquare(QStringLiteral("square")), "square");
    // From (0, 0) to about (9, 9) degrees, in metres; the western half low, the eastern high.
    data.write(
        QStringLiteral("metres.prj"),
        "PROJCS[\"WGS 84 / Pseudo-Mercator\",GEOGCS[\"WGS 84\",DATUM[\"WGS_1984\",SPHEROID[\"WGS "
        "84\",6378137,298.257223563]],"
        "PRIMEM[\"Greenwich\",0],UNIT[\"degree\",0.0174532925199433]],PROJECTION[\"Mercator_1SP\"],"
        "PARAMETER[\"central_meridian\",0],PARAMETER[\"scale_factor\",1],PARAMETER[\"false_easting\",0],"
        "PARAMETER[\"false_northing\",0],UNIT[\"metre\",1],EXTENSION[\"PROJ4\",\"+proj=merc +a=6378137 +b=6378137 "
        "+lat_ts=0 +lon_0=0 +x_0=0 +y_0=0 +k=1 +units=m +nadgrids=@null +wktext "
        "+no_defs\"],AUTHORITY[\"EPSG\",\"3857\"]]");
    add(data.write(QStringLiteral("metres.asc"),
                   "ncols 2\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 500000\nNODATA_value -9\n1 100\n1 100\n"),
        "metres");
    draw();
    const QColor west = at(2, 2);
    EXPECT_FALSE(isNear(west, red)) << "it lies above the square";
    EXPECT_TRUE(isNear(at(4, 8), west));
    EXPECT_FALSE(isNear(at(5, 5), west)) << "the border is at 4.49 degrees";
    EXPECT_TRUE(isNear(at(9.5, 9.5), red)) << "it ends at 8.98 degrees";
}

TEST_F(MapWnd, KindsThatOnlyTheDatabaseHoldsAreDrawn)
{
    CTxDataSource *database = workspace.GetDataSources().Create(data.path(QStringLiteral("kinds.tdb")),
                                                                QStringLiteral("kinds"), CTxDataSourceStorage::Native);
    ASSERT_TRUE(database);
    const auto make = [&](const char *name, CElemDatasetInfo::Type type, const CElemGeometry &geometry) {
        CTxDatasetDef definition;
        definition.name = QString::fromUtf8(name);
        definition.type = type;
        auto *dataset = dynamic_cast<CDatasetVector *>(database->CreateDataset(definition));
        ASSERT_TRUE(dataset && dataset->Open()) << name;
        CTxRecordset *records = dataset->Query(CTxQueryDef());
        ASSERT_TRUE(records && records->AddNew() && records->SetGeometry(&geometry) && records->Update()) << name;
        dataset->ReleaseRecordset(records);
        CTxLayer *layer = map->GetLayers().Add(
            std::make_unique<CTxLayer>(&workspace.GetDataSources(), QStringLiteral("kinds"), definition.name));
        layer->setStyle(plainStyle(red, blue));
    };
    CGeoRegion surface; // a low face in the south-west, a high one in the north-east
    const CPoint2D low[] = {{0, 0}, {10, 0}, {0, 10}};
    const CPoint2D high[] = {{10, 0}, {10, 10}, {0, 10}};
    const double lowZ[] = {0, 0, 0};
    const double highZ[] = {100, 100, 100};
    surface.AddSubPolygon(low, 3, lowZ);
    surface.AddSubPolygon(high, 3, highZ);
    make("surface", CElemDatasetInfo::TIN, surface);
    make("text", CElemDatasetInfo::Text, CGeoText(CPoint2D(0, 11), QStringLiteral("MMMM"), 0, 1.5));
    make("net", CElemDatasetInfo::Network, [] {
        const CPoint2D points[] = {{-4, -2}, {14, -2}};
        CGeoLine line;
        line.MakePolyline(points, 2);
        return line;
    }());
    make("space", CElemDatasetInfo::Point3D, CGeoPoint(-3, 5, 17));
    draw();
    EXPECT_FALSE(isNear(at(2, 2), paper));
    EXPECT_FALSE(isNear(at(2, 2), at(8, 8), 25)) << "heights have colours";
    EXPECT_FALSE(isNear(at(2, 2), red)) << "and the layer's fill is not among them";
    int inked = 0;
    for (double x = 0; x < 5; x += 0.05)
        inked += !isNear(at(x, 11.7), paper, 60);
    EXPECT_GT(inked, 15) << "letters of the map's size";
    EXPECT_TRUE(isNear(at(12, 11.7), paper));
    EXPECT_TRUE(isNear(at(5, -2), blue)) << "the network's edge";
    EXPECT_TRUE(isNear(at(-3, 5), red)) << "the point in space";
}

TEST_F(MapWnd, TheWheelKeepsThePlaceUnderThePointer)
{
    add(data.writeSquare(QStringLiteral("square")), "square");
    draw();
    const QPointF place(310, 77);
    const CPoint2D before = wnd.PixelToMap(place);
    const double width = wnd.GetViewBounds().Width();
    for (const int delta : {120, 120, -360, 15, 1200}) {
        wheel(place, delta);
        EXPECT_NEAR(wnd.PixelToMap(place).x, before.x, 1e-9);
        EXPECT_NEAR(wnd.PixelToMap(place).y, before.y, 1e-9);
    }
    EXPECT_LT(wnd.GetViewBounds().Width(), width);
    EXPECT_EQ(map->GetViewBounds(), wnd.GetViewBounds()) << "the map keeps the view";
}

TEST_F(MapWnd, DraggingMovesThePictureWithThePointer)
{
    add(data.writeSquare(QStringLiteral("square")), "square");
    draw();
    const CPoint2D grabbed = wnd.PixelToMap(QPointF(100, 100));
    QSignalSpy moved(&wnd, &CTxMapWnd::viewChanged);
    QSignalSpy pointer(&wnd, &CTxMapWnd::pointerMoved);
    QTest::mousePress(&wnd, Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
    QTest::mouseMove(&wnd, QPoint(130, 90));
    QMouseEvent move(QEvent::MouseMove, QPointF(150, 80), wnd.mapToGlobal(QPointF(150, 80)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&wnd, &move);
    QTest::mouseRelease(&wnd, Qt::LeftButton, Qt::NoModifier, QPoint(150, 80));
    EXPECT_NEAR(wnd.MapToPixel(grabbed).x(), 150, 1e-6);
    EXPECT_NEAR(wnd.MapToPixel(grabbed).y(), 80, 1e-6);
    EXPECT_GT(moved.count(), 0);
    ASSERT_GT(pointer.count(), 0);
    EXPECT_NEAR(pointer.last()[0].toDouble(), grabbed.x, 1e-6);
    QMouseEvent after(QEvent::MouseMove, QPointF(10, 10), wnd.mapToGlobal(QPointF(10, 10)), Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    QApplication::sendEvent(&wnd, &after);
    EXPECT_NEAR(wnd.MapToPixel(grabbed).x(), 150, 1e-6) << "only while the button is down";
}

TEST_F(MapWnd, KeysMoveAndZoom)
{
    add(data.writeSquare(QStringLiteral("square")), "square");
    draw();
    const CRect2D start = wnd.GetViewBounds();
    struct Row
    {
        Qt::Key key;
        std::function<bool(const CRect2D &)> holds;
    };
    const Row rows[] = {
        {Qt::Key_Left, [&](const CRect2D &now) { return now.left < start.left && now.bottom == start.bottom; }},
        {Qt::Key_Right, [&](const CRect2D &now) { return now.left > start.left; }},
        {Qt::Key_Up, [&](const CRect2D &now) { return now.bottom > start.bottom && now.left == start.left; }},
        {Qt::Key_Down, [&](const CRect2D &now) { return now.bottom < start.bottom; }},
        {Qt::Key_Plus, [&](const CRect2D &now) { return now.Width() < start.Width(); }},
        {Qt::Key_Minus, [&](const CRect2D &now) { return now.Width() > start.Width(); }},
        {Qt::Key_Home,
         [&](const CRect2D &now) {
             return now.Contains(CPoint2D(0, 0)) && now.Contains(CPoint2D(10, 10)) && now.Height() < 12;
         }},
    };
    for (const Row &row : rows) {
        wnd.SetViewBounds(CRect2D(-5, -5, 15, 15));
        QTest::keyClick(&wnd, row.key);
        EXPECT_TRUE(row.holds(wnd.GetViewBounds())) << row.key;
    }
}

TEST_F(MapWnd, AFittedViewStaysFittedWhenTheWindowGrowsAndAMovedOneKeepsItsScale)
{
    add(data.writeSquare(QStringLiteral("square")), "square");
    wnd.SetMap(map);
    EXPECT_TRUE(map->GetViewBounds().IsVoid()) << "nobody chose a view yet";
    wnd.resize(800, 600);
    EXPECT_NEAR(wnd.GetViewBounds().Height(), 10 * 600.0 / (600 - 32), 1e-6);
    wnd.Pan(QPointF(10, 0));
    const double scale = wnd.GetViewBounds().Width() / 800;
    wnd.resize(400, 300);
    EXPECT_NEAR(wnd.GetViewBounds().Width() / 400, scale, 1e-9);
    const CRect2D kept = map->GetViewBounds();
    EXPECT_FALSE(kept.IsVoid());
    CTxMapWnd other;
    other.resize(400, 300);
    other.SetMap(map);
    EXPECT_TRUE(other.GetViewBounds().Contains(kept.CenterPoint()));
    EXPECT_NEAR(other.GetViewBounds().Height(), kept.Height(), kept.Height() * 0.01);
}

TEST_F(MapWnd, EventsGetThroughWhileAHugeLayerIsDrawn)
{
    add(data.writeGrid(QStringLiteral("grid"), 250), "grid");
    wnd.SetMap(map);
    qint64 longest = 0;
    int ticks = 0;
    QElapsedTimer sinceTick;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, &ticker, [&] {
        longest = std::max(longest, sinceTick.restart());
        ++ticks;
    });
    ASSERT_TRUE(QTest::qWaitFor([&] { return vector("grid")->GetRecordsetCount() > 0; }, 5000)) << "drawing began";
    sinceTick.start();
    ticker.start(0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !wnd.IsDrawing(); }, 20000));
    EXPECT_GE(ticks, 2) << "slices";
    EXPECT_LT(longest, 300) << "milliseconds that an event waited (10 are meant)";
    picture = wnd.grab().toImage();
    EXPECT_FALSE(isNear(at(100, 100), paper));
}

TEST_F(MapWnd, LetsGoOfADatasetInTheMiddleOfDrawing)
{
    add(data.writeGrid(QStringLiteral("grid"), 120), "grid");
    CDatasetVector *grid = vector("grid");
    ASSERT_FALSE(grid->IsOpen());
    QSignalSpy opened(&wnd, &CTxMapWnd::datasetsOpened);
    wnd.SetMap(map);
    ASSERT_TRUE(QTest::qWaitFor([&] { return grid->GetRecordsetCount() == 1; }, 5000));
    EXPECT_EQ(opened.count(), 1);
    wnd.ReleaseDataset(grid);
    EXPECT_EQ(grid->GetRecordsetCount(), 0);
    EXPECT_FALSE(grid->IsOpen()) << "it opened it";
    ASSERT_TRUE(QTest::qWaitFor([&] { return !wnd.IsDrawing(); }, 5000));
    wnd.Zoom(2);
    wnd.FinishDrawing();
    EXPECT_FALSE(grid->IsOpen()) << "not before the next refresh";
    wnd.Refresh();
    wnd.FinishDrawing();
    EXPECT_TRUE(grid->IsOpen());
    wnd.ReleaseDataset(nullptr);
}

TEST_F(MapWnd, ClosesWhatItOpenedAndNothingElse)
{
    add(data.writeSquare(QStringLiteral("a")), "a");
    add(data.writeSquare(QStringLiteral("b")), "b");
    add(data.writeSquare(QStringLiteral("c")), "c");
    ASSERT_TRUE(vector("b")->Open());
    draw();
    EXPECT_TRUE(vector("a")->IsOpen());
    CTxRecordset *reader = vector("c")->Query(CTxQueryDef());
    ASSERT_TRUE(reader);
    wnd.SetMap(nullptr);
    EXPECT_FALSE(vector("a")->IsOpen());
    EXPECT_TRUE(vector("b")->IsOpen()) << "somebody else opened it";
    EXPECT_TRUE(vector("c")->IsOpen()) << "somebody reads it";
    EXPECT_TRUE(vector("c")->ReleaseRecordset(reader));
}

TEST_F(MapWnd, NothingDeadIsReadWhenTheHostForgetsToTell)
{
    struct Row
    {
        const char *name;
        std::function<void()> act;
    };
    const Row rows[] = {
        {"dataset closed", [&] { vector("grid")->Close(); }},
        {"dataset closed and opened again",
         [&] {
             vector("grid")->Close();
             vector("grid")->Open();
         }},
        {"another recordset in its place",
         [&] {
             CDatasetVector *grid = vector("grid");
             grid->Close();
             grid->Open();
             grid->ReleaseRecordset(grid->Query(CTxQueryDef()));
         }},
        {"datasource closed", [&] { workspace.GetDataSources().Close(QStringLiteral("grid")); }},
        {"datasource under another alias",
         [&] { workspace.GetDataSources().Rename(QStringLiteral("grid"), QStringLiteral("x")); }},
        {"layer removed", [&] { map->GetLayers().Remove(0); }},
        {"map removed", [&] { workspace.GetMaps().Remove(QStringLiteral("Map")); }},
        {"workspace closed", [&] { workspace.Close(); }},
    };
    const QString path = data.writeGrid(QStringLiteral("grid"), 120);
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        workspace.Close();
        map = workspace.GetMaps().Add(QStringLiteral("Map"));
        add(path, "grid");
        wnd.SetMap(map);
        ASSERT_TRUE(QTest::qWaitFor([&] { return vector("grid")->GetRecordsetCount() == 1; }, 5000));
        row.act();
        ASSERT_TRUE(QTest::qWaitFor([&] { return !wnd.IsDrawing(); }, 5000));
        wnd.grab();
        wnd.Zoom(1.5);
        wnd.FinishDrawing();
        wnd.Refresh();
        wnd.FinishDrawing();
    }
    EXPECT_EQ(wnd.GetMap(), nullptr);
}

TEST_F(MapWnd, ARecordsetInThePlaceOfADeadOneIsNotTouched)
{
    add(data.writeGrid(QStringLiteral("grid"), 120), "grid");
    CDatasetVector *grid = vector("grid");
    wnd.SetMap(map);
    ASSERT_TRUE(QTest::qWaitFor([&] { return grid->GetRecordsetCount() == 1; }, 5000));
    grid->Close();
    grid->Open();
    CTxRecordset *own = grid->Query(CTxQueryDef()); // most likely where the dead one was
    ASSERT_TRUE(own);
    const qint64 first = own->GetID();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !wnd.IsDrawing(); }, 5000));
    EXPECT_EQ(grid->GetRecordsetCount(), 1);
    EXPECT_EQ(own->GetID(), first) << "it still stands where it stood";
    EXPECT_TRUE(grid->ReleaseRecordset(own));
}

TEST_F(MapWnd, ALayerThatCannotBeDrawnIsToldOnce)
{
    map->GetLayers().Add(
        std::make_unique<CTxLayer>(&workspace.GetDataSources(), QStringLiteral("gone"), QStringLiteral("roads")));
    add(data.writeSquare(QStringLiteral("square")), "square");
    QSignalSpy failed(&wnd, &CTxMapWnd::drawingFailed);
    QSignalSpy progress(&wnd, &CTxMapWnd::drawingProgress);
    draw();
    ASSERT_EQ(failed.count(), 1);
    EXPECT_EQ(failed[0][0].toString(), u"roads@gone");
    EXPECT_FALSE(failed[0][1].toString().isEmpty());
    EXPECT_TRUE(isNear(at(2, 2), red)) << "the others are drawn";
    EXPECT_EQ(progress.last()[0].toInt(), 100);
    wnd.Zoom(2);
    wnd.FinishDrawing();
    EXPECT_EQ(failed.count(), 1);
    wnd.Refresh();
    wnd.FinishDrawing();
    EXPECT_EQ(failed.count(), 2);
}

TEST_F(MapWnd, AHostMayCloseEverythingFromASignal)
{
    add(data.writeSquare(QStringLiteral("square")), "square");
    QObject::connect(&wnd, &CTxMapWnd::datasetsOpened, &wnd, [this] { workspace.Close(); });
    wnd.SetMap(map);
    wnd.FinishDrawing();
    EXPECT_EQ(wnd.GetMap(), nullptr);
    wnd.grab();
}

TEST_F(MapWnd, WithoutAnythingToShowItSaysSo)
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
        int inked = 0;
        for (int x = 0; x < picture.width(); ++x) {
            for (int y = 0; y < picture.height(); ++y)
                inked += picture.pixel(x, y) != picture.pixel(0, 0);
        }
        EXPECT_GT(inked, 50);
    }
    EXPECT_FALSE(wnd.accessibleName().isEmpty());
}

TEST_F(MapWnd, ThePaperIsThePalettesUnlessTheMapHasItsOwn)
{
    add(data.writeSquare(QStringLiteral("square")), "square", plainStyle(Qt::transparent, QColor(0x30, 0x30, 0x30)));
    QPalette dark = wnd.palette();
    dark.setColor(QPalette::Base, QColor(0x20, 0x20, 0x20));
    wnd.setPalette(dark);
    draw();
    EXPECT_TRUE(isNear(at(-2, 5), paper));
    EXPECT_TRUE(isNear(at(0, 5), QColor(0x30, 0x30, 0x30)));
    map->SetBackground(QColor());
    draw();
    EXPECT_TRUE(isNear(at(-2, 5), QColor(0x20, 0x20, 0x20)));
    EXPECT_GT(at(0, 5).lightness(), 0x50) << "lines are made legible";
}

} // namespace
