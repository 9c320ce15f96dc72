#include "colour/RibbonFile.h"
#include "colour/ColorsetTable.h"
#include "colour/RibbonStops.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace Qt::Literals::StringLiterals;

TEST(RibbonFile, LastStopIsAddedAtTheMaximumUnlessItStandsThere)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"ramp.sct"_s);
    struct Row
    {
        ColorsetTable::Entry last;
        double maximum;
        size_t count;
    };
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const Row rows[] = {
        {{75, 4}, 100, 5}, // as the colour-set dialog writes 4 colours over 0 to 100
        {{100, 4}, 100, 4}, {{std::nextafter(100, 0), 4}, 100, 5}, {{120, 4}, 100, 5}, {{75, 4}, nan, 5},
    };
    for (const Row &row : rows) {
        ColorsetTable table;
        table.minimum = -10; // the first entry is taken as it stands
        table.maximum = row.maximum;
        table.entries = {{0, 1}, {25, 2}, {50, 3}, row.last};
        table.count = 7; // does not count
        ASSERT_TRUE(table.save(path));
        RibbonStops ribbon;
        ribbon.select(0);
        ribbon.setBand(0, 110);
        ASSERT_TRUE(RibbonFile::LoadRibbon(ribbon, path));
        ASSERT_EQ(ribbon.stops().size(), row.count) << row.last.value;
        EXPECT_EQ(ribbon.minimum(), -10);
        EXPECT_EQ(ribbon.selected(), -1);
        EXPECT_EQ(ribbon.stops()[3].value, row.last.value);
        EXPECT_EQ(ribbon.stops().back().color, 4U);
        if (row.maximum == 100) {
            EXPECT_EQ(ribbon.stops().back().value, 100);
            EXPECT_EQ(ribbon.stops()[2].position, 50);
        }
    }
}

TEST(RibbonFile, WhatIsSavedComesBack)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"ribbon.tmp"_s);
    RibbonStops ribbon;
    ribbon.replaceAll({{0, 0x10203, -0.1}, {0, 0xFF, 1.0 / 3}, {0, 0xFFFFFF, 0.7}}, -0.1, 0.7);
    ASSERT_TRUE(RibbonFile::SaveRibbon(ribbon, path));
    ColorsetTable table;
    ASSERT_TRUE(table.load(path));
    EXPECT_EQ(table.count, 3);
    EXPECT_EQ(table.step, (0.7 - -0.1) / 3);
    RibbonStops back;
    ASSERT_TRUE(RibbonFile::LoadRibbon(back, path));
    EXPECT_EQ(back.stops(), ribbon.stops());
    EXPECT_EQ(back.minimum(), -0.1);
    EXPECT_EQ(back.maximum(), 0.7);
    EXPECT_TRUE(back.undo()); // an import can be taken back
    EXPECT_EQ(back.stops(), RibbonStops().stops());
    EXPECT_FALSE(RibbonFile::SaveRibbon(ribbon, folder.filePath(u"none/ribbon.tmp"_s)));
}

TEST(RibbonFile, WithoutEntriesLeavesTheRibbonAlone)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"ribbon.tmp"_s);
    ASSERT_TRUE(ColorsetTable().save(path));
    RibbonStops ribbon;
    EXPECT_FALSE(RibbonFile::LoadRibbon(ribbon, path));
    EXPECT_EQ(ribbon.stops(), RibbonStops().stops());
    EXPECT_FALSE(ribbon.canUndo());
}

} // namespace
