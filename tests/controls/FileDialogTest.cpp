#include "basic/TdProfileFile.h"
#include "controls/FileDialogEx.h"
#include "controls/FilePreview.h"
#include "controls/TdFileInfo.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

constexpr char twoPoints[] = R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{},"geometry":{"type":"Point","coordinates":[10,50]}},
{"type":"Feature","properties":{},"geometry":{"type":"Point","coordinates":[12,51.5]}}]})";

TEST(FileInfo, TellsKindCountAndExtentAndLeavesNothingBehind)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("points.geojson"));
    write(path, twoPoints);
    const CTdFileInfo info = CTdFileInfo::Read(path);
    EXPECT_EQ(info.state, CTdFileInfo::Known);
    EXPECT_EQ(info.storage, CTxDataSourceStorage::GeoJSON);
    EXPECT_EQ(info.kind, QStringLiteral("GeoJSON"));
    EXPECT_EQ(info.datasetCount, 1);
    EXPECT_EQ(info.extent, CRect2D(10, 50, 12, 51.5));
    EXPECT_TRUE(info.isWholeExtent);
    EXPECT_EQ(info.size, qint64(sizeof twoPoints) - 1);
    EXPECT_TRUE(info.modified.isValid());
    EXPECT_TRUE(info.GetProblem().isEmpty());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
    EXPECT_TRUE(QFile::remove(path)); // nothing holds it open
}

TEST(FileInfo, OnlyOneCoordinateSystemMakesOneExtent)
{
    const QTemporaryDir folder;
    const auto writeLayer = [&folder](const char *name, const char *epsg, const char *point) {
        write(folder.filePath(QString::fromLatin1(name)),
              QByteArray(R"({"type":"FeatureCollection","crs":{"type":"name","properties":{"name":"EPSG:)") + epsg +
                  R"("}},"features":[{"type":"Feature","properties":{},"geometry":{"type":"Point","coordinates":)" +
                  point + "}}]}");
    };
    // A virtual source of several layers: "b" lies in the system of "a", or in another.
    for (const bool same : {true, false}) {
        writeLayer("a.geojson", "4326", "[10,50]");
        writeLayer("b.geojson", same ? "4326" : "32632", same ? "[12,51]" : "[760000,5540000]");
        QByteArray text = "<OGRVRTDataSource>";
        for (const char *layer : {"a", "b"})
            text += QByteArray("<OGRVRTLayer name=\"") + layer + "\"><SrcDataSource relativeToVRT=\"1\">" + layer +
                    ".geojson</SrcDataSource></OGRVRTLayer>";
        write(folder.filePath(QStringLiteral("both.ovf")), text + "</OGRVRTDataSource>");
        const CTdFileInfo info = CTdFileInfo::Read(folder.filePath(QStringLiteral("both.ovf")));
        ASSERT_EQ(info.datasetCount, 2) << info.message.toStdString();
        EXPECT_EQ(info.driver, QStringLiteral("OGR_VRT"));
        EXPECT_EQ(info.hasSeveralSystems, !same);
        EXPECT_EQ(info.isWholeExtent, same);
        EXPECT_EQ(info.extent.IsVoid(), !same);
        EXPECT_EQ(info.coordSysName, same ? QStringLiteral("WGS 84") : QString());
    }
}

TEST(FileInfo, BrokenHugeAndMissingFilesAreQuickAndSayWhy)
{
    const QTemporaryDir folder;
    const auto at = [&folder](const char *name) { return folder.filePath(QString::fromLatin1(name)); };
    write(at("broken.geojson"), "{\"type\":\"FeatureColl");
    write(at("broken.gpkg"), "SQLite format 3\0 and then nothing");
    write(at("broken.tif"), "II*\0\xff\xff\xff\xff");
    write(at("empty.shp"), "");
    write(at("notes.txt"), "no data");
    for (const char *name : {"huge.json", "huge.nobody", "huge.csv"}) {
        write(at(name), "[");
        ASSERT_TRUE(QFile(at(name)).resize(qint64(3) << 30)); // sparse
    }
    const struct
    {
        const char *name;
        CTdFileInfo::State state;
    } rows[] = {
        {"broken.geojson", CTdFileInfo::Refused}, {"broken.gpkg", CTdFileInfo::Refused},
        {"broken.tif", CTdFileInfo::Refused},     {"empty.shp", CTdFileInfo::Refused},
        {"notes.txt", CTdFileInfo::Refused},      {"huge.json", CTdFileInfo::TooLarge},
        {"huge.nobody", CTdFileInfo::TooLarge},   {"huge.csv", CTdFileInfo::TooLarge},
        {"missing.shp", CTdFileInfo::Missing},    {"", CTdFileInfo::Folder},
    };
    for (const auto &row : rows) {
        QElapsedTimer clock;
        clock.start();
        const CTdFileInfo info = CTdFileInfo::Read(at(row.name));
        EXPECT_EQ(info.state, row.state) << row.name << ' ' << info.message.toStdString();
        EXPECT_FALSE(info.GetProblem().isEmpty()) << row.name;
        EXPECT_LT(clock.elapsed(), 1000) << row.name;
    }
    EXPECT_EQ(CTdFileInfo::Read(QString()).state, CTdFileInfo::Missing);
}

