#include "controls/DIB.h"

#include <QBuffer>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace {

QImage rainbow(int side)
{
    QImage image(side, side, QImage::Format_RGB32);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            image.setPixel(x, y, QColor::fromHsv(359 * x / side, 255 * y / side, 255).rgb());
    }
    return image;
}

/// How far the mean colour of @p dib is from that of @p image, the worst channel.
double meanError(const CDIB &dib, const QImage &image)
{
    const QImage shown = dib.ToImage().convertToFormat(QImage::Format_RGB32);
    double sums[3] = {};
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb a = shown.pixel(x, y), b = image.pixel(x, y);
            sums[0] += qRed(a) - qRed(b);
            sums[1] += qGreen(a) - qGreen(b);
            sums[2] += qBlue(a) - qBlue(b);
        }
    }
    const double area = double(image.width()) * image.height();
    return std::max({std::abs(sums[0]), std::abs(sums[1]), std::abs(sums[2])}) / area;
}

TEST(DIB, EveryDepthBecomesEveryOther)
{
    const QImage image = rainbow(60);
    for (const int from : {1, 4, 8, 24, 32}) {
        for (const int to : {1, 4, 8, 24, 32}) {
            for (const bool dither : {false, true}) {
                CDIB dib(image);
                ASSERT_TRUE(dib.ConvertTo(from, dither));
                ASSERT_TRUE(dib.ConvertTo(to, dither)) << from << ' ' << to;
                EXPECT_EQ(dib.GetBitCount(), to);
                const qsizetype colors = dib.GetPalette().size();
                EXPECT_LE(colors, to > 8 ? 0 : 1 << to);
                EXPECT_EQ(colors > 0, to <= 8);
                EXPECT_EQ(dib.GetRowBytes() % 4, 0);
                for (int i = 0; to != 1 && colors > 0 && i < dib.GetRowBytes() / 4 * 4 && i < 60; ++i)
                    EXPECT_LT(dib.GetBits()[i], colors);
                if (from > 1 && to > 1 && dither) {
                    EXPECT_LT(meanError(dib, image), 4.0) << from << ' ' << to;
                }
            }
        }
    }
    CDIB dib(image);
    EXPECT_FALSE(dib.ConvertTo(16));
    EXPECT_EQ(dib.GetBitCount(), 24);
    EXPECT_FALSE(CDIB().ConvertTo(8));
}

TEST(DIB, FewColorsAreKeptExactlyAndManyAreChosenToSuit)
{
    QImage few(50, 50, QImage::Format_RGB32);
    for (int i = 0; i < 2500; ++i)
        few.setPixel(i % 50, i / 50, qRgb(i % 16, 200, 7)); // colours that are close together
    CDIB dib(few);
    ASSERT_TRUE(dib.ConvertTo(4));
    EXPECT_EQ(dib.ToImage().convertToFormat(QImage::Format_RGB32), few);
    CDIB reduced(rainbow(200));
    ASSERT_TRUE(reduced.ConvertTo(8));
    EXPECT_LT(meanError(reduced, rainbow(200)), 2.0);
    EXPECT_GT(reduced.GetPalette().size(), 200);
}

TEST(DIB, PaletteFollowsTheDepth)
{
    CDIB dib;
    EXPECT_FALSE(dib.SetPalette({qRgb(1, 2, 3)}));
    ASSERT_TRUE(dib.Create(3, 2, 4));
    EXPECT_EQ(dib.GetPalette().size(), 16);
    EXPECT_EQ(dib.ToImage().pixel(2, 1), qRgb(255, 255, 255));
    EXPECT_FALSE(dib.SetPalette(QList<QRgb>(17, 0)));
    ASSERT_TRUE(dib.SetPalette({qRgb(9, 8, 7)}));
    EXPECT_EQ(dib.ToImage().pixel(0, 0), qRgb(0, 0, 0)); // index 15 has a colour all the same
    dib.GetBits()[0] = 0;
    EXPECT_EQ(dib.ToImage().pixel(0, 0), qRgb(9, 8, 7));
}

TEST(DIB, SizesThatCannotBeAreRefused)
{
    CDIB dib;
    for (const auto &[width, height] : {std::pair(0, 5), {5, -1}, {CDIB::greatestSide + 1, 1}, {30000, 30000}}) {
        EXPECT_FALSE(dib.Create(width, height, 24)) << width;
        EXPECT_TRUE(dib.IsNull());
    }
    ASSERT_TRUE(dib.Create(10, 10, 8));
    EXPECT_FALSE(dib.Scale(0, 10));
    ASSERT_TRUE(dib.Scale(21, 5));
    EXPECT_EQ(QSize(dib.GetWidth(), dib.GetHeight()), QSize(21, 5));
    EXPECT_EQ(dib.GetBitCount(), 8);
}

