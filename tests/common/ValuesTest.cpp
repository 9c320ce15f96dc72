#include "common/TdCommMethods.h"
#include "engine/base/TxVariant.h"

#include <QDateTime>
#include <QLocale>

#include <gtest/gtest.h>

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
                 {V::fromInteger(V::Void, 0x1'0000'0001), "       1"}});
}

TEST(VAR2STR, CurrencyFollowsTheUsersLocale)
{
    EXPECT_EQ(CTdCommMethods::VAR2STR(V::fromInteger(V::Currency, 12'345'600)),
              QLocale::system().toCurrencyString(1234.56));
}

} // namespace
