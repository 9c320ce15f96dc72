#include "Rows.h"
#include "engine/base/TxErrorMsg.h"
#include "engine/data/SampleFiles.h"
#include "engine/data/TxDataSources.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cpl_conv.h>

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace SampleFiles;

/// Makes something bad at @p path in the folder @p folder.
using Maker = void (*)(const QString &path, const QDir &folder);

struct BadRow
{
    const char *title;
    const char *reason; ///< a part of the error text
    QString file;       ///< relative to a new folder; "." is the folder itself
    Maker make = nullptr;
};

void empty(const QString &path, const QDir &)
{
    write(path, "");
}

void garbage(const QString &path, const QDir &)
{
    QByteArray bytes;
    for (int i = 0; i < 5000; ++i)
        bytes.append(static_cast<char>((i * 7919) % 251 + 1));
    write(path, bytes);
}

void runSql(const QString &path, const char *sql)
{
    sqlite3 *database = nullptr;
    EXPECT_EQ(sqlite3_open(path.toUtf8(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(database);
}

/// A good file of points or cells, as its extension tells, of which @p percent are left, or @p bytes where that is
/// given.
void cutTo(const QString &path, int percent, qint64 bytes = -1)
{
    struct Row
    {
        const char *extension, *driver;
        int bands; ///< 0: points
    };
    static constexpr Row rows[] = {{"gpkg", "GPKG", 0},       {"shp", "ESRI Shapefile", 0},
                                   {"geojson", "GeoJSON", 0}, {"gml", "GML", 0},
                                   {"kml", "KML", 0},         {"mif", "MapInfo File", 0},
                                   {"dxf", "DXF", 0},         {"tab", "MapInfo File", 0},
                                   {"tif", "GTiff", 1},       {"png", "PNG", 1},
                                   {"jpg", "JPEG", 3},        {"asc", "AAIGrid", 1},
                                   {"vrt", "VRT", 1}};
    for (const Row &row : rows) {
        if (QFileInfo(path).suffix() == row.extension) {
            EXPECT_TRUE(row.bands ? makeRaster(path, row.driver, 200, 200, row.bands) : makePoints(path, row.driver));
        }
    }
    ASSERT_TRUE(QFileInfo(path).size() > 0);
    EXPECT_TRUE(cut(path, bytes >= 0 ? bytes : QFileInfo(path).size() * percent / 100));
}

void half(const QString &path, const QDir &)
{
    cutTo(path, 50);
}

void hundredBytes(const QString &path, const QDir &)
{
    cutTo(path, 0, 100);
}

const BadRow badRows[] = {
    {"no path", "No path", ""},

    {"missing file", "does not exist", "missing.gpkg"},

    {"name of 10,000 characters", "does not exist", QString(10000, u'x')},
    {"name with a zero", "does not exist", QStringLiteral("a\0b.gpkg")},
    {"dangling link", "is a link to", "link.shp", [](auto &path, auto &f) { QFile::link(f.filePath("none"), path); }},
    {"link to itself", "is a link to", "loop.tif", [](auto &path, auto &) { QFile::link(path, path); }},
    {"unreadable file", "may not be read", "secret.shp",
     [](auto &path, auto &f) {
         garbage(path, f);
         QFile::setPermissions(path, QFile::Permissions());
     }},
    {"pipe", "neither a file nor a folder", "pipe.tif",
     [](auto &path, auto &) { EXPECT_EQ(mkfifo(path.toUtf8(), 0600), 0); }},
    {"empty folder", "empty folder", "."},
    {"folder without data", "no known kind", ".", [](auto &, auto &f) { write(f.filePath("readme.txt"), "nothing"); }},
    {"folder called .tdb", "is a folder", "x.tdb", [](auto &, auto &f) { f.mkdir("x.tdb"); }},
    {"empty .tdb", "empty file", "e.tdb", empty},

    {"garbage .tdb", "no native database", "g.tdb", garbage},
    {"garbage .gpkg", "no header", "g.gpkg", garbage},
    {"garbage .shp", "no header", "g.shp", garbage},
    {"garbage .tif", "no known kind", "g.tif", garbage},

    {"unknown kind", "no known kind", "g.unknown", garbage},
    {"GeoPackage called .tdb", "no native database", "p.tdb",
     [](auto &path, auto &f) {
         EXPECT_TRUE(makePoints(f.filePath("p.gpkg"), "GPKG"));
         QFile::rename(f.filePath("p.gpkg"), path);
     }},
    {"SQLite that is no GeoPackage", "cannot be opened", "s.gpkg",
     [](auto &path, auto &) { runSql(path, "CREATE TABLE a (b INTEGER); INSERT INTO a VALUES (1)"); }},
    {"SQLite without tables", "holds no datasets", "s.sqlite",
     [](auto &path, auto &) { runSql(path, "CREATE TABLE a (b); DROP TABLE a"); }},
    {"GeoPackage, 50 bytes", "is cut", "c.gpkg", [](auto &path, auto &) { cutTo(path, 0, 50); }},
    {"GeoPackage, header alone", "is cut", "c.gpkg", hundredBytes},
    {"GeoPackage, half", "is cut", "c.gpkg", half},
    {"GeoPackage, 99 %", "is cut", "c.gpkg", [](auto &path, auto &) { cutTo(path, 99); }},
    {"GeoPackage, schema scrambled", "malformed", "scrambled.gpkg",
     [](auto &path, auto &) {
         cutTo(path, 100);
         QFile file(path);
         EXPECT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(100));
         file.write(QByteArray(4000, '\x5a'));
     }},
    {"shapefile, half", "is cut", "points.shp", half},
    {"shapefile, header alone", "is cut", "points.shp", hundredBytes},
    {"shapefile, cut table", "is cut", "points.shp",
     [](auto &path, auto &f) {
         cutTo(path, 100);
         cut(f.filePath("points.dbf"), 140);
     }},
    {"shapefile without index", "points.shx", "points.shp",
     [](auto &path, auto &f) {
         cutTo(path, 100);
         QFile::remove(f.filePath("points.shx"));
     }},
    {"GeoJSON, half", "", "p.geojson", half},
    {"GML, half", "", "p.gml", half},
    {"KML, half", "", "p.kml", half},
    {"MIF, header cut", "", "p.mif", [](auto &path, auto &) { cutTo(path, 20); }},
    {"TAB, half", "", "p.tab", half},
    {"DXF, half", "", "p.dxf", half},
    {"TIFF, 8 bytes", "", "c.tif", [](auto &path, auto &) { cutTo(path, 0, 8); }},
    {"TIFF, cut before the places of its strips", "is cut", "c.tif", [](auto &path, auto &) { cutTo(path, 0, 240); }},
    {"TIFF, half", "is cut", "c.tif", half},
    {"PNG, half", "is cut", "c.png", half},
    {"JPEG, half", "is cut", "c.jpg", half},
    {"ASCII grid, half", "", "c.asc", half},
    {"virtual raster, half", "", "c.vrt", half},
    {"server that does not answer", "PG:", "PG:host=127.0.0.1 port=1 dbname=x password=secret"},
    {"connection of no driver", "", "NoDriver:something"}};

using BadDataSource = testing::TestWithParam<BadRow>;

TEST_P(BadDataSource, IsRefusedWithItsNameAndTheReason)
{
    const BadRow &row = GetParam();
    if (qstrcmp(row.title, "unreadable file") == 0 && geteuid() == 0)
        GTEST_SKIP() << "root may read everything";
    const QTemporaryDir folder;
    const bool isFile = !row.file.trimmed().isEmpty() && !row.file.contains(u':');
    const QString path = row.file == "." ? folder.path() : isFile ? folder.filePath(row.file) : row.file;
    if (row.make)
        row.make(path, QDir(folder.path()));
    CTxDataSources dataSources;
    TxGetErrorMsgObj().Clear();
    testing::internal::CaptureStderr();
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(dataSources.Open(path), nullptr);
    EXPECT_LT(clock.elapsed(), 3000);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    const QString text = TxGetErrorMsgObj().GetErrorMessage();
    EXPECT_TRUE(text.contains(row.reason)) << text.left(500).toStdString();
    EXPECT_TRUE(path.trimmed().isEmpty() || text.contains(path.left(40))) << text.left(500).toStdString();
    EXPECT_FALSE(text.contains("secret")) << "passwords are not shown";
    EXPECT_GT(text.size(), path.size()) << "a reason stands behind the name";
    EXPECT_EQ(dataSources.GetCount(), 0);

    // The list goes on without it.
    const QTemporaryDir other;
    const QString good = other.filePath("good.gpkg");
    ASSERT_TRUE(makePoints(good, "GPKG"));
    EXPECT_NE(dataSources.Open(good), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Files, BadDataSource, testing::ValuesIn(badRows), rowNames(&BadRow::title));

TEST(LockedDataSource, IsRefusedWhileTheLockLasts)
{
    const CPLConfigOptionSetter shortWait("SQLITE_BUSY_TIMEOUT", "50", false);
    const QTemporaryDir folder;
    const QString path = folder.filePath("locked.gpkg");
    ASSERT_TRUE(makePoints(path, "GPKG"));
    sqlite3 *locker = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8(), &locker), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(locker, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    CTxDataSources dataSources;
    EXPECT_EQ(dataSources.Open(path), nullptr);
    EXPECT_TRUE(TxGetErrorMsgObj().GetErrorMessage().contains("is locked"));
    sqlite3_exec(locker, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(locker);
    EXPECT_NE(dataSources.Open(path), nullptr);
}

} // namespace
