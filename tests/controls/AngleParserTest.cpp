#include "controls/AngleParser.h"

#include <gtest/gtest.h>

namespace {

TEST(AngleParser, ReadsWhatPeopleWrite)
{
    struct Row
    {
        const char16_t *text;
        double degrees;
    };
    const Row rows[] = {
        {u"45.5", 45.5},
        {u"-45 30", -45.5},
        {u"45:30:36", 45.51},
        {u"45\u00B030\u203236\u2033S", -45.51},
        {u"W 7\u00B0 30'", -7.5},
        {u"\u22120.5", -0.5},
        {u"e 179 59 59.9999", 179 + 59 / 60.0 + 59.9999 / 3600.0},
        {u"0\u00B0 0' 0\" n", 0.0},
        {u"45\u00B0", 45.0},
        {u".5", 0.5},
        {u"45 30.5", 45 + 30.5 / 60.0},
        {u"\u201345\u02DA 30\u00B4 36\u00B4\u00B4", -45.51},
        {u"45\u00A030'36''N", 45.51},
    };
    for (const Row &row : rows) {
        const auto result = AngleParser::parse(QString::fromUtf16(row.text));
        EXPECT_TRUE(result.ok()) << QString::fromUtf16(row.text).toStdString() << " at " << result.errorPosition;
        EXPECT_NEAR(result.degrees, row.degrees, 1e-12) << QString::fromUtf16(row.text).toStdString();
    }
}

TEST(AngleParser, TellsWhereATextGoesWrong)
{
    struct Row
    {
        const char16_t *text;
        qsizetype position;
    };
    const Row rows[] = {
        {u"", 0},       {u"   ", 3},         {u"N", 1},       {u"-", 1},       {u".", 0},     {u"45,5", 2},
        {u"45 60", 3},  {u"45 10 60", 6},    {u"45.5 10", 5}, {u"N 45 S", 5},  {u"-45 W", 4}, {u"45:", 3},
        {u"45:30:", 6}, {u"45 30 20 10", 9}, {u"45x", 2},     {u"4\u0665", 1}, {u"1e3", 2},   {u"nan", 1},
        {u"4 5''", 4},  {u"4 5 6'", 5},      {u"45'", 2},
    };
    EXPECT_EQ(AngleParser::parse(QString(400, u'9')).errorPosition, 0); // no number that a double holds
    for (const Row &row : rows)
        EXPECT_EQ(AngleParser::parse(QString::fromUtf16(row.text)).errorPosition, row.position)
            << QString::fromUtf16(row.text).toStdString();
}

} // namespace
