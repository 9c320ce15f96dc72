#include "engine/symbol/PointSymbols.h"
#include "engine/symbol/TxBrushStyleFolder.h"
#include "engine/symbol/TxEspecialFill.h"
#include "engine/symbol/TxFillStyleLib.h"
#include "engine/symbol/TxGDIMaker.h"
#include "engine/symbol/TxGeoStyle.h"
#include "engine/symbol/TxLineStyleEngine.h"
#include "engine/symbol/TxLineStyleLib.h"
#include "engine/symbol/TxStyleSample.h"
#include "engine/symbol/TxSymbolLib.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <set>

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

QImage drawn(QSize size, const std::function<void(QPainter &)> &draw)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    draw(painter);
    return image;
}

/// The box of the pixels that are not clear.
QRect inked(const QImage &image)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 8)
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

double ink(const QImage &image)
{
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += qAlpha(image.pixel(x, y)) / 255.0;
    }
    return sum;
}

CTxGeoStyle styleOf(qint32 line, qint32 fill, qint32 symbol)
{
    CTxGeoStyle style;
    style.lineStyle = line;
    style.lineBackColor = Qt::red;
    style.lineWidth = 2;
    style.fillStyle = fill;
    style.fillBackColor = Qt::transparent;
    style.symbolStyle = symbol;
    style.symbolSize = 24;
    return style;
}

TEST(StyleLibrary, EveryStyleDrawsSomethingOfItsOwnWithinItsBox)
{
    struct Row
    {
        const CTxStyleLibrary &library;
        int least;
        std::function<void(QPainter &, qint32)> draw;
    };
    const QRectF box(10, 10, 80, 30);
    const CTxLineStyleLib lines;
    const CTxFillStyleLib fills;
    const CTxSymbolLib symbols;
    const Row rows[] = {
        {lines, 12, [&](QPainter &p, qint32 id) { TxStyleSample::drawLine(p, box, styleOf(id, 0, 0)); }},
        {fills, 16, [&](QPainter &p, qint32 id) { TxStyleSample::drawFill(p, box, styleOf(0, id, 0), false); }},
        {symbols, 24, [&](QPainter &p, qint32 id) { TxStyleSample::drawSymbol(p, box, styleOf(0, 0, id)); }},
    };
    for (const Row &row : rows) {
        std::set<QString> names;
        std::set<QByteArray> pictures;
        std::set<qint32> ids;
        EXPECT_GE(row.library.GetCount(), row.least);
        for (qint32 index = 0; index < row.library.GetCount(); ++index) {
            const qint32 id = row.library.GetAt(index);
            EXPECT_EQ(row.library.FindByID(id), index);
            const QImage image = drawn({100, 50}, [&](QPainter &painter) { row.draw(painter, id); });
            const QRect used = inked(image);
            const QString name = row.library.GetName(id);
            const bool isEmptyFill = &row.library == &fills && id == 1;
            EXPECT_EQ(used.isEmpty(), isEmptyFill) << qPrintable(name);
            EXPECT_TRUE(isEmptyFill || box.toRect().contains(used)) << qPrintable(name);
            names.insert(name);
            ids.insert(id);
            pictures.insert(QByteArray(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes()));
        }
        const size_t count = static_cast<size_t>(row.library.GetCount());
        EXPECT_EQ(ids.size(), count);
        EXPECT_EQ(names.size(), count);
        EXPECT_EQ(pictures.size(), count);
        EXPECT_EQ(row.library.GetAt(-1), -1);
        EXPECT_EQ(row.library.GetAt(row.library.GetCount()), -1);
        EXPECT_TRUE(row.library.GetName(-7).isEmpty());
        EXPECT_EQ(drawn({100, 50}, [&](QPainter &painter) { row.draw(painter, 9999); }),
                  drawn({100, 50}, [&](QPainter &painter) { row.draw(painter, 0); }));
    }
}

