#include "colour/ChannelBar.h"
#include "colour/HsbPicker.h"
#include "colour/HueSaturationCircle.h"
#include "colour/RgbCubePicker.h"
#include "colour/RgbCubeView.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

double distance(const QPointF &a, const QPointF &b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

int difference(QRgb pixel, const RGBType &color)
{
    return std::max({std::abs(qRed(pixel) - color.red), std::abs(qGreen(pixel) - color.green),
                     std::abs(qBlue(pixel) - color.blue)});
}

TEST(HueSaturationDisc, EveryHueAndSaturationComesBackFromItsPlace)
{
    const HueSaturationDisc disc{{130.5, 77.25}, 61.0};
    for (int hue = 0; hue < 360; ++hue) {
        for (int saturation = 1; saturation < 256; ++saturation) {
            const QPointF point = disc.pointOf({double(hue), double(saturation)});
            ASSERT_EQ(HueSaturationDisc::rounded(disc.at(point), 9), HSVType(hue, saturation, 9));
        }
    }
    EXPECT_EQ(HueSaturationDisc::rounded(disc.at(disc.centre), 9), HSVType(0, 0, 9));
    EXPECT_EQ(HueSaturationDisc::rounded(disc.at(disc.centre + QPointF(900, -900)), 9), HSVType(45, 255, 9));
    EXPECT_EQ(HueSaturationDisc::rounded({359.6, 255}, 9), HSVType(0, 255, 9));
}

TEST(HueSaturationDisc, PictureShowsWhatIsPickedThere)
{
    constexpr int pixels = 150;
    const QImage picture = HueSaturationDisc::picture(pixels);
    const HueSaturationDisc disc{{pixels / 2.0, pixels / 2.0}, pixels / 2.0};
    for (int y = 0; y < pixels; ++y) {
        for (int x = 0; x < pixels; ++x) {
            const QPointF point(x + 0.5, y + 0.5);
            const QRgb pixel = picture.pixel(x, y);
            if (disc.contains(point, -1)) { // half a degree is 2 levels
                ASSERT_LE(difference(pixel, HueSaturationDisc::rounded(disc.at(point), 255).toRGB()), 4)
                    << x << ' ' << y;
            } else if (!disc.contains(point, 1)) {
                ASSERT_EQ(pixel, 0U) << x << ' ' << y;
            }
        }
    }
}

TEST(RgbCubeProjection, EveryColourShowsWhereItsMarkerStands)
{
    const RgbCubeProjection cube{{101.5, 88}, 90};
    for (int red = 0; red < 256; red += 5) {
        for (int green = 0; green < 256; green += 5) {
            for (int blue = 0; blue < 256; blue += 5) {
                const RGBType color(red, green, blue);
                const RgbCubeProjection::Position position = RgbCubeProjection::positionOf(color);
                const QPointF point = cube.pointOf(position);
                ASSERT_EQ(RgbCubeProjection::rounded(cube.surfaceAt(point, color).position), color);
                for (int channel = 0; channel < 3; ++channel) {
                    const double fixed = position[std::size_t(channel)];
                    ASSERT_EQ(RgbCubeProjection::rounded(cube.onPlane(point, channel, fixed)), color);
                }
            }
        }
    }
}

TEST(RgbCubeProjection, PictureShowsWhatIsPickedThere)
{
    const RgbCubeProjection cube{{60, 62}, 55};
    const RgbCubeProjection inner{cube.centre, 54};
    const RgbCubeProjection around{cube.centre, 56};
    const QImage outer = cube.outerPicture(240, 240, 2.0);
    QImage picture;
    for (const RGBType &cut : {RGBType(255, 255, 255), RGBType(0, 0, 0), RGBType(200, 30, 90), RGBType(255, 128, 7)}) {
        RgbCubeProjection::cutPicture(outer, cut, picture);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QPointF point((x + 0.5) / 2, (y + 0.5) / 2);
                const QRgb pixel = picture.pixel(x, y);
                if (inner.contains(point)) {
                    ASSERT_LE(difference(pixel, RgbCubeProjection::rounded(cube.surfaceAt(point, cut).position)), 1);
                } else if (!around.contains(point)) {
                    ASSERT_EQ(pixel, 0U) << x << ' ' << y;
                }
            }
        }
    }
}

