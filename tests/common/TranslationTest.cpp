#include "common/TdCommMethods.h"
#include "common/TdModule.h"
#include "common/VocabularyTables.h"

#include <QFile>
#include <QTranslator>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <array>

namespace {

struct Text
{
    quint32 id;
    const char *text;
};
constexpr auto texts = std::to_array<Text>({
#define TD_STRING(id, name, text) {id, text},
#include "res/strings.def"
#undef TD_STRING
});

class Translation : public testing::Test
{
protected:
    ~Translation() override { CTdModule::SetLanguage(QString()); }
};

TEST_F(Translation, GermanIsComplete)
{
    QTranslator german;
    ASSERT_TRUE(german.load(QStringLiteral(":/terravox/translations/TdCommon_de.qm")));
    for (const Text &text : texts)
        EXPECT_FALSE(german.translate("TdCommon", text.text).isEmpty()) << text.id << " " << text.text;

    QFile source(QStringLiteral(TD_SOURCE_DIR "/src/res/translations/TdCommon_de.ts"));
    ASSERT_TRUE(source.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&source);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"translation") {
            EXPECT_FALSE(xml.attributes().hasAttribute(QStringLiteral("type")))
                << "unfinished or obsolete in line " << xml.lineNumber();
        }
    }
    EXPECT_FALSE(xml.hasError());
}

/// What a translation must keep: places to fill in, and the end of a line.
TEST_F(Translation, GermanKeepsThePlacesToFillIn)
{
    QTranslator german;
    ASSERT_TRUE(german.load(QStringLiteral(":/terravox/translations/TdCommon_de.qm")));
    for (const Text &text : texts)
        for (const QString &place : {QStringLiteral("%s"), QStringLiteral("%1"), QStringLiteral("\r\n")})
            EXPECT_EQ(german.translate("TdCommon", text.text).count(place), QString::fromUtf8(text.text).count(place))
                << text.id;
}

TEST_F(Translation, NamesFollowTheLanguageAtRunTime)
{
    EXPECT_EQ(CTdCommMethods::GetDatasetTypeName(5), QStringLiteral("Region"));
    ASSERT_TRUE(CTdModule::SetLanguage(QStringLiteral("de_AT")));
    EXPECT_EQ(CTdModule::GetLanguage(), QStringLiteral("de_AT"));
    EXPECT_EQ(CTdCommMethods::GetDatasetTypeName(5), QStringLiteral("Fläche"));
    EXPECT_EQ(CTdCommMethods::GetDatasetTypeName(-1), QStringLiteral("Unbekannter Typ"));
    EXPECT_EQ(CTdCommMethods::GetEncTypeName(0), QStringLiteral("Unkodiert"));
    EXPECT_EQ(CTdCommMethods::GetEncTypeName(1), QStringLiteral("SBC"));
    EXPECT_EQ(CTdCommMethods::GetProjectTransformationMethodName(9603),
              QStringLiteral("Geocentric Translation (3-par.)"));
    ASSERT_TRUE(CTdModule::SetLanguage(QStringLiteral("en_GB")));
    EXPECT_EQ(CTdCommMethods::GetDatasetTypeName(5), QStringLiteral("Region"));
}

/// Every name of every table leads back to its code in either language, but for those that are meant not to.
TEST_F(Translation, LookUpsFollowTheLanguage)
{
    for (const char *language : {"", "de"}) {
        ASSERT_TRUE(CTdModule::SetLanguage(QString::fromLatin1(language)));
        for (const auto &row : TdVocabulary::fieldTypes) {
            const QString name = CTdCommMethods::GetFieldNameFromType(row.type);
            EXPECT_EQ(CTdCommMethods::GetFieldTypeFromName(name), row.type == 11 ? 128 : row.type) << language;
        }
        for (const auto &row : TdVocabulary::units) {
            const int degree = row.code == 0;
            EXPECT_EQ(CTdCommMethods::GetMapUnitType(CTdCommMethods::GetDistanceUint(row.code)), degree ? 1 : row.code);
            EXPECT_EQ(CTdCommMethods::GetMapUnitType(CTdCommMethods::GetAreaUint(row.code)), degree ? 10000 : row.code);
        }
        for (const auto &row : TdVocabulary::encodings)
            EXPECT_EQ(CTdCommMethods::GetEncType(CTdCommMethods::GetEncTypeName(row.type)), row.type);
        EXPECT_EQ(CTdCommMethods::GetEncType(CTdCommMethods::GetEncTypeName(0).toUpper()), 0);
    }
    EXPECT_EQ(CTdCommMethods::GetFieldTypeFromName(QStringLiteral("Boolean")), -1) << "not a name in German";
}

TEST_F(Translation, UnknownLanguageChangesNothing)
{
    ASSERT_TRUE(CTdModule::SetLanguage(QStringLiteral("de")));
    for (const char *language : {"fr", "xx_YY", "not a language"})
        EXPECT_FALSE(CTdModule::SetLanguage(QString::fromLatin1(language))) << language;
    EXPECT_EQ(CTdModule::GetLanguage(), QStringLiteral("de"));
    EXPECT_EQ(CTdCommMethods::GetDatasetTypeName(5), QStringLiteral("Fläche"));
}

TEST_F(Translation, LaterModulesAreTranslatedToo)
{
    ASSERT_TRUE(CTdModule::SetLanguage(QStringLiteral("de")));
    CTdModule::Detach();
    CTdModule::Attach();
    EXPECT_EQ(CTdCommMethods::GetDatasetTypeName(5), QStringLiteral("Fläche"));
}

TEST_F(Translation, InstalledFileStandsBeforeTheLanguage)
{
    EXPECT_FALSE(CTdModule::InstallTranslation(QStringLiteral("/no/such.qm")));
    const QString german = QStringLiteral(":/terravox/translations/TdCommon_de.qm");
    ASSERT_TRUE(CTdModule::InstallTranslation(german));
    ASSERT_TRUE(CTdModule::InstallTranslation(german));
    EXPECT_EQ(CTdCommMethods::GetDatasetTypeName(5), QStringLiteral("Fläche"));
    ASSERT_TRUE(CTdModule::SetLanguage(QStringLiteral("en")));
    EXPECT_EQ(CTdCommMethods::GetDatasetTypeName(5), QStringLiteral("Fläche"));
    EXPECT_TRUE(CTdModule::RemoveTranslation(german));
    EXPECT_FALSE(CTdModule::RemoveTranslation(german));
    EXPECT_EQ(CTdCommMethods::GetDatasetTypeName(5), QStringLiteral("Region"));
}

} // namespace
