#include "Actions.h"
#include "AppendDialog.h"
#include "AttributeTable.h"
#include "CopyDatasetDialog.h"
#include "DatasetJobs.h"
#include "DesktopFixture.h"
#include "MapWindow.h"
#include "OutputPane.h"
#include "ParallelLineDialog.h"
#include "RecordTableModel.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/GeoLine.h"
#include "engine/map/TxMapWnd.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace {

class Commands : public WindowFixture
{
protected:
    Commands()
    {
        CTxDataSources sources;
        EXPECT_TRUE(sources.Create(path("archive.tdb"), u"archive"_s, CTxDataSourceStorage::Native));
        sources.CloseAll();
        window->openFiles({rivers(300), path("archive.tdb")});
        source = vector(workspace(), u"rivers"_s);
        archive = workspace().GetDataSources().find(u"archive"_s);
        EXPECT_TRUE(source && archive);
    }

    QString path(const char *name) const { return folder.filePath(QLatin1String(name)); }

    /// @p count bent lines one above the other, one unit apart.
    QString rivers(int count) const
    {
        QByteArrayList features;
        for (int i = 0; i < count; ++i)
            features << uR"({"type":"Feature","properties":{"name":"r%1"},"geometry":)"
                        R"({"type":"LineString","coordinates":[[0,%1],[4,%1],[4,%2]]}})"_s.arg(i)
                            .arg(i + 0.5)
                            .toUtf8();
        return write(u"rivers.geojson"_s, R"({"type":"FeatureCollection","features":[)" + features.join(',') + "]}");
    }

    CDatasetVector *copied(const QString &name = u"rivers"_s)
    {
        const auto result =
            DatasetJobs::copy(*source, {archive, name, CElemDataEnc::NONE}, [](qint64, qint64) { return true; });
        EXPECT_EQ(result.state, DatasetJobs::Result::Done) << result.why.toStdString();
        window->workspacePane().addDataset(u"archive"_s, name);
        return static_cast<CDatasetVector *>(archive->GetDataset(name));
    }

    /// The lines of a dataset, in its order.
    static std::vector<std::unique_ptr<CElemGeometry>> lines(CDatasetVector *dataset)
    {
        std::vector<std::unique_ptr<CElemGeometry>> found;
        if (!dataset || !dataset->Open()) {
            ADD_FAILURE() << "no dataset";
            return found;
        }
        CTxRecordset *records = dataset->Query(CTxQueryDef());
        for (; records && !records->IsEOF(); records->MoveNext()) {
            CElemGeometry *geometry = nullptr;
            if (records->GetGeometry(geometry))
                found.emplace_back(geometry);
        }
        dataset->ReleaseRecordset(records);
        return found;
    }

    static qint32 points(const std::unique_ptr<CElemGeometry> &geometry)
    {
        return static_cast<const CGeoLine &>(*geometry).GetPointCount();
    }

    CDatasetVector *source = nullptr;
    CTxDataSource *archive = nullptr;
};

TEST_F(Commands, AreEnabledByTheSelection)
{
    window->openFiles({towns()});
    copied();
    struct Case
    {
        const char *alias;
        const char *name;
        bool copy, append, smooth, parallel;
    };
    for (const Case &c :
         {Case{"archive", "rivers", true, true, true, true}, Case{"towns", "towns", true, false, false, false}}) {
        select(QLatin1String(c.name), QLatin1String(c.alias));
        EXPECT_EQ(action(Actions::CopyDataset)->isEnabled(), c.copy) << c.alias;
        EXPECT_EQ(action(Actions::Append)->isEnabled(), c.append) << c.alias;
        EXPECT_EQ(action(Actions::SmoothLines)->isEnabled(), c.smooth) << c.alias;
        EXPECT_EQ(action(Actions::ParallelLine)->isEnabled(), c.parallel) << c.alias;
    }
    tree()->clearSelection();
    for (const Actions::Id id : {Actions::CopyDataset, Actions::Append, Actions::SmoothLines, Actions::ParallelLine})
        EXPECT_FALSE(action(id)->isEnabled()) << id;
}

