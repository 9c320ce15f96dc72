#include "basic/TdProfileFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class ProfileFile : public testing::Test
{
protected:
    QString path() const { return m_folder.filePath(QStringLiteral("sub/terravox.ini")); }
    void store(const QByteArray &bytes) const
    {
        QDir(m_folder.path()).mkpath(QStringLiteral("sub"));
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray content(const QString &file)
    {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }

    const QString m_section = QStringLiteral("Section");
    QTemporaryDir m_folder;
};

TEST_F(ProfileFile, MissingFileGivesDefaultsAndIsNotMade)
{
    const CTdProfileFile profile(path());
    EXPECT_EQ(profile.ReadIntValue(m_section, QStringLiteral("Key"), 42), 42);
    EXPECT_TRUE(profile.IsTreeItemDispWS() && profile.IsTreeItemDispDSs() && profile.IsTreeItemDispMAPs());
    EXPECT_TRUE(profile.IsTreeItemDispLYTs() && profile.IsTreeItemDispScenes() && profile.IsTreeItemDispRESs());
    EXPECT_TRUE(profile.LoadTreeItemWSAlias().isEmpty());
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(ProfileFile, KeepsValuesForTheNextProgram)
{
    const QString text = QStringLiteral("a, \"b\"; Städte \U0001F5FA=1\n2");
    {
        CTdProfileFile profile(path());
        EXPECT_TRUE(profile.WriteIntValue(m_section, QStringLiteral("Number"), -2147483647 - 1));
        EXPECT_TRUE(profile.WriteStringValue(m_section, QStringLiteral("Schlüssel ü"), text));
        EXPECT_FALSE(profile.WriteIntValue(m_section, QString(), 1));
    }
    const CTdProfileFile profile(path());
    EXPECT_EQ(profile.ReadIntValue(m_section, QStringLiteral("Number"), 0), -2147483647 - 1);
    EXPECT_EQ(profile.ReadStringValue(m_section, QStringLiteral("Schlüssel ü")), text);
    EXPECT_EQ(profile.ReadIntValue(QStringLiteral("Other"), QStringLiteral("Number"), 5), 5);
    EXPECT_EQ(profile.ReadIntValue(m_section, QString(), 6), 6);
}

TEST_F(ProfileFile, HoldsCaptionAndPermissionOfEachBranch)
{
    for (int i = 0; i < CTdProfileFile::treeItemCount; ++i) {
        const auto item = static_cast<CTdProfileFile::TreeItem>(i);
        CTdProfileFile profile(path());
        EXPECT_TRUE(profile.SetTreeItemDisp(item, false));
        EXPECT_TRUE(profile.SaveTreeItemAlias(item, QString::number(i)));
    }
    CTdProfileFile profile(path());
    EXPECT_FALSE(profile.IsTreeItemDispWS() || profile.IsTreeItemDispDSs() || profile.IsTreeItemDispMAPs());
    EXPECT_FALSE(profile.IsTreeItemDispLYTs() || profile.IsTreeItemDispScenes() || profile.IsTreeItemDispRESs());
    const QString aliases = profile.LoadTreeItemWSAlias() + profile.LoadTreeItemDSSAlias() +
                            profile.LoadTreeItemMapsAlias() + profile.LoadTreeItemLytsAlias() +
                            profile.LoadTreeItemScenesAlias() + profile.LoadTreeItemResAlias();
    EXPECT_EQ(aliases, QStringLiteral("012345"));

    EXPECT_TRUE(profile.SetTreeItemDisp(CTdProfileFile::Maps, true));
    EXPECT_TRUE(profile.IsTreeItemDispMAPs());
    EXPECT_FALSE(profile.IsTreeItemDispWS());
    EXPECT_FALSE(profile.SetTreeItemDisp(static_cast<CTdProfileFile::TreeItem>(6), false));
}

TEST_F(ProfileFile, ReadsWhatPeopleTyped)
{
    store("[WorkspaceTree]\nShowMaps= 0 \nShowScenes=no\nMapsAlias=Maps, plans\n"
          "[Section]\nNumber=12abc\nHuge=99999999999\n");
    const CTdProfileFile profile(path());
    EXPECT_FALSE(profile.IsTreeItemDispMAPs());
    EXPECT_TRUE(profile.IsTreeItemDispScenes());
    EXPECT_EQ(profile.LoadTreeItemMapsAlias(), QStringLiteral("Maps, plans"));
    EXPECT_EQ(profile.ReadIntValue(m_section, QStringLiteral("Number"), 7), 7);
    EXPECT_EQ(profile.ReadIntValue(m_section, QStringLiteral("Huge"), 7), 7);
}

TEST_F(ProfileFile, GarbageGivesDefaultsAndIsNotLost)
{
    QByteArray binary;
    for (int i = 0; i < 5000; ++i)
        binary.append(static_cast<char>(i * 7919 >> 3));
    for (const QByteArray &garbage :
         {QByteArray("no ini at all\nreally"), QByteArray("[unclosed\nx=@Variant(\\0\\0\\0\\x7f"), binary}) {
        store(garbage);
        CTdProfileFile profile(path());
        EXPECT_EQ(profile.ReadIntValue(m_section, QStringLiteral("Key"), 42), 42);
        EXPECT_TRUE(profile.IsTreeItemDispWS());
        EXPECT_EQ(content(path()), garbage);

        EXPECT_TRUE(profile.WriteIntValue(m_section, QStringLiteral("Key"), 1));
        EXPECT_EQ(CTdProfileFile(path()).ReadIntValue(m_section, QStringLiteral("Key"), 0), 1);
        const QString copy = path() + QStringLiteral(".damaged");
        EXPECT_EQ(content(copy), garbage);
        QFile::remove(copy);
    }
}

TEST_F(ProfileFile, GoodLinesOfADamagedFileSurvive)
{
    store("[Section]\nKey=7\nscribble\n[WorkspaceTree]\nShowMaps=0\n");
    CTdProfileFile profile(path());
    EXPECT_TRUE(profile.WriteIntValue(m_section, QStringLiteral("Other"), 8));
    const CTdProfileFile again(path());
    EXPECT_EQ(again.ReadIntValue(m_section, QStringLiteral("Key"), 0), 7);
    EXPECT_EQ(again.ReadIntValue(m_section, QStringLiteral("Other"), 0), 8);
    EXPECT_FALSE(again.IsTreeItemDispMAPs());
}

TEST_F(ProfileFile, FolderInPlaceOfTheFileRefusesWrites)
{
    CTdProfileFile profile(m_folder.path());
    EXPECT_EQ(profile.ReadIntValue(m_section, QStringLiteral("Key"), 3), 3);
    EXPECT_FALSE(profile.WriteIntValue(m_section, QStringLiteral("Key"), 1));
    EXPECT_TRUE(QFileInfo(m_folder.path()).isDir());
}

TEST_F(ProfileFile, TwoProgramsShareOneFile)
{
    CTdProfileFile first(path());
    CTdProfileFile second(path());
    EXPECT_TRUE(first.WriteIntValue(m_section, QStringLiteral("First"), 1));
    EXPECT_TRUE(second.WriteIntValue(m_section, QStringLiteral("Second"), 2));
    const CTdProfileFile profile(path());
    EXPECT_EQ(profile.ReadIntValue(m_section, QStringLiteral("First"), 0), 1);
    EXPECT_EQ(profile.ReadIntValue(m_section, QStringLiteral("Second"), 0), 2);
}

} // namespace
