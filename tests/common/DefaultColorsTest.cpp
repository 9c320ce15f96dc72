#include "common/TdCommMethods.h"

#include <QSet>

#include <gtest/gtest.h>

namespace {

using namespace Qt::Literals::StringLiterals;
using Methods = CTdCommMethods;

TEST(DefaultColors, AreNamedByTheirParts)
{
    struct Row
    {
        int index;
        COLORREF color;
        QString name;
    };
    const Row rows[] = {
        {0, 0xFFFFFF, u"RGB(255 , 255 ,255)"_s},
        {1, 0xBDBEFF, u"RGB(255 , 190 ,189)"_s},
        {25, 0x0000FF, u"RGB(255 , 0 ,0)"_s},
        {60, 0x848284, u"RGB(132 , 130 ,132)"_s},
        {108, 0x000000, u"RGB(0 , 0 ,0)"_s},
        {119, 0x63458C, u"RGB(140 , 69 ,99)"_s},
        {-1, 0, u"RGB(0 , 0 ,0)"_s},
        {120, 0, u"RGB(0 , 0 ,0)"_s},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(Methods::GetDefaultColor(row.index), row.color) << row.index;
        EXPECT_EQ(Methods::GetDefaultColorName(row.index), row.name) << row.index;
    }
}

TEST(DefaultColors, EntriesTwoAndThreeAreTheSameInATableOf120)
{
    QList<QRgb> palette = {1, 2, 3};
    int count = 0;
    ASSERT_TRUE(Methods::CreateDefaultColorTable(palette, count));
    ASSERT_EQ(count, 120);
    ASSERT_EQ(palette.size(), 120);
    EXPECT_EQ(palette[1], qRgb(255, 190, 189));
    EXPECT_EQ(palette[2], palette[3]);
    EXPECT_EQ(QSet<QRgb>(palette.begin(), palette.end()).size(), 119);
}

} // namespace
