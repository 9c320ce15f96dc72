#include "engine/base/TxErrorMsg.h"
#include "engine/data/SampleFiles.h"
#include "engine/data/TxDataSources.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <ostream>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace SampleFiles;

/// Makes something bad in a folder and gives its path.
using Maker = QString (*)(const QDir &folder);

struct BadRow
{
    const char *title;
    const char *reason; ///< a part of the error text
    Maker make;
};

void PrintTo(const BadRow &row, std::ostream *out)
{
    *out << row.title;
}

QString garbage(const QDir &folder, const char *name)
{
    QByteArray bytes;
    for (int i = 0; i < 5000; ++i)
        bytes.append(static_cast<char>((i * 7919) % 251 + 1));
    write(folder.filePath(QLatin1String(name)), bytes);
    return folder.filePath(QLatin1String(name));
}

/// A good file of points or cells, cut to @p percent of its size.
QString cutPoints(const QDir &folder, const char *name, const char *driver, int percent)
{
    const QString path = folder.filePath(QLatin1String(name));
    EXPECT_TRUE(makePoints(path, driver));
    EXPECT_TRUE(cut(path, QFileInfo(path).size() * percent / 100));
    return path;
}

QString cutRaster(const QDir &folder, const char *name, const char *driver, int percent, int bands = 1)
{
    const QString path = folder.filePath(QLatin1String(name));
    EXPECT_TRUE(makeRaster(path, driver, 200, 200, bands));
    EXPECT_TRUE(cut(path, QFileInfo(path).size() * percent / 100));
    return path;
}

QString scrambledGeoPackage(const QDir &folder, qint64 from, qint64 length)
{
    const QString path = folder.filePath(QStringLiteral("scrambled.gpkg"));
    EXPECT_TRUE(makePoints(path, "GPKG"));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(from));
    file.write(QByteArray(length, '\x5a'));
    return path;
}

