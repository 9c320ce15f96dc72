#include "common/TdCommMethods.h"
#include "common/TdModule.h"
#include "common/VocabularyTables.h"

#include <QFile>
#include <QTranslator>

#include <gtest/gtest.h>

#include <array>

namespace {

using namespace Qt::Literals::StringLiterals;
using Methods = CTdCommMethods;

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
    const QString m_german = u":/terravox/translations/TdCommon_de.qm"_s;
};

TEST_F(Translation, GermanIsComplete)
{
    QTranslator german;
    ASSERT_TRUE(german.load(m_german));
    for (const Text &text : texts) {
        const QString translation = german.translate("TdCommon", text.text);
        EXPECT_FALSE(translation.isEmpty()) << text.id << " " << text.text;
        for (const QString &kept : {u"%s"_s, u"%1"_s, u"\r\n"_s}) // places to fill in, and the end of a line
            EXPECT_EQ(translation.count(kept), QString::fromUtf8(text.text).count(kept)) << text.id;
    }

    QFile source(QStringLiteral(TD_SOURCE_DIR "/src/res/translations/TdCommon_de.ts"));
    ASSERT_TRUE(source.open(QIODevice::ReadOnly));
    const QByteArray rows = source.readAll();
    EXPECT_TRUE(rows.contains("<translation>"));
    EXPECT_FALSE(rows.contains("<translation type=")) << "unfinished or obsolete";
}

TEST_F(Translation, NamesFollowTheLanguageAtRunTime)
{
    EXPECT_EQ(Methods::GetDatasetTypeName(5), u"Region"_s);
    ASSERT_TRUE(CTdModule::SetLanguage(u"de_AT"_s));
    EXPECT_EQ(CTdModule::GetLanguage(), u"de_AT"_s);
    EXPECT_EQ(Methods::GetDatasetTypeName(5), u"Fläche"_s);
    EXPECT_EQ(Methods::GetDatasetTypeName(-1), u"Unbekannter Typ"_s);
    EXPECT_EQ(Methods::GetEncTypeName(0), u"Unkodiert"_s);
    EXPECT_EQ(Methods::GetEncTypeName(1), u"SBC"_s);
    EXPECT_EQ(Methods::GetProjectTransformationMethodName(9603), u"Geocentric Translation (3-par.)"_s);
    ASSERT_TRUE(CTdModule::SetLanguage(u"en_GB"_s));
    EXPECT_EQ(Methods::GetDatasetTypeName(5), u"Region"_s);
}

/// Every name of every table leads back to its code in either language, but for those that are meant not to.
TEST_F(Translation, LookUpsFollowTheLanguage)
{
    for (const char *language : {"", "de"}) {
        ASSERT_TRUE(CTdModule::SetLanguage(QString::fromLatin1(language)));
        for (const auto &row : TdVocabulary::fieldTypes) {
            const QString name = Methods::GetFieldNameFromType(row.type);
            EXPECT_EQ(Methods::GetFieldTypeFromName(name), row.type == 11 ? 128 : row.type) << language;
        }
        for (const auto &row : TdVocabulary::units) {
            const int degree = row.code == 0;
            EXPECT_EQ(Methods::GetMapUnitType(Methods::GetDistanceUint(row.code)), degree ? 1 : row.code);
            EXPECT_EQ(Methods::GetMapUnitType(Methods::GetAreaUint(row.code)), degree ? 10000 : row.code);
        }
        for (const auto &row : TdVocabulary::encodings)
            EXPECT_EQ(Methods::GetEncType(Methods::GetEncTypeName(row.type)), row.type);
        EXPECT_EQ(Methods::GetEncType(Methods::GetEncTypeName(0).toUpper()), 0);
    }
    EXPECT_EQ(Methods::GetFieldTypeFromName(u"Boolean"_s), -1) << "not a name in German";
}

TEST_F(Translation, LanguageOutlivesUnknownOnesAndAnotherAttachment)
{
    ASSERT_TRUE(CTdModule::SetLanguage(u"de"_s));
    for (const char *language : {"fr", "xx_YY", "not a language"})
        EXPECT_FALSE(CTdModule::SetLanguage(QString::fromLatin1(language))) << language;
    EXPECT_EQ(CTdModule::GetLanguage(), u"de"_s);
    EXPECT_EQ(Methods::GetDatasetTypeName(5), u"Fläche"_s);
    CTdModule::Detach();
    CTdModule::Attach();
    EXPECT_EQ(Methods::GetDatasetTypeName(5), u"Fläche"_s);
}

TEST_F(Translation, InstalledFileStandsBeforeTheLanguage)
{
    EXPECT_FALSE(CTdModule::InstallTranslation(u"/no/such.qm"_s));
    ASSERT_TRUE(CTdModule::InstallTranslation(m_german));
    ASSERT_TRUE(CTdModule::InstallTranslation(m_german));
    EXPECT_EQ(Methods::GetDatasetTypeName(5), u"Fläche"_s);
    ASSERT_TRUE(CTdModule::SetLanguage(u"en"_s));
    EXPECT_EQ(Methods::GetDatasetTypeName(5), u"Fläche"_s);
    EXPECT_TRUE(CTdModule::RemoveTranslation(m_german));
    EXPECT_FALSE(CTdModule::RemoveTranslation(m_german));
    EXPECT_EQ(Methods::GetDatasetTypeName(5), u"Region"_s);
}

} // namespace
