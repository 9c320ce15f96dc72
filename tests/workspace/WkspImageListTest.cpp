#include "workspace/WkspImageList.h"

#include <QImage>
#include <QSet>

#include <gtest/gtest.h>

namespace {

using List = CTdWkspImageList;

List list(int size = 1)
{
    List result;
    result.InitImageList(size);
    return result;
}

TEST(WkspImageList, TakesTwoSizesOnly)
{
    List images;
    EXPECT_EQ(images.InitImageList(0), 1);
    EXPECT_EQ(images.imageSize(), QSize(32, 32));
    EXPECT_EQ(images.InitImageList(1), 1);
    EXPECT_EQ(images.imageSize(), QSize(16, 16));
    EXPECT_EQ(images.GetImageCount(), 56);
    for (const int size : {2, -1, 16}) {
        EXPECT_EQ(images.InitImageList(size), 0);
        EXPECT_EQ(images.GetImageCount(), 0) << "what was there before goes first";
        EXPECT_TRUE(images.icon(0).isNull());
    }
}

TEST(WkspImageList, KnowsNoTypeBeforeItIsMade)
{
    EXPECT_EQ(List().GetImageIndex(List::ImageUnknown), 0);
    EXPECT_EQ(List().GetImageIndex(CElemDatasetInfo::Point, 1), 0);
}

TEST(WkspImageList, EveryTypeHasItsOwnIndexAndOtherNumbersZero)
{
    QSet<int> indices;
    for (int type = -1; type <= 101; ++type)
        indices.insert(list().GetImageIndex(List::ImageType(type)));
    EXPECT_EQ(indices.size(), 56);
    const std::pair<int, int> ends[] = {
        {0, 0},   {20, 20}, {51, 21}, {54, 24}, {21, 25},     {24, 28},    {31, 29},
        {32, 30}, {25, 31}, {30, 36}, {33, 37}, {50, 54},     {100, 55}, // of the ranges
        {-1, 0},  {55, 0},  {99, 0},  {101, 0}, {INT_MAX, 0}, {INT_MIN, 0}};
    for (const auto &[type, index] : ends)
        EXPECT_EQ(list().GetImageIndex(List::ImageType(type)), index) << type;
}

TEST(WkspImageList, DatasetsShowOpenAndClosed)
{
    struct Row
    {
        int type, open, closed;
    };
    const Row rows[] = {{1, 25, 26},   {5, 31, 32},   {35, 37, 38},  {101, 41, 42}, {139, 39, 40},
                        {149, 35, 36}, {0, 49, 49},   {81, 50, 50},  {85, 54, 54},  {6, 55, 55},
                        {33, 55, 55},  {137, 55, 55}, {150, 55, 55}, {-5, 55, 55}};
    for (const Row &row : rows) {
        const auto type = CElemDatasetInfo::Type(row.type);
        EXPECT_EQ(list().GetImageIndex(type, 1), row.open) << row.type;
        EXPECT_EQ(list().GetImageIndex(type, -7), row.open) << "anything but 0 is open";
        EXPECT_EQ(list().GetImageIndex(type, 0), row.closed) << row.type;
    }
    EXPECT_EQ(list().GetImageIndex(static_cast<const CTxDataSource *>(nullptr)), 0);
    EXPECT_EQ(list().GetImageIndex(static_cast<const CTxDataset *>(nullptr), 1), 55);
}

TEST(WkspImageList, DrawsEveryIconDifferentlyAtTheScreensScale)
{
    const List images = list();
    for (const qreal scale : {1.0, 2.0}) {
        QSet<QByteArray> seen;
        for (int index = 0; index < List::imageCount; ++index) {
            const QPixmap pixmap = images.icon(index).pixmap(images.imageSize(), scale);
            ASSERT_EQ(pixmap.size(), images.imageSize() * scale) << index;
            const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
            seen.insert(QByteArray(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes()));
        }
        EXPECT_EQ(seen.size(), List::imageCount) << "each is drawn, and unlike all others";
    }
}

TEST(WkspImageList, SelectedLooksAsOtherwiseAndDisabledDoesNot)
{
    const QIcon icon = list(0).icon(0);
    const auto image = [&icon](QIcon::Mode mode) { return icon.pixmap(QSize(32, 32), 1.0, mode).toImage(); };
    EXPECT_EQ(image(QIcon::Selected), image(QIcon::Normal));
    EXPECT_NE(image(QIcon::Disabled), image(QIcon::Normal));
}

} // namespace