class FileDialog : public testing::Test
{
protected:
    FileDialog() : m_profile(m_folder.filePath(QStringLiteral("profile.ini")))
    {
        QImage picture(400, 100, QImage::Format_RGB32);
        picture.fill(Qt::red);
        picture.save(path("red.png"));
        write(path("points.geojson"), twoPoints);
    }
    QString path(const char *name) const { return m_folder.filePath(QString::fromLatin1(name)); }

    const QTemporaryDir m_folder;
    CTdProfileFile m_profile;
};

TEST_F(FileDialog, PreviewShowsTheLastOfManyAskedFor)
{
    FilePreview preview;
    preview.show();
    const auto wait = [&preview] { return QTest::qWaitFor([&preview] { return !preview.isReading(); }, 5000); };
    for (int i = 0; i < 100; ++i) {
        preview.showFile(path("missing"));
        preview.showFile(path("points.geojson"));
        preview.showFile(path("red.png"));
    }
    ASSERT_TRUE(wait());
    const QList<QLabel *> labels = preview.findChildren<QLabel *>();
    EXPECT_EQ(labels[0]->pixmap().deviceIndependentSize().toSize(), QSize(180, 45));
    EXPECT_TRUE(labels[1]->text().contains(u"400"));
    preview.showFile(path("points.geojson"));
    ASSERT_TRUE(wait());
    EXPECT_TRUE(labels[0]->pixmap().isNull());
    EXPECT_TRUE(labels[1]->text().contains(u"10, 50"));
    EXPECT_TRUE(preview.accessibleDescription().contains(u"GeoJSON"));
    preview.showFile(QString());
    EXPECT_TRUE(labels[1]->text().isEmpty());
}

TEST_F(FileDialog, APaneThatGoesWhileItReadsIsNotMissed)
{
    for (int i = 0; i < 20; ++i) {
        FilePreview preview;
        preview.showFile(path("points.geojson"));
    }
    QTest::qWait(50);
}

TEST_F(FileDialog, AFileThatDoesNotAnswerIsGivenUpForTheNext)
{
    // A pipe that nobody writes into: opening it waits for ever. A shapefile with such an index stands for a disk that
    // does not answer.
    ASSERT_EQ(mkfifo(QFile::encodeName(path("pipe.png")).constData(), 0600), 0);
    EXPECT_EQ(CTdFileInfo::Read(path("pipe.png")).state, CTdFileInfo::NoFile);
    const QByteArray index = QFile::encodeName(path("hangs.shx"));
    ASSERT_EQ(mkfifo(index.constData(), 0600), 0);
    write(path("hangs.shp"), QByteArray(200, '\0').replace(0, 4, QByteArray::fromHex("0000270a")));
    FilePreview preview;
    preview.showFile(path("hangs.shp"));
    QTest::qWait(50);
    preview.showFile(path("points.geojson"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return preview.accessibleDescription().contains(u"GeoJSON"); }, 3000));
    for (int i = 0; i < 10; ++i) { // whoever opens it may try more than once
        if (const int end = open(index.constData(), O_WRONLY | O_NONBLOCK); end >= 0)
            close(end);
        QTest::qWait(10);
    }
}

