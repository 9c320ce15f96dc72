#include "engine/base/TxErrorMsg.h"
#include "engine/projection/TxPJCoordSys.h"

#include <gtest/gtest.h>

namespace {

struct TextRow
{
    const char *text;
    CTxPJCoordSys::Type type;
    const char *name;
    qint32 units;
};

TEST(CoordSys, ReadsWhatPeopleWrite)
{
    for (const TextRow &row :
         {TextRow{"EPSG:4326", CTxPJCoordSys::Geographic, "WGS 84", 0},
          TextRow{"EPSG:32633", CTxPJCoordSys::Projected, "WGS 84 / UTM zone 33N", 10000},
          TextRow{" EPSG:2263 ", CTxPJCoordSys::Projected, "NAD83 / New York Long Island (ftUS)", 3048},
          TextRow{"+proj=utm +zone=33 +units=km +type=crs", CTxPJCoordSys::Projected, "unknown", 10000000},
          TextRow{"LOCAL_CS[\"mine\",UNIT[\"metre\",1]]", CTxPJCoordSys::Local, "mine", 10000}}) {
        CTxPJCoordSys system;
        ASSERT_TRUE(system.FromText(QString::fromLatin1(row.text))) << row.text;
        EXPECT_EQ(system.GetType(), row.type) << row.text;
        EXPECT_EQ(system.GetName().toStdString(), row.name);
        EXPECT_EQ(system.GetDistUnits(), row.units) << row.text;
        CTxPJCoordSys again;
        ASSERT_TRUE(again.FromText(system.ToWkt())) << row.text;
        EXPECT_EQ(again, system) << "a system goes through its WKT unchanged";
    }
}

TEST(CoordSys, RefusesWhatSaysNothingAndStaysAsItWas)
{
    CTxPJCoordSys system;
    ASSERT_TRUE(system.FromText(QStringLiteral("EPSG:4326")));
    for (const char *text : {"", "   ", "rubbish", "EPSG:999999", "PROJCS[\"cut", "/etc/passwd",
                             "https://example.org/x.wkt", "+proj=nothing +type=crs"}) {
        TxGetErrorMsgObj().Clear();
        EXPECT_FALSE(system.FromText(QString::fromLatin1(text))) << text;
        EXPECT_FALSE(TxGetErrorMsgObj().GetErrorMessage().isEmpty()) << text;
        EXPECT_EQ(system.GetName().toStdString(), "WGS 84");
    }
}

TEST(CoordSys, IsNoneAtFirst)
{
    const CTxPJCoordSys none;
    EXPECT_EQ(none.GetType(), CTxPJCoordSys::None);
    EXPECT_EQ(none.GetDistUnits(), 10000);
    EXPECT_TRUE(none.GetName().isEmpty() && none.ToWkt().isEmpty());
    CTxPJCoordSys other;
    EXPECT_EQ(none, other);
    other.FromText(QStringLiteral("EPSG:4326"));
    EXPECT_FALSE(none == other);
    other = none;
    EXPECT_EQ(none, other);
}

} // namespace
