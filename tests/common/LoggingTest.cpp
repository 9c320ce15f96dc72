#include "HostWindow.h"

#include "common/TdCommMethods.h"
#include "engine/base/TxLogFile.h"
#include "res/StringId.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

TEST(ShowText, PrintsThePartsThatTheFlagsName)
{
    struct Row
    {
        quint32 flags;
        const char *pattern;
    };
    const Row rows[] = {{0, "^$"},
                        {1, "^Import:\\t$"},
                        {2, "^done 100%s$"},
                        {3, "^Import:\\tdone 100%s$"},
                        {4, "^\\t\\d\\d:\\d\\d:\\d\\d$"},
                        {7, "^Import:\\tdone 100%s\\t\\d\\d:\\d\\d:\\d\\d$"},
                        {0xFFFFFFF8u, "^$"}};
    HostWindow host;
    for (const Row &row : rows) {
        host.m_texts.clear();
        EXPECT_TRUE(CTdCommMethods::ShowText(QStringLiteral("Import"), QStringLiteral("done 100%s"), row.flags));
        ASSERT_EQ(host.m_texts.size(), 1);
        EXPECT_TRUE(QRegularExpression(QLatin1StringView(row.pattern)).match(host.m_texts.first()).hasMatch())
            << row.flags << ": " << host.m_texts.first().toStdString();
    }
    EXPECT_EQ(host.m_messages.count(1124), std::size(rows));
}

TEST(ShowText, TakesTextsOfTheStringTable)
{
    HostWindow host;
    EXPECT_TRUE(CTdCommMethods::ShowText(TdStringId::TreeMaps, TdStringId::TreeScenes, 3));
    EXPECT_EQ(host.m_texts, QStringList{QStringLiteral("Maps:\t3D Scenes")});
}

TEST(ShowText, WithoutAMainWindowIsLost)
{
    EXPECT_FALSE(CTdCommMethods::ShowText(QStringLiteral("Import"), QStringLiteral("done"), 3));
}

TEST(PromptWrong, DoesNothing)
{
    HostWindow host;
    CTdCommMethods::PromptWrong(QStringLiteral("WorkspaceBarTree"), 12);
    EXPECT_TRUE(host.m_messages.isEmpty());
}

/// The wrappers take the source position first and pass it last: a swapped argument would show in the file.
TEST(Log, WrappersReachTheEnginesLog)
{
    const QTemporaryDir folder;
    CTxLogFile::SetFolder(folder.path());
    const int threshold = CTxLogFile::GetThreshold();
    CTxLogFile::SetThreshold(CTxLogFile::Debug);
    EXPECT_TRUE(CTdCommMethods::RecordLog(CTxLogFile::Warning, QStringLiteral("plain")));
    EXPECT_TRUE(
        CTdCommMethods::RecordLog(QStringLiteral("Roads.cpp"), 11, CTxLogFile::Warning, QStringLiteral("placed")));
    EXPECT_TRUE(CTdCommMethods::RecordDebugLog(QStringLiteral("debug")));
    EXPECT_TRUE(CTdCommMethods::RecordDebugLog(QStringLiteral("Lakes.cpp"), 22, QStringLiteral("debug placed")));
    EXPECT_TRUE(CTdCommMethods::WriteErrorLog(404, QStringLiteral("coded"), 33));
    EXPECT_TRUE(CTdCommMethods::WriteErrorLog(QStringLiteral("failed"), QStringLiteral("Rivers.cpp"), 44));

    QFile file(CTxLogFile::GetPath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).trimmed().split(u'\n');
    ASSERT_EQ(lines.size(), 6);
    const QList<QStringList> wanted = {
        {QStringLiteral("plain")},
        {QStringLiteral("placed"), QStringLiteral("Roads.cpp"), QStringLiteral("11")},
        {QStringLiteral("debug")},
        {QStringLiteral("debug placed"), QStringLiteral("Lakes.cpp"), QStringLiteral("22")},
        {QStringLiteral("coded"), QStringLiteral("404"), QStringLiteral("33")},
        {QStringLiteral("failed"), QStringLiteral("Rivers.cpp"), QStringLiteral("44")}};
    for (int i = 0; i < lines.size(); ++i)
        for (const QString &part : wanted[i])
            EXPECT_TRUE(lines[i].contains(part)) << lines[i].toStdString();

    CTxLogFile::SetFolder(QStringLiteral("/proc/no-such-folder"));
    EXPECT_FALSE(CTdCommMethods::RecordLog(CTxLogFile::Warning, QStringLiteral("lost")));
    CTxLogFile::SetThreshold(threshold);
    CTxLogFile::SetFolder(QString());
}

} // namespace
