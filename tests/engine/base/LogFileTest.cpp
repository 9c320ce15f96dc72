#include "engine/base/TxErrorMsg.h"
#include "engine/base/TxGdal.h"
#include "engine/base/TxLogFile.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

QString contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// A log of its own, and the old settings afterwards.
class LogFile : public testing::Test
{
protected:
    LogFile() { CTxLogFile::SetFolder(m_folder.path()); }
    ~LogFile() override
    {
        CTxLogFile::SetFolder(QString());
        CTxLogFile::SetThreshold(CTxLogFile::Information);
        CTxLogFile::SetMaximumSize(1'000'000);
    }
    QString content() const { return contentOf(CTxLogFile::GetPath()); }

    QTemporaryDir m_folder;
};

TEST_F(LogFile, WritesOneLineAnEntry)
{
    EXPECT_TRUE(CTxLogFile::RecordLog(CTxLogFile::Warning, QStringLiteral("first\nsecond \u00f6"),
                                      QStringLiteral("a.cpp"), 12));
    EXPECT_TRUE(CTxLogFile::WriteErrorLog(-5, QStringLiteral("coded"), 7));
    const QStringList lines = content().split(u'\n');
    ASSERT_EQ(lines.size(), 3) << "two lines and the end of the last";
    EXPECT_TRUE(lines.at(0).contains(QStringLiteral(" WARNING first\\nsecond \u00f6 [a.cpp:12]")));
    EXPECT_TRUE(lines.at(1).contains(QStringLiteral(" ERROR coded (code -5, line 7)")));
}

TEST_F(LogFile, LeavesOutWhatIsBelowTheThreshold)
{
    EXPECT_TRUE(CTxLogFile::RecordDebugLog(QStringLiteral("quiet")));
    EXPECT_TRUE(content().isEmpty());
    CTxLogFile::SetThreshold(CTxLogFile::Debug);
    EXPECT_TRUE(CTxLogFile::RecordDebugLog(QStringLiteral("loud")));
    EXPECT_TRUE(content().contains(QStringLiteral(" DEBUG loud")));
}

TEST_F(LogFile, KeepsThreeOldFilesAndItsSize)
{
    CTxLogFile::SetMaximumSize(1000);
    for (int i = 0; i < 60; ++i)
        EXPECT_TRUE(CTxLogFile::RecordLog(CTxLogFile::ErrorLevel, QString(100, u'x') + QString::number(i)));
    const QStringList files = QDir(m_folder.path()).entryList(QDir::Files, QDir::Name);
    EXPECT_EQ(files.join(u' ').toStdString(), "terravox.log terravox.log.1 terravox.log.2 terravox.log.3");
    for (const QString &file : files)
        EXPECT_LE(QFile(m_folder.filePath(file)).size(), 1000) << file.toStdString();
    EXPECT_TRUE(content().endsWith(QStringLiteral("x59\n")));
}

TEST_F(LogFile, KeepsItsSizeWhereOldFilesCannotBeReplaced)
{
    for (const char *name : {"terravox.log.1/taken", "terravox.log.2/taken", "terravox.log.3/taken"})
        ASSERT_TRUE(QDir(m_folder.path()).mkpath(QLatin1StringView(name)));
    CTxLogFile::SetMaximumSize(1000);
    for (int i = 0; i < 60; ++i)
        EXPECT_TRUE(CTxLogFile::RecordLog(CTxLogFile::ErrorLevel, QString(100, u'x') + QString::number(i)));
    EXPECT_LE(QFile(CTxLogFile::GetPath()).size(), 1000);
    EXPECT_TRUE(content().endsWith(QStringLiteral("x59\n")));
}

TEST_F(LogFile, AnswersFalseWhereItCannotWrite)
{
    // A file in the folder's place stops every user, root included.
    QFile file(m_folder.filePath(QStringLiteral("taken")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    CTxLogFile::SetFolder(m_folder.filePath(QStringLiteral("taken/below")));
    EXPECT_FALSE(CTxLogFile::RecordLog(CTxLogFile::ErrorLevel, QStringLiteral("lost")));
}

TEST_F(LogFile, TakesErrorsAndTheMessagesOfTheLibrariesBeneath)
{
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    TxGetErrorMsgObj().SetErrorMessage(QStringLiteral("of the engine"));
    TxGdal::initialize();
    CPLError(CE_Failure, CPLE_AppDefined, "of %s", "GDAL");
    EXPECT_EQ(TxGetErrorMsgObj().GetErrorMessage().toStdString(), "of GDAL");
    CPLError(CE_Warning, CPLE_AppDefined, "a warning");
    EXPECT_EQ(TxGetErrorMsgObj().GetErrorMessage().toStdString(), "of GDAL");
    EXPECT_EQ(testing::internal::GetCapturedStderr() + testing::internal::GetCapturedStdout(), "");
    EXPECT_TRUE(content().contains(QStringLiteral("ERROR of the engine")));
    EXPECT_TRUE(content().contains(QStringLiteral("ERROR of GDAL")));
    EXPECT_TRUE(content().contains(QStringLiteral("WARNING a warning")));
}

TEST_F(LogFile, CollectorsKeepMessagesFromTheErrorObject)
{
    TxGetErrorMsgObj().Clear();
    {
        const TxGdal::ErrorCollector outer;
        {
            const TxGdal::ErrorCollector inner;
            CPLError(CE_Warning, CPLE_AppDefined, "a warning");
            for (int i = 0; i < 1000; ++i)
                CPLError(CE_Failure, CPLE_AppDefined, "a failure");
            EXPECT_TRUE(inner.hasFailure());
            EXPECT_EQ(inner.text().toStdString(), "a failure");
            EXPECT_TRUE(TxGetErrorMsgObj().GetErrorMessage().isEmpty());
            EXPECT_FALSE(inner.fail(QStringLiteral("It failed")));
        }
        EXPECT_FALSE(outer.hasFailure());
    }
    EXPECT_EQ(TxGetErrorMsgObj().GetErrorMessage().toStdString(), "It failed: a failure");
}

} // namespace
