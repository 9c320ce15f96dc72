#include "engine/data/DataFixture.h"

#include "engine/geometry/GeoPoint.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>

#include <csignal>
#include <pwd.h>
#include <unistd.h>

namespace {

/// A database server of our own in a temporary folder, reached through a socket there and nowhere else. Where the tests
/// run as root it runs as the system's "postgres" user, since it refuses root.
class Server
{
public:
    /// True when the server is installed.
    static bool isInstalled() { return !program("initdb").isEmpty() && !program("postgres").isEmpty(); }

    ~Server() { stop(); }

    bool start()
    {
        const passwd *account = geteuid() == 0 ? getpwnam("postgres") : nullptr;
        if (!m_folder.isValid() || (account && chown(m_folder.path().toUtf8().constData(), account->pw_uid, -1u) != 0))
            return false;
        const QString data = m_folder.filePath("data");
        if (!run("initdb", "-A trust -U ada -E UTF8 --locale=C --no-sync -D " + data))
            return false;
        asServer(m_process);
        m_process.start(program("postgres"),
                        words("-c listen_addresses= -c fsync=off -k " + m_folder.path() + " -D " + data));
        QElapsedTimer timer;
        for (timer.start(); timer.elapsed() < 30000;) {
            if (m_process.state() != QProcess::NotRunning &&
                run("psql", "-U ada -h " + m_folder.path() + " -d postgres -qc", "CREATE DATABASE gis"))
                return sql("CREATE EXTENSION IF NOT EXISTS postgis");
            m_process.waitForFinished(100);
        }
        return false;
    }

    void stop()
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        kill(static_cast<pid_t>(m_process.processId()), SIGINT); // fast shutdown
        if (!m_process.waitForFinished(10000))
            m_process.kill();
        m_process.waitForFinished();
    }

    /// Runs SQL through a client of the server's own.
    bool sql(const QString &text)
    {
        return run("psql", "-U ada -h " + m_folder.path() + " -d gis -v ON_ERROR_STOP=1 -qc", text);
    }

    QString connection() const { return QStringLiteral("PG:host=%1 user=ada dbname=gis").arg(m_folder.path()); }
    QString error() const { return m_error; }

private:
    static QString program(const char *name)
    {
        QStringList folders;
        const QDir versions("/usr/lib/postgresql");
        for (const QString &version :
             versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed))
            folders.append(versions.filePath(version + "/bin"));
        const QString found = QStandardPaths::findExecutable(name, folders);
        return found.isEmpty() ? QStandardPaths::findExecutable(name) : found;
    }

    static void asServer(QProcess &process)
    {
        process.setWorkingDirectory("/");
        process.setChildProcessModifier([] {
            const passwd *account = geteuid() == 0 ? getpwnam("postgres") : nullptr;
            if (account && (setgid(account->pw_gid) != 0 || setuid(account->pw_uid) != 0))
                _exit(1);
        });
    }

    static QStringList words(const QString &line) { return line.split(u' '); }

    /// Runs a program with the words of @p line and, where it is given, one more argument.
    bool run(const char *name, const QString &line, const QString &last = QString())
    {
        QProcess process;
        asServer(process);
        process.start(program(name), words(line) + (last.isNull() ? QStringList() : QStringList(last)));
        const bool done =
            process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
        m_error = QString::fromUtf8(process.readAllStandardError());
        return done;
    }

    QTemporaryDir m_folder{QDir::tempPath() + "/tx-pg-XXXXXX"}; // short: a socket's path has 107 bytes
    QProcess m_process;
    QString m_error;
};

class Postgres : public DataFixture
{
protected:
    static void SetUpTestSuite()
    {
        if (!Server::isInstalled())
            return;
        server = std::make_unique<Server>();
        if (!server->start()) {
            ADD_FAILURE() << "the server does not start: " << server->error().toStdString();
            server.reset();
        }
    }
    static void TearDownTestSuite() { server.reset(); }

    void SetUp() override
    {
        if (!Server::isInstalled())
            GTEST_SKIP() << "PostgreSQL is not installed: run tools/setup.sh --with-postgres";
        ASSERT_TRUE(server);
    }

    CTxDataSource *connect() { return open(server->connection(), "db"); }

    static inline std::unique_ptr<Server> server;
};

