#include "engine/map/TxWorkspace.h"

#include "engine/base/TxErrorMsg.h"
#include "engine/data/TxDataset.h"
#include "tests/engine/map/MapTestData.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString lastError()
{
    return TxGetErrorMsgObj().GetErrorMessage();
}

/// A workspace over two small files, one in a folder below, with a map, a layout and a scene.
class Workspace : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir(data.folder().path()).mkpath("home/data"));
        data.writeSquare("home/data/square");
        data.writeGrid("home/grid", 3);
        ASSERT_TRUE(workspace.GetDataSources().Open(data.path("home/grid.geojson"), "grid")) << qPrintable(lastError());
        ASSERT_TRUE(workspace.GetDataSources().Open(data.path("home/data/square.geojson"), "square"));
        CTxMap *map = workspace.GetMaps().Add("Map");
        addLayer(*map, workspace.GetDataSources(), "square");
        addLayer(*map, workspace.GetDataSources(), "grid")->SetVisible(false);
        map->GetLayers().SetEditableLayer(1);
        map->GetLayers().GetLayerAt(1)->SetEditableLock(true);
        workspace.GetLytStorages().Add("Layout")->SetContent("<page/>");
        workspace.GetScenes().Add("Scene");
        workspace.SetName("Home");
        file = data.path("home/home.txw");
    }

    MapTestData data;
    CTxWorkspace workspace;
    QString file;
};

TEST_F(Workspace, ComesBackFromItsFileAlsoInAMovedFolder)
{
    ASSERT_TRUE(workspace.SaveAs(file)) << qPrintable(lastError());
    EXPECT_EQ(workspace.GetPath(), file);
    workspace.Close();
    EXPECT_EQ(workspace.GetDataSources().GetCount() + workspace.GetMaps().GetCount() + workspace.GetScenes().GetCount(),
              0);
    ASSERT_TRUE(QDir(data.folder().path()).rename("home", "moved"));

    ASSERT_TRUE(workspace.Open(data.path("moved/home.txw"))) << qPrintable(lastError());
    EXPECT_EQ(workspace.GetName(), u"Home");
    EXPECT_TRUE(workspace.GetMissingDataSources().isEmpty());
    ASSERT_EQ(workspace.GetDataSources().GetCount(), 2);
    EXPECT_EQ(workspace.GetDataSources().GetAt(0)->GetAlias(), u"grid");
    const CTxMap *map = workspace.GetMaps().find("Map");
    ASSERT_TRUE(map);
    ASSERT_EQ(map->GetLayers().GetCount(), 2);
    EXPECT_EQ(map->GetLayers().GetLayerAt(0)->GetDatasetName(), u"grid");
    EXPECT_FALSE(map->GetLayers().GetLayerAt(0)->IsVisible());
    EXPECT_EQ(map->GetLayers().GetEditableLayer(), map->GetLayers().GetLayerAt(1));
    EXPECT_TRUE(map->GetLayers().GetLayerAt(1)->IsEditableLock());
    EXPECT_TRUE(map->GetLayers().GetLayerAt(1)->GetDataset());
    EXPECT_EQ(workspace.GetLytStorages().find("Layout")->GetContent(), u"<page/>");
    EXPECT_EQ(workspace.GetScenes().GetCount(), 1);
    EXPECT_FALSE(workspace.IsModified());
}

