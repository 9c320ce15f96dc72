#include "engine/symbol/TxColorFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

CTxColorFolder folderOf(const QList<COLORREF> &colors)
{
    CTxColorFolder folder;
    for (const COLORREF color : colors)
        folder.Add(color);
    return folder;
}

TEST(ColorFolder, GradientsRoundToTheNearest)
{
    CTxColorFolder ramp;
    ramp.MakeGradient(5, 0x000000, 0x0A0203);
    EXPECT_EQ(ramp.GetColors(), (QList<COLORREF>{0x000000, 0x030101, 0x050102, 0x080202, 0x0A0203}));
    ramp.MakeGradient(1, 0x112233, 0xFFFFFF);
    EXPECT_EQ(ramp.GetColors(), QList<COLORREF>{0x112233});
    EXPECT_EQ(ramp.MakeGradient(3, ramp), 3) << "through its own colours";
    EXPECT_EQ(ramp.GetColors(), QList<COLORREF>(3, 0x112233));
}

TEST(ColorFolder, GradientsAreWhatWholeNumbersGive)
{
    QList<COLORREF> many;
    for (quint32 i = 0; i < 5000; ++i)
        many.append(i * 2654435761U >> 8);
    const QList<COLORREF> lists[] = {{0x000000, 0xFFFFFF}, {0xFF00FF, 0x00FF01, 0x807F80}, many.first(17), many};
    for (const QList<COLORREF> &through : lists) {
        // 511 and 2041 steps hit many places that lie just between two numbers.
        for (const qint32 count : {2, 3, 256, 511, 512, 2041, 4999, 5000, 5001, 99991, 1 << 20}) {
            CTxColorFolder ramp;
            ramp.MakeGradient(count, folderOf(through));
            const qint64 pieces = through.size() - 1, steps = count - 1;
            qint32 wrong = 0;
            for (qint64 i = 0; i < count; ++i) {
                const COLORREF from = through[i * pieces / steps];
                const COLORREF to = through[std::min(i * pieces / steps + 1, pieces)];
                const qint64 rest = i * pieces % steps;
                for (const auto part : {TxColorRef::red, TxColorRef::green, TxColorRef::blue}) {
                    const qint64 twice = 2 * (part(from) * (steps - rest) + part(to) * rest);
                    wrong += part(ramp.GetAt(static_cast<qint32>(i))) != (twice + steps) / (2 * steps);
                }
            }
            EXPECT_EQ(wrong, 0) << count << " colours through " << through.size();
        }
    }
}

TEST(ColorFolder, GradientsOfNothingAreEmpty)
{
    for (const qint32 count : {-2147483647 - 1, -1, 0, CTxColorFolder::maxGradientCount + 1, 2147483647}) {
        CTxColorFolder ramp = folderOf({1, 2});
        EXPECT_EQ(ramp.MakeGradient(count, 1, 2), 0);
        EXPECT_EQ(ramp.GetCount(), 0);
    }
    CTxColorFolder ramp = folderOf({1, 2});
    EXPECT_EQ(ramp.MakeGradient(5, CTxColorFolder()), 0);
    EXPECT_EQ(ramp.GetCount(), 0);
}

TEST(ColorFolder, IndicesOutOfRangeAreRefused)
{
    CTxColorFolder folder = folderOf({1, 2, 3});
    for (const qint32 index : {-1, 3}) {
        EXPECT_EQ(folder.GetAt(index), 0U);
        EXPECT_FALSE(folder.SetAt(index, 9));
        EXPECT_FALSE(folder.RemoveAt(index));
    }
    folder.InsertAt(-5, 0);
    folder.InsertAt(99, 4);
    EXPECT_TRUE(folder.SetAt(1, 7) && folder.RemoveAt(2));
    EXPECT_EQ(folder.GetColors(), (QList<COLORREF>{0, 7, 3, 4}));
}

} // namespace