TEST_F(Postgres, LoadsBrowsesTransactsAndCloses)
{
    CTxDataSource *source = connect();
    ASSERT_TRUE(source);
    EXPECT_TRUE(source->IsDatabaseType());
    EXPECT_EQ(source->GetEngineType(), CTxDataSourceStorage::PostgreSQL);
    EXPECT_TRUE(source->HasCapability(CTxDataSource::CanTransact));
    const qint32 before = source->GetDatasetCount();

    const CTxDatasetDef def = definition(
        "Towns", CElemDatasetInfo::Point,
        {CTxFieldInfo("Name", CTxFieldInfo::Text, 10), CTxFieldInfo("Size", CTxFieldInfo::Long)}, "EPSG:32610");
    ASSERT_TRUE(source->CreateDataset(def)) << lastError();
    EXPECT_EQ(source->GetDatasetCount(), before + 1);
    CDatasetVector *towns = vector(source, "Towns");
    const auto add = [&](int from, int count) {
        const RecordsetPtr records = query(towns);
        for (int i = from; i < from + count; ++i) {
            const CGeoPoint place(i, 2 * i);
            ASSERT_TRUE(addRecord(*records, {{"Size", i}}, &place)) << lastError();
        }
        EXPECT_GT(records->GetID(), 0);
    };
    ASSERT_TRUE(source->BeginTrans()) << lastError();
    add(1, 50);
    ASSERT_TRUE(source->CommitTrans()) << lastError();
    ASSERT_TRUE(source->BeginTrans());
    add(100, 50);
    EXPECT_EQ(towns->GetRecordCount(), 100);
    ASSERT_TRUE(source->RollbackTrans()) << lastError();
    EXPECT_EQ(towns->GetRecordCount(), 50);
    add(51, 1);

    sources.Close("db");
    source = connect();
    ASSERT_TRUE(source && source->GetDataset("Towns"));
    EXPECT_EQ(source->GetDataset("Towns")->GetType(), CElemDatasetInfo::Point);
    towns = vector(source, "Towns");
    EXPECT_EQ(towns->GetRecordCount(), 51);
    EXPECT_EQ(towns->GetBounds(), CRect2D(1, 2, 51, 102));
    int walked = 0;
    RecordsetPtr all = query(towns);
    for (const qint64 first = all->GetID(); !all->IsEOF() && walked < 99; all->MoveNext(), ++walked)
        EXPECT_TRUE(all->Edit() && all->Update() && all->MoveToID(first)) << lastError();
    all.reset();
    EXPECT_EQ(walked, 51) << "neither writing nor looking at another record disturbs a walk";
    RecordsetPtr records = query(towns, "\"Size\" = 7");
    EXPECT_EQ(records->GetRecordCount(), 1);
    EXPECT_EQ(geometryOf(*records)->GetBounds(), CRect2D(7, 14, 7, 14));
    ASSERT_TRUE(records->Edit() && records->SetFieldValue("Name", CTxVariant(QStringLiteral("Sieben"))) &&
                records->Update())
        << lastError();
    EXPECT_EQ(textOf(*records, "Name"), "Sieben");
    ASSERT_TRUE(records->Delete()) << lastError();
    records.reset();
    EXPECT_EQ(towns->GetRecordCount(), 50);
    ASSERT_TRUE(source->DeleteDataset("Towns")) << lastError();
    EXPECT_EQ(source->GetDatasetCount(), before);
}

