#include "basic/TdProfileFile.h"
#include "controls/TdAnnotationStandard.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(AnnotationStandard, OnlyValidValuesAreStoredAndRead)
{
    const QTemporaryDir folder;
    CTdProfileFile profile(folder.filePath(QStringLiteral("profile.ini")));
    const CTdAnnotationStandard usual;
    EXPECT_TRUE(usual.IsValid());
    EXPECT_EQ(CTdAnnotationStandard::Load(profile), usual);

    CTdAnnotationStandard own;
    own.textHeight = 0.1 + 0.2; // comes back exactly
    own.fontFamily = QStringLiteral("DejaVu Sans");
    own.unit = 3048;
    own.precision = 0;
    ASSERT_TRUE(own.Save(profile)) << own.GetProblem().toStdString();
    EXPECT_EQ(CTdAnnotationStandard::Load(profile), own);
    EXPECT_EQ(CTdAnnotationStandard::Load(profile, QStringLiteral("Other")), usual);

    for (int row = 0; row < 7; ++row) {
        CTdAnnotationStandard bad;
        switch (row) {
        case 0:
            bad.textHeight = 0.0;
            break;
        case 1:
            bad.textHeight = nan;
            break;
        case 2:
            bad.textHeight = 1000.5;
            break;
        case 3:
            bad.fontFamily = QStringLiteral("No Such Font");
            break;
        case 4:
            bad.unit = 9144;
            break; // the yard's code is another
        case 5:
            bad.precision = -1;
            break;
        default:
            bad.precision = 11;
            break;
        }
        EXPECT_FALSE(bad.GetProblem().isEmpty()) << row;
        EXPECT_FALSE(bad.Save(profile)) << row;
    }
    EXPECT_EQ(CTdAnnotationStandard::Load(profile), own);
    const QString section = QStringLiteral("Annotation");
    profile.WriteStringValue(section, QStringLiteral("TextHeight"), QStringLiteral("3,5"));
    profile.WriteStringValue(section, QStringLiteral("Font"), QStringLiteral("No Such Font"));
    profile.WriteIntValue(section, QStringLiteral("Unit"), 77);
    profile.WriteIntValue(section, QStringLiteral("Precision"), 99);
    EXPECT_EQ(CTdAnnotationStandard::Load(profile), usual);
    for (const QString &garbage :
         {QStringLiteral("99999999999999999999"), QStringLiteral("nan"), QStringLiteral("\x01;=[\n]"),
          QString(100000, u'9'), QStringLiteral("@Invalid()"), QStringLiteral("2 m")}) {
        for (const char *key : {"TextHeight", "Font", "Unit", "Precision"})
            profile.WriteStringValue(section, QString::fromLatin1(key), garbage);
        EXPECT_EQ(CTdAnnotationStandard::Load(profile), usual) << garbage.left(20).toStdString();
    }
    QFile file(folder.filePath(QStringLiteral("profile.ini")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(5000, '\xff') + "[Annotation]\nUnit");
    file.close();
    EXPECT_EQ(CTdAnnotationStandard::Load(CTdProfileFile(file.fileName())), usual);
}

TEST(AnnotationStandard, LengthsAreWrittenWithUnitAndPrecision)
{
    CTdAnnotationStandard standard;
    for (const auto &[value, text] : {std::pair(1234.567, "1234.57 Meter"), {-0.001, "0.00 Meter"}, {nan, ""}})
        EXPECT_EQ(standard.FormatLength(value).toStdString(), text);
    standard.precision = 0;
    EXPECT_EQ(standard.FormatLength(-1.5).toStdString(), "-2 Meter");
}

} // namespace