TEST(HsbPicker, MarkerStaysWhereItWasPutAndLeavesTheDiscByTheRimOnly)
{
    HsbPicker picker;
    picker.resize(640, 600); // half a degree is more than a pixel at the rim
    picker.show();
    picker.setColor({-5, 999, 200});
    EXPECT_EQ(picker.color(), HSVType(0, 255, 200));
    auto *circle = picker.findChild<HueSaturationCircle *>();
    QSignalSpy picked(&picker, &HsbPicker::colorPicked);
    const HueSaturationDisc disc = circle->disc();
    for (const QPoint &offset : {QPoint(37, -211), QPoint(-170, 160), QPoint(3, 2), QPoint(-200, -13)}) {
        const QPoint point = disc.centre.toPoint() + offset;
        QTest::mouseClick(circle, Qt::LeftButton, {}, point);
        picker.setColor(picker.color());
        EXPECT_LT(distance(circle->markerPoint(), point), 1.0);
        EXPECT_EQ(picker.color(), HueSaturationDisc::rounded(disc.at(point), 200));
    }
    EXPECT_EQ(picked.count(), 4);
    QTest::mousePress(circle, Qt::LeftButton, {}, disc.centre.toPoint());
    QTest::mouseMove(circle, disc.centre.toPoint() - QPoint(0, 2000));
    QTest::mouseRelease(circle, Qt::LeftButton, {}, disc.centre.toPoint() - QPoint(0, 2000));
    EXPECT_EQ(picker.color(), HSVType(90, 255, 200));
    QTest::mouseClick(circle, Qt::LeftButton, {}, QPoint(1, 1)); // beside the disc
    EXPECT_EQ(picker.color(), HSVType(90, 255, 200));

    auto *bar = picker.findChild<ChannelBar *>();
    QTest::mouseClick(bar, Qt::LeftButton, {}, QPoint(bar->width() / 2, int(bar->yOf(100))));
    EXPECT_NEAR(picker.color().value, 100, 1);
    EXPECT_NEAR(circle->markerPoint().x(), disc.centre.x(), 1.0);
}

struct KeyRow
{
    int key;
    Qt::KeyboardModifiers modifiers;
    std::array<int, 3> after;
};

TEST(HsbPicker, KeysReachEveryHueAndGreyComesBackToItsHue)
{
    HsbPicker picker;
    auto *circle = picker.findChild<HueSaturationCircle *>();
    auto *bar = picker.findChild<ChannelBar *>();
    const auto colors = [&] { return std::array{picker.color().hue, picker.color().saturation, picker.color().value}; };
    picker.setColor({359, 250, 255});
    for (const KeyRow &row : {KeyRow{Qt::Key_Right, {}, {0, 250, 255}}, KeyRow{Qt::Key_Left, {}, {359, 250, 255}},
                              KeyRow{Qt::Key_Left, Qt::ShiftModifier, {349, 250, 255}},
                              KeyRow{Qt::Key_Up, Qt::ControlModifier, {349, 255, 255}},
                              KeyRow{Qt::Key_PageDown, {}, {349, 239, 255}}, KeyRow{Qt::Key_Home, {}, {349, 0, 255}},
                              KeyRow{Qt::Key_Up, {}, {349, 1, 255}}, KeyRow{Qt::Key_End, {}, {349, 255, 255}}}) {
        QTest::keyClick(circle, Qt::Key(row.key), row.modifiers);
        EXPECT_EQ(colors(), row.after) << row.key;
    }
    picker.setColor({0, 0, 128}); // grey, as conversions tell it
    QTest::keyClick(circle, Qt::Key_Up);
    EXPECT_EQ(colors(), (std::array{349, 1, 128}));
    for (const KeyRow &row :
         {KeyRow{Qt::Key_Up, {}, {349, 1, 129}}, KeyRow{Qt::Key_Down, Qt::ShiftModifier, {349, 1, 113}},
          KeyRow{Qt::Key_End, {}, {349, 1, 255}}, KeyRow{Qt::Key_Home, {}, {349, 1, 0}}}) {
        QTest::keyClick(bar, Qt::Key(row.key), row.modifiers);
        EXPECT_EQ(colors(), row.after) << row.key;
    }
}

