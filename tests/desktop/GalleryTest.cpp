#include "Gallery.h"
#include "DesktopFixture.h"

#include <QImage>
#include <QProcess>
#include <QSet>

namespace {

using GalleryRun = DesktopFixture;

/// How many different colours a picture has, at most 50.
int colours(const QImage &picture)
{
    QSet<QRgb> seen;
    for (int y = 0; y < picture.height() && seen.size() < 50; ++y)
        for (int x = 0; x < picture.width(); ++x)
            seen << picture.pixel(x, y);
    return static_cast<int>(std::min<qsizetype>(seen.size(), 50));
}

TEST_F(GalleryRun, DrawsEveryWindowInEveryPaletteAndScale)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(TERRAVOX_PROGRAM),
                  {u"--gallery"_s, folder.filePath(u"pictures"_s), districts(), towns()});
    ASSERT_TRUE(process.waitForFinished(200000));
    ASSERT_EQ(process.exitCode(), 0) << process.readAll().toStdString();

    // Questions break their lines by the width of the screen, which is half as wide at twice the size; lists end with
    // it.
    const QStringList wrapped = {u"close-question"_s, u"delete"_s, u"colour-stock-list"_s};
    for (const QString &window : Gallery::windows()) {
        QImage pictures[2][2];
        for (const bool dark : {false, true}) {
            for (const int scale : {1, 2}) {
                const QString name = Gallery::fileName(window, dark, scale);
                QImage &picture = pictures[dark][scale - 1];
                ASSERT_TRUE(picture.load(folder.filePath(u"pictures/"_s + name))) << name.toStdString();
                EXPECT_GE(colours(picture), 5) << name.toStdString() << " is blank";
            }
            // Text widths differ by a few pixels between the scales.
            const QSize once = pictures[dark][0].size();
            const QSize twice = pictures[dark][1].size();
            if (wrapped.contains(window))
                continue;
            EXPECT_NEAR(twice.width(), 2 * once.width(), once.width() / 20 + 4) << window.toStdString();
            EXPECT_NEAR(twice.height(), 2 * once.height(), once.height() / 20 + 4) << window.toStdString();
        }
        EXPECT_NE(pictures[0][0], pictures[1][0]) << window.toStdString() << " takes no notice of the palette";
    }
}

} // namespace
