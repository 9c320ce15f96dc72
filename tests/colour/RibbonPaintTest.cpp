#include "colour/ChannelSlider.h"
#include "colour/RibbonColumns.h"
#include "colour/RibbonGeometry.h"
#include "colour/RibbonPainter.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>

namespace {

using Stops = RibbonStops::Stops;

/// The band is 10 to 60 high, and 10 to 150 wide; stops stand between 30 and 130.
const RibbonGeometry geometry(QRect(10, 10, 140, 90));

/// The columns as they are told: segment by segment in order, each over the ones before.
std::vector<COLORREF> paintedInOrder(const Stops &stops)
{
    std::vector<COLORREF> columns(101, stops.back().color);
    for (qint64 x = 30; x < std::min<qint64>(stops.front().position, 131); ++x)
        columns[static_cast<size_t>(x - 30)] = stops.front().color;
    for (size_t i = 0; i + 1 < stops.size(); ++i) {
        const qint64 from = stops[i].position, to = stops[i + 1].position;
        for (qint64 x = std::max<qint64>(from, 30); x < std::min<qint64>(to, 131); ++x) {
            const auto channel = [&](int shift) {
                const auto left = static_cast<qint64>(stops[i].color >> shift & 0xFFU);
                const auto right = static_cast<qint64>(stops[i + 1].color >> shift & 0xFFU);
                // In whole numbers: the sum is never negative, so the division cuts off as it should.
                return static_cast<int>((left * (to - from) + (x - from) * (right - left)) / (to - from));
            };
            columns[static_cast<size_t>(x - 30)] = TxColorRef::make(channel(0), channel(8), channel(16));
        }
    }
    return columns;
}

TEST(RibbonColumns, AreThoseOfSegmentsPaintedInOrder)
{
    std::mt19937 random(3); // NOLINT: the same stops in each run
    for (int round = 0; round < 300; ++round) {
        Stops stops(2 + random() % 6);
        for (RibbonStop &stop : stops)
            stop = {static_cast<qint32>(random() % (round < 150 ? 140 : 600)) - (round < 150 ? 0 : 200),
                    static_cast<COLORREF>(random() & 0xFFFFFFU), 0};
        if (round % 3 == 0)
            std::sort(stops.begin(), stops.end(), [](auto &a, auto &b) { return a.position < b.position; });
        if (round % 50 == 1)
            stops[1].position = round % 4 ? std::numeric_limits<qint32>::max() : std::numeric_limits<qint32>::min();
        const std::vector<COLORREF> want = paintedInOrder(stops);
        const RibbonColumns columns(stops, geometry);
        ASSERT_EQ(columns.pixels().size(), want.size());
        for (qint32 i = 0; i < 101; ++i)
            ASSERT_EQ(columns.colorAt(30 + i), want[static_cast<size_t>(i)]) << round << ' ' << i;
    }
}

TEST(RibbonColumns, OutputIsReadBackFromTheColumns)
{
    const RibbonColumns columns({{30, 0x000000, 0}, {130, 0x0000C8, 1}}, geometry); // red = 2 a pixel
    EXPECT_EQ(columns.MakeOutColor(4), (QList<COLORREF>{2, 52, 102, 152}));
    EXPECT_EQ(columns.MakeOutColor(3), (QList<COLORREF>{2, 68, 134})); // at 31, 64.3 and 97.7
    EXPECT_EQ(columns.MakeOutColor(100).constLast(), 0xC8U);           // where the last stop stands
    const QList<COLORREF> many = columns.MakeOutColor(100000);
    EXPECT_TRUE(std::is_sorted(many.begin(), many.end()));
    EXPECT_EQ(many.constLast(), 0xC8U);
    using Limits = std::numeric_limits<qint32>;
    for (const qint32 none : {0, -1, Limits::min(), Limits::max()}) // not eight gigabytes
        EXPECT_TRUE(columns.MakeOutColor(none).isEmpty());
    // A window too narrow for a ramp.
    EXPECT_EQ(RibbonColumns({{0, 1, 0}, {0, 2, 1}}, RibbonGeometry({0, 0, 10, 10})).MakeOutColor(2).size(), 2);
}

TEST(RibbonColumns, MillionsOfStopsOutOfOrderTakeNoTimeEach)
{
    Stops stops(1000000);
    for (size_t i = 0; i < stops.size(); ++i)
        stops[i] = {i % 2 ? 3900 : 30, static_cast<COLORREF>(i), 0};
    const auto begin = std::chrono::steady_clock::now();
    const RibbonGeometry wide(QRect(10, 10, 3900, 90));
    EXPECT_EQ(RibbonColumns(stops, wide).colorAt(30), 999998U);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1)); // filled each, it were 10 and more
}

