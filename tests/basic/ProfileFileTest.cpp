#include "basic/TdProfileFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using namespace Qt::Literals::StringLiterals;

class ProfileFile : public testing::Test
{
protected:
    void store(const QByteArray &bytes) const
    {
        QDir(m_folder.path()).mkpath(u"sub"_s);
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray content(const QString &file)
    {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }
    /// Which branches may be shown, from the workspace to the resources.
    static QList<bool> shown(const CTdProfileFile &profile)
    {
        return {profile.IsTreeItemDispWS(),   profile.IsTreeItemDispDSs(),    profile.IsTreeItemDispMAPs(),
                profile.IsTreeItemDispLYTs(), profile.IsTreeItemDispScenes(), profile.IsTreeItemDispRESs()};
    }

    const QString m_section = u"Section"_s;
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(u"sub/terravox.ini"_s);
};

TEST_F(ProfileFile, MissingFileGivesDefaultsAndIsNotMade)
{
    const CTdProfileFile profile(m_path);
    EXPECT_EQ(profile.ReadIntValue(m_section, u"Key"_s, 42), 42);
    EXPECT_EQ(shown(profile), QList<bool>(6, true));
    EXPECT_TRUE(profile.LoadTreeItemWSAlias().isEmpty());
    EXPECT_FALSE(QFile::exists(m_path));
}

TEST_F(ProfileFile, KeepsTheValuesOfTwoProgramsForTheNext)
{
    const QString text = u"a, \"b\"; Städte \U0001F5FA=1\n2"_s;
    CTdProfileFile first(m_path), second(m_path);
    EXPECT_TRUE(first.WriteIntValue(m_section, u"Number"_s, -2147483647 - 1));
    EXPECT_TRUE(second.WriteStringValue(m_section, u"Schlüssel ü"_s, text));
    EXPECT_FALSE(second.WriteIntValue(m_section, QString(), 1));
    const CTdProfileFile profile(m_path);
    EXPECT_EQ(profile.ReadIntValue(m_section, u"Number"_s, 0), -2147483647 - 1);
    EXPECT_EQ(profile.ReadStringValue(m_section, u"Schlüssel ü"_s), text);
    EXPECT_EQ(profile.ReadIntValue(u"Other"_s, u"Number"_s, 5), 5);
    EXPECT_EQ(profile.ReadIntValue(m_section, QString(), 6), 6);
}

TEST_F(ProfileFile, HoldsCaptionAndPermissionOfEachBranch)
{
    CTdProfileFile profile(m_path);
    for (int i = 0; i < CTdProfileFile::treeItemCount; ++i) {
        const auto item = static_cast<CTdProfileFile::TreeItem>(i);
        QList<bool> wanted(6, true);
        wanted[i] = false;
        EXPECT_TRUE(profile.SetTreeItemDisp(item, false) && profile.SaveTreeItemAlias(item, QString::number(i)));
        EXPECT_EQ(shown(CTdProfileFile(m_path)), wanted) << i;
        EXPECT_TRUE(profile.SetTreeItemDisp(item, true));
    }
    EXPECT_EQ(shown(profile), QList<bool>(6, true));
    EXPECT_EQ(profile.LoadTreeItemWSAlias() + profile.LoadTreeItemDSSAlias() + profile.LoadTreeItemMapsAlias() +
                  profile.LoadTreeItemLytsAlias() + profile.LoadTreeItemScenesAlias() + profile.LoadTreeItemResAlias(),
              u"012345"_s);
    EXPECT_FALSE(profile.SetTreeItemDisp(static_cast<CTdProfileFile::TreeItem>(6), false));
}

TEST_F(ProfileFile, ReadsWhatPeopleTyped)
{
    store("[WorkspaceTree]\nShowMaps= 0 \nShowScenes=no\nMapsAlias=Maps, plans\n"
          "[Section]\nNumber=12abc\nHuge=99999999999\n");
    const CTdProfileFile profile(m_path);
    EXPECT_EQ(shown(profile), (QList<bool>{true, true, false, true, true, true}));
    EXPECT_EQ(profile.LoadTreeItemMapsAlias(), u"Maps, plans"_s);
    EXPECT_EQ(profile.ReadIntValue(m_section, u"Number"_s, 7), 7);
    EXPECT_EQ(profile.ReadIntValue(m_section, u"Huge"_s, 7), 7);
}

TEST_F(ProfileFile, GarbageGivesDefaultsAndIsNotLost)
{
    QByteArray binary;
    for (int i = 0; i < 5000; ++i)
        binary.append(static_cast<char>(i * 7919 >> 3));
    for (const QByteArray &garbage :
         {QByteArray("no ini at all\nreally"), QByteArray("[unclosed\nx=@Variant(\\0\\0\\0\\x7f"), binary}) {
        store(garbage);
        CTdProfileFile profile(m_path);
        EXPECT_EQ(profile.ReadIntValue(m_section, u"Key"_s, 42), 42);
        EXPECT_TRUE(profile.IsTreeItemDispWS());
        EXPECT_EQ(content(m_path), garbage);

        EXPECT_TRUE(profile.WriteIntValue(m_section, u"Key"_s, 1));
        EXPECT_EQ(CTdProfileFile(m_path).ReadIntValue(m_section, u"Key"_s, 0), 1);
        EXPECT_EQ(content(m_path + u".damaged"_s), garbage);
        QFile::remove(m_path + u".damaged"_s);
    }
}

TEST_F(ProfileFile, GoodLinesOfADamagedFileSurvive)
{
    store("[Section]\nKey=7\nscribble\n[WorkspaceTree]\nShowMaps=0\n");
    EXPECT_TRUE(CTdProfileFile(m_path).WriteIntValue(m_section, u"Other"_s, 8));
    const CTdProfileFile again(m_path);
    EXPECT_EQ(again.ReadIntValue(m_section, u"Key"_s, 0), 7);
    EXPECT_EQ(again.ReadIntValue(m_section, u"Other"_s, 0), 8);
    EXPECT_FALSE(again.IsTreeItemDispMAPs());
}

TEST_F(ProfileFile, FolderInPlaceOfTheFileRefusesWrites)
{
    CTdProfileFile profile(m_folder.path());
    EXPECT_EQ(profile.ReadIntValue(m_section, u"Key"_s, 3), 3);
    EXPECT_FALSE(profile.WriteIntValue(m_section, u"Key"_s, 1));
    EXPECT_TRUE(QFileInfo(m_folder.path()).isDir());
}

} // namespace