TEST(RgbCubePicker, PicksWhatShowsAndDragsOnTheFaceWhereItBegan)
{
    RgbCubePicker picker;
    picker.resize(500, 400);
    picker.show();
    auto *view = picker.findChild<RgbCubeView *>();
    const RgbCubeProjection cube = view->cube();
    const auto marker = [&] { return cube.pointOf(RgbCubeProjection::positionOf(picker.color())); };
    picker.setColor({100, 120, 140});
    for (const QPoint &offset : {QPoint(0, -60), QPoint(70, 50), QPoint(-40, 90), QPoint(2, 3)}) {
        const QPoint point = cube.centre.toPoint() + offset;
        const RGBType shown = RgbCubeProjection::rounded(cube.surfaceAt(point, picker.color()).position);
        QTest::mouseClick(view, Qt::LeftButton, {}, point);
        EXPECT_EQ(picker.color(), shown);
        EXPECT_LE(distance(marker(), point), 1.0);
    }

    picker.setColor({40, 120, 140});
    const QSignalSpy picked(&picker, &RgbCubePicker::colorPicked);
    const QPointF onRedPlane = cube.pointOf({40, 200, 220});
    QTest::mousePress(view, Qt::LeftButton, {}, onRedPlane.toPoint());
    QTest::mouseMove(view, cube.pointOf({40, 10, 20}).toPoint());
    EXPECT_EQ(picker.color().red, 40);
    EXPECT_NEAR(picker.color().green, 10, 2);
    QTest::mouseMove(view, QPoint(-3000, 0));
    QTest::mouseRelease(view, Qt::LeftButton);
    EXPECT_EQ(picker.color().red, 40);
    EXPECT_EQ(picker.color().blue, 255);
    EXPECT_EQ(picked.count(), 3);
}

TEST(RgbCubePicker, KeysWheelAndBarsReachEveryColour)
{
    RgbCubePicker picker;
    picker.resize(500, 400);
    picker.show();
    auto *view = picker.findChild<RgbCubeView *>();
    const auto colors = [&] { return std::array{picker.color().red, picker.color().green, picker.color().blue}; };
    picker.setColor({254, 20, 300});
    for (const KeyRow &row :
         {KeyRow{Qt::Key_Right, Qt::ShiftModifier, {255, 20, 255}}, KeyRow{Qt::Key_Left, {}, {254, 20, 255}},
          KeyRow{Qt::Key_Up, {}, {254, 21, 255}}, KeyRow{Qt::Key_Down, Qt::ControlModifier, {254, 5, 255}},
          KeyRow{Qt::Key_PageDown, {}, {254, 5, 254}}, KeyRow{Qt::Key_Home, {}, {0, 0, 0}},
          KeyRow{Qt::Key_End, {}, {255, 255, 255}}}) {
        QTest::keyClick(view, Qt::Key(row.key), row.modifiers);
        EXPECT_EQ(colors(), row.after) << row.key;
    }
    // The wheel slides the face under the mouse, here that of most green, inwards.
    const QPointF top = view->cube().pointOf({128, 255, 128});
    QWheelEvent wheel(top, view->mapToGlobal(top), {}, {0, -240}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    view->clearFocus();
    QApplication::sendEvent(view, &wheel);
    EXPECT_EQ(colors(), (std::array{255, 255, 255})) << "without the focus";
    ASSERT_TRUE(QTest::qWaitForWindowActive(&picker));
    view->setFocus();
    QApplication::sendEvent(view, &wheel);
    EXPECT_EQ(colors(), (std::array{255, 253, 255}));
    const QList<ChannelBar *> bars = picker.findChildren<ChannelBar *>();
    ASSERT_EQ(bars.size(), 3);
    for (int i = 0; i < 3; ++i)
        bars[i]->setValue(10 * i);
    EXPECT_EQ(colors(), (std::array{0, 10, 20}));
}

} // namespace
