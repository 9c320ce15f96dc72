#include "engine/data/DataFixture.h"

#include "engine/geometry/GeoPoint.h"

#include <QElapsedTimer>

#include <cpl_conv.h>

#include <csignal>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class Transaction : public DataFixture
{
protected:
    /// Adds @p count points from (@p from, 0) to the right. @return false at the first that fails.
    static bool addPoints(CDatasetVector *dataset, int from, int count)
    {
        const RecordsetPtr records = query(dataset);
        for (int i = from; i < from + count; ++i) {
            const CGeoPoint place(i, 0);
            if (!addRecord(*records, {{"Size", i}}, &place))
                return false;
        }
        return true;
    }

    /// How many records lie within @p bounds.
    static qint64 countWithin(CDatasetVector *dataset, const CRect2D &bounds)
    {
        CTxQueryDef def;
        def.bounds = bounds;
        return query(dataset, def)->GetRecordCount();
    }
};

TEST_F(Transaction, KnowsItsState)
{
    CTxDataSource *source = create();
    EXPECT_FALSE(source->IsTransStarted());
    EXPECT_FALSE(source->CommitTrans());
    EXPECT_FALSE(source->RollbackTrans());
    ASSERT_TRUE(source->BeginTrans()) << lastError();
    EXPECT_TRUE(source->IsTransStarted());
    EXPECT_FALSE(source->BeginTrans());
    EXPECT_FALSE(source->CreateDataset(definition("Towns"))) << "structure changes on its own";
    ASSERT_TRUE(source->CommitTrans()) << lastError();
    EXPECT_FALSE(source->IsTransStarted());
    EXPECT_TRUE(source->CreateDataset(definition("Towns"))) << lastError();
}

TEST_F(Transaction, RollbackTakesEverythingBack)
{
    CTxDataSource *source = create();
    CDatasetVector *towns = makeVector(source, "Towns");
    ASSERT_TRUE(addPoints(towns, 1, 3)) << lastError();
    ASSERT_TRUE(source->BeginTrans());
    RecordsetPtr records = query(towns);
    ASSERT_TRUE(records->Edit() && records->SetFieldValue("Size", CTxVariant(77)) && records->Update());
    ASSERT_TRUE(records->MoveNext() && records->Delete()) << lastError();
    ASSERT_TRUE(addPoints(towns, 50, 10)) << lastError();
    EXPECT_EQ(towns->GetRecordCount(), 12);
    EXPECT_EQ(towns->GetBounds().right, 59);
    EXPECT_EQ(countWithin(towns, CRect2D(40, -1, 60, 1)), 10);
    ASSERT_TRUE(records->MoveFirst());
    ASSERT_TRUE(source->RollbackTrans()) << lastError();

    EXPECT_TRUE(records->IsEOF()) << "open recordsets stand at their end";
    EXPECT_FALSE(records->MoveFirst());
    EXPECT_FALSE(records->AddNew() && records->Update());
    EXPECT_EQ(towns->GetRecordCount(), 3);
    EXPECT_EQ(towns->GetBounds(), CRect2D(1, 0, 3, 0));
    EXPECT_EQ(countWithin(towns, CRect2D(40, -1, 60, 1)), 0);
    records = query(towns);
    EXPECT_EQ(textOf(*records, "Size"), "1");
    ASSERT_TRUE(addPoints(towns, 4, 1)) << "work goes on: " << lastError();
    records.reset();
    EXPECT_EQ(vector(reopen(), "Towns")->GetRecordCount(), 4);
}

TEST_F(Transaction, CommitLastsAndClosingTakesTheRestBack)
{
    CTxDataSource *source = create();
    CDatasetVector *towns = makeVector(source, "Towns");
    ASSERT_TRUE(source->BeginTrans() && addPoints(towns, 1, 100) && source->CommitTrans()) << lastError();
    ASSERT_TRUE(source->BeginTrans() && addPoints(towns, 1000, 100));
    towns = vector(reopen(), "Towns");
    EXPECT_EQ(towns->GetRecordCount(), 100);
    EXPECT_EQ(towns->GetBounds(), CRect2D(1, 0, 100, 0));
}

/// Another process writes and is killed in the middle; what it had committed is there, and nothing else.
TEST_F(Transaction, KilledWriterLosesNothingThatWasCommitted)
{
    makeVector(create(), "Towns");
    sources.CloseAll();
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        CTxDataSource *source = sources.Open(path("new.tdb"), "db");
        auto *towns = source ? dynamic_cast<CDatasetVector *>(source->GetDataset("Towns")) : nullptr;
        const bool done = towns && towns->Open() && source->BeginTrans() && addPoints(towns, 0, 5000) &&
                          source->CommitTrans() && addPoints(towns, 5000, 3) && source->BeginTrans() &&
                          addPoints(towns, 10000, 50000);
        const char word = done ? 'y' : 'n';
        (void)!write(ready[1], &word, 1);
        for (;;)
            pause();
    }
    char word = 'n';
    ASSERT_EQ(read(ready[0], &word, 1), 1);
    EXPECT_EQ(word, 'y');
    kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    close(ready[0]);
    close(ready[1]);

    CTxDataSource *source = sources.Open(path("new.tdb"), "db");
    ASSERT_TRUE(source) << lastError();
    CDatasetVector *towns = vector(source, "Towns");
    EXPECT_EQ(towns->GetRecordCount(), 5003);
    EXPECT_EQ(towns->GetBounds(), CRect2D(0, 0, 5002, 0));
    EXPECT_EQ(countWithin(towns, CRect2D(4990, -1, 20000, 1)), 13);
    ASSERT_TRUE(addPoints(towns, 1, 1)) << lastError();
}

TEST_F(Transaction, LockOfAnotherIsToldAndSurvived)
{
    const CPLConfigOptionSetter shortWait("SQLITE_BUSY_TIMEOUT", "50", false);
    CTxDataSource *source = create();
    CDatasetVector *towns = makeVector(source, "Towns");
    ASSERT_TRUE(addPoints(towns, 1, 1));
    sqlite3 *other = nullptr;
    ASSERT_EQ(sqlite3_open(source->GetPath().toUtf8().constData(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    QElapsedTimer timer;
    timer.start();
    RecordsetPtr records(towns->Query(CTxQueryDef()));
    const bool changed = records && records->AddNew() && records->Update();
    EXPECT_FALSE(changed);
    EXPECT_NE(lastError().find("locked"), std::string::npos) << lastError();
    EXPECT_FALSE(source->CreateDataset(definition("More")));
    EXPECT_FALSE(source->DeleteDataset("Towns"));
    EXPECT_FALSE(source->BeginTrans());
    EXPECT_LT(timer.elapsed(), 5000);
    records.reset();
    ASSERT_EQ(sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(other);

    ASSERT_TRUE(source->GetDataset("Towns"));
    towns = vector(source, "Towns");
    EXPECT_TRUE(addPoints(towns, 2, 1)) << lastError();
    EXPECT_EQ(towns->GetRecordCount(), 2);
}

} // namespace
