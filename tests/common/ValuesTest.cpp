#include "common/TdCommMethods.h"
#include "engine/base/TxVariant.h"

#include <QDateTime>
#include <QLocale>

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace Qt::Literals::StringLiterals;
using V = CTxVariant;

void expectTexts(const QList<std::pair<V, const char *>> &rows)
{
    for (const auto &[value, text] : rows)
        EXPECT_EQ(CTdCommMethods::VAR2STR(value), QString::fromUtf8(text)) << value.GetType();
}

TEST(VAR2STR, WritesValuesTheSameUnderEveryLocale)
{
    expectTexts({{V(), ""},
                 {V::null(), ""},
                 {V(qint16(-5)), "-5"},
                 {V(qint32(-2000000000)), "-2000000000"},
                 {V(1.5f), "1.5000"},
                 {V(-1234567.123456789), "-1234567.12345679"},
                 {V::fromReal(V::Decimal, 2.25), "2.25000000"},
                 {V(QDateTime(QDate(2026, 3, 9), QTime(4, 5, 6))), "2026-03-09 04:05:06"},
                 {V(u"Städte 1,5"_s), "Städte 1,5"},
                 {V::fromText(V::NarrowString, u"narrow"_s), "narrow"},
                 {V::fromInteger(V::Boolean, -1), "TRUE"},
                 {V(false), "FALSE"},
                 {V::fromInteger(V::UnsignedShort, 65535), "65535"},
                 {V::fromInteger(V::Void, 0xABC), "     abc"},
                 {V(QByteArray("x")), "[BLOB]"},
                 {V::fromBytes(V::BlobObject, "x"), "[BLOB]"},
                 {V(std::numeric_limits<double>::quiet_NaN()), "nan"},
                 {V(-std::numeric_limits<float>::infinity()), "-inf"},
                 {V(-0.0), "-0.00000000"},
                 {V(5e-324), "0.00000000"},
                 {V(0.000000005), "0.00000001"},
                 {V(1e22), "10000000000000000000000.00000000"},
                 {V(16777216.03125f), "16777216.0000"},
                 {V(QDateTime(QDate(12345, 1, 2), QTime(0, 0), Qt::UTC)), "12345-01-02 00:00:00"},
                 {V(QDateTime(QDate(99, 12, 31), QTime(23, 59, 59, 999), Qt::UTC)), "0099-12-31 23:59:59"},
                 {V(QDateTime()), ""},
                 {V::fromInteger(static_cast<V::Type>(72), 5), ""},
                 {V::fromInteger(static_cast<V::Type>(0x2002), 5), ""},
                 {V::fromInteger(static_cast<V::Type>(0xffff), 5), ""},
                 {V::fromInteger(V::Error, 5), ""},
                 {V::fromInteger(V::Nested, 5), ""}});
}

TEST(VAR2STR, BytesAndWideIntegersShowNarrowly)
{
    expectTexts({{V::fromInteger(V::SignedByte, -1), "255"},
                 {V(quint8(200)), "200"},
                 {V::fromInteger(V::UnsignedLong, 4000000000), "-294967296"},
                 {V::fromInteger(V::UnsignedInt, 4000000000), "-294967296"},
                 {V(qint64(0x1'0000'0007)), "7"},
                 {V::fromInteger(V::UnsignedInt64, -1), "-1"},
                 {V::fromInteger(V::UnsignedInt64, INT64_MIN + 7), "7"},
                 {V(qint64(INT64_MIN)), "0"},
                 {V::fromInteger(V::Void, -1), "ffffffff"},
                 {V::fromInteger(V::Void, 0x1'0000'0001), "       1"}});
}

TEST(VAR2STR, CurrencyFollowsTheUsersLocale)
{
    const QList<std::pair<qint64, double>> amounts = {
        {12'345'600, 1234.56}, {10'050, 1.01}, {-10'050, -1.01}, {10'049, 1.0}, {-49, 0.0}};
    for (const auto &[value, shown] : amounts)
        EXPECT_EQ(CTdCommMethods::VAR2STR(V::fromInteger(V::Currency, value)),
                  QLocale::system().toCurrencyString(shown));
}

TEST(StringAlign, FillsUpToTheWidthButCutsToThirteen)
{
    const auto expect = [](const QString &text, int width, const QString &aligned) {
        EXPECT_EQ(CTdCommMethods::StringAlign(text, width), aligned) << text.toStdString() << ' ' << width;
    };
    const QString digits = u"123456789012345"_s;
    expect(u"12.5"_s, 6, u"12.500"_s);
    expect(digits, 20, digits + u"00000"_s);
    for (const int width : {15, 14, 10, 0, -1})
        expect(digits, width, u"1234567890123"_s);
    expect(u"12.5"_s, 2, u"12.5"_s);
    expect(QString(), 3, u"000"_s);
}

} // namespace