TEST(RibbonGeometry, MarkersArePentagonsAndTheFirstInOrderIsHit)
{
    const QRect box = geometry.marker(50).boundingRect();
    for (int y = 55; y < 85; ++y) {
        for (int x = 40; x <= 60; ++x) {
            const bool isInside = y > 65 && y < 78 && std::abs(x - 50) <= 5 && std::abs(x - 50) <= y - 65;
            ASSERT_EQ(geometry.hitsMarker({x, y}, 50), isInside) << x << ' ' << y;
            ASSERT_TRUE(!isInside || box.contains(x, y));
        }
    }
    const Stops stops = {{30, 0, 0}, {50, 0, 0}, {52, 0, 0}, {std::numeric_limits<qint32>::min(), 0, 0}};
    EXPECT_EQ(geometry.stopAt({51, 75}, stops), 1);
    EXPECT_EQ(geometry.stopAt({56, 75}, stops), 2);
    EXPECT_EQ(geometry.stopAt({58, 75}, stops), -1);
    for (const auto &[x, isUsable] : {std::pair(29, false), {30, true}, {130, true}, {131, false}})
        EXPECT_EQ(geometry.isUsable(x), isUsable) << x;
    EXPECT_TRUE(geometry.bandContains({10, 59})); // the margins are of the band, though not usable
    EXPECT_FALSE(geometry.bandContains({10, 60}));
    EXPECT_FALSE(geometry.bandContains({150, 59}));
}

TEST(ChannelSlider, TellsValuesByPixelsAndPixelsByValues)
{
    const ChannelSlider slider(QRect(20, 100, 256, 20));
    for (qint32 value = 0; value < 256; ++value) {
        EXPECT_EQ(slider.valueAt(20 + value), value);
        EXPECT_EQ(slider.markerX(value), 19 + 256 * value / 255);
    }
    for (const auto &[x, value] : {std::pair(-99, 0), {19, 0}, {276, 255}, {std::numeric_limits<int>::max(), 255}})
        EXPECT_EQ(slider.valueAt(x), value);
    EXPECT_EQ(ChannelSlider(QRect(0, 0, 1, 20)).valueAt(7), 0);
    const QPolygon marker = slider.marker(0);
    for (const QPoint corner : marker)
        EXPECT_TRUE(slider.hitsMarker(corner, 0)) << corner.x() << ' ' << corner.y();
    for (const QPoint outside : {QPoint(19, 111), {18, 112}, {14, 118}, {24, 118}, {19, 121}})
        EXPECT_FALSE(slider.hitsMarker(outside, 0)) << outside.x() << ' ' << outside.y();
}

TEST(RibbonPainter, ShowsTheColumnsAtAnyScaleAndReadsBackTheSame)
{
    RibbonStops ribbon;
    ribbon.replaceAll({{0, 0x0000FF, 0}, {0, 0x00FF00, 30}, {0, 0xFF0000, 100}}, 0, 100);
    ribbon.setBand(geometry.usableLeft(), geometry.usableWidth());
    const RibbonColumns columns(ribbon.stops(), geometry);
    for (const qreal scale : {1.0, 1.5, 2.0, 3.0}) {
        for (const bool isPreviewed : {false, true}) {
            QImage screen(QSize(160, 110) * scale, QImage::Format_RGB32);
            screen.setDevicePixelRatio(scale);
            QPainter painter(&screen);
            RibbonPainter ribbonPainter(painter, QPalette());
            if (isPreviewed)
                ribbonPainter.setPreview([](COLORREF color) { return color ^ 0xFFFFFFU; });
            ribbonPainter.drawBand(geometry, columns);
            ribbonPainter.drawMarkers(geometry, ribbon, true);
            painter.end();
            const COLORREF flip = isPreviewed ? 0xFFFFFFU : 0;
            for (const int y : {12, 57}) { // the first and the last row
                for (int x = 30; x <= 130; ++x) {
                    const QPoint middle(qRound((x + 0.5) * scale - 0.5), qRound((y + 0.5) * scale - 0.5));
                    ASSERT_EQ(TxColorRef::fromRgb(screen.pixel(middle)), columns.colorAt(x) ^ flip)
                        << scale << ' ' << x;
                }
            }
            // A marker is filled with its stop's colour.
            EXPECT_EQ(TxColorRef::fromRgb(screen.pixel(QPointF(60, 75).toPoint() * scale)), 0x00FF00U ^ flip);
        }
    }
}

TEST(RibbonPainter, TellsTheDraggedSlider)
{
    const auto hasRed = [](bool isDragged) {
        const ChannelSlider slider(QRect(20, 20, 100, 20));
        QImage screen(160, 110, QImage::Format_RGB32);
        screen.fill(Qt::white);
        QPainter painter(&screen);
        RibbonPainter(painter, QPalette()).drawSlider(slider, RibbonStops::Target::Blue, 128, isDragged);
        EXPECT_EQ(screen.pixel(20, 22), qRgb(0, 0, 0));
        EXPECT_EQ(screen.pixel(119, 22), qRgb(0, 0, 255));
        return screen.pixel(slider.markerX(128), 40) == qRgb(255, 0, 0);
    };
    EXPECT_TRUE(hasRed(true));
    EXPECT_FALSE(hasRed(false));
}

} // namespace
