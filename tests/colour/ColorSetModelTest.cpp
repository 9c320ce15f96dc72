#include "colour/ColorSetModel.h"
#include "colour/ColorsetFile.h"
#include "colour/CurrentColor.h"
#include "engine/symbol/TxColorFolder.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <limits>
#include <sys/resource.h>

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

void fillWith(ColorSetModel &model, const QList<COLORREF> &colors)
{
    for (const COLORREF color : colors)
        model.add(color);
}

TEST(CurrentColor, KeepsPartsInTheirRangesAndBothWaysInStep)
{
    struct Row
    {
        CurrentColor::Part part;
        int given;
        int stored;
    };
    const Row rows[] = {
        {CurrentColor::Hue, 400, 359},      {CurrentColor::Hue, -1, 0},    {CurrentColor::Saturation, 256, 255},
        {CurrentColor::Value, 1000, 255},   {CurrentColor::Red, 256, 255}, {CurrentColor::Green, -7, 0},
        {CurrentColor::Blue, INT_MAX, 255},
    };
    for (const Row &row : rows) {
        CurrentColor color(0x204060);
        EXPECT_TRUE(color.setPart(row.part, row.given));
        EXPECT_EQ(color.part(row.part), row.stored);
        EXPECT_FALSE(color.setPart(row.part, row.given)) << "it has the value already";
        EXPECT_TRUE(row.part <= CurrentColor::Blue ? color.hsv() == color.rgb().toHSV()
                                                   : color.rgb() == color.hsv().toRGB());
    }
    CurrentColor grey(0x808080);
    EXPECT_TRUE(grey.setPart(CurrentColor::Hue, 200));
    EXPECT_EQ(grey.part(CurrentColor::Hue), 200) << "a grey keeps the hue that the user chose";
}

TEST(ColorSetModel, SubRangeEndsWithTheListAndIsNothingWhenItIsUpsideDown)
{
    struct Row
    {
        int colors;
        qint64 start;
        qint64 end;
        std::optional<std::pair<qint32, qint32>> wanted; // first and count
    };
    const Row rows[] = {
        {5, 2, 99, {{2, 3}}}, {5, 0, 4, {{0, 5}}}, {5, 1, 2, {{1, 2}}}, {5, 4, 99, {{4, 1}}}, {5, 3, 3, {}},
        {5, 3, 2, {}},        {5, -1, 3, {}},      {5, 5, 9, {}},       {0, 0, 1, {}},        {5, 0, INT_MAX, {{0, 5}}},
    };
    for (const Row &row : rows) {
        ColorSetModel model;
        fillWith(model, QList<COLORREF>(row.colors, 1));
        const auto range = model.subRange(row.start, row.end);
        ASSERT_EQ(range.has_value(), row.wanted.has_value()) << row.start << " to " << row.end;
        if (range) {
            EXPECT_EQ(std::pair(range->first, range->count), *row.wanted);
        }
    }
}

TEST(ColorSetModel, LoadsWhatLiesInItsRangeOrTakesTheFilesRange)
{
    ColorsetTable table;
    table.minimum = -50;
    table.maximum = 500;
    table.count = 7; // not how many there are
    table.entries = {{-1, 1}, {-1e-11, 2}, {0, 3}, {50, 0xFF000004}, {100 + 1e-11, 5}, {100.1, 6}, {notANumber, 7}};

    ColorSetModel model;
    model.maximum = 100;
    model.load(table);
    EXPECT_EQ(model.folder().GetColors(), (QList<COLORREF>{2, 3, 4, 5}));
    EXPECT_EQ(model.maximum, 100.0);

    model.takesRangeOfFile = true;
    model.load(table);
    EXPECT_EQ(model.folder().GetColors(), (QList<COLORREF>{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(model.minimum, -50.0);
    EXPECT_EQ(model.maximum, 500.0);
    EXPECT_EQ(model.intervalCount, 6);
    table.count = std::numeric_limits<qint32>::min();
    model.load(table);
    EXPECT_EQ(model.intervalCount, 0);
}

TEST(ColorSetModel, SavesItsLastColourOneStepBelowTheMaximum)
{
    ColorSetModel model;
    model.maximum = 100;
    fillWith(model, {1, 2, 3, 4});
    const ColorsetTable table = model.table();
    EXPECT_EQ(table.step, 25.0);
    EXPECT_EQ(table.count, 4);
    EXPECT_EQ(table.entries, (std::vector<ColorsetTable::Entry>{{0, 1}, {25, 2}, {50, 3}, {75, 4}}));
}

TEST(ColorsetFile, LeavesTheOldFileWhereItCannotBeReplaced)
{
    using Result = ColorsetFile::SaveResult;
    EXPECT_EQ(ColorsetFile::withExtension(u"a/ramp.SCT"_s), u"a/ramp.SCT"_s);
    EXPECT_EQ(ColorsetFile::withExtension(u"a.sct/ramp.txt"_s), u"a.sct/ramp.txt.sct"_s);

    const QTemporaryDir folder;
    const QString path = folder.filePath(u"ramp.sct"_s);
    ColorSetModel model;
    model.maximum = 100;
    fillWith(model, {1, 2});
    ASSERT_EQ(ColorsetFile::save(path, model.table()), Result::Saved);
    const auto saved = [&path] {
        ColorsetTable table;
        return table.load(path) ? table.entries.size() : 0;
    };
    model.add(3);

    // A disk that is full: no file may grow beyond some bytes.
    rlimit before = {};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit little = before;
    little.rlim_cur = 300;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &little);
    const Result onFullDisk = ColorsetFile::save(path, model.table());
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(onFullDisk, Result::Failed);
    EXPECT_EQ(saved(), 2U);

    EXPECT_EQ(ColorsetFile::save(folder.filePath(u"none/ramp.sct"_s), model.table()), Result::Failed);
    EXPECT_EQ(ColorsetFile::save(path, model.table()), Result::Saved);
    EXPECT_EQ(saved(), 3U);
}

} // namespace
