#include "ConnectionDialog.h"
#include "DesktopFixture.h"
#include "MapStatus.h"
#include "RecentFiles.h"

#include <QLocale>

#include <limits>

namespace {

struct ConnectionCase
{
    ConnectionParameters parameters;
    const char *expected;
};

using Connection = testing::TestWithParam<ConnectionCase>;

TEST_P(Connection, IsQuotedForTheClientLibrary)
{
    EXPECT_EQ(GetParam().parameters.connection().toStdString(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Parameters, Connection,
    testing::Values(ConnectionCase{{QString(), 0, "gis", QString(), QString(), QString()}, "PG:dbname='gis'"},
                    ConnectionCase{{"db.example", 5433, "gis", "ann", "a'b\\c d", "survey"},
                                   "PG:host='db.example' port='5433' dbname='gis' user='ann' password='a\\'b\\\\c d' "
                                   "active_schema='survey'"}));

TEST(MapStatusTexts, CoordinatesShowWhatAPixelCanTell)
{
    EXPECT_EQ(MapStatus::coordinateText(1234.5678, 10.0), "1235");
    EXPECT_EQ(MapStatus::coordinateText(-0.5, 0.25), "-0.5");
    EXPECT_EQ(MapStatus::coordinateText(10.123456, 0.001), "10.123");
    EXPECT_EQ(MapStatus::coordinateText(1.0, 0.0), "1.00");
    EXPECT_EQ(MapStatus::coordinateText(1.0, 1e-30), "1.000000000");
}

TEST(MapStatusTexts, ScalesAreRoundedToThreeDigits)
{
    const QLocale locale;
    EXPECT_EQ(MapStatus::scaleText(12'345'678), u"1 : "_s + locale.toString(12'300'000));
    EXPECT_EQ(MapStatus::scaleText(999.6), u"1 : "_s + locale.toString(1000));
    EXPECT_EQ(MapStatus::scaleText(0.2), "1 : 1");
    for (const double none : {0.0, -5.0, std::numeric_limits<double>::quiet_NaN(), 1e300})
        EXPECT_EQ(MapStatus::scaleText(none), QString()) << none;
}

using RecentFilesTest = DesktopFixture;

TEST_F(RecentFilesTest, KeepsTheLatestFirstWithoutRepeats)
{
    RecentFiles recent;
    for (int i = 0; i < RecentFiles::maximum + 3; ++i)
        recent.add(u"/data/%1.gpkg"_s.arg(i));
    recent.add(u"/data/x/../5.gpkg"_s);
    EXPECT_EQ(recent.files().size(), RecentFiles::maximum);
    EXPECT_EQ(recent.files().first(), "/data/5.gpkg");
    EXPECT_EQ(recent.files().count(u"/data/5.gpkg"_s), 1);
    EXPECT_EQ(RecentFiles().files(), recent.files()) << "another run of the program sees the same list";
    recent.remove(u"/data/5.gpkg"_s);
    EXPECT_FALSE(recent.files().contains(u"/data/5.gpkg"_s));
}

TEST_F(RecentFilesTest, NeverKeepsAPassword)
{
    RecentFiles recent;
    for (const char *text : {"PG:dbname='gis' password='se\\'cret' user='ann'",
                             "PG:dbname=gis password=secret user=ann", "pg:PASSWORD = 'secret' dbname=gis"}) {
        recent.add(QString::fromLatin1(text));
        EXPECT_FALSE(recent.files().first().contains(u"cret"_s)) << recent.files().first().toStdString();
        EXPECT_TRUE(recent.files().first().contains(u"gis"_s));
    }
}

} // namespace