TEST_F(Workspace, IsModifiedByWhatWouldBeWrittenAndNothingElse)
{
    EXPECT_TRUE(workspace.IsModified());
    ASSERT_TRUE(workspace.SaveAs(file));
    EXPECT_FALSE(workspace.IsModified());
    CTxMap *map = workspace.GetMaps().find("Map");
    CTxLayer *layer = map->GetLayers().GetLayerAt(0);
    struct Row
    {
        const char *name;
        std::function<void()> change, back;
    };
    const Row rows[] = {
        {"name", [&] { workspace.SetName("x"); }, [&] { workspace.SetName("Home"); }},
        {"flag", [&] { layer->SetSelectable(false); }, [&] { layer->SetSelectable(true); }},
        {"style",
         [&] {
             TxLayerStyle s;
             s.geoStyle.lineWidth = 3;
             layer->setStyle(s);
         },
         [&] { layer->setStyle(TxLayerStyle()); }},
        {"order", [&] { map->GetLayers().Move(0, 1); }, [&] { map->GetLayers().Move(0, 1); }},
        {"background", [&] { map->SetBackground(Qt::red); }, [&] { map->SetBackground(QColor()); }},
        {"view", [&] { map->SetViewBounds(CRect2D(0, 0, 1, 1)); }, [&] { map->SetViewBounds(CRect2D()); }},
        {"map", [&] { workspace.GetMaps().Add("new"); }, [&] { workspace.GetMaps().Remove("new"); }},
        {"scene", [&] { workspace.GetScenes().Add("new"); }, [&] { workspace.GetScenes().Remove(1); }},
        {"alias", [&] { EXPECT_TRUE(workspace.RenameDataSource("grid", "net")); },
         [&] { EXPECT_TRUE(workspace.RenameDataSource("net", "grid")); }},
        {"opening a dataset is no change", [] {}, [&] { layer->GetDataset()->Open(); }},
    };
    for (const Row &row : rows) {
        row.change();
        EXPECT_EQ(workspace.IsModified(), QByteArray(row.name) != "opening a dataset is no change") << row.name;
        EXPECT_EQ(workspace.IsModified(CTxWorkspace::Compared::AllButViews),
                  workspace.IsModified() && QByteArray(row.name) != "view")
            << row.name;
        row.back();
        EXPECT_FALSE(workspace.IsModified()) << row.name;
    }
}

TEST_F(Workspace, ADatasourceThatHasGoneIsMissingButKept)
{
    ASSERT_TRUE(workspace.SaveAs(file));
    const QByteArray before = contentOf(file);
    workspace.Close();
    ASSERT_TRUE(QFile::rename(data.path("home/grid.geojson"), data.path("grid.geojson")));

    ASSERT_TRUE(workspace.Open(file));
    ASSERT_EQ(workspace.GetMissingDataSources().size(), 1);
    const TxMissingDataSource missing = workspace.GetMissingDataSources()[0];
    EXPECT_EQ(missing.alias, u"grid");
    EXPECT_EQ(missing.path, data.path("home/grid.geojson"));
    EXPECT_FALSE(missing.reason.isEmpty());
    EXPECT_FALSE(workspace.IsModified());
    const CTxLayer *layer = workspace.GetMaps().GetAt(0)->GetLayers().GetLayerAt(0);
    EXPECT_EQ(layer->GetDataset(), nullptr);
    ASSERT_TRUE(workspace.Save());
    EXPECT_EQ(contentOf(file), before) << "place in the order included";

    EXPECT_FALSE(workspace.RetryMissingDataSource("grid"));
    EXPECT_FALSE(workspace.RetryMissingDataSource("square"));
    EXPECT_TRUE(workspace.RetryMissingDataSource("grid", data.path("grid.geojson")));
    EXPECT_TRUE(workspace.GetMissingDataSources().isEmpty());
    EXPECT_TRUE(layer->GetDataset()) << "its layers draw again";
    ASSERT_TRUE(workspace.Save());
    EXPECT_LT(contentOf(file).indexOf("alias=\"grid\""), contentOf(file).indexOf("alias=\"square\""))
        << "its place stays";
}

TEST_F(Workspace, AMissingDatasourceIsReplacedOrRemoved)
{
    ASSERT_TRUE(workspace.SaveAs(file));
    workspace.Close();
    QFile::remove(data.path("home/grid.geojson"));
    ASSERT_TRUE(workspace.Open(file));
    const QString other = data.writeSquare("home/other");
    ASSERT_TRUE(workspace.GetDataSources().Open(other, "grid"));
    EXPECT_TRUE(workspace.GetMissingDataSources().isEmpty());
    ASSERT_TRUE(workspace.Save());
    EXPECT_EQ(contentOf(file).count("alias=\"grid\" path=\"other.geojson\""), 1);

    ASSERT_TRUE(workspace.GetDataSources().Close("grid"));
    ASSERT_EQ(workspace.GetMissingDataSources().size(), 1);
    EXPECT_FALSE(workspace.RemoveMissingDataSource("nobody"));
    EXPECT_TRUE(workspace.RemoveMissingDataSource("grid"));
    ASSERT_TRUE(workspace.Save());
    EXPECT_EQ(contentOf(file).count("<datasource "), 1);
}