TEST_F(Postgres, KeepsFieldsAllOrNone)
{
    CTxDataSource *source = connect();
    ASSERT_TRUE(source && makeVector(source, "Fields"));
    struct Row
    {
        CTxFieldInfo field;
        qint16 becomes;
        qint32 textSize = 0;
    };
    const Row rows[] = {
        {{"Truth", CTxFieldInfo::Boolean}, CTxFieldInfo::Boolean},
        {{"Small", CTxFieldInfo::Byte}, CTxFieldInfo::Short},
        {{"Whole", CTxFieldInfo::Long}, CTxFieldInfo::Long},
        {{"Money", CTxFieldInfo::Currency}, CTxFieldInfo::Double},
        {{"Single", CTxFieldInfo::Single}, CTxFieldInfo::Single},
        {{"Moment", CTxFieldInfo::Date}, CTxFieldInfo::Date},
        {{"Clock", CTxFieldInfo::Time}, CTxFieldInfo::Time},
        {{"Bytes", CTxFieldInfo::Binary, 9}, CTxFieldInfo::LongBinary},
        {{"Words", CTxFieldInfo::Character, 7}, CTxFieldInfo::Text, 7},
        {{"Notes", CTxFieldInfo::Memo}, CTxFieldInfo::Text},
        {{"Fixed", CTxFieldInfo::Numeric, 12}, CTxFieldInfo::Double},
        {{"道路", CTxFieldInfo::Text, 5}, CTxFieldInfo::Text, 5},
    };
    CDatasetVector *fields = vector(source, "Fields");
    for (const Row &row : rows)
        EXPECT_TRUE(fields->CreateField(row.field)) << row.field.GetName().toStdString() << ' ' << lastError();
    const CTxFieldInfo good("Good", CTxFieldInfo::Long);
    CTxFieldInfos many;
    for (int i = 0; i < 1600; ++i)
        many.append(CTxFieldInfo(QStringLiteral("F%1").arg(i), CTxFieldInfo::Long));
    const CTxFieldInfos refused[] = {
        {good, {"Bad", 77}}, {good, {"GOOD", CTxFieldInfo::Long}}, {good, {"wkb_geometry", CTxFieldInfo::Long}}, many};
    const int count = fields->GetFieldCount();
    for (const CTxFieldInfos &infos : refused) {
        const int errors = TxGetErrorMsgObj().GetErrorCount();
        EXPECT_FALSE(fields->CreateFields(infos)) << infos.last().GetName().toStdString();
        EXPECT_GT(TxGetErrorMsgObj().GetErrorCount(), errors);
        EXPECT_EQ(fields->GetFieldCount(), count) << infos.last().GetName().toStdString();
    }
    sources.Close("db");
    source = connect();
    fields = vector(source, "Fields");
    EXPECT_EQ(fields->GetFieldCount(), count);
    for (const Row &row : rows) {
        const CTxFieldInfo kept = fieldOf(*fields, row.field.GetName().toUtf8());
        EXPECT_EQ(kept.GetType(), row.becomes) << row.field.GetName().toStdString();
        EXPECT_TRUE(row.textSize == 0 || kept.GetSize() == row.textSize) << kept.GetSize();
    }
    EXPECT_TRUE(source->DeleteDataset("Fields")) << lastError();
}

TEST_F(Postgres, FailedCreationLeavesNothingBehind)
{
    CTxDataSource *source = connect();
    ASSERT_TRUE(source);
    const qint32 before = source->GetDatasetCount();
    EXPECT_FALSE(source->CreateDataset(definition(
        "Bad", CElemDatasetInfo::Point, {CTxFieldInfo("Good", CTxFieldInfo::Long), CTxFieldInfo("Bad", 77)})));
    EXPECT_FALSE(source->CreateDataset(definition("Net", CElemDatasetInfo::Network)));
    sources.Close("db");
    EXPECT_EQ(connect()->GetDatasetCount(), before);
}

TEST_F(Postgres, ServerThatGoesAwayIsToldAndSurvived)
{
    CTxDataSource *source = connect();
    ASSERT_TRUE(source);
    ASSERT_TRUE(source->CreateDataset(definition("Lost"))) << lastError();
    CDatasetVector *lost = vector(source, "Lost");
    RecordsetPtr records = query(lost);
    const CGeoPoint place(1, 2);
    ASSERT_TRUE(addRecord(*records, {}, &place)) << lastError();
    ASSERT_TRUE(source->BeginTrans());
    // The other side ends our session, as a restart of the server does.
    ASSERT_TRUE(server->sql("SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
                            "WHERE pid <> pg_backend_pid() AND datname = 'gis'"));
    QElapsedTimer timer;
    timer.start();
    const int errors = TxGetErrorMsgObj().GetErrorCount();
    EXPECT_FALSE(addRecord(*records, {}, &place));
    EXPECT_FALSE(source->CommitTrans());
    EXPECT_GT(TxGetErrorMsgObj().GetErrorCount(), errors);
    EXPECT_FALSE(lastError().empty());
    records->MoveFirst();
    records->MoveNext();
    source->RollbackTrans();
    EXPECT_FALSE(source->IsTransStarted());
    EXPECT_FALSE(source->CreateDataset(definition("Never", CElemDatasetInfo::Network)));
    EXPECT_LT(timer.elapsed(), 30000);
    records.reset();
    EXPECT_TRUE(sources.Close("db"));

    source = connect();
    ASSERT_TRUE(source);
    EXPECT_EQ(vector(source, "Lost")->GetRecordCount(), 1);
    EXPECT_TRUE(source->DeleteDataset("Lost")) << lastError();
}

