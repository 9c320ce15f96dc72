#include "engine/base/TxToolkit.h"

#include <gtest/gtest.h>

namespace {

struct SplitRow
{
    const char *path, *drive, *dir, *name, *ext;
};

using SplitPath = testing::TestWithParam<SplitRow>;

TEST_P(SplitPath, GivesPartsThatJoinToThePath)
{
    const SplitRow &row = GetParam();
    const QString path = QString::fromUtf8(row.path);
    QString drive, dir, name, ext;
    CTxToolkit::SplitPath(path, drive, dir, name, ext);
    EXPECT_EQ(drive, QString::fromUtf8(row.drive));
    EXPECT_EQ(dir, QString::fromUtf8(row.dir));
    EXPECT_EQ(name, QString::fromUtf8(row.name));
    EXPECT_EQ(ext, QString::fromUtf8(row.ext));
    EXPECT_EQ(drive + dir + name + ext, path);
}

INSTANTIATE_TEST_SUITE_P(Paths, SplitPath,
                         testing::Values(SplitRow{"/data/a.b/roads.tar.gz", "", "/data/a.b/", "roads.tar", ".gz"},
                                         SplitRow{"/data/a.b/roads", "", "/data/a.b/", "roads", ""},
                                         SplitRow{"/home/.profile", "", "/home/", ".profile", ""},
                                         SplitRow{"C:\\maps\\x.tdb", "C:", "\\maps\\", "x", ".tdb"},
                                         SplitRow{"/data/", "", "/data/", "", ""}, SplitRow{"", "", "", "", ""},
                                         SplitRow{"/o/\xC3\xB6\xE2\x80\xAE.shp", "", "/o/", "\xC3\xB6\xE2\x80\xAE",
                                                  ".shp"}));

} // namespace
