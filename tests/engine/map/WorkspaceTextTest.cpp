#include "engine/map/TxPortablePath.h"
#include "engine/map/TxXmlText.h"

#include <gtest/gtest.h>

namespace {

TEST(XmlText, EveryTextComesBack)
{
    const QString texts[] = {QString(),
                             "plain < > & \" ' text",
                             "line\nend\ttab\rreturn",
                             "_x0041_ _x005F_x0041_ _x005f_ _x_ _x00 _x0x41_",
                             QString(QChar(u'\0')) + QChar(u'\x01') + QChar(u'\x1f') + QChar(u'\xffff'),
                             QString(QChar(u'\xd800')) + u'a' + QChar(u'\xdc00'), // halves of pairs on their own
                             "\U0001F5FA \u202Eright to left"};
    for (const QString &text : texts)
        EXPECT_EQ(TxXmlText::decode(TxXmlText::encode(text)), text) << qPrintable(text);
}

TEST(XmlText, EscapesOnlyWhatXmlCannotHold)
{
    EXPECT_EQ(TxXmlText::encode("a\x02\r_"), "a_x0002__x000D__");
    EXPECT_EQ(TxXmlText::encode("snake_case_x y\U0001F5FA"), "snake_case_x y\U0001F5FA");
}

struct PathRow
{
    const char *name, *path, *stored;
};

using PortablePath = testing::TestWithParam<PathRow>;

TEST_P(PortablePath, GoesThereAndBack)
{
    const QString folder = "/home/ada/maps";
    const QString path = GetParam().path;
    const QString stored = TxPortablePath::toStored(path, folder);
    EXPECT_EQ(stored, GetParam().stored);
    EXPECT_EQ(TxPortablePath::fromStored(stored, folder), path);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, PortablePath,
    testing::Values(PathRow{"beside", "/home/ada/maps/world.tdb", "world.tdb"},
                    PathRow{"below", "/home/ada/maps/data/shapes/roads.shp", "data/shapes/roads.shp"},
                    PathRow{"the folder itself", "/home/ada/maps", "."},
                    PathRow{"above", "/home/ada/world.tdb", "/home/ada/world.tdb"},
                    PathRow{"a neighbour whose name begins alike", "/home/ada/maps2/a.tdb", "/home/ada/maps2/a.tdb"},
                    PathRow{"two dots in a name", "/home/ada/maps/..a.tdb", "..a.tdb"},
                    PathRow{"like a connection", "/home/ada/maps/PG:x.tdb", "./PG:x.tdb"},
                    PathRow{"a connection", "PG:dbname=gis host=db", "PG:dbname=gis host=db"},
                    PathRow{"an archive", "/vsizip/a.zip/b.shp", "/vsizip/a.zip/b.shp"},
                    PathRow{"a drive letter", "C:\\maps\\x.tdb", "C:\\maps\\x.tdb"}, PathRow{"empty", "", ""}),
    [](const testing::TestParamInfo<PathRow> &row) {
        std::string name = row.param.name;
        std::replace(name.begin(), name.end(), ' ', '_');
        return name;
    });

TEST(PortablePath, WithoutAFileEverythingIsAbsolute)
{
    EXPECT_EQ(TxPortablePath::toStored("/a/b/../c.tdb", QString()), "/a/c.tdb");
}

TEST(PortablePath, PasswordsAreTakenOut)
{
    const std::pair<const char *, const char *> rows[] = {
        {"PG:host=h password=secret dbname=d", "PG:host=h dbname=d"},
        {"PG:password='it''s' dbname=d", "PG:dbname=d"},
        {"PG:dbname=d PASSWORD = 'a b\\'c' user=u", "PG:dbname=d user=u"},
        {"PG:dbname=d password=", "PG:dbname=d"},
        {"MYSQL:d,user=u,password=p,host=h", "MYSQL:d,user=u,host=h"},
        {"MSSQL:server=s;database=d;pwd=p;", "MSSQL:server=s;database=d;"},
        {"postgresql://ada:secret@db:5432/gis", "postgresql://ada@db:5432/gis"},
        {"PG:dbname=passwords user=pwd", "PG:dbname=passwords user=pwd"},
        {"/home/ada/password=1.tdb", "/home/ada/password=1.tdb"}};
    for (const auto &[connection, expected] : rows) {
        QString result = TxPortablePath::withoutPassword(connection);
        EXPECT_FALSE(result.contains("secret")) << connection;
        EXPECT_EQ(result.replace(": ", ":").toStdString(), expected) << connection;
    }
}

} // namespace
