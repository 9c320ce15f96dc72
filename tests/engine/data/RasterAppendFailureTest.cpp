#include "engine/data/RasterAppendFixture.h"
#include "engine/data/SampleFiles.h"

#include <QDir>

#include <sys/mount.h>
#include <unistd.h>

namespace {

enum class Failure { Stopped, Damaged, Misfit, Full };

/// Images that are laid in several pieces, of which only the first goes well.
class RasterAppendFailure : public RasterAppendFixture, public testing::WithParamInterface<std::pair<bool, Failure>>
{
protected:
    static constexpr QSize size{2048, 1600};
    static constexpr std::array<double, 6> place = {0, 1, 0, 1600, 0, -1};

    void SetUp() override
    {
        small = path("small");
        ASSERT_TRUE(QDir().mkdir(small));
        if (GetParam().second != Failure::Full)
            return;
        if (geteuid() != 0 ||
            mount("none", small.toUtf8().constData(), "tmpfs", 0, GetParam().first ? "size=2m" : "size=5m") != 0)
            GTEST_SKIP() << "a small file system can be made by root only";
        isMounted = true;
    }

    void TearDown() override
    {
        sources.CloseAll();
        if (isMounted) {
            EXPECT_EQ(umount2(small.toUtf8().constData(), MNT_DETACH), 0);
        }
    }

    CDatasetRaster *makeTarget(bool inDatabase)
    {
        if (!inDatabase) {
            const auto value = [](int column, int, int) { return double(column % 5); };
            return openRaster(writeTiff("small/target.tif", {size, 1, GDT_Byte, value, place}));
        }
        CTxDatasetDef def = rasterDefinition("Image", CRect2D(0, 0, size.width(), size.height()), "Byte");
        def.type = CElemDatasetInfo::Image;
        CTxDataSource *database = create("small/new.tdb");
        EXPECT_TRUE(database->CreateDataset(def)) << lastError();
        CDatasetRaster *made = raster(database, "Image");
        EXPECT_TRUE(made->Append(writeGrid("a.asc", 5, 5, {{1, 2, 3}}), CRect2D())) << lastError();
        return made;
    }

    QString small;
    bool isMounted = false;
};

TEST_P(RasterAppendFailure, LeavesEverythingAsItWas)
{
    const auto [inDatabase, failure] = GetParam();
    CDatasetRaster *target = makeTarget(inDatabase);
    ASSERT_TRUE(target);
    const QImage before = target->Render(target->GetBounds(), size);
    const QString file = target->GetDataSource()->GetPath();
    const QByteArray bytes = SampleFiles::read(file);

    Image image = {size, 1, GDT_Byte, noise, place, {"COMPRESS=DEFLATE"}};
    if (failure == Failure::Misfit) {
        image.type = GDT_Int16;
        image.value = [](int column, int row, int) { return row == 1599 && column == 2047 ? 256.0 : 200.0; };
    } else if (failure == Failure::Full) {
        image.size = QSize(2048, 3200); // what does not fit into the file system, in whatever way
        image.place[5] = -0.5;
    }
    const QString source = writeTiff("source.tif", image);
    if (failure == Failure::Damaged) {
        QByteArray damaged = SampleFiles::read(source);
        std::fill(damaged.begin() + damaged.size() / 2, damaged.begin() + damaged.size() * 4 / 5, char(0xff));
        ASSERT_TRUE(SampleFiles::write(source, damaged));
    }
    qint64 most = 0;
    const auto progress = [&, stops = failure == Failure::Stopped](qint64 done, qint64 total) {
        EXPECT_GE(done, most);
        most = std::max(most, done);
        return !stops || total < 0 || done < total / 2;
    };
    const bool done = target->Append(source, CRect2D(), CDatasetRaster::TIFF, true, progress);
    EXPECT_FALSE(done);
    EXPECT_NE(lastError().find("as it was"), std::string::npos) << lastError();
    if (failure != Failure::Full) {
        EXPECT_NE(lastError().find("% of the cells"), std::string::npos) << lastError();
    }
    EXPECT_TRUE(target->IsOpen());
    EXPECT_EQ(target->Render(target->GetBounds(), size), before);
    if (!inDatabase) {
        EXPECT_EQ(SampleFiles::read(file), bytes);
    }
    EXPECT_EQ(QDir(small).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 1)
        << "nothing is left beside it";

    // It can be opened anew, and laid into once more.
    sources.CloseAll();
    target = raster(open(file));
    ASSERT_TRUE(target);
    EXPECT_EQ(target->Render(target->GetBounds(), size), before);
    if (failure != Failure::Full || inDatabase) { // there is no room for a copy of the file
        EXPECT_TRUE(target->Append(writeGrid("b.asc", 0, 0, {{9, 9, 9}}), CRect2D())) << lastError();
        EXPECT_EQ(target->GetValue(1.5, 0.5), 9.0);
    }
}

constexpr std::pair<bool, Failure> failures[] = {
    {true, Failure::Stopped},  {true, Failure::Damaged},  {true, Failure::Misfit},  {true, Failure::Full},
    {false, Failure::Stopped}, {false, Failure::Damaged}, {false, Failure::Misfit}, {false, Failure::Full},
};
INSTANTIATE_TEST_SUITE_P(All, RasterAppendFailure, testing::ValuesIn(failures));

} // namespace