TEST_F(Workspace, StaysAsItWasWhenAFileCannotBeOpened)
{
    ASSERT_TRUE(workspace.SaveAs(file));
    const CTxDataSource *grid = workspace.GetDataSources().find("grid");
    QStringList bad = {data.write("garbage.txw", QByteArray(1000, '\xff')),
                       data.write("empty.txw", QByteArray()),
                       data.write("cut.txw", contentOf(file).chopped(30)),
                       data.path("nowhere.txw"),
                       data.folder().path(),
                       "/dev/zero",
                       QString()};
    for (const QString &path : bad) {
        const int errors = TxGetErrorMsgObj().GetErrorCount();
        EXPECT_FALSE(workspace.Open(path)) << qPrintable(path);
        EXPECT_GT(TxGetErrorMsgObj().GetErrorCount(), errors) << qPrintable(path);
        EXPECT_EQ(workspace.GetDataSources().find("grid"), grid) << qPrintable(path);
        EXPECT_EQ(workspace.GetPath(), file);
        EXPECT_FALSE(workspace.IsModified());
    }
}

TEST_F(Workspace, PasswordsAreWrittenOnlyWhereTheFileHadThem)
{
    const QByteArray entry =
        "<datasource alias=\"db\" path=\"PG:host=127.0.0.1 port=1 password=secret\" type=\"4\" options=\"2\"/>";
    data.write("home/db.txw", "<terravox-workspace version=\"1\">" + entry + "</terravox-workspace>");
    ASSERT_TRUE(workspace.Open(data.path("home/db.txw")));
    ASSERT_EQ(workspace.GetMissingDataSources().size(), 1);
    EXPECT_TRUE(workspace.GetMissingDataSources()[0].path.contains("secret"));
    ASSERT_TRUE(workspace.Save());
    EXPECT_TRUE(contentOf(workspace.GetPath()).contains(entry));
}

TEST_F(Workspace, IsNotWrittenWhereItCannotBeOrMustNot)
{
    EXPECT_FALSE(workspace.Save()) << "it has no file yet";
    ASSERT_TRUE(workspace.SaveAs(file));
    const QString grid = data.path("home/grid.geojson");
    const QByteArray gridContent = contentOf(grid);
    const QString pipe = data.path("pipe.txw");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString &path : {data.path("no/such/folder/x.txw"), data.folder().path(), pipe, grid}) {
        EXPECT_FALSE(workspace.SaveAs(path)) << qPrintable(path);
        EXPECT_EQ(workspace.GetPath(), file);
    }
    EXPECT_FALSE(QFileInfo(pipe).isFile()) << "what is no file is not replaced";
    EXPECT_EQ(contentOf(grid), gridContent) << "data is never overwritten";
}

TEST_F(Workspace, AFullDiskLeavesTheOldFileWhole)
{
    ASSERT_TRUE(workspace.SaveAs(file));
    const QByteArray before = contentOf(file);
    workspace.GetMaps().Add(QString(100000, u'x'));
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = old;
    small.rlim_cur = 1000;
    setrlimit(RLIMIT_FSIZE, &small);
    const bool saved = workspace.Save();
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_FALSE(saved);
    EXPECT_EQ(contentOf(file), before);
    EXPECT_EQ(QDir(data.path("home")).entryList({"home.txw*"}).size(), 1) << "no rest is left";
    EXPECT_TRUE(workspace.IsModified());
}

TEST_F(Workspace, ASymbolicLinkStaysAndItsTargetIsWritten)
{
    const QString target = data.write("target.txw", "old");
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
    ASSERT_TRUE(QFile::link(target, data.path("between.txw")));
    ASSERT_TRUE(QFile::link(data.path("between.txw"), file));
    ASSERT_TRUE(workspace.SaveAs(file)) << qPrintable(lastError());
    EXPECT_TRUE(QFileInfo(file).isSymLink());
    EXPECT_TRUE(contentOf(target).contains("terravox-workspace"));
    EXPECT_EQ(QFileInfo(target).permissions() & (QFile::ReadOther | QFile::ReadGroup), QFile::Permissions());
}

TEST_F(Workspace, KilledWhileSavingLeavesAWholeFile)
{
    for (int i = 0; i < 300; ++i)
        workspace.GetMaps().Add(QStringLiteral("Map %1").arg(i));
    ASSERT_TRUE(workspace.SaveAs(file));
    for (int round = 0; round < 20; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int i = 0;; ++i) {
                workspace.SetName(QString::number(i));
                workspace.Save();
            }
        }
        usleep(static_cast<useconds_t>(2000 + round * 700));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        CTxWorkspace reader;
        ASSERT_TRUE(reader.Open(file)) << qPrintable(lastError());
        EXPECT_EQ(reader.GetMaps().GetCount(), 301);
    }
}

} // namespace
