#include "controls/DegreeText.h"
#include "controls/DegreeMask.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// What the usual mask shows of an angle.
QString shown(double degrees)
{
    DegreeMask mask;
    mask.setMask(u"####:##:##.####"_s, u'_');
    mask.fill(DegreeText::digits(degrees));
    return mask.text();
}

TEST(DegreeText, DigitsAreRightAlignedInTheirParts)
{
    struct Row
    {
        double degrees;
        const char *digits;
    };
    const Row rows[] = {
        {45.5, "  4530 00000"},
        {0.0, "   0 0 00000"},
        {-0.25, "  -015 00000"},
        {9.0, "   9 0 00000"},
        {10.0, "  10 0 00000"},
        {100.0, " 100 0 00000"},
        {-9.0, "  -9 0 00000"},
        {-99.0, " -99 0 00000"},
        {-100.0, "-100 0 00000"},
        {1000.0, " 1000 0 00000"},
        {10.0 + 59 / 60.0 + 30.25 / 3600.0, "  1059302500"},
        {179.0 + 5 / 60.0 + 9.99996 / 3600.0, " 179 5100000"}, // seconds that round up to two digits
        {std::numeric_limits<double>::quiet_NaN(), ""},
        {-std::numeric_limits<double>::infinity(), ""},
        {1e300, ""},
    };
    for (const Row &row : rows)
        EXPECT_EQ(DegreeText::digits(row.degrees).toStdString(), row.digits) << row.degrees;
}

TEST(DegreeText, DeliberatelyACarryBelowZeroMovesTowardsZero)
{
    // The largest doubles below the next degree, whose seconds come out as 60.
    EXPECT_EQ(DegreeText::digits(std::nextafter(11.0, 0.0)).toStdString(), "  11 0 00000");
    EXPECT_EQ(DegreeText::digits(std::nextafter(-11.0, 0.0)).toStdString(), "  -9 0 00000");
    EXPECT_EQ(DegreeText::digits(std::nextafter(-1.0, 0.0)).toStdString(), "   1 0 00000");
    // Seconds that only their digits round up to 60 are not carried.
    EXPECT_EQ(DegreeText::digits(11.0 - 0.00001 / 3600.0).toStdString(), "  1059600000");
}

TEST(DegreeText, PartsOfATextAndOfADecimalNumber)
{
    struct Row
    {
        const char *text;
        int degrees;
        int minutes;
        float seconds;
        double plainSum;
        double value;
    };
    const Row rows[] = {
        {"  45:30: 7.2000", 45, 30, 7.2F, 45.502, 45.502},
        {" -45:30: 0.0000", -45, 30, 0.0F, -44.5, -45.5},
        {"- 45:30: 0.0000", -45, 30, 0.0F, -44.5, -45.5},
        {"-  0:30: 0.0000", 0, 30, 0.0F, 0.5, 0.5},
        {" ++7:01:00", 7, 1, 0.0F, 7 + 1 / 60.0, 0.0}, // a number with two signs is none
        {"45.505", 45, 30, 18.0F, 0, 45.505},
        {"-45.505", -45, 30, 18.0F, 0, -45.505},
        {"____:__:__.____", 0, 0, 0.0F, 0.0, 0.0},
        {"1e300", 1, 0, 0.0F, 0, 1e300},
        {"99999999999", 2147483647, 0, 0.0F, 0, 99999999999.0},
        {"", 0, 0, 0.0F, 0.0, 0.0},
        {"7:", 7, 0, 0.0F, 7.0, 7.0},
    };
    for (const Row &row : rows) {
        const QString text = QString::fromLatin1(row.text);
        EXPECT_EQ(DegreeText::degreePart(text), row.degrees) << row.text;
        EXPECT_EQ(DegreeText::minutePart(text), row.minutes) << row.text;
        EXPECT_NEAR(DegreeText::secondPart(text), row.seconds, 1e-3F) << row.text;
        if (text.contains(u':')) {
            EXPECT_NEAR(DegreeText::plainSum(text), row.plainSum, 1e-7) << row.text;
        }
        if (!text.contains(u'+')) {
            EXPECT_NEAR(DegreeText::value(text), row.value, 1e-9) << row.text;
        }
    }
}

TEST(DegreeText, RoundTripOverADenseGridButForBelowZeroAboveMinusOneAndCarriesBelowZero)
{
    constexpr double halfOfTheLastDigit = 0.5e-4 / 3600.0 + 1e-12;
    qint64 exceptions = 0;
    for (qint64 step = -180 * 180; step <= 180 * 180; ++step) {
        const double degrees = static_cast<double>(step) / 180.0 + static_cast<double>(step % 977) * 1e-9;
        if (std::abs(degrees) > 180.0)
            continue;
        const QString text = shown(degrees);
        ASSERT_EQ(text.size(), 15) << degrees;
        const double back = DegreeText::value(text);
        const bool losesSign = degrees < 0.0 && degrees > -1.0;
        const double expected = losesSign ? -degrees : degrees;
        if (std::abs(back - expected) <= halfOfTheLastDigit)
            continue;
        // What is left are values a rounding error above a whole negative degree.
        EXPECT_TRUE(degrees < 0.0 && std::abs(degrees - std::round(degrees)) < 1e-12) << degrees << " " << back;
        ++exceptions;
    }
    EXPECT_LT(exceptions, 10);
}

} // namespace
