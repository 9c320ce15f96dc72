#include "HostWindow.h"

#include "common/TdCommMethods.h"
#include "engine/base/TxLogFile.h"
#include "res/StringId.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using namespace Qt::Literals::StringLiterals;
using Methods = CTdCommMethods;

TEST(ShowText, PrintsThePartsThatTheFlagsName)
{
    const std::pair<quint32, const char *> rows[] = {{0, "^$"},
                                                     {1, "^Import:\\t$"},
                                                     {2, "^done 100%s$"},
                                                     {3, "^Import:\\tdone 100%s$"},
                                                     {4, "^\\t\\d\\d:\\d\\d:\\d\\d$"},
                                                     {7, "^Import:\\tdone 100%s\\t\\d\\d:\\d\\d:\\d\\d$"},
                                                     {0xFFFFFFF8u, "^$"}};
    EXPECT_FALSE(Methods::ShowText(u"Import"_s, u"lost"_s, 3)) << "there is no main window";
    HostWindow host;
    for (const auto &[flags, pattern] : rows) {
        EXPECT_TRUE(Methods::ShowText(u"Import"_s, u"done 100%s"_s, flags));
        EXPECT_EQ(host.m_messages.last(), 1124);
        EXPECT_TRUE(host.m_texts.last().contains(QRegularExpression(QLatin1StringView(pattern))))
            << flags << ": " << host.m_texts.last().toStdString();
    }
    EXPECT_EQ(host.m_messages.size(), std::size(rows));
    EXPECT_TRUE(Methods::ShowText(TdStringId::TreeMaps, TdStringId::TreeScenes, 3));
    EXPECT_EQ(host.m_texts.last(), u"Maps:\t3D Scenes"_s);
}

TEST(PromptWrong, DoesNothing)
{
    HostWindow host;
    Methods::PromptWrong(u"WorkspaceBarTree"_s, 12);
    EXPECT_TRUE(host.m_messages.isEmpty());
}

/// The wrappers take the source position first and pass it last: a swapped argument would show in the file.
TEST(Log, WrappersReachTheEnginesLog)
{
    const QTemporaryDir folder;
    CTxLogFile::SetFolder(folder.path());
    const int threshold = CTxLogFile::GetThreshold();
    CTxLogFile::SetThreshold(CTxLogFile::Debug);
    EXPECT_TRUE(Methods::RecordLog(CTxLogFile::Warning, u"plain"_s));
    EXPECT_TRUE(Methods::RecordLog(u"Roads.cpp"_s, 11, CTxLogFile::Warning, u"placed"_s));
    EXPECT_TRUE(Methods::RecordDebugLog(u"debug"_s));
    EXPECT_TRUE(Methods::RecordDebugLog(u"Lakes.cpp"_s, 22, u"debug placed"_s));
    EXPECT_TRUE(Methods::WriteErrorLog(404, u"coded"_s, 33));
    EXPECT_TRUE(Methods::WriteErrorLog(u"failed"_s, u"Rivers.cpp"_s, 44));

    QFile file(CTxLogFile::GetPath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).trimmed().split(u'\n');
    const QList<QStringList> wanted = {{u"plain"_s},
                                       {u"placed"_s, u"Roads.cpp"_s, u"11"_s},
                                       {u"debug"_s},
                                       {u"debug placed"_s, u"Lakes.cpp"_s, u"22"_s},
                                       {u"coded"_s, u"404"_s, u"33"_s},
                                       {u"failed"_s, u"Rivers.cpp"_s, u"44"_s}};
    ASSERT_EQ(lines.size(), wanted.size());
    for (int i = 0; i < lines.size(); ++i)
        for (const QString &part : wanted[i])
            EXPECT_TRUE(lines[i].contains(part)) << lines[i].toStdString();

    CTxLogFile::SetFolder(u"/proc/no-such-folder"_s);
    EXPECT_FALSE(Methods::RecordLog(CTxLogFile::Warning, u"lost"_s));
    CTxLogFile::SetThreshold(threshold);
    CTxLogFile::SetFolder(QString());
}

} // namespace
