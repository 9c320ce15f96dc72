#include "Rows.h"
#include "engine/base/TxVariant.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

const QDateTime moment(QDate(2024, 2, 29), QTime(12, 30, 15, 250), Qt::UTC);

/// A value, and what it reads as.
struct ReadRow
{
    const char *title;
    CTxVariant value;
    CTxVariant::Type type;
    qint64 whole;
    double real;
    bool truth;
    const char *text;
};

using VariantReads = testing::TestWithParam<ReadRow>;

TEST_P(VariantReads, AsEveryType)
{
    const ReadRow &row = GetParam();
    EXPECT_EQ(row.value.GetType(), row.type);
    EXPECT_EQ(row.value.toInt64(), row.whole);
    EXPECT_EQ(row.value.toDouble(), row.real);
    EXPECT_EQ(row.value.toBool(), row.truth);
    EXPECT_EQ(row.value.toText().toStdString(), row.text);
    EXPECT_EQ(row.value, CTxVariant(row.value)) << "a copy is equal";
}

INSTANTIATE_TEST_SUITE_P(
    Values, VariantReads,
    testing::Values(
        ReadRow{"empty", CTxVariant(), CTxVariant::Empty, 0, 0, false, ""},
        ReadRow{"null", CTxVariant::null(), CTxVariant::Null, 0, 0, false, ""},
        ReadRow{"true", CTxVariant(true), CTxVariant::Boolean, -1, -1, true, "true"},
        ReadRow{"false", CTxVariant(false), CTxVariant::Boolean, 0, 0, false, "false"},
        ReadRow{"short", CTxVariant(qint16(-3)), CTxVariant::Short, -3, -3, true, "-3"},
        ReadRow{"byte", CTxVariant(quint8(255)), CTxVariant::Byte, 255, 255, true, "255"},
        ReadRow{"long", CTxVariant(7), CTxVariant::Long, 7, 7, true, "7"},
        ReadRow{"int64", CTxVariant(qint64(1) << 40), CTxVariant::Int64, qint64(1) << 40, 1099511627776.0, true,
                "1099511627776"},
        ReadRow{"uint64", CTxVariant::fromInteger(CTxVariant::UnsignedInt64, -1), CTxVariant::UnsignedInt64,
                std::numeric_limits<qint64>::max(), 18446744073709551616.0, true, "18446744073709551615"},
        ReadRow{"single", CTxVariant(0.1f), CTxVariant::Float, 0, double(0.1f), true, "0.1"},
        ReadRow{"double", CTxVariant(-1.75), CTxVariant::Double, -1, -1.75, true, "-1.75"},
        ReadRow{"huge", CTxVariant(1e300), CTxVariant::Double, std::numeric_limits<qint64>::max(), 1e300, true,
                "1e+300"},
        ReadRow{"currency", CTxVariant::fromInteger(CTxVariant::Currency, -125000), CTxVariant::Currency, -12, -12.5,
                true, "-12.5"},
        ReadRow{"least currency", CTxVariant::fromInteger(CTxVariant::Currency, std::numeric_limits<qint64>::min()),
                CTxVariant::Currency, -922337203685477, -922337203685477.5808, true, "-922337203685477.5808"},
        ReadRow{"text of a number", CTxVariant(QStringLiteral(" 1.5 m")), CTxVariant::String, 1, 1.5, true, " 1.5 m"},
        ReadRow{"text true", CTxVariant(QStringLiteral("TRUE")), CTxVariant::String, 0, 0, true, "TRUE"},
        ReadRow{"text", CTxVariant(QStringLiteral("x")), CTxVariant::String, 0, 0, false, "x"},
        ReadRow{"date", CTxVariant(moment), CTxVariant::Date, 1709209815250, 0, false, "2024-02-29T12:30:15.250Z"},
        ReadRow{"bytes", CTxVariant(QByteArray("ab", 2)), CTxVariant::ByteArray, 0, 0, false, ""}),
    rowNames(&ReadRow::title));

TEST(Variant, ReadsDatesAndBytesOfTexts)
{
    EXPECT_EQ(CTxVariant(QStringLiteral("2024-02-29T12:30:15.250Z")).toDateTime(), moment);
    EXPECT_FALSE(CTxVariant(QStringLiteral("tomorrow")).toDateTime().isValid());
    EXPECT_EQ(CTxVariant(QStringLiteral("\u00f6")).toBytes(), QByteArray("\xC3\xB6"));
    EXPECT_EQ(CTxVariant(std::numeric_limits<double>::quiet_NaN()).toInt64(), 0);
}

TEST(Variant, DiffersByCodeNotOnlyByValue)
{
    EXPECT_NE(CTxVariant(1), CTxVariant(qint16(1)));
    EXPECT_NE(CTxVariant(), CTxVariant::null());
    EXPECT_NE(CTxVariant::fromText(CTxVariant::WideString, QStringLiteral("a")), CTxVariant(QStringLiteral("a")));
}

} // namespace