TEST(PointSymbols, FillTheirBoxAndStandUpright)
{
    const CTxSymbolLib library;
    const QStringList mirrored = {QStringLiteral("Circle"),   QStringLiteral("Square"), QStringLiteral("Church"),
                                  QStringLiteral("Hospital"), QStringLiteral("Mine"),   QStringLiteral("Airport"),
                                  QStringLiteral("Conifer"),  QStringLiteral("Harbour")};
    for (const auto &row : PointSymbols::rows()) {
        const CTxSymbol symbol(styleOf(0, 0, row.key.id));
        const auto at = [&](double angle) {
            return drawn({60, 60}, [&](QPainter &painter) { symbol.Draw(&painter, {30, 30}, angle); });
        };
        const QImage upright = at(0);
        const QRect used = inked(upright);
        EXPECT_TRUE(QRect(18, 18, 24, 24).contains(used)) << row.key.name;
        EXPECT_GE(std::max(used.width(), used.height()), 21) << row.key.name;
        EXPECT_NEAR(ink(upright.transformed(QTransform().rotate(-90))), ink(at(90)), 0.5) << row.key.name;
        EXPECT_EQ(inked(upright.transformed(QTransform().rotate(-90))), inked(at(90))) << row.key.name;
        EXPECT_NEAR(ink(at(33)), ink(upright), 0.03 * ink(upright) + 1) << row.key.name;
        if (mirrored.contains(QString::fromUtf8(row.key.name))) {
            EXPECT_EQ(inked(upright.mirrored(true, false)), used) << row.key.name;
            EXPECT_NEAR(ink(upright.copy(0, 0, 30, 60)), ink(upright) / 2, 0.01 * ink(upright)) << row.key.name;
        }
        const QImage flipped = drawn({60, 60}, [&](QPainter &painter) {
            painter.setTransform(QTransform(1, 0, 0, -1, 0, 60));
            symbol.Draw(&painter, {30, 30});
        });
        EXPECT_EQ(inked(flipped), used) << row.key.name << " where y points up";
    }
}

TEST(PointSymbols, OfWholePixelsHaveSharpEdges)
{
    for (const double scale : {1.0, 1.5, 2.0}) {
        for (const int size : {7, 8, 12}) {
            CTxGeoStyle style = styleOf(0, 0, 3);
            style.symbolSize = size;
            const QImage image = drawn({60, 60}, [&](QPainter &painter) {
                painter.scale(scale, scale);
                CTxSymbol(style).Draw(&painter, {15.3, 15.6});
            });
            const int side = static_cast<int>(std::lround(size * scale));
            EXPECT_EQ(inked(image).size(), QSize(side, side));
            EXPECT_EQ(ink(image), side * side);
        }
    }
}

TEST(LineStyles, AreDrawnNoDifferentlyWhenMostOfTheLineIsOutside)
{
    const CTxLineStyleLib library;
    const QPolygonF bent({{-500, 20}, {-100, 20}, {290, 22}, {330, 26}, {480, 12}, {900, 20}});
    // Begins and ends in the middle of the picture.
    const QPolygonF ring({{300, 10}, {400, 10}, {400, 30}, {-300, 30}, {-300, 10}, {300, 10}});
    for (qint32 index = 0; index < library.GetCount(); ++index) {
        const auto style = library.CreateLineStyle(styleOf(library.GetAt(index), 0, 0));
        for (const QPolygonF &line : {bent, ring}) {
            const auto view = [&](int left, int width) {
                return drawn({width, 40}, [&](QPainter &painter) {
                    painter.translate(-left, 0);
                    style->Polyline(&painter, line.constData(), static_cast<qint32>(line.size()));
                });
            };
            const QImage part = view(250, 200);
            const QImage whole = view(0, 500).copy(250, 0, 200, 40);
            int differing = 0;
            for (int y = 0; y < 40; ++y) {
                for (int x = 0; x < 200; ++x)
                    differing += std::abs(qAlpha(part.pixel(x, y)) - qAlpha(whole.pixel(x, y))) > 100;
            }
            EXPECT_EQ(differing, 0) << qPrintable(library.GetName(index));
        }
    }
}

