#include "colour/ColorsetTable.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>

#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace Qt::Literals::StringLiterals;

ColorsetTable threeColours()
{
    ColorsetTable table;
    table.minimum = -1;
    table.maximum = 2;
    table.entries = {{-1, 0x0000FF}, {0, 0x00FF00}, {1, 0xFF0000}};
    table.reckonStep();
    return table;
}

QByteArray bytesOf(const ColorsetTable &table)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(table.write(buffer));
    return buffer.data();
}

bool readFrom(QByteArray bytes, ColorsetTable &table)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return table.read(buffer);
}

TEST(ColorsetTable, StandsInTheFileByteByByte)
{
    QByteArray want = "Terravox Colorset Table";
    want.resize(255, '\0');
    want += QByteArray::fromHex("000000000000F03F" // step 1
                                "03000000"
                                "000000000000F0BF"                 // -1
                                "0000000000000040"                 // 2
                                "000000000000F0BFFF00000000000000" // -1 red
                                "000000000000000000FF000000000000" // 0 green
                                "000000000000F03F0000FF0000000000");
    EXPECT_EQ(bytesOf(threeColours()).toHex(), want.toHex());
    ColorsetTable back;
    ASSERT_TRUE(readFrom(want, back));
    EXPECT_EQ(back.entries, threeColours().entries);
    EXPECT_EQ(back.step, 1.0);
    EXPECT_EQ(back.count, 3);
    EXPECT_EQ(back.minimum, -1.0);
    EXPECT_EQ(back.maximum, 2.0);
}

TEST(ColorsetTable, IsKnownByItsTitleInAnyLetterCase)
{
    struct Row
    {
        QByteArray title;
        bool isTable;
    };
    const Row rows[] = {
        {"Terravox Colorset Table", true},
        {"  terravox COLORSET table\t\r\n ", true},
        {"Terravox Colorset Table\0garbage"_ba, true},
        {"Terravox Colorset Tabl", false},
        {"Terravox Colorset Table!", false},
        {"\0Terravox Colorset Table"_ba, false},
        {"", false},
        {QByteArray(232, ' ') + "Terravox Colorset Table", true}, // no NUL within the title's bytes
        {QByteArray(233, ' ') + "Terravox Colorset Table", false},
    };
    for (const Row &row : rows) {
        QByteArray bytes = bytesOf(threeColours());
        QByteArray title = row.title.first(std::min<qsizetype>(row.title.size(), 255));
        title.resize(255, row.title.contains("garbage") ? 'x' : '\0');
        bytes.replace(0, 255, title);
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        ColorsetTable table;
        EXPECT_EQ(table.read(buffer), row.isTable) << row.title.constData();
        EXPECT_EQ(ColorsetTable::hasHeader(buffer), row.isTable) << row.title.constData();
    }
}

TEST(ColorsetTable, OfAnyLengthIsReadOrRefused)
{
    const QByteArray whole = bytesOf(threeColours());
    for (qsizetype size = 0; size <= whole.size(); ++size) {
        ColorsetTable table;
        table.count = 77;
        const bool isRead = readFrom(whole.first(size), table);
        EXPECT_EQ(isRead, size >= 283) << size;
        EXPECT_EQ(table.entries.size(), size < 283 ? 0U : static_cast<size_t>(size - 283 + 15) / 16) << size;
        EXPECT_EQ(table.count, isRead ? 3 : 77);
    }
    ColorsetTable cut;
    ASSERT_TRUE(readFrom(whole.first(283 + 16 + 9), cut));
    EXPECT_EQ(cut.entries[1], (ColorsetTable::Entry{0, 0})); // of the colour one byte is there
}

TEST(ColorsetTable, TakesTheEntriesThatAreThereNotThoseThatAreCounted)
{
    std::mt19937 random(5); // NOLINT: the same bytes in each run
    for (const qint32 said : {-1, 0, 7, 2147483647}) {
        QByteArray bytes = bytesOf(threeColours());
        bytes.replace(263, 4, QByteArray::fromRawData(reinterpret_cast<const char *>(&said), 4));
        for (qsizetype i = 267; i < bytes.size(); ++i)
            bytes[i] = static_cast<char>(random());
        ColorsetTable table;
        ASSERT_TRUE(readFrom(bytes, table));
        EXPECT_EQ(table.count, said);
        EXPECT_EQ(table.entries.size(), 3U);
    }
}

TEST(ColorsetTable, FileIsReplacedWholeOrKept)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"ramp.sct"_s);
    ASSERT_TRUE(threeColours().save(path));
    ColorsetTable other = threeColours();
    other.entries.pop_back();
    EXPECT_FALSE(other.save(folder.filePath(u"none/ramp.sct"_s)));
    ColorsetTable back;
    ASSERT_TRUE(back.load(path));
    EXPECT_EQ(back.entries, threeColours().entries);
    ASSERT_TRUE(other.save(path));
    ASSERT_TRUE(back.load(path));
    EXPECT_EQ(back.entries.size(), 2U);
    EXPECT_FALSE(back.load(folder.filePath(u"missing.sct"_s)));
    EXPECT_FALSE(back.load(folder.path()));
    EXPECT_EQ(back.entries.size(), 2U);
}

TEST(ColorsetTable, IsNotTakenFromWhatEndsNowhere)
{
    QTemporaryDir folder;
    const QString pipe = folder.filePath(u"pipe"_s);
    ASSERT_EQ(mkfifo(pipe.toUtf8().constData(), 0600), 0);
    ColorsetTable table;
    for (const QString &path : {pipe, u"/dev/zero"_s})
        EXPECT_FALSE(table.load(path)) << path.toStdString();
    EXPECT_FALSE(table.save(pipe)); // nor is a file put in its place
    EXPECT_FALSE(QFileInfo(pipe).isFile());

    const QString huge = folder.filePath(u"huge.sct"_s);
    ASSERT_TRUE(threeColours().save(huge));
    ASSERT_TRUE(QFile::resize(huge, 1LL << 40)); // a hole that takes no room on the disk
    EXPECT_FALSE(table.load(huge));
    ASSERT_TRUE(QFile::resize(huge, 283 + 5000 * 16 - 3)); // several pieces, the last of them cut
    ASSERT_TRUE(table.load(huge));
    EXPECT_EQ(table.entries.size(), 5000U);
    EXPECT_EQ(table.entries[2], threeColours().entries[2]);
    EXPECT_EQ(table.entries[4999], (ColorsetTable::Entry{0, 0}));
}

TEST(ColorsetTable, OldFileStaysWhenTheDiskIsFull)
{
    QTemporaryDir folder;
    const QByteArray disk = folder.path().toUtf8();
    if (geteuid() != 0 || mount("none", disk.constData(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "needs leave to mount a small disk";
    const auto unmount = qScopeGuard([&disk] { umount(disk.constData()); });
    const QString path = folder.filePath(u"ramp.sct"_s);
    ASSERT_TRUE(threeColours().save(path));
    ColorsetTable large = threeColours();
    large.entries.resize(5000);
    EXPECT_FALSE(large.save(path));
    ColorsetTable back;
    ASSERT_TRUE(back.load(path));
    EXPECT_EQ(back.entries, threeColours().entries);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1); // no half file lies beside it
}

} // namespace