TEST_F(FileDialog, RemembersTheFolderOfItsPurpose)
{
    const QString purpose = QStringLiteral("Images");
    EXPECT_EQ(CFileDialogEx::GetRememberedFolder(purpose, m_profile), QString());
    for (const bool accepted : {false, true}) {
        CFileDialogEx dialog(true, purpose, QStringLiteral("Images|*.png;*.jpg|All files|*||"), nullptr, &m_profile);
        EXPECT_EQ(dialog.nameFilters().value(0), QStringLiteral("Images (*.png *.jpg)"));
        dialog.setDirectory(m_folder.path());
        QTimer::singleShot(200, &dialog, [&dialog, accepted] {
            QTest::keyClicks(dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit")), QStringLiteral("red.png"));
            QTimer::singleShot(200, &dialog, accepted ? &QDialog::accept : &QDialog::reject);
        });
        EXPECT_EQ(dialog.DoModal(), accepted ? CFileDialogEx::IdOk : CFileDialogEx::IdCancel);
        EXPECT_EQ(dialog.GetPathName(), accepted ? path("red.png") : QString());
    }
    EXPECT_EQ(CFileDialogEx::GetRememberedFolder(purpose, m_profile), m_folder.path());
    EXPECT_EQ(CFileDialogEx(false, purpose, QString(), nullptr, &m_profile).directory().path(), m_folder.path());
    m_profile.WriteStringValue(QStringLiteral("Folders"), purpose, path("gone"));
    EXPECT_EQ(CFileDialogEx::GetRememberedFolder(purpose, m_profile), QString());
}

/// Answers the question whether a file is overwritten when it comes. @return whether it came
bool answerQuestion(QMessageBox::StandardButton answer)
{
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (box)
        QTest::mouseClick(box->button(answer), Qt::LeftButton);
    return box != nullptr;
}

TEST_F(FileDialog, SavesWithTheExtensionOfTheFilterAndAsksBeforeItOverwrites)
{
    const struct
    {
        int filter;
        const char *typed, *suffix, *saved;
        bool asks;
    } rows[] = {
        {0, "new", "", "new.png", false},
        {1, "new", "", "new.tar.gz", false},
        {2, "new", "", "new", false},
        {0, "new.bmp", "", "new.bmp", false},
        {0, "new", "jpg", "new.jpg", false},
        {0, "new", "xyz", "new.png", false},
        {2, "points", "geojson", "points.geojson", true},
        {0, "red", "", "red.png", true},
    };
    for (const auto &row : rows) {
        CFileDialogEx dialog(false, QString(), QStringLiteral("Images|*.png;*.jpg|Packed|*.tar.gz|All files|*||"),
                             nullptr, &m_profile);
        dialog.setDirectory(m_folder.path());
        dialog.setDefaultSuffix(QString::fromLatin1(row.suffix));
        dialog.open();
        dialog.selectNameFilter(dialog.nameFilters()[row.filter]);
        auto *name = dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        QTest::keyClicks(name, QString::fromLatin1(row.typed));
        bool isAsked = false;
        for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) { // No leaves it open
            QTimer::singleShot(100, [&isAsked, answer] { isAsked = answerQuestion(answer); });
            if (dialog.isVisible())
                QTest::keyClick(name, Qt::Key_Return);
            EXPECT_EQ(dialog.isVisible(), row.asks && answer == QMessageBox::No) << row.typed;
        }
        QTest::qWait(120);
        EXPECT_EQ(isAsked, row.asks) << row.typed;
        EXPECT_EQ(dialog.GetPathName(), path(row.saved));
        EXPECT_EQ(dialog.selectedFiles().value(0), path(row.saved));
    }
}

TEST_F(FileDialog, ChoosesSeveralFilesInAFolderOfThousandsByKeys)
{
    const QDir many(m_folder.path());
    ASSERT_TRUE(many.mkdir(QStringLiteral("many")));
    for (int i = 0; i < 2000; ++i)
        write(path("many/") + QStringLiteral("f%1.txt").arg(i, 5, 10, QChar(u'0')), "");
    CFileDialogEx dialog(true, QString(), QString(), nullptr, &m_profile);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setDirectory(path("many"));
    dialog.open();
    dialog.setViewMode(QFileDialog::List);
    auto *list = dialog.findChild<QAbstractItemView *>(QStringLiteral("listView"));
    // The files come in batches, and are put into order some time after the last one.
    const auto isListed = [list] {
        const QModelIndex folder = list->rootIndex();
        const auto nameAt = [&](int row) { return list->model()->index(row, 0, folder).data().toString(); };
        return list->model()->rowCount(folder) == 2000 && nameAt(0) == u"f00000.txt" && nameAt(1999) == u"f01999.txt";
    };
    ASSERT_TRUE(QTest::qWaitFor(isListed, 20000)) << list->model()->rowCount(list->rootIndex());
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < 2; ++i)
        QTest::keyClick(list, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    QStringList names = dialog.GetPathNames();
    names.sort();
    EXPECT_EQ(names, QStringList({path("many/f00000.txt"), path("many/f00001.txt"), path("many/f00002.txt")}))
        << names.join(u' ').toStdString();
}

} // namespace
