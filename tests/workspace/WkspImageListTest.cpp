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

struct RangeRow
{
    int firstType, lastType, firstIndex;
};

class ImageIndex : public testing::TestWithParam<RangeRow>
{
};

TEST_P(ImageIndex, FollowsTheType)
{
    const RangeRow &row = GetParam();
    for (int type = row.firstType; type <= row.lastType; ++type)
        EXPECT_EQ(list().GetImageIndex(List::ImageType(type)), row.firstIndex + type - row.firstType) << type;
}

INSTANTIATE_TEST_SUITE_P(Ranges, ImageIndex,
                         testing::Values(RangeRow{0, 20, 0}, RangeRow{51, 54, 21}, RangeRow{21, 24, 25},
                                         RangeRow{31, 32, 29}, RangeRow{25, 30, 31}, RangeRow{33, 50, 37},
                                         RangeRow{100, 100, 55}));

TEST(WkspImageList, GivesZeroForTypesWithoutAnImage)
{
    for (const int type : {-1, 55, 99, 101, INT_MAX, INT_MIN})
        EXPECT_EQ(list().GetImageIndex(List::ImageType(type)), 0) << type;
}

struct DatasetRow
{
    int type, open, closed;
};

class DatasetImage : public testing::TestWithParam<DatasetRow>
{
};

TEST_P(DatasetImage, ShowsOpenAndClosed)
{
    const DatasetRow &row = GetParam();
    const auto type = CElemDatasetInfo::Type(row.type);
    EXPECT_EQ(list().GetImageIndex(type, 1), row.open);
    EXPECT_EQ(list().GetImageIndex(type, -7), row.open) << "anything but 0 is open";
    EXPECT_EQ(list().GetImageIndex(type, 0), row.closed);
}

INSTANTIATE_TEST_SUITE_P(Types, DatasetImage,
                         testing::Values(DatasetRow{0, 49, 49}, DatasetRow{1, 25, 26}, DatasetRow{3, 27, 28},
                                         DatasetRow{4, 29, 30}, DatasetRow{5, 31, 32}, DatasetRow{7, 33, 34},
                                         DatasetRow{35, 37, 38}, DatasetRow{81, 50, 50}, DatasetRow{82, 51, 51},
                                         DatasetRow{83, 52, 52}, DatasetRow{84, 53, 53}, DatasetRow{85, 54, 54},
                                         DatasetRow{101, 41, 42}, DatasetRow{103, 43, 44}, DatasetRow{105, 45, 46},
                                         DatasetRow{107, 47, 48}, DatasetRow{139, 39, 40}, DatasetRow{149, 35, 36},
                                         DatasetRow{6, 55, 55}, DatasetRow{33, 55, 55}, DatasetRow{137, 55, 55},
                                         DatasetRow{150, 55, 55}, DatasetRow{-5, 55, 55}));

TEST(WkspImageList, NullObjectsHaveAnIconToo)
{
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