TEST(DIB, FilesComeBackAsTheyWereSaved)
{
    const QTemporaryDir folder;
    for (const char *format : {"png", "bmp"}) {
        for (const int depth : {1, 4, 8, 24}) {
            CDIB dib(rainbow(33));
            ASSERT_TRUE(dib.ConvertTo(depth));
            const QString path = folder.filePath(QStringLiteral("a%1.%2").arg(depth).arg(QLatin1String(format)));
            QString error;
            ASSERT_TRUE(dib.Save(path, {}, &error)) << error.toStdString();
            CDIB read;
            ASSERT_TRUE(read.Load(path, &error)) << error.toStdString();
            EXPECT_EQ(read.ToImage().convertToFormat(QImage::Format_RGB32),
                      dib.ToImage().convertToFormat(QImage::Format_RGB32))
                << path.toStdString();
        }
    }
}

TEST(DIB, PixelsBeyondThePaletteAreBlack)
{
    for (const QImage::Format format : {QImage::Format_Indexed8, QImage::Format_Mono}) {
        for (const int colors : {0, 1, 3}) {
            QImage image(5, 3, format);
            image.setColorTable(QList<QRgb>(colors, qRgb(255, 0, 0)));
            image.fill(1);
            if (format == QImage::Format_Indexed8)
                image.scanLine(2)[4] = 200;
            CDIB bitmap(image);
            ASSERT_TRUE(bitmap.Scale(50, 30)) << format << ' ' << colors;
            ASSERT_TRUE(bitmap.ConvertTo(32));
            if (format == QImage::Format_Indexed8 && colors > 0) {
                EXPECT_EQ(bitmap.ToImage().pixel(49, 29), qRgb(0, 0, 0)) << colors;
            }
        }
    }
}

TEST(DIB, PicturesUpToTheGreatestAreaAreRead)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("large.png"));
    CDIB large;
    ASSERT_TRUE(large.Create(7000, 7000, 1)); // beyond what Qt reads unasked
    QString error;
    ASSERT_TRUE(large.Save(path, {}, &error)) << error.toStdString();
    EXPECT_TRUE(CDIB().Load(path, &error)) << error.toStdString();
}

TEST(DIB, BadFilesAreRefusedWithAText)
{
    const QTemporaryDir folder;
    CDIB good(rainbow(300));
    const QString whole = folder.filePath(QStringLiteral("whole.png"));
    ASSERT_TRUE(good.Save(whole));
    QFile file(whole);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QByteArray huge = bytes;
    huge.replace(16, 8, QByteArray("\x00\x00\x75\x30\x00\x00\x75\x30", 8)); // 30,000 by 30,000
    const QByteArray rows[] = {QByteArray(), QByteArray("no image"), bytes.left(bytes.size() / 2), huge};
    for (const QByteArray &row : rows) {
        QBuffer buffer;
        buffer.setData(row);
        buffer.open(QIODevice::ReadOnly);
        QString error;
        CDIB dib(good);
        EXPECT_FALSE(dib.Load(buffer, QStringLiteral("x"), &error)) << row.size();
        EXPECT_FALSE(error.isEmpty());
        EXPECT_EQ(dib.GetWidth(), 300); // what was there stays
    }
    QString error;
    EXPECT_FALSE(good.Load(folder.path(), &error));
    EXPECT_FALSE(good.Load(folder.filePath(QStringLiteral("missing.png")), &error));
    EXPECT_FALSE(good.Save(whole, "no-format", &error));
    EXPECT_FALSE(CDIB().Save(whole, {}, &error));
    EXPECT_TRUE(CDIB().Load(whole)); // the failed saves left it whole
}

TEST(DIB, DrawsAPieceScaled)
{
    CDIB dib;
    ASSERT_TRUE(dib.Create(2, 1, 8));
    dib.GetBits()[0] = 0;
    QImage canvas(20, 10, QImage::Format_RGB32);
    canvas.fill(Qt::red);
    QPainter painter(&canvas);
    dib.Draw(painter, QRect(0, 0, 10, 10), QRect(0, 0, 1, 1));
    CDIB().Draw(painter, canvas.rect());
    EXPECT_EQ(canvas.pixelColor(5, 5), QColor(Qt::black));
    EXPECT_EQ(canvas.pixelColor(15, 5), QColor(Qt::red));
}

} // namespace