TEST(LineStyles, OfOpaqueColoursCoverWhatTransparentOnesDo)
{
    // Opaque lines are drawn segment by segment, transparent ones as a whole.
    const QPolygonF lines[] = {QPolygonF({{20, 20}, {60, 30}, {60, 30}, {90, 80}, {30, 70}, {40, 110}}),
                               QPolygonF({{20, 20}, {100, 30}, {60, 100}, {20, 20}})};
    for (const qint32 id : {0, 1, 7, 8, 12}) {
        for (const QPolygonF &line : lines) {
            const auto covered = [&](int alpha) {
                CTxGeoStyle style = styleOf(id, 0, 0);
                style.lineWidth = 3;
                style.lineColor.setAlpha(alpha);
                style.lineBackColor.setAlpha(alpha);
                return drawn({120, 120}, [&](QPainter &painter) {
                    CTxLineStyleObj(style).Polyline(&painter, line.constData(), static_cast<qint32>(line.size()));
                });
            };
            const QImage opaque = covered(255);
            EXPECT_NEAR(ink(opaque), ink(covered(254)), 0.01 * ink(opaque)) << id;
        }
    }
}

TEST(LineStyles, OfEndlessAndBrokenLinesTakeNoTime)
{
    const CTxLineStyleLib library;
    const QPointF lines[][4] = {{{-1e300, 5}, {1e300, 20}, {-infinity, 7}, {3, infinity}},
                                {{0, 0}, {nan, 5}, {5, nan}, {30, 30}},
                                {{4, 4}, {4, 4}, {4, 4}, {4, 4}},
                                {{-1e9, -1e9}, {1e9, 1e9}, {10, 10}, {10, 10.0000001}}};
    QElapsedTimer time;
    time.start();
    for (qint32 index = 0; index < library.GetCount(); ++index) {
        CTxGeoStyle style = styleOf(library.GetAt(index), 0, 0);
        for (const double width : {0.0, 1.0, nan, infinity}) {
            style.lineWidth = width;
            drawn({100, 50}, [&](QPainter &painter) {
                for (const auto &line : lines)
                    EXPECT_TRUE(library.CreateLineStyle(style)->Polyline(&painter, line, 4));
            });
        }
    }
    EXPECT_LT(time.elapsed(), 4000);
}

TEST(FillStyles, GoOnInOneAnotherAndTurn)
{
    const auto area = [](double left, double width, double angle) {
        return drawn({64, 64}, [&](QPainter &painter) {
            const QPointF corners[] = {{left, 0}, {left + width, 0}, {left + width, 64}, {left, 64}};
            CTxFillStyle(2, Qt::black, Qt::transparent, 8, angle).Polygon(&painter, corners, 4);
        });
    };
    const QImage whole = area(0, 64, 0);
    EXPECT_EQ(whole.copy(0, 0, 37, 64), area(0, 37, 0).copy(0, 0, 37, 64));
    EXPECT_EQ(whole.copy(37, 0, 27, 64), area(37, 27, 0).copy(37, 0, 27, 64));
    const QImage turned = area(0, 64, 90);
    EXPECT_NEAR(ink(turned), ink(whole), 0.2 * ink(whole));
    EXPECT_EQ(turned.pixel(10, 5), turned.pixel(10, 50)) << "horizontal lines became vertical ones";
    QBrush brush(Qt::red);
    EXPECT_FALSE(CTxBrushStyleFolder::CreateBrush(brush, 9999, Qt::black));
    EXPECT_EQ(brush.color(), QColor(Qt::red));
    EXPECT_TRUE(CTxBrushStyleFolder::CreateBrush(brush, 4, Qt::black));
    EXPECT_FALSE(brush.textureImage().isNull());
}

