#include "Rows.h"
#include "engine/data/DataFixture.h"
#include "engine/data/SqliteCheck.h"

#include "engine/data/TxPackedRtree.h"
#include "engine/geometry/GeoPoint.h"

#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <set>

namespace {

using TxPackedRtree::Entry;

/// Bounds that a test fills a tree with.
struct TreeCase
{
    const char *name;
    int count;
    double spread; ///< how far centres lie apart; 0: all at one place
    double size;   ///< largest extent of a box
    bool outliers; ///< some far away, and infinite
};

std::vector<OGREnvelope> boxesOf(const TreeCase &test)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    std::vector<OGREnvelope> boxes(static_cast<size_t>(test.count));
    for (OGREnvelope &box : boxes) {
        box.MinX = unit(random) * test.spread + 0.1;
        box.MinY = unit(random) * test.spread + 0.1;
        box.MaxX = box.MinX + std::abs(unit(random)) * test.size;
        box.MaxY = box.MinY + std::abs(unit(random)) * test.size;
    }
    if (test.outliers) {
        boxes[3].MaxX = 1e300;
        boxes[5].MinY = -std::numeric_limits<double>::infinity();
        boxes[7].MinX = boxes[7].MaxX = 5e12;
    }
    return boxes;
}

class PackedTree : public testing::TestWithParam<TreeCase>
{
protected:
    /// The identifiers that the tree finds within a window.
    std::multiset<qint64> found(const OGREnvelope &window)
    {
        std::multiset<qint64> ids;
        for (const QVariantList &row :
             db.rows(QStringLiteral("SELECT id FROM tree WHERE maxx >= %1 AND minx <= %2 AND maxy >= %3 AND miny <= %4")
                         .arg(window.MinX, 0, 'g', 17)
                         .arg(window.MaxX, 0, 'g', 17)
                         .arg(window.MinY, 0, 'g', 17)
                         .arg(window.MaxY, 0, 'g', 17)))
            ids.insert(row[0].toLongLong());
        return ids;
    }

    /// The tree is sound and finds what a look at every box finds, and no more than what rounding adds.
    void expectFinds(const std::vector<OGREnvelope> &boxes)
    {
        EXPECT_EQ(db.text("SELECT rtreecheck('tree')"), "ok");
        EXPECT_EQ(db.text("SELECT count(*) FROM tree"), std::to_string(boxes.size()));
        std::mt19937 random(11);
        std::uniform_real_distribution<double> unit(-1.0, 1.0);
        for (int i = 0; i < 12; ++i) {
            OGREnvelope window;
            window.MinX = unit(random) * (GetParam().spread + 1);
            window.MinY = unit(random) * (GetParam().spread + 1);
            window.MaxX = window.MinX + GetParam().spread / 10;
            window.MaxY = window.MinY + GetParam().spread / 10;
            std::multiset<qint64> exact, rounded;
            for (size_t id = 0; id < boxes.size(); ++id) {
                const Entry entry = TxPackedRtree::entryOf(static_cast<qint64>(id), boxes[id]);
                EXPECT_TRUE(double(entry.minX) <= boxes[id].MinX && double(entry.maxX) >= boxes[id].MaxX);
                if (boxes[id].Intersects(window))
                    exact.insert(entry.id);
                if (double(entry.maxX) >= window.MinX && double(entry.minX) <= window.MaxX &&
                    double(entry.maxY) >= window.MinY && double(entry.minY) <= window.MaxY)
                    rounded.insert(entry.id);
            }
            const std::multiset<qint64> ids = found(window);
            EXPECT_EQ(ids, rounded);
            EXPECT_TRUE(std::includes(ids.begin(), ids.end(), exact.begin(), exact.end()));
        }
    }

    SqliteCheck db{QStringLiteral(":memory:")};
};

TEST_P(PackedTree, FindsWhatALookAtEveryBoxFinds)
{
    ASSERT_TRUE(db.run("CREATE VIRTUAL TABLE tree USING rtree(id, minx, maxx, miny, maxy);"
                       "INSERT INTO tree VALUES (99, 1, 2, 1, 2)")); // replaced
    ASSERT_TRUE(TxPackedRtree::isWritable(db.handle(), "tree"));
    std::vector<OGREnvelope> boxes = boxesOf(GetParam());
    std::vector<Entry> entries;
    for (size_t id = 0; id < boxes.size(); ++id)
        entries.push_back(TxPackedRtree::entryOf(static_cast<qint64>(id), boxes[id]));
    std::reverse(entries.begin(), entries.end()); // any order will do
    ASSERT_TRUE(TxPackedRtree::write(db.handle(), "tree", entries));
    expectFinds(boxes);
    std::vector<Entry> again;
    EXPECT_TRUE(TxPackedRtree::read(db.handle(), "tree", again) && again.size() == entries.size());

    // SQLite goes on with it: every third box moves, every fourth of the rest goes, and as many come.
    for (size_t id = 0; id < boxes.size() && id < 3000; id += 3) {
        boxes[id].MinX = boxes[id].MaxX = double(id);
        ASSERT_TRUE(db.run(QStringLiteral("UPDATE tree SET minx = %1, maxx = %1 WHERE id = %1").arg(id)));
    }
    const size_t kept = boxes.size() - std::min<size_t>(boxes.size(), 500);
    boxes.resize(kept);
    ASSERT_TRUE(db.run(QStringLiteral("DELETE FROM tree WHERE id >= %1").arg(kept)));
    for (size_t id = kept; id < kept + 700; ++id) {
        OGREnvelope box;
        box.MinX = box.MaxX = box.MinY = box.MaxY = double(id % 97);
        boxes.push_back(box);
        ASSERT_TRUE(db.run(QStringLiteral("INSERT INTO tree VALUES (%1, %2, %2, %2, %2)").arg(id).arg(id % 97)));
    }
    expectFinds(boxes);
}

