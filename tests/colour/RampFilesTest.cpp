#include "colour/ColorsetTable.h"
#include "colour/GimpGradient.h"
#include "colour/GmtPalette.h"
#include "colour/RampFile.h"
#include "colour/RibbonStop.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace {

using Stops = ColorRamp::Stops;
constexpr double infinity = std::numeric_limits<double>::infinity();

RampReading readGrass(const QByteArray &bytes)
{
    return GrassColorRules::read(bytes);
}

RampReading readGrassOfHeights(const QByteArray &bytes)
{
    return GrassColorRules::read(bytes, GrassColorRules::Range(-50, 150));
}

QByteArray ggr(const QByteArray &segments)
{
    return "GIMP Gradient\nName: Test\n" + QByteArray::number(segments.count('\n')) + '\n' + segments;
}

TEST(ColorRampTest, RefusesWhatIsNoRampAndDropsWhatIsNotSeen)
{
    EXPECT_FALSE(ColorRamp::fromStops({}));
    for (const double bad : {infinity, -infinity, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_FALSE(ColorRamp::fromStops({{0, 1}, {bad, 2}}));
    EXPECT_FALSE(ColorRamp::fromStops({{1, 1}, {0, 2}}));
    const auto ramp = ColorRamp::fromStops({{0, 9}, {0, 1}, {1, 2}, {1, 3}, {1, 4}, {2, 5}, {2, 5}, {3, 6}, {3, 7}});
    EXPECT_EQ(ramp->stops(), (Stops{{0, 1}, {1, 2}, {1, 4}, {2, 5}, {3, 6}}));
    EXPECT_EQ(ramp->mapped(10, 10)->stops().size(), 1U);
    EXPECT_FALSE(ramp->mapped(0, infinity));
}

TEST(ColorRampTest, SamplesStepsEndsAndTheWidestRanges)
{
    const auto ramp = ColorRamp::fromStops({{0, 0x000000}, {1, 0x0000FF}, {1, 0x00FF00}, {2, 0xFF0000}});
    const std::pair<double, COLORREF> samples[] = {{-9, 0x000000},
                                                   {0.5, 0x000080},
                                                   {1, 0x00FF00},
                                                   {1.5, 0x808000},
                                                   {2, 0xFF0000},
                                                   {99, 0xFF0000},
                                                   {std::numeric_limits<double>::quiet_NaN(), 0x000000}};
    for (const auto &[value, color] : samples)
        EXPECT_EQ(ramp->at(value), color) << value;
    const auto widest = ColorRamp::fromStops({{-1.7e308, 0}, {1.7e308, 0xC8C8C8}});
    EXPECT_EQ(widest->at(0), 0x646464U);
}

struct Reading
{
    const char *name;
    RampReading (*read)(const QByteArray &bytes);
    QByteArray bytes;
    Stops stops; // none: refused
    std::vector<std::pair<RampReport::Note, int>> notes;
};

TEST(RampFilesTest, ReadsEveryForm)
{
    const Reading readings[] = {
        {"cpt forms",
         GmtPalette::read,
         "# c\r\n0\tblack 1 10/20/30 L ; low\r\n1 #0a141e 2 200\r\n2 0/100/0/50 3 -\r\nB red\r\nN\tgray@50\r\n",
         {{0, 0}, {1, 0x1E140A}, {2, 0xC8C8C8}, {2, 0x800080}, {3, 0x800080}},
         {{RampReport::LabelsLost, 2}, {RampReport::BeyondLost, 5}, {RampReport::NoValueLost, 6}}},
        {"cpt columns, numbered names",
         GmtPalette::read,
         "0 0 0 0 1 255 255 255\n1 ivory2 4 darkorange3@25\n",
         {{0, 0}, {1, 0xFFFFFF}, {1, 0xE0EEEE}, {4, 0x0066CD}},
         {{RampReport::AlphaLost, 2}}},
        {"cpt gray and green are X11's", GmtPalette::read, "0 gray 1 green\n", {{0, 0xBEBEBE}, {1, 0x00FF00}}, {}},
        {"cpt hard hinge and range",
         GmtPalette::read,
         "# HARD_HINGE\n# RANGE = -1000/3000\n-1 0 -0.5 10\n-0.5 10 0 20\n0 30 1 40\n",
         {{-1000, 0}, {-500, 0x0A0A0A}, {0, 0x141414}, {0, 0x1E1E1E}, {3000, 0x282828}},
         {{RampReport::HingeLost, 0}}},
        {"cpt range of real values stays", GmtPalette::read, "# RANGE = 0/10\n2 0 4 10\n", {{2, 0}, {4, 0x0A0A0A}}, {}},
        {"cpt categories",
         GmtPalette::read,
         "1 red\n3 blue\n9 white\n",
         {{1, 0x0000FF}, {3, 0x0000FF}, {3, 0xFF0000}, {9, 0xFF0000}},
         {{RampReport::Categories, 0}}},
        {"cpt gap",
         GmtPalette::read,
         "0 0 1 10\n2 20 3 30\n",
         {{0, 0}, {1, 0x0A0A0A}, {2, 0x141414}, {3, 0x1E1E1E}},
         {{RampReport::GapClosed, 2}}},
        {"ggr corner and step",
         GimpGradient::read,
         ggr("0 .1 .5 0 0 0 1 1 1 1 .5 0 0\n.5 .75 1 1 1 1 1 1 0 0 1 5 0 0 2\n"),
         {{0, 0}, {0.1, 0x808080}, {0.5, 0xFFFFFF}, {0.75, 0xFFFFFF}, {0.75, 0x0000FF}, {1, 0x0000FF}},
         {{RampReport::AlphaLost, 4}, {RampReport::ChosenColors, 5}, {RampReport::Relative, 0}}},
        {"grass forms",
         readGrass,
         "\xEF\xBB\xBF# c\n-1e3 0 0 255\n0 AQUA\n0 brown\n 2.5 #00ff00\n9 200\nnv white\n"
         "default 1:2:3\nend\nrubbish\n",
         {{-1000, 0xFF0000}, {0, 0xFF8064}, {0, 0x194DB4}, {2.5, 0x00FF00}, {9, 0xC8C8C8}},
         {{RampReport::NoValueLost, 7}, {RampReport::BeyondLost, 8}}},
        {"grass percent", readGrass, "0% black\n100% white\n", {{0, 0}, {100, 0xFFFFFF}}, {{RampReport::Relative, 0}}},
        {"grass percent of data",
         readGrassOfHeights,
         "100% white\n25% black\n",
         {{0, 0}, {150, 0xFFFFFF}},
         {{RampReport::Relative, 0}}},
        {"grass mixed",
         readGrassOfHeights,
         "0% black\n-90 white\n0 red\n100% blue\n",
         {{-90, 0xFFFFFF}, {0, 0x0000FF}, {150, 0xFF0000}},
         {{RampReport::Relative, 0}}},
        // Refusals
        {"grass mixed without data", readGrass, "0% black\n5 white\n", {}, {{RampReport::NeedsRange, 1}}},
        {"grass order", readGrass, "0 black\n9 white\n5 red\n10 red\n", {}, {{RampReport::BadOrder, 3}}},
        {"grass name", readGrass, "0 black\n9 fuchsia\n", {}, {{RampReport::BadColor, 2}}},
        {"grass colour list", readGrass, "green\n", {}, {{RampReport::BadLine, 1}}},
        {"grass infinite", readGrass, "inf red\n", {}, {{RampReport::BadNumber, 1}}},
        {"cpt overlap", GmtPalette::read, "0 0 2 9\n1 9 3 9\n", {}, {{RampReport::BadOrder, 2}}},
        {"cpt words", GmtPalette::read, "0 0 2 9\nx\n", {}, {{RampReport::BadLine, 2}}},
        {"cpt level", GmtPalette::read, "0 0/0/256 2 9\n", {}, {{RampReport::BadColor, 1}}},
        {"cpt empty", GmtPalette::read, "# nothing\nB red\n", {}, {{RampReport::NoColors, 0}}},
        {"ggr head", GimpGradient::read, "GIMP Palette\n", {}, {{RampReport::WrongHead, 1}}},
        {"ggr cut", GimpGradient::read, "GIMP Gradient\nName: x\n9e9\n", {}, {{RampReport::BadLine, 3}}},
        {"ggr way", GimpGradient::read, ggr("0 .5 1 0 0 0 1 1 1 1 1 6 0\n"), {}, {{RampReport::BadLine, 4}}},
    };
    for (const Reading &row : readings) {
        SCOPED_TRACE(row.name);
        const RampReading result = row.read(row.bytes);
        EXPECT_EQ(result.ramp ? result.ramp->stops() : Stops(), row.stops)
            << qPrintable(result.report.texts().join('\n'));
        for (const auto &[note, line] : row.notes) {
            EXPECT_TRUE(result.report.has(note)) << note;
            EXPECT_EQ(result.report.line(note), line) << note;
        }
    }
}

/// Ways that are not straight in red, green and blue, against values reckoned by hand from what defines them.
TEST(RampFilesTest, FollowsCurvedWays)
{
    struct Sample
    {
        const char *name;
        RampReading reading;
        double value;
        COLORREF color;
    };
    const auto grey = [](const char *codes, const char *middle) {
        return GimpGradient::read(ggr(QByteArray("0 ") + middle + " 1 0 0 0 1 1 1 1 1 " + codes + '\n'));
    };
    const RampReading hues = GmtPalette::read("# COLOR_MODEL = HSV\n0 0-1-1 360 360-1-1\n");
    const Sample samples[] = {
        {"cpt hue 90", hues, 90, 0x00FF80},
        {"cpt hue 300", hues, 300, 0xFF00FF},
        {"cpt names in HSV", GmtPalette::read("# COLOR_MODEL = HSV\n0 magenta 1 red\n"), 0.2, 0xFF0000},
        {"ggr full turn back", GimpGradient::read(ggr("0 .5 1 1 0 0 1 1 0 0 1 0 2\n")), 1.0 / 3, 0xFF0000},
        {"ggr turn past red", GimpGradient::read(ggr("0 .5 1 1 0 1 1 1 1 0 1 0 1\n")), 0.5, 0x0000FF},
        {"curved", grey("1 0", "0.25"), 0.5, 0xB4B4B4},           // 0.5^(1/2)
        {"sinusoidal", grey("2 0", "0.5"), 0.25, 0x252525},       // (1 - cos 45°) / 2
        {"sphere increasing", grey("3 0", "0.5"), 0.5, 0xDDDDDD}, // √(3/4)
        {"sphere decreasing", grey("4 0", "0.5"), 0.5, 0x222222},
    };
    for (const Sample &row : samples) {
        SCOPED_TRACE(row.name);
        ASSERT_TRUE(row.reading.ramp);
        EXPECT_TRUE(row.reading.report.has(RampReport::Sampled));
        EXPECT_LT(row.reading.ramp->stops().size(), 150U);
        const auto got = row.reading.ramp->at(row.value);
        for (const auto channel : {TxColorRef::red, TxColorRef::green, TxColorRef::blue})
            EXPECT_NEAR(channel(got), channel(row.color), 1) << Qt::hex << got;
    }
}

/// What is saved is loaded as it was, whatever the ramp: only GIMP's files lose the range.
TEST(RampFilesTest, RoundTripsAnyRamp)
{
    const QTemporaryDir folder;
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> exponent(-300, 300);
    for (int run = 0; run < 60; ++run) {
        Stops stops;
        double value = std::pow(10, exponent(random)) * (run % 2 ? 1 : -1);
        for (unsigned i = 0, count = 1 + random() % 40; i < count; ++i) {
            stops.push_back({value, static_cast<COLORREF>(random() & 0xFFFFFF)});
            if (random() % 3)
                value += std::pow(10, run % 4 ? exponent(random) / 100 : exponent(random));
        }
        const ColorRamp ramp = ColorRamp::fromStops(stops).value();
        for (const char *ending : {"cpt", "rules", "sct", "ggr"}) {
            const QString path = folder.filePath(QStringLiteral("ramp.%1").arg(QLatin1StringView(ending)));
            const RampReport report = RampFile::save(path, ramp);
            ASSERT_FALSE(report.isRefusal()) << ending;
            const RampReading loaded = RampFile::load(path);
            const bool isUnit = loaded.isRelative;
            ColorRamp wanted = isUnit ? ramp.mapped(0, 1).value() : ramp;
            if (isUnit && wanted.stops().size() == 1)
                wanted = ColorRamp::fromStops({{0, wanted.at(0)}, {1, wanted.at(0)}}).value();
            EXPECT_EQ(loaded.ramp, wanted) << ending << " run " << run;
            EXPECT_EQ(isUnit, report.has(RampReport::RangeLost)) << ending;
        }
    }
}

TEST(RampFilesTest, LoadsAndSavesByTheEndOfTheName)
{
    const QTemporaryDir folder;
    const ColorRamp ramp = ColorRamp::fromStops({{0, 1}, {1, 2}, {5, 3}}).value();
    EXPECT_TRUE(RampFile::save(folder.filePath(QStringLiteral("a.png")), ramp).has(RampReport::UnknownKind));
    EXPECT_TRUE(RampFile::save(folder.filePath(QStringLiteral("no/a.cpt")), ramp).has(RampReport::NotWritten));
    EXPECT_TRUE(RampFile::save(folder.filePath(QStringLiteral("A.SCT")), ramp).has(RampReport::SpacingLost));
    EXPECT_TRUE(RampFile::load(folder.path()).report.has(RampReport::Unreadable));
    QFile bare(folder.filePath(QStringLiteral("aspect")));
    ASSERT_TRUE(bare.open(QIODevice::WriteOnly) && bare.write("0% black\n100% white\n") > 0);
    bare.close();
    EXPECT_EQ(RampFile::load(bare.fileName(), GrassColorRules::Range(3, 4)).ramp->minimum(), 3);
    ASSERT_TRUE(bare.resize(RampFile::maximumSize + 1));
    EXPECT_TRUE(RampFile::load(bare.fileName()).report.has(RampReport::TooLarge));
    const RampReading refused = GrassColorRules::read("0 black\n9 fuchsia\n");
    EXPECT_EQ(refused.report.texts(), QStringList(QStringLiteral("The color is not known. (line 2)")));
    EXPECT_EQ(RampFile::nameFilters(true).size(), 6);
    EXPECT_TRUE(RampFile::nameFilters(false).contains(QStringLiteral("Terravox 3D Colorset (*.sct)")));
}

/// A million lines take no more than their share of time, and more than a ramp may have are refused.
TEST(RampFilesTest, StandsHugeFiles)
{
    QByteArray lines;
    for (int i = 0; i <= (1 << 20); ++i)
        lines += QByteArray::number(i) + " 7\n";
    EXPECT_TRUE(GrassColorRules::read(lines).report.has(RampReport::TooLarge));
    EXPECT_TRUE(GmtPalette::read(QByteArray(1 << 23, 'a')).report.has(RampReport::BadLine));
    EXPECT_TRUE(
        GmtPalette::read(QByteArray(1 << 23, ' ') + QByteArray(1 << 20, '\n')).report.has(RampReport::NoColors));
}

} // namespace