QString sqliteFile(const QDir &folder, const char *name, const char *sql)
{
    const QString path = folder.filePath(QLatin1String(name));
    sqlite3 *database = nullptr;
    EXPECT_EQ(sqlite3_open(path.toUtf8(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(database);
    return path;
}

const BadRow badRows[] = {
    {"no path", "No path", [](const QDir &) { return QString(); }},
    {"nothing but spaces", "No path", [](const QDir &) { return QStringLiteral("   "); }},
    {"missing file", "does not exist", [](const QDir &f) { return f.filePath(QStringLiteral("missing.gpkg")); }},
    {"missing folder", "does not exist", [](const QDir &f) { return f.filePath(QStringLiteral("a/b/c")); }},
    {"name of 10,000 characters", "does not exist", [](const QDir &f) { return f.filePath(QString(10000, u'x')); }},
    {"name with a zero", "does not exist",
     [](const QDir &f) { return f.filePath(QStringLiteral("a") + QChar(u'\0') + QStringLiteral("b.gpkg")); }},
    {"dangling link", "is a link to",
     [](const QDir &f) {
         QFile::link(f.filePath(QStringLiteral("nowhere.shp")), f.filePath(QStringLiteral("link.shp")));
         return f.filePath(QStringLiteral("link.shp"));
     }},
    {"link to itself", "is a link to",
     [](const QDir &f) {
         QFile::link(f.filePath(QStringLiteral("loop.tif")), f.filePath(QStringLiteral("loop.tif")));
         return f.filePath(QStringLiteral("loop.tif"));
     }},
    {"unreadable file", "may not be read",
     [](const QDir &f) {
         const QString path = garbage(f, "secret.shp");
         QFile::setPermissions(path, QFile::Permissions());
         return path;
     }},
    {"pipe", "neither a file nor a folder",
     [](const QDir &f) {
         EXPECT_EQ(mkfifo(f.filePath(QStringLiteral("pipe.tif")).toUtf8(), 0600), 0);
         return f.filePath(QStringLiteral("pipe.tif"));
     }},
    {"empty folder", "empty folder", [](const QDir &f) { return f.path(); }},
    {"folder without data", "no known kind",
     [](const QDir &f) {
         write(f.filePath(QStringLiteral("readme.txt")), "nothing");
         return f.path();
     }},
    {"folder called .tdb", "is a folder",
     [](const QDir &f) {
         f.mkdir(QStringLiteral("x.tdb"));
         return f.filePath(QStringLiteral("x.tdb"));
     }},
    {"empty .tdb", "empty file",
     [](const QDir &f) {
         write(f.filePath(QStringLiteral("e.tdb")), "");
         return f.filePath(QStringLiteral("e.tdb"));
     }},
    {"empty .shp", "empty file",
     [](const QDir &f) {
         write(f.filePath(QStringLiteral("e.shp")), "");
         return f.filePath(QStringLiteral("e.shp"));
     }},
    {"garbage .tdb", "no native database", [](const QDir &f) { return garbage(f, "g.tdb"); }},
    {"garbage .gpkg", "no header", [](const QDir &f) { return garbage(f, "g.gpkg"); }},
    {"garbage .shp", "no header", [](const QDir &f) { return garbage(f, "g.shp"); }},
    {"garbage .tif", "no known kind", [](const QDir &f) { return garbage(f, "g.tif"); }},
    {"garbage .geojson", "no known kind", [](const QDir &f) { return garbage(f, "g.geojson"); }},
    {"garbage .dgn", "no known kind", [](const QDir &f) { return garbage(f, "g.dgn"); }},
    {"unknown kind", "no known kind", [](const QDir &f) { return garbage(f, "g.unknown"); }},
    {"GeoPackage called .tdb", "no native database",
     [](const QDir &f) {
         EXPECT_TRUE(makePoints(f.filePath(QStringLiteral("p.gpkg")), "GPKG"));
         QFile::rename(f.filePath(QStringLiteral("p.gpkg")), f.filePath(QStringLiteral("p.tdb")));
         return f.filePath(QStringLiteral("p.tdb"));
     }},
    {"SQLite that is no GeoPackage", "cannot be opened",
     [](const QDir &f) { return sqliteFile(f, "s.gpkg", "CREATE TABLE a (b INTEGER); INSERT INTO a VALUES (1)"); }},
    {"SQLite without tables", "holds no datasets",
     [](const QDir &f) { return sqliteFile(f, "s.sqlite", "CREATE TABLE a (b); DROP TABLE a"); }},
    {"GeoPackage, 50 bytes", "is cut",
     [](const QDir &f) {
         const QString p = cutPoints(f, "c.gpkg", "GPKG", 100);
         cut(p, 50);
         return p;
     }},
    {"GeoPackage, header alone", "is cut",
     [](const QDir &f) {
         const QString p = cutPoints(f, "c.gpkg", "GPKG", 100);
         cut(p, 100);
         return p;
     }},
    {"GeoPackage, half", "is cut", [](const QDir &f) { return cutPoints(f, "c.gpkg", "GPKG", 50); }},
    {"GeoPackage, 99 %", "is cut", [](const QDir &f) { return cutPoints(f, "c.gpkg", "GPKG", 99); }},
    {"GeoPackage, schema scrambled", "malformed", [](const QDir &f) { return scrambledGeoPackage(f, 100, 4000); }},
    {"shapefile, half", "is cut", [](const QDir &f) { return cutPoints(f, "points.shp", "ESRI Shapefile", 50); }},
    {"shapefile, header alone", "is cut",
     [](const QDir &f) {
         const QString p = cutPoints(f, "points.shp", "ESRI Shapefile", 100);
         cut(p, 100);
         return p;
     }},
    {"shapefile, cut table", "is cut",
     [](const QDir &f) {
         EXPECT_TRUE(makePoints(f.filePath(QStringLiteral("points.shp")), "ESRI Shapefile"));
         cut(f.filePath(QStringLiteral("points.dbf")), 140);
         return f.filePath(QStringLiteral("points.shp"));
     }},
    {"shapefile without index", "points.shx",
     [](const QDir &f) {
         EXPECT_TRUE(makePoints(f.filePath(QStringLiteral("points.shp")), "ESRI Shapefile"));
         QFile::remove(f.filePath(QStringLiteral("points.shx")));
         return f.filePath(QStringLiteral("points.shp"));
     }},
    {"GeoJSON, half", "", [](const QDir &f) { return cutPoints(f, "p.geojson", "GeoJSON", 50); }},
    {"GML, half", "", [](const QDir &f) { return cutPoints(f, "p.gml", "GML", 50); }},
    {"KML, half", "", [](const QDir &f) { return cutPoints(f, "p.kml", "KML", 50); }},
    {"MIF, header cut", "", [](const QDir &f) { return cutPoints(f, "p.mif", "MapInfo File", 20); }},
    {"TAB, half", "", [](const QDir &f) { return cutPoints(f, "p.tab", "MapInfo File", 50); }},
    {"DXF, half", "", [](const QDir &f) { return cutPoints(f, "p.dxf", "DXF", 50); }},
    {"TIFF, 8 bytes", "",
     [](const QDir &f) {
         const QString p = cutRaster(f, "c.tif", "GTiff", 100);
         cut(p, 8);
         return p;
     }},
    {"TIFF, half", "is cut", [](const QDir &f) { return cutRaster(f, "c.tif", "GTiff", 50); }},
    {"PNG, half", "is cut", [](const QDir &f) { return cutRaster(f, "c.png", "PNG", 50); }},
    {"JPEG, half", "is cut", [](const QDir &f) { return cutRaster(f, "c.jpg", "JPEG", 50, 3); }},
    {"ASCII grid, half", "", [](const QDir &f) { return cutRaster(f, "c.asc", "AAIGrid", 50); }},
    {"virtual raster, half", "", [](const QDir &f) { return cutRaster(f, "c.vrt", "VRT", 50); }},
    {"server that does not answer",
     "PG:", [](const QDir &) { return QStringLiteral("PG:host=127.0.0.1 port=1 dbname=x password=secret"); }},
    {"connection of no driver", "", [](const QDir &) { return QStringLiteral("NoDriver:something"); }},
};

class BadDataSource : public testing::TestWithParam<BadRow>
{
};

TEST_P(BadDataSource, IsRefusedWithItsNameAndTheReason)
{
    const BadRow &row = GetParam();
    if (qstrcmp(row.title, "unreadable file") == 0 && geteuid() == 0)
        GTEST_SKIP() << "root may read everything";
    const QTemporaryDir folder;
    const QString path = row.make(QDir(folder.path()));
    CTxDataSources dataSources;
    TxGetErrorMsgObj().Clear();
    testing::internal::CaptureStderr();
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(dataSources.Open(path), nullptr);
    EXPECT_LT(clock.elapsed(), 3000);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    const QString text = TxGetErrorMsgObj().GetErrorMessage();
    EXPECT_TRUE(text.contains(QString::fromUtf8(row.reason))) << text.left(500).toStdString();
    EXPECT_TRUE(path.trimmed().isEmpty() || text.contains(path.left(40))) << text.left(500).toStdString();
    EXPECT_FALSE(text.contains(QStringLiteral("secret"))) << "passwords are not shown";
    EXPECT_GT(text.size(), path.size()) << "a reason stands behind the name";
    RecordProperty("text", text.left(300).toStdString());
    EXPECT_EQ(dataSources.GetCount(), 0);

    // The list goes on without it.
    const QTemporaryDir other;
    const QString good = other.filePath(QStringLiteral("good.gpkg"));
    ASSERT_TRUE(makePoints(good, "GPKG"));
    EXPECT_NE(dataSources.Open(good), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Files, BadDataSource, testing::ValuesIn(badRows));

TEST(LockedDataSource, IsRefusedWhileTheLockLasts)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("locked.gpkg"));
    ASSERT_TRUE(makePoints(path, "GPKG"));
    sqlite3 *locker = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8(), &locker), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(locker, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    CTxDataSources dataSources;
    EXPECT_EQ(dataSources.Open(path), nullptr);
    EXPECT_TRUE(TxGetErrorMsgObj().GetErrorMessage().contains(QStringLiteral("is locked")))
        << TxGetErrorMsgObj().GetErrorMessage().toStdString();
    sqlite3_exec(locker, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(locker);
    EXPECT_NE(dataSources.Open(path), nullptr);
}

} // namespace