// The nodes of a page of 4096 bytes hold 51 entries; 45 are written.
INSTANTIATE_TEST_SUITE_P(Trees, PackedTree,
                         testing::Values(TreeCase{"None", 0, 1, 0, false}, TreeCase{"One", 1, 1, 0, false},
                                         TreeCase{"RootFull", 51, 100, 1, false},
                                         TreeCase{"OneMore", 52, 100, 1, false},
                                         TreeCase{"TwoLevels", 2300, 1000, 10, false},
                                         TreeCase{"ThreeLevelsOfPoints", 110000, 1e6, 0, false},
                                         TreeCase{"Overlapping", 5000, 10, 100, false},
                                         TreeCase{"OnePlace", 5000, 0, 0, false},
                                         TreeCase{"Outliers", 5000, 1000, 5, true}),
                         rowNames(&TreeCase::name));

TEST(PackedTreeForm, OtherTreesAreLeftToSqlite)
{
    SqliteCheck db(QStringLiteral(":memory:"));
    const std::array forms = {std::pair("rtree(id, minx, maxx, miny, maxy)", true),
                              std::pair("\"rtree\"(id, minx, maxx, miny, maxy)", true),
                              std::pair("rtree_i32(id, minx, maxx, miny, maxy)", false),
                              std::pair("rtree(id, minx, maxx, miny, maxy, minz, maxz)", false),
                              std::pair("rtree(id, minx, maxx, miny, maxy, +name)", false),
                              std::pair("rtree(id, minx, maxx)", false)};
    for (size_t i = 0; i < forms.size(); ++i) {
        const QString name = QStringLiteral("t%1").arg(i);
        ASSERT_TRUE(
            db.run(QStringLiteral("CREATE VIRTUAL TABLE %1 USING %2").arg(name, QLatin1String(forms[i].first))));
        EXPECT_EQ(TxPackedRtree::isWritable(db.handle(), name), forms[i].second) << forms[i].first;
    }
    sqlite3_db_config(db.handle(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    EXPECT_FALSE(TxPackedRtree::isWritable(db.handle(), "t0")) << "the tables may not be written";
}

class SpatialIndex : public DataFixture
{
protected:
    static bool addPoints(CTxRecordset &records, int from, int count)
    {
        for (int i = from; i < from + count; ++i) {
            const CGeoPoint place(i, 0);
            if (!addRecord(records, {{"Size", i}}, i % 100 == 50 ? nullptr : &place))
                return false;
        }
        return true;
    }

    static qint64 countWithin(CDatasetVector *dataset, double left, double right)
    {
        CTxQueryDef def;
        def.bounds = CRect2D(left, -1, right, 1);
        return query(dataset, def)->GetRecordCount();
    }

    std::string check() const
    {
        return SqliteCheck(path("new.tdb")).text("SELECT rtreecheck('rtree_Towns_TxGeometry')");
    }
};

/// Many new records within a transaction are entered all at once: with what is changed, deleted, looked for and taken
/// back in between.
TEST_F(SpatialIndex, FollowsManyNewRecords)
{
    CTxDataSource *source = create();
    CDatasetVector *towns = makeVector(source, "Towns");
    RecordsetPtr records = query(towns);
    ASSERT_TRUE(source->BeginTrans() && addPoints(*records, 0, 10000)) << lastError();
    records = query(towns, "Size = 9990");
    const CGeoPoint away(-50, 0);
    ASSERT_TRUE(records->Edit() && records->SetGeometry(&away) && records->Update()) << lastError();
    records = query(towns, "Size = 9991");
    ASSERT_TRUE(records->Delete()) << lastError();
    EXPECT_EQ(countWithin(towns, 9900, 10000), 97);
    EXPECT_EQ(countWithin(towns, -60, -1), 1);
    records = query(towns);
    CTxQueryDef def;
    def.bounds = CRect2D(20000, -1, 30000, 1);
    RecordsetPtr window = query(towns, def); // opened before they come
    ASSERT_TRUE(addPoints(*records, 20000, 5000));
    EXPECT_TRUE(window->MoveFirst());
    EXPECT_EQ(window->GetRecordCount(), 4950);
    ASSERT_TRUE(addPoints(*records, 25000, 300) && source->CommitTrans()) << lastError();
    EXPECT_EQ(check(), "ok");
    EXPECT_EQ(countWithin(towns, -100, 1e6), 9899 + 5247);

    ASSERT_TRUE(source->BeginTrans() && addPoints(*records, 50000, 3000) && source->RollbackTrans()) << lastError();
    records = query(towns);
    ASSERT_TRUE(addPoints(*records, 60000, 2) && source->BeginTrans() && addPoints(*records, 61000, 4000) &&
                source->CommitTrans())
        << lastError();
    EXPECT_EQ(countWithin(towns, 50000, 60500), 2);
    EXPECT_EQ(check(), "ok");
    records.reset();
    window.reset();
    towns = vector(reopen(), "Towns");
    EXPECT_EQ(countWithin(towns, -100, 1e6), 9899 + 5247 + 2 + 3960);
    EXPECT_TRUE(addPoints(*query(towns), 70000, 2)) << lastError();
    EXPECT_EQ(countWithin(towns, 69000, 71000), 2);
}

} // namespace
