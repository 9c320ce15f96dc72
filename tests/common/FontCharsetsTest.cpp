#include "common/FontCharsets.h"
#include "common/TdCommMethods.h"

#include <QtEndian>

#include <gtest/gtest.h>

namespace {

/// A table "OS/2" of @p version with the field ulCodePageRange1.
QByteArray os2Table(quint16 version, quint32 codePages)
{
    QByteArray table(96, '\0');
    qToBigEndian(version, table.data());
    qToBigEndian(codePages, table.data() + 78);
    return table;
}

TEST(FontCharsets, ReadsTheCodePagesOfAFont)
{
    using List = QList<quint8>;
    EXPECT_EQ(FontCharsets::charsetsOfOs2Table(os2Table(1, 0x00000001u)), List{0});
    EXPECT_EQ(FontCharsets::charsetsOfOs2Table(os2Table(4, 0x80000002u)), (List{2, 238}));
    EXPECT_EQ(FontCharsets::charsetsOfOs2Table(os2Table(4, 0x00020004u)), (List{128, 204}));
    EXPECT_EQ(FontCharsets::charsetsOfOs2Table(os2Table(4, 0xFFFFFFFFu)).size(), 18);
    EXPECT_TRUE(FontCharsets::charsetsOfOs2Table(os2Table(0, 0xFFFFFFFFu)).isEmpty());
    EXPECT_TRUE(FontCharsets::charsetsOfOs2Table(os2Table(4, 0xFFFFFFFFu).left(81)).isEmpty());
    EXPECT_TRUE(FontCharsets::charsetsOfOs2Table(QByteArray()).isEmpty());
}

TEST(FontCharsets, ListsAscendingAndParallelWithTheLaterName)
{
    FontCharsets::setSource([] {
        return QList<FontCharsets::Script>{{238, QStringLiteral("Central European")},
                                           {0, QStringLiteral("Western")},
                                           {204, QStringLiteral("Cyrillic")},
                                           {0, QStringLiteral("Latin")}};
    });
    QByteArray charsets("old");
    QStringList scripts{QStringLiteral("old")};
    EXPECT_TRUE(CTdCommMethods::EnumCharset(charsets, scripts));
    FontCharsets::setSource({});
    EXPECT_EQ(charsets, QByteArray("\x00\xCC\xEE", 3));
    EXPECT_EQ(scripts,
              QStringList({QStringLiteral("Latin"), QStringLiteral("Cyrillic"), QStringLiteral("Central European")}));
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