TEST(FillStyles, ShowNoSeamsBetweenTiles)
{
    struct Row
    {
        qint32 style;
        int up; // how the lines run
    };
    for (const Row &row : {Row{4, 1}, Row{5, -1}}) {
        for (const int size : {16, 20, 33}) {
            const int side = 3 * size;
            const QImage image = drawn({side + 5, side + 10}, [&](QPainter &painter) {
                QPainterPath path;
                path.addRect(0, 0, side + 5, side + 10);
                CTxFillStyle(row.style, QColor(0, 0, 0, 100), Qt::transparent, size, 0).FillPath(&painter, path);
            });
            int most = 0;
            int uneven = 0;
            for (int y = 5; y < side + 5; ++y) {
                for (int x = 0; x < side; ++x) {
                    const int alpha = qAlpha(image.pixel(x, y));
                    most = std::max(most, alpha);
                    uneven += std::abs(alpha - qAlpha(image.pixel(x + 5, y - 5 * row.up))) > 12;
                }
            }
            EXPECT_LE(most, 101) << row.style << " of size " << size << " is darker where tiles meet";
            // But for the corners, ten pixels in each of 3 x 3 tiles at most.
            EXPECT_LE(uneven, 10 * 3 * 3) << row.style << " of size " << size << " changes along its lines";
        }
    }
}

TEST(EspecialFill, GradientsRunWhereTheyAreSent)
{
    struct Row
    {
        TxGradientKind kind;
        double angle;
        QPoint first;
        QPoint last;
    };
    const Row rows[] = {{TxGradientKind::Linear, 0, {1, 20}, {38, 20}},
                        {TxGradientKind::Linear, 90, {20, 38}, {20, 1}},
                        {TxGradientKind::Linear, nan, {1, 20}, {38, 20}},
                        {TxGradientKind::Radial, 0, {20, 20}, {0, 0}},
                        {TxGradientKind::Conical, 0, {38, 19}, {38, 21}}};
    CTxColorFolder colors;
    colors.MakeGradient(1000, 0x0000FF, 0xFF0000);
    const QPointF corners[] = {{0, 0}, {40, 0}, {40, 40}, {0, 40}};
    for (const Row &row : rows) {
        const QImage image = drawn({40, 40}, [&](QPainter &painter) {
            painter.setBrushOrigin(17, 23);
            EXPECT_TRUE(CTxEspecialFill::GradientPolygon(&painter, corners, 4, row.kind, colors, row.angle));
            EXPECT_FALSE(CTxEspecialFill::GradientPolygon(&painter, corners, 4, row.kind, CTxColorFolder()));
        });
        EXPECT_GT(qRed(image.pixel(row.first)), 225);
        EXPECT_GT(qBlue(image.pixel(row.last)), 225);
    }
}

