#include "tests/engine/map/MapWndFixture.h"

#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTimer>

#include <functional>

namespace {

using MapWndLifetime = MapWndFixture;

TEST_F(MapWndLifetime, EventsGetThroughWhileAHugeLayerIsDrawn)
{
    qint64 longest = 0;
    int ticks = 0;
    QElapsedTimer sinceTick;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, &ticker, [&] {
        longest = std::max(longest, sinceTick.restart());
        ++ticks;
    });
    ASSERT_TRUE(beginDrawing(150));
    sinceTick.start();
    ticker.start(0);
    ASSERT_TRUE(waitForDrawing());
    EXPECT_GE(ticks, 2) << "slices";
    EXPECT_LT(longest, 300) << "milliseconds that an event waited (10 are meant)";
    picture = wnd.grab().toImage();
    EXPECT_FALSE(isNear(at(100, 100), paper));
}

TEST_F(MapWndLifetime, LetsGoOfADatasetInTheMiddleOfDrawing)
{
    QSignalSpy opened(&wnd, &CTxMapWnd::datasetsOpened);
    CDatasetVector *grid = beginDrawing(120);
    EXPECT_EQ(opened.count(), 1);
    wnd.ReleaseDataset(grid);
    EXPECT_EQ(grid->GetRecordsetCount(), 0);
    EXPECT_FALSE(grid->IsOpen()) << "it opened it";
    ASSERT_TRUE(waitForDrawing());
    wnd.Zoom(2);
    wnd.FinishDrawing();
    EXPECT_FALSE(grid->IsOpen()) << "not before the next refresh";
    refresh();
    EXPECT_TRUE(grid->IsOpen());
    wnd.ReleaseDataset(nullptr);
}

TEST_F(MapWndLifetime, ClosesWhatItOpenedAndNothingElse)
{
    for (const char *name : {"a", "b", "c"})
        add(data.writeSquare(name), name);
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

TEST_F(MapWndLifetime, NothingDeadIsReadWhenTheHostForgetsToTell)
{
    struct Row
    {
        const char *name;
        std::function<void()> act;
    };
    const Row rows[] = {{"dataset closed", [&] { vector("grid")->Close(); }},
                        {"dataset closed and opened again",
                         [&] {
                             vector("grid")->Close();
                             vector("grid")->Open();
                         }},
                        {"datasource closed", [&] { workspace.GetDataSources().Close("grid"); }},
                        {"datasource under another alias", [&] { workspace.GetDataSources().Rename("grid", "x"); }},
                        {"layer removed", [&] { map->GetLayers().Remove(0); }},
                        {"map removed", [&] { workspace.GetMaps().Remove("Map"); }},
                        {"workspace closed", [&] { workspace.Close(); }}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        workspace.Close();
        map = workspace.GetMaps().Add("Map");
        ASSERT_TRUE(beginDrawing(120));
        row.act();
        ASSERT_TRUE(waitForDrawing());
        const CTxDataSource *source = workspace.GetDataSources().GetAt(0);
        EXPECT_EQ(source ? vector(qPrintable(source->GetAlias()))->GetRecordsetCount() : 0, 0) << "nothing is kept";
        wnd.grab();
        wnd.Zoom(1.5);
        wnd.FinishDrawing();
        refresh();
    }
    EXPECT_EQ(wnd.GetMap(), nullptr);
}

TEST_F(MapWndLifetime, ARecordsetInThePlaceOfADeadOneIsNotTouched)
{
    CDatasetVector *grid = beginDrawing(120);
    grid->Close();
    grid->Open();
    CTxRecordset *own = grid->Query(CTxQueryDef()); // most likely where the dead one was
    ASSERT_TRUE(own);
    const qint64 first = own->GetID();
    ASSERT_TRUE(waitForDrawing());
    EXPECT_EQ(grid->GetRecordsetCount(), 1);
    EXPECT_EQ(own->GetID(), first) << "it still stands where it stood";
    EXPECT_TRUE(grid->ReleaseRecordset(own));
}

TEST_F(MapWndLifetime, ALayerThatCannotBeDrawnIsToldOnce)
{
    map->GetLayers().Add(std::make_unique<CTxLayer>(&workspace.GetDataSources(), "gone", "roads"));
    add(data.writeSquare("square"), "square");
    QSignalSpy failed(&wnd, &CTxMapWnd::drawingFailed);
    QSignalSpy progress(&wnd, &CTxMapWnd::drawingProgress);
    draw();
    ASSERT_EQ(failed.count(), 1);
    EXPECT_EQ(failed[0][0].toString(), u"roads@gone");
    EXPECT_FALSE(failed[0][1].toString().isEmpty());
    expect({{2, 2, red, "the others are drawn"}});
    EXPECT_EQ(progress.last()[0].toInt(), 100);
    wnd.Zoom(2);
    wnd.FinishDrawing();
    EXPECT_EQ(failed.count(), 1);
    refresh();
    EXPECT_EQ(failed.count(), 2);
}

TEST_F(MapWndLifetime, AHostMayCloseEverythingFromASignal)
{
    add(data.writeSquare("square"), "square");
    QObject::connect(&wnd, &CTxMapWnd::datasetsOpened, &wnd, [this] { workspace.Close(); });
    wnd.SetMap(map);
    wnd.FinishDrawing();
    EXPECT_EQ(wnd.GetMap(), nullptr);
    wnd.grab();
}

} // namespace
