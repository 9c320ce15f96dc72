#include "NativeFixture.h"

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
        const QString data = m_folder.filePath(QStringLiteral("data"));
        if (!run("initdb", {QStringLiteral("-D"), data, QStringLiteral("-A"), QStringLiteral("trust"),
                            QStringLiteral("-U"), QStringLiteral("ada"), QStringLiteral("-E"), QStringLiteral("UTF8"),
                            QStringLiteral("--locale=C"), QStringLiteral("--no-sync")}))
            return false;
        asServer(m_process);
        m_process.start(program("postgres"),
                        {QStringLiteral("-D"), data, QStringLiteral("-k"), m_folder.path(), QStringLiteral("-c"),
                         QStringLiteral("listen_addresses="), QStringLiteral("-c"), QStringLiteral("fsync=off")});
        QElapsedTimer timer;
        for (timer.start(); timer.elapsed() < 30000;) {
            if (m_process.state() != QProcess::NotRunning &&
                run("psql", {QStringLiteral("-h"), m_folder.path(), QStringLiteral("-U"), QStringLiteral("ada"),
                             QStringLiteral("-qc"), QStringLiteral("CREATE DATABASE gis"), QStringLiteral("postgres")}))
                return sql(QStringLiteral("CREATE EXTENSION IF NOT EXISTS postgis"));
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
        return run("psql", {QStringLiteral("-h"), m_folder.path(), QStringLiteral("-U"), QStringLiteral("ada"),
                            QStringLiteral("-v"), QStringLiteral("ON_ERROR_STOP=1"), QStringLiteral("-qc"), text,
                            QStringLiteral("gis")});
    }

    QString connection() const { return QStringLiteral("PG:host=%1 user=ada dbname=gis").arg(m_folder.path()); }
    QString error() const { return m_error; }

private:
    static QString program(const char *name)
    {
        QStringList folders;
        const QDir versions(QStringLiteral("/usr/lib/postgresql"));
        for (const QString &version :
             versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed))
            folders.append(versions.filePath(version + QStringLiteral("/bin")));
        const QString found = QStandardPaths::findExecutable(QString::fromLatin1(name), folders);
        return found.isEmpty() ? QStandardPaths::findExecutable(QString::fromLatin1(name)) : found;
    }

    static void asServer(QProcess &process)
    {
        process.setWorkingDirectory(QStringLiteral("/"));
        process.setChildProcessModifier([] {
            const passwd *account = geteuid() == 0 ? getpwnam("postgres") : nullptr;
            if (account && (setgid(account->pw_gid) != 0 || setuid(account->pw_uid) != 0))
                _exit(1);
        });
    }

    bool run(const char *name, const QStringList &arguments)
    {
        QProcess process;
        asServer(process);
        process.start(program(name), arguments);
        const bool done =
            process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
        m_error = QString::fromUtf8(process.readAllStandardError());
        return done;
    }

    QTemporaryDir m_folder{QDir::tempPath() + QStringLiteral("/tx-pg-XXXXXX")}; // short: a socket's path has 107 bytes
    QProcess m_process;
    QString m_error;
};

class Postgres : public NativeFixture
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

    CTxDataSource *open()
    {
        CTxDataSource *opened = sources.Open(server->connection(), QStringLiteral("db"));
        EXPECT_TRUE(opened) << lastError();
        return opened;
    }

    static inline std::unique_ptr<Server> server;
};

