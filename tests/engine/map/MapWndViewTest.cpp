#include "tests/engine/map/MapWndFixture.h"

#include <QApplication>
#include <QSignalSpy>
#include <QWheelEvent>

#include <functional>

namespace {

class MapWndView : public MapWndFixture
{
protected:
    void SetUp() override
    {
        MapWndFixture::SetUp();
        add(data.writeSquare("square"), "square");
        draw();
    }
};

TEST_F(MapWndView, TheWheelKeepsThePlaceUnderThePointer)
{
    const QPointF place(310, 77);
    const CPoint2D before = wnd.PixelToMap(place);
    const double width = wnd.GetViewBounds().Width();
    for (const int delta : {120, 120, -360, 15, 1200}) {
        QWheelEvent event(place, wnd.mapToGlobal(place), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&wnd, &event);
        EXPECT_NEAR(wnd.PixelToMap(place).x, before.x, 1e-9);
        EXPECT_NEAR(wnd.PixelToMap(place).y, before.y, 1e-9);
    }
    EXPECT_LT(wnd.GetViewBounds().Width(), width);
    EXPECT_EQ(map->GetViewBounds(), wnd.GetViewBounds()) << "the map keeps the view";
}

TEST_F(MapWndView, DraggingMovesThePictureWithThePointer)
{
    const CPoint2D grabbed = wnd.PixelToMap(QPointF(100, 100));
    const auto drag = [this](const QPointF &to, Qt::MouseButtons buttons) {
        QMouseEvent event(QEvent::MouseMove, to, wnd.mapToGlobal(to), Qt::NoButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(&wnd, &event);
    };
    QSignalSpy moved(&wnd, &CTxMapWnd::viewChanged);
    QSignalSpy pointer(&wnd, &CTxMapWnd::pointerMoved);
    QTest::mousePress(&wnd, Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
    QTest::mouseMove(&wnd, QPoint(130, 90));
    drag(QPointF(150, 80), Qt::LeftButton);
    QTest::mouseRelease(&wnd, Qt::LeftButton, Qt::NoModifier, QPoint(150, 80));
    EXPECT_NEAR(wnd.MapToPixel(grabbed).x(), 150, 1e-6);
    EXPECT_NEAR(wnd.MapToPixel(grabbed).y(), 80, 1e-6);
    EXPECT_GT(moved.count(), 0);
    ASSERT_GT(pointer.count(), 0);
    EXPECT_NEAR(pointer.last()[0].toDouble(), grabbed.x, 1e-6);
    drag(QPointF(10, 10), Qt::NoButton);
    EXPECT_NEAR(wnd.MapToPixel(grabbed).x(), 150, 1e-6) << "only while the button is down";
}

TEST_F(MapWndView, KeysMoveAndZoom)
{
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

TEST_F(MapWndView, AFittedViewStaysFittedWhenTheWindowGrowsAndAMovedOneKeepsItsScale)
{
    map->SetViewBounds(CRect2D());
    wnd.SetMap(nullptr);
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

} // namespace