TEST(GDIMaker, GivesThePainterBackAsItWas)
{
    drawn({40, 40}, [](QPainter &painter) {
        painter.setPen(Qt::red);
        const auto isUntouched = [&] { return painter.pen().color() == QColor(Qt::red); };
        CTxGDIMaker maker;
        maker.ReleaseGDIs();
        for (int i = 0; i < 2; ++i) // the second time without a release between
            ASSERT_TRUE(maker.PrepareGDIs(&painter, CTxLineStyleLib(), CTxSymbolLib(), styleOf(12, 4, 8)));
        EXPECT_FALSE(isUntouched());
        EXPECT_TRUE(maker.GetLineStyleObject() && maker.GetSymbolObject() && maker.GetFillStyleObject());
        maker.ReleaseGDIs();
        maker.ReleaseGDIs();
        EXPECT_TRUE(isUntouched() && !maker.GetLineStyleObject() && !maker.GetSymbolObject());
        ASSERT_TRUE(maker.PrepareGDIs(&painter, CTxLineStyleLib(), CTxSymbolLib(), CTxGeoStyle(), CTxGDIMaker::Symbol));
        EXPECT_TRUE(isUntouched() && maker.GetSymbolObject() && !maker.GetLineStyleObject());
        EXPECT_FALSE(maker.PrepareGDIs(nullptr, CTxLineStyleLib(), CTxSymbolLib(), CTxGeoStyle()));
        EXPECT_FALSE(maker.GetSymbolObject());

        const QPointF ends[] = {{0, 0}, {40, 40}};
        EXPECT_FALSE(CTxLineStyleObj(CTxGeoStyle()).Polyline(ends, 2)) << "no painter is kept";
        ASSERT_TRUE(gLineStyleEngine.KeepDC(&painter));
        EXPECT_TRUE(CTxLineStyleObj(CTxGeoStyle()).Polyline(ends, 2));
        EXPECT_TRUE(gLineStyleEngine.RestoreDC() && isUntouched());
        EXPECT_FALSE(gLineStyleEngine.RestoreDC());

        ASSERT_TRUE(maker.PrepareGDIs(&painter, CTxLineStyleLib(), CTxSymbolLib(), CTxGeoStyle()));
        ASSERT_TRUE(gLineStyleEngine.KeepDC(&painter));
        painter.end();
        QPainterPath path;
        path.addRect(0, 0, 9, 9);
        EXPECT_FALSE(maker.FillPath(path)) << "the painter has ended";
        EXPECT_FALSE(CTxLineStyleObj(CTxGeoStyle()).Polyline(ends, 2));
        EXPECT_TRUE(gLineStyleEngine.RestoreDC() && !gLineStyleEngine.GetDC());
    });
}

TEST(GeoStyle, AbsurdValuesAreDrawnSomehow)
{
    for (const double value : {nan, infinity, -infinity, 0.0, -5.0, 1e300}) {
        CTxGeoStyle style = styleOf(12, 19, 16);
        style.lineWidth = style.fillSize = style.symbolSize = style.symbolAngle = style.fillAngle = value;
        style.symbolOutlineWidth = value;
        const QImage image = drawn({50, 50}, [&](QPainter &painter) {
            TxStyleSample::drawFill(painter, QRectF(0, 0, 50, 50), style);
            TxStyleSample::drawLine(painter, QRectF(0, 0, value, 20), style);
            TxStyleSample::drawSymbol(painter, QRectF(0, 0, 50, 50), style);
            EXPECT_TRUE(CTxSymbol(style).Draw(&painter, {1e300, 5}, value));
            EXPECT_FALSE(CTxSymbol(style).Draw(&painter, {value, nan}));
        });
        EXPECT_FALSE(inked(image).isEmpty());
    }
}

TEST(GeoStyle, ComesBackFromItsText)
{
    CTxGeoStyle style = styleOf(3, 7, 11);
    style.fillGradient = TxGradientKind::Conical;
    style.gradientColors.MakeStockGradient(5, 2);
    style.symbolAngle = 0.1;
    style.fillColor = QColor(1, 2, 3, 4);
    CTxGeoStyle read;
    ASSERT_TRUE(read.FromXML(style.ToXML()));
    EXPECT_EQ(read, style);
    for (const char *text : {"", "<other/>", "<geoStyle", "<geoStyle><line></geoStyle>", "<geoStyle/>x"}) {
        EXPECT_FALSE(read.FromXML(QString::fromUtf8(text))) << text;
        EXPECT_EQ(read, style);
    }
    ASSERT_TRUE(read.FromXML(QStringLiteral("<geoStyle><line width='nan' color='mud' style='x'/><new><fill size='3'/>"
                                            "</new><fill gradient='9' size='1e999'/></geoStyle>")));
    EXPECT_EQ(read, CTxGeoStyle());
}

} // namespace