TEST_F(Postgres, AppendsWholeOrNotAtAll)
{
    const CTxFieldInfos fields = {CTxFieldInfo("Name", CTxFieldInfo::Text, 10),
                                  CTxFieldInfo("Size", CTxFieldInfo::Long)};
    CTxDataSource *file = sources.Create(path("from.tdb"), "from", CTxDataSourceStorage::Native);
    auto *towns = dynamic_cast<CDatasetVector *>(
        file->CreateDataset(definition("Towns", CElemDatasetInfo::Point, {fields.at(1)}, "EPSG:4326")));
    ASSERT_TRUE(towns && towns->Open() && file->BeginTrans());
    for (int i = 1; i <= 3000; ++i) {
        const CGeoPoint place(i * 0.01, 0);
        ASSERT_TRUE(addRecord(*query(towns), {{"Size", i == 3000 ? 70000 : i}}, &place));
    }
    ASSERT_TRUE(file->CommitTrans());
    CTxDataSource *source = connect();
    ASSERT_TRUE(source);
    const auto make = [&](const char *name, qint16 type) {
        auto *made = dynamic_cast<CDatasetVector *>(source->CreateDataset(
            definition(name, CElemDatasetInfo::Point, {fields.at(0), CTxFieldInfo("Size", type)}, "EPSG:3857")));
        EXPECT_TRUE(made && made->Open()) << lastError();
        return made;
    };
    CDatasetVector *heap = make("Heap", CTxFieldInfo::Short);
    CTxAppendDef def;
    def.tagField = "Origin";
    EXPECT_FALSE(heap->Append(query(towns).get(), def)) << "the last one is too large";
    EXPECT_NE(lastError().find("3000"), std::string::npos) << lastError();
    EXPECT_EQ(heap->GetRecordCount(), 0);
    EXPECT_LT(heap->FindField("Origin"), 0);
    ASSERT_TRUE(heap->Append(query(towns, "Size < 3000").get(), def)) << lastError();
    EXPECT_EQ(heap->GetRecordCount(), 2999);
    EXPECT_EQ(textOf(*query(heap, "\"Size\" = 7"), "Origin"), "Towns");
    EXPECT_NEAR(geometryOf(*query(heap, "\"Size\" = 100"))->GetBounds().left, 111319.49, 0.01);

    ASSERT_TRUE(source->BeginTrans());
    ASSERT_TRUE(addRecord(*query(heap), {{"Size", -1}}));
    EXPECT_FALSE(heap->Append(query(towns).get()));
    EXPECT_TRUE(heap->Append(query(heap, "\"Size\" < 3").get())) << lastError();
    ASSERT_TRUE(source->CommitTrans()) << lastError();
    EXPECT_EQ(heap->GetRecordCount(), 3003);
    EXPECT_TRUE(heap->Append(query(heap, "\"Size\" < 3").get())) << lastError();
    EXPECT_EQ(heap->GetRecordCount(), 3009);

    // The session ends half-way.
    def.progress = [&](qint64 done, qint64) {
        return done < 1000 || server->sql("SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
                                          "WHERE pid <> pg_backend_pid() AND datname = 'gis'");
    };
    EXPECT_FALSE(heap->Append(query(towns, "Size < 3000").get(), def));
    EXPECT_NE(lastError().find("Nothing was appended"), std::string::npos) << lastError();
    sources.Close("db");
    source = connect();
    ASSERT_TRUE(source);
    EXPECT_EQ(vector(source, "Heap")->GetRecordCount(), 3009);
    EXPECT_TRUE(source->DeleteDataset("Heap")) << lastError();
}

TEST_F(Postgres, DeletionThatLosesItsServerLeavesTheDataset)
{
    CTxDataSource *source = connect();
    ASSERT_TRUE(source && source->CreateDataset(definition("Kept"))) << lastError();
    ASSERT_TRUE(addRecord(*query(vector(source, "Kept")))) << lastError();
    ASSERT_TRUE(server->sql("SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
                            "WHERE pid <> pg_backend_pid() AND datname = 'gis'"));
    EXPECT_FALSE(source->DeleteDataset("Kept"));
    EXPECT_NE(lastError().find("Cannot delete the dataset “Kept”: "), std::string::npos) << lastError();
    ASSERT_TRUE(source->GetDataset("Kept"));
    sources.Close("db");
    source = connect();
    ASSERT_TRUE(source);
    EXPECT_EQ(vector(source, "Kept")->GetRecordCount(), 1);
    EXPECT_TRUE(source->DeleteDataset("Kept")) << lastError();
}

} // namespace
