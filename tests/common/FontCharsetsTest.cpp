#include "common/FontCharsets.h"
#include "common/TdCommMethods.h"

#include <QtEndian>

#include <gtest/gtest.h>

namespace {

using namespace Qt::Literals::StringLiterals;

/// The charsets of a table "OS/2" of @p version with the field ulCodePageRange1, of which @p size bytes are there.
QList<quint8> charsets(quint16 version, quint32 codePages, int size = 96)
{
    QByteArray table(96, '\0');
    qToBigEndian(version, table.data());
    qToBigEndian(codePages, table.data() + 78);
    return FontCharsets::charsetsOfOs2Table(table.left(size));
}

TEST(FontCharsets, ReadsTheCodePagesOfAFont)
{
    using List = QList<quint8>;
    EXPECT_EQ(charsets(1, 0x00000001u), List{0});
    EXPECT_EQ(charsets(4, 0x80000002u), (List{2, 238}));
    EXPECT_EQ(charsets(4, 0x00020004u), (List{128, 204}));
    EXPECT_EQ(charsets(4, 0xFFFFFFFFu).size(), 18);
    EXPECT_EQ(charsets(0, 0xFFFFFFFFu), List());
    for (const int cut : {81, 0})
        EXPECT_EQ(charsets(4, 0xFFFFFFFFu, cut), List()) << cut;
}

TEST(FontCharsets, ListsAscendingAndParallelWithTheLaterName)
{
    FontCharsets::setSource([] {
        return QList<FontCharsets::Script>{
            {238, u"Central European"_s}, {0, u"Western"_s}, {204, u"Cyrillic"_s}, {0, u"Latin"_s}};
    });
    QByteArray charsets("old");
    QStringList scripts{u"old"_s};
    EXPECT_TRUE(CTdCommMethods::EnumCharset(charsets, scripts));
    FontCharsets::setSource({});
    EXPECT_EQ(charsets, QByteArray("\x00\xCC\xEE", 3));
    EXPECT_EQ(scripts, QStringList({u"Latin"_s, u"Cyrillic"_s, u"Central European"_s}));
}

TEST(FontCharsets, InstalledFontsHaveNamedScripts)
{
    QByteArray charsets;
    QStringList scripts;
    EXPECT_TRUE(CTdCommMethods::EnumCharset(charsets, scripts));
    ASSERT_EQ(charsets.size(), scripts.size());
    EXPECT_TRUE(charsets.contains('\0')) << "DejaVu Sans is installed, which has the Western charset";
    EXPECT_FALSE(scripts.contains(QString()));
}

} // namespace
