#include "engine/base/TxNumberText.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <ostream>
#include <random>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

struct AtofRow
{
    const char *text;
    double value;
    bool whole; ///< what toDouble says
};

void PrintTo(const AtofRow &row, std::ostream *out)
{
    *out << '"' << row.text << '"';
}

using Atof = testing::TestWithParam<AtofRow>;

TEST_P(Atof, ReadsTheLeadingNumberAsCDoes)
{
    const AtofRow &row = GetParam();
    const QString text = QString::fromUtf8(row.text);
    EXPECT_EQ(TxNumberText::atof(text), row.value);
    EXPECT_EQ(std::signbit(TxNumberText::atof(text)), std::signbit(row.value));
    bool ok = !row.whole;
    EXPECT_EQ(TxNumberText::toDouble(text, &ok), row.whole ? row.value : 0.0);
    EXPECT_EQ(ok, row.whole);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Atof,
    testing::Values(AtofRow{"1.5", 1.5, true}, AtofRow{" \t+1.5 ", 1.5, true}, AtofRow{"-.5e1x", -5, false},
                    AtofRow{"1,5", 1, false}, AtofRow{"1e", 1, false}, AtofRow{"1e+", 1, false}, AtofRow{"", 0, false},
                    AtofRow{"abc", 0, false}, AtofRow{".", 0, false}, AtofRow{"+-1", 0, false},
                    AtofRow{"- 1", 0, false}, AtofRow{"0x10", 16, true}, AtofRow{"0x", 0, false},
                    AtofRow{"inf", infinity, true}, AtofRow{"-Infinity", -infinity, true},
                    AtofRow{"1e999", infinity, true}, AtofRow{"-1e999", -infinity, true}, AtofRow{"1e-999", 0, true},
                    AtofRow{"-0", -0.0, true}, AtofRow{"0.0000001e999999999999999999999", infinity, true},
                    AtofRow{"1000000000000e-330", 1e-318, true}, AtofRow{"12\xC2\xA0", 12, false},
                    AtofRow{"\xD9\xA3", 0, false}, AtofRow{"4.9406564584124654e-324", 5e-324, true}));

TEST(NumberText, ReadsNanButNotAsANumberOfAnyValue)
{
    EXPECT_TRUE(std::isnan(TxNumberText::atof(u"nan")));
    EXPECT_TRUE(std::isnan(TxNumberText::atof(u"NaN(1)")));
}

struct AtollRow
{
    const char *text;
    qint64 value;
};

TEST(NumberText, AtollKeepsWithin64Bits)
{
    for (const AtollRow &row :
         {AtollRow{" 42abc", 42}, AtollRow{"-7", -7}, AtollRow{"", 0}, AtollRow{"+-7", 0}, AtollRow{"1.9", 1},
          AtollRow{"9223372036854775807", INT64_MAX}, AtollRow{"9223372036854775808", INT64_MAX},
          AtollRow{"-9223372036854775808", INT64_MIN}, AtollRow{"-99999999999999999999999", INT64_MIN}}) {
        EXPECT_EQ(TxNumberText::atoll(QString::fromLatin1(row.text)), row.value) << row.text;
    }
}

struct FormatRow
{
    double value;
    int digits;
    const char *fixed;
    const char *general;
    const char *shortest;
};

TEST(NumberText, WritesAsPrintfDoesInTheCLocale)
{
    for (const FormatRow &row :
         {FormatRow{1.5, 2, "1.50", "1.5", "1.5"}, FormatRow{-0.125, 2, "-0.12", "-0.12", "-0.125"},
          FormatRow{1234567.0, 3, "1234567.000", "1.23e+06", "1234567"}, FormatRow{0.0, 1, "0.0", "0", "0"},
          FormatRow{1e22, 3, "10000000000000000000000.000", "1e+22", "1e+22"},
          FormatRow{0.1, 17, "0.10000000000000001", "0.10000000000000001", "0.1"}}) {
        EXPECT_EQ(TxNumberText::fixed(row.value, row.digits).toStdString(), row.fixed);
        EXPECT_EQ(TxNumberText::general(row.value, row.digits).toStdString(), row.general);
        EXPECT_EQ(TxNumberText::shortest(row.value).toStdString(), row.shortest);
    }
    EXPECT_EQ(TxNumberText::fixed(-std::numeric_limits<double>::max(), 60).size(), 1 + 309 + 1 + 60);
    EXPECT_EQ(TxNumberText::shortestSingle(0.1f).toStdString(), "0.1");
}

TEST(NumberText, FixedEqualsPrintfOnAnyBits)
{
    const locale_t c = newlocale(LC_ALL_MASK, "C", nullptr);
    const locale_t before = uselocale(c);
    std::mt19937_64 random(20261121);
    std::array<char, 400> expected;
    int wrong = 0;
    for (int i = 0; i < 100000; ++i) {
        const quint64 bits = random();
        const int decimals = i % 11;
        double value = std::bit_cast<double>(bits);
        if (i % 4 == 1)
            value = double(qint64(bits) >> (bits & 63)) / double(1 << (bits % 30)); // many digits, ties among them
        else if (i % 4 == 2)
            value = double(std::bit_cast<float>(quint32(bits)));
        else if (i % 4 == 3)
            value = double(qint64(bits) >> 20) * 0.5 * std::pow(10, -decimals); // near the middle of two texts
        std::snprintf(expected.data(), expected.size(), "%.*f", decimals, value);
        wrong += TxNumberText::fixed(value, decimals) != QLatin1String(expected.data());
        EXPECT_LT(wrong, 5) << expected.data() << " with " << decimals;
    }
    EXPECT_EQ(wrong, 0);
    uselocale(before);
    freelocale(c);
    for (const qint64 value : std::to_array<qint64>({0, 9, 10, -100, INT64_MAX, INT64_MIN}))
        EXPECT_EQ(TxNumberText::whole(value), QString::number(value));
}

} // namespace