TEST_F(Postgres, LoadsBrowsesTransactsAndCloses)
{
    CTxDataSource *source = open();
    ASSERT_TRUE(source);
    EXPECT_TRUE(source->IsDatabaseType());
    EXPECT_EQ(source->GetEngineType(), CTxDataSourceStorage::PostgreSQL);
    EXPECT_TRUE(source->HasCapability(CTxDataSource::CanTransact));
    const qint32 before = source->GetDatasetCount();

    CTxDatasetDef def = definition(QStringLiteral("Towns"));
    def.coordSys = QStringLiteral("EPSG:32610");
    def.fields = {CTxFieldInfo(QStringLiteral("Name"), CTxFieldInfo::Text, 10),
                  CTxFieldInfo(QStringLiteral("Size"), CTxFieldInfo::Long)};
    ASSERT_TRUE(source->CreateDataset(def)) << lastError();
    EXPECT_EQ(source->GetDatasetCount(), before + 1);
    CDatasetVector *towns = vector(source, QStringLiteral("Towns"));
    const auto add = [&](int from, int count) {
        const RecordsetPtr records = query(towns);
        for (int i = from; i < from + count; ++i) {
            const CGeoPoint place(i, 2 * i);
            ASSERT_TRUE(records->AddNew() && records->SetFieldValue(QStringLiteral("Size"), CTxVariant(i)) &&
                        records->SetGeometry(&place) && records->Update())
                << lastError();
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

    sources.Close(QStringLiteral("db"));
    source = open();
    ASSERT_TRUE(source && source->GetDataset(QStringLiteral("Towns")));
    EXPECT_EQ(source->GetDataset(QStringLiteral("Towns"))->GetType(), CElemDatasetInfo::Point);
    towns = vector(source, QStringLiteral("Towns"));
    EXPECT_EQ(towns->GetRecordCount(), 51);
    EXPECT_EQ(towns->GetBounds(), CRect2D(1, 2, 51, 102));
    RecordsetPtr records = query(towns, QStringLiteral("\"Size\" = 7"));
    EXPECT_EQ(records->GetRecordCount(), 1);
    EXPECT_EQ(geometryOf(*records)->GetBounds(), CRect2D(7, 14, 7, 14));
    ASSERT_TRUE(records->Edit() &&
                records->SetFieldValue(QStringLiteral("Name"), CTxVariant(QStringLiteral("Sieben"))) &&
                records->Update())
        << lastError();
    EXPECT_EQ(textOf(*records, "Name").toStdString(), "Sieben");
    ASSERT_TRUE(records->Delete()) << lastError();
    records.reset();
    EXPECT_EQ(towns->GetRecordCount(), 50);
    ASSERT_TRUE(source->DeleteDataset(QStringLiteral("Towns"))) << lastError();
    EXPECT_EQ(source->GetDatasetCount(), before);
}

TEST_F(Postgres, FailedCreationLeavesNothingBehind)
{
    CTxDataSource *source = open();
    ASSERT_TRUE(source);
    const qint32 before = source->GetDatasetCount();
    CTxDatasetDef def = definition(QStringLiteral("Bad"));
    def.fields = {CTxFieldInfo(QStringLiteral("Good"), CTxFieldInfo::Long), CTxFieldInfo(QStringLiteral("Bad"), 77)};
    EXPECT_FALSE(source->CreateDataset(def));
    EXPECT_FALSE(source->CreateDataset(definition(QStringLiteral("Net"), CElemDatasetInfo::Network)));
    sources.Close(QStringLiteral("db"));
    EXPECT_EQ(open()->GetDatasetCount(), before);
}

TEST_F(Postgres, ServerThatGoesAwayIsToldAndSurvived)
{
    CTxDataSource *source = open();
    ASSERT_TRUE(source);
    ASSERT_TRUE(source->CreateDataset(definition(QStringLiteral("Lost")))) << lastError();
    CDatasetVector *lost = vector(source, QStringLiteral("Lost"));
    RecordsetPtr records = query(lost);
    const CGeoPoint place(1, 2);
    ASSERT_TRUE(records->AddNew() && records->SetGeometry(&place) && records->Update()) << lastError();
    ASSERT_TRUE(source->BeginTrans());
    // The other side ends our session, as a restart of the server does.
    ASSERT_TRUE(server->sql(QStringLiteral("SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
                                           "WHERE pid <> pg_backend_pid() AND datname = 'gis'")));
    QElapsedTimer timer;
    timer.start();
    const int errors = TxGetErrorMsgObj().GetErrorCount();
    EXPECT_FALSE(records->AddNew() && records->SetGeometry(&place) && records->Update());
    EXPECT_FALSE(source->CommitTrans());
    EXPECT_GT(TxGetErrorMsgObj().GetErrorCount(), errors);
    EXPECT_FALSE(lastError().empty());
    records->MoveFirst();
    records->MoveNext();
    source->RollbackTrans();
    EXPECT_FALSE(source->IsTransStarted());
    EXPECT_FALSE(source->CreateDataset(definition(QStringLiteral("Never"), CElemDatasetInfo::Network)));
    EXPECT_LT(timer.elapsed(), 30000);
    records.reset();
    EXPECT_TRUE(sources.Close(QStringLiteral("db")));

    source = open();
    ASSERT_TRUE(source);
    EXPECT_EQ(vector(source, QStringLiteral("Lost"))->GetRecordCount(), 1);
    EXPECT_TRUE(source->DeleteDataset(QStringLiteral("Lost"))) << lastError();
}

} // namespace