TEST_F(Commands, CopyByTheKeyboardAlone)
{
    select(u"rivers"_s, u"rivers"_s);
    tree()->setFocus();
    const auto pressKeys = [this] {
        QTest::keyClick(window->windowHandle(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    };
    inDialog<CopyDatasetDialog>(pressKeys, [](CopyDatasetDialog &dialog) {
        key(dialog, Qt::Key_D, Qt::AltModifier);
        EXPECT_EQ(qobject_cast<QComboBox *>(QApplication::focusWidget())->currentText(), u"archive"_s);
        key(dialog, Qt::Key_N, Qt::AltModifier);
        type(u"9 lives"_s);
        EXPECT_FALSE(ok(dialog)->isEnabled()) << "a name is checked while it is typed";
        key(dialog, Qt::Key_A, Qt::ControlModifier);
        type(u"streams"_s);
        EXPECT_TRUE(ok(dialog)->isEnabled());
        key(dialog, Qt::Key_Return);
    });

    auto *made = static_cast<CDatasetVector *>(archive->GetDataset(u"streams"_s));
    ASSERT_TRUE(made) << window->outputPane().text().toStdString();
    EXPECT_EQ(made->GetRecordCount(), 300);
    EXPECT_GE(made->FindField(u"name"_s), 0);
    EXPECT_FALSE(source->IsOpen()) << "what was closed before is closed again";
    const QTreeWidgetItem *item = tree()->currentItem();
    ASSERT_TRUE(item);
    EXPECT_EQ(item->text(0), u"streams"_s) << "the copy is shown and selected";
    EXPECT_TRUE(window->outputPane().text().contains(u"300"_s));
    EXPECT_TRUE(prompts.warnings.isEmpty());
}

TEST_F(Commands, ACopyThatIsStoppedOrFailsLeavesNothing)
{
    qint64 calls = 0;
    const auto stopped = DatasetJobs::copy(*source, {archive, u"streams"_s, CElemDataEnc::NONE},
                                           [&](qint64, qint64) { return ++calls < 1; });
    EXPECT_EQ(stopped.state, DatasetJobs::Result::Stopped);
    EXPECT_FALSE(archive->GetDataset(u"streams"_s));
    const auto failed = DatasetJobs::copy(*source, {archive, u"no good name"_s, CElemDataEnc::NONE}, {});
    EXPECT_EQ(failed.state, DatasetJobs::Result::Failed);
    EXPECT_FALSE(failed.why.isEmpty());
    EXPECT_FALSE(archive->GetDataset(u"no good name"_s));
}

TEST_F(Commands, ACopyIntoANewFolderOfShapefilesHasTheRecords)
{
    CDatasetVector *from = copied();
    ASSERT_TRUE(from->CreateField(CTxFieldInfo(u"length_of_river"_s, CTxFieldInfo::Double)));
    CTxDataSource *files =
        workspace().GetDataSources().Create(path("shapes"), u"shapes"_s, CTxDataSourceStorage::Shapefile);
    ASSERT_TRUE(files);
    const auto result = DatasetJobs::copy(*from, {files, u"rivers"_s, CElemDataEnc::NONE}, {});
    EXPECT_EQ(result.state, DatasetJobs::Result::Done) << result.why.toStdString();
    EXPECT_EQ(lines(static_cast<CDatasetVector *>(files->GetDataset(u"rivers"_s))).size(), 300U);
    EXPECT_TRUE(result.notes.join(u' ').contains(u"length_of_river is length_of_"_s))
        << result.notes.join(u' ').toStdString();
}

TEST_F(Commands, AppendShowsInTheTableThatIsOpen)
{
    CDatasetVector *target = copied();
    AttributeTable *table = area().showTable(target);
    ASSERT_TRUE(table->setFilter(u"name IN ('r1', 'r2')"_s));
    table->model()->sort(table->model()->columnCount() - 1, Qt::DescendingOrder);
    select(u"rivers"_s, u"archive"_s);
    inDialog<AppendDialog>([&] { action(Actions::Append)->trigger(); },
                           [&](AppendDialog &dialog) {
                               EXPECT_EQ(dialog.target(), target);
                               EXPECT_EQ(dialog.source(), source) << "the only other dataset that fits";
                               key(dialog, Qt::Key_G, Qt::AltModifier);
                               type(u"TxMine"_s);
                               EXPECT_FALSE(ok(dialog)->isEnabled()) << "fields of this name are the engine's";
                               key(dialog, Qt::Key_A, Qt::ControlModifier);
                               type(u"origin"_s);
                               key(dialog, Qt::Key_Return);
                           });
    EXPECT_EQ(target->GetRecordCount(), 600) << window->outputPane().text().toStdString();
    EXPECT_EQ(table->dataset(), target);
    EXPECT_EQ(table->model()->rowCount(), 4) << "by the same condition";
    EXPECT_EQ(table->model()->sortOrder(), Qt::DescendingOrder);
    const int column = target->FindField(u"origin"_s);
    ASSERT_GE(column, 0);
    EXPECT_EQ(table->model()->columnCount(), target->GetFieldCount());
    EXPECT_TRUE(prompts.warnings.isEmpty()) << prompts.warnings.join(u' ').toStdString();
}

TEST_F(Commands, AppendTakesOnlyWhatTheMapShowsWhenAsked)
{
    CDatasetVector *target = copied();
    ASSERT_TRUE(area().addToMap(target));
    CTxMapWnd *canvas = area().currentMap()->canvas();
    canvas->SetViewBounds(CRect2D(0, 9.8, 5, 12.2));
    const CRect2D shown = canvas->GetViewBounds();
    select(u"rivers"_s, u"archive"_s);
    inDialog<AppendDialog>([&] { action(Actions::Append)->trigger(); },
                           [&](AppendDialog &dialog) {
                               const auto *only = dialog.findChild<QCheckBox *>();
                               key(dialog, Qt::Key_O, Qt::AltModifier);
                               EXPECT_TRUE(QTest::qWaitFor([&] { return only->isChecked(); }))
                                   << "a click by its letter is animated";
                               EXPECT_EQ(dialog.bounds(), shown);
                               key(dialog, Qt::Key_Return);
                           });
    const qint64 inside = std::min<qint64>(300, qint64(std::floor(shown.top)) + 1) -
                          std::max<qint64>(0, qint64(std::ceil(shown.bottom - 0.5)));
    EXPECT_EQ(target->GetRecordCount(), 300 + inside) << window->outputPane().text().toStdString();
}

TEST_F(Commands, SmoothingIsAskedForDoneWholeOrNotAtAll)
{
    CDatasetVector *target = copied();
    select(u"rivers"_s, u"archive"_s);
    action(Actions::SmoothLines)->trigger();
    EXPECT_EQ(prompts.questions.size(), 1);
    EXPECT_EQ(points(lines(target).front()), 3) << "refused";

    qint64 calls = 0;
    const auto stopped = DatasetJobs::smoothLines(*target, [&](qint64, qint64) { return calls++ == 0; });
    EXPECT_EQ(stopped.state, DatasetJobs::Result::Stopped);
    EXPECT_EQ(points(lines(target).front()), 3) << "the first batch is taken back";

    ASSERT_TRUE(area().addToMap(target));
    prompts.confirmAnswer = true;
    action(Actions::SmoothLines)->trigger();
    for (const auto &line : lines(target))
        ASSERT_GT(points(line), 10);
    EXPECT_EQ(lines(target).size(), 300U);
    EXPECT_TRUE(prompts.warnings.isEmpty()) << prompts.warnings.join(u' ').toStdString();
}

TEST_F(Commands, ParallelLinesLieAtTheDistanceThatWasTyped)
{
    select(u"rivers"_s, u"rivers"_s);
    inDialog<ParallelLineDialog>(
        [&] { action(Actions::ParallelLine)->trigger(); },
        [&](ParallelLineDialog &dialog) {
            const std::pair<const char *, bool> entries[] = {{"", false},    {"-1", false},    {"0", false},
                                                             {"nan", false}, {"1,2,3", false}, {"0,25", true}};
            for (const auto &[text, good] : entries) {
                key(dialog, Qt::Key_S, Qt::AltModifier);
                key(dialog, Qt::Key_A, Qt::ControlModifier);
                key(dialog, Qt::Key_Delete);
                type(QLatin1String(text));
                EXPECT_EQ(dialog.distance().has_value(), good) << text;
            }
            EXPECT_EQ(dialog.place().dataSource, archive) << "the rivers' own file takes no other dataset";
            key(dialog, Qt::Key_I, Qt::AltModifier);
            key(dialog, Qt::Key_End); // both sides
            key(dialog, Qt::Key_Return);
        });
    auto *made = static_cast<CDatasetVector *>(archive->GetDataset(u"rivers_parallel"_s));
    ASSERT_TRUE(made) << window->outputPane().text().toStdString();
    EXPECT_GE(made->FindField(u"name"_s), 0);
    const auto found = lines(made);
    ASSERT_EQ(found.size(), 600U);
    for (const size_t i : {0U, 1U}) {
        const auto &line = static_cast<const CGeoLine &>(*found[i]);
        ASSERT_EQ(line.GetPointCount(), 3);
        EXPECT_NEAR(line.GetPoints()[0].y, i == 0 ? 0.25 : -0.25, 1e-9) << "the left side first";
        EXPECT_NEAR(line.GetPoints()[2].x, i == 0 ? 3.75 : 4.25, 1e-9);
    }
}

} // namespace
