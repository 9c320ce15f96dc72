#include "AttributeTable.h"
#include "DesktopFixture.h"
#include "LayerPane.h"
#include "MapWindow.h"
#include "MissingDialog.h"
#include "OutputPane.h"
#include "PropertiesDialog.h"
#include "engine/map/TxMapWnd.h"

#include <QDropEvent>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <QUrl>

namespace {

class Window : public WindowFixture
{
protected:
    void doubleClick(QTreeWidgetItem *item) const
    {
        tree()->scrollToItem(item);
        const QPoint place = tree()->visualItemRect(item).center();
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(tree()->viewport(), Qt::LeftButton, {}, place);
    }

    /// Drags @p mime over @p target and lets go. @return true when it was taken.
    static bool drop(QWidget *target, const QMimeData &mime)
    {
        const QPoint place = target->rect().center();
        QDragEnterEvent enter(place, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent event(place, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &event);
        return event.isAccepted();
    }

    /// How many pixels of the map are not the paper's colour.
    static int inkOf(MapWindow *view)
    {
        view->canvas()->FinishDrawing();
        const QImage picture = view->canvas()->grab().toImage();
        const QRgb paper = picture.pixel(1, 1);
        int ink = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                ink += picture.pixel(x, y) != paper;
        return ink;
    }

    void openTowns()
    {
        ASSERT_EQ(window->openFiles({towns()}), 1);
        ASSERT_TRUE(prompts.warnings.isEmpty());
    }
};

TEST_F(Window, ADoubleClickedDatasetIsDrawnInAMap)
{
    ASSERT_EQ(window->openFiles({districts(), towns()}), 2);
    doubleClick(item(u"districts"_s, u"districts"_s));
    MapWindow *view = area().currentMap();
    ASSERT_NE(view, nullptr);
    const int region = inkOf(view);
    EXPECT_GT(region, 5000);
    EXPECT_NE(tree()->FindFirstItem(CTdOleDataNode::ItemMap), nullptr) << "the new map is in the tree";

    doubleClick(item(u"towns"_s, u"towns"_s));
    EXPECT_EQ(area().maps().size(), 1) << "it is added to the map that is there";
    EXPECT_EQ(view->map()->GetLayers().GetCount(), 2);
    EXPECT_EQ(view->map()->GetLayers().GetLayerAt(0)->GetDatasetName(), "towns") << "points above regions";
    EXPECT_EQ(window->layerPane().list()->count(), 2);
}

TEST_F(Window, RegionsGoBelowThePointsThatAreThere)
{
    ASSERT_EQ(window->openFiles({districts(), towns()}), 2);
    area().addToMap(vector(workspace(), u"towns"_s));
    area().addToMap(vector(workspace(), u"districts"_s));
    const CTxLayers &layers = area().currentMap()->map()->GetLayers();
    EXPECT_EQ(layers.GetLayerAt(0)->GetDatasetName(), "towns");
    EXPECT_EQ(layers.GetLayerAt(1)->GetDatasetName(), "districts");
}

TEST_F(Window, ATableIsOpenedWhereThereIsNothingToDraw)
{
    ASSERT_EQ(window->openFiles({numbers(5)}), 1);
    doubleClick(item(u"numbers"_s, u"numbers"_s));
    EXPECT_NE(area().currentTable(), nullptr);
    EXPECT_TRUE(area().maps().isEmpty());
}

TEST_F(Window, ADoubleClickedMapOpensItsWindow)
{
    window->document().addMap(u"Empty"_s);
    doubleClick(item(u"Empty"_s, QString(), CTdOleDataNode::ItemMap));
    ASSERT_EQ(area().maps().size(), 1);
    doubleClick(item(u"Empty"_s, QString(), CTdOleDataNode::ItemMap));
    EXPECT_EQ(area().maps().size(), 1) << "not twice";
}

TEST_F(Window, ADatasetDraggedFromTheTreeIsAddedToTheMap)
{
    openTowns();
    window->document().addMap(u"Target"_s);
    MapWindow *view = area().showMap(u"Target"_s);
    QTreeWidgetItem *dragged = item(u"towns"_s, u"towns"_s);
    const std::unique_ptr<QMimeData> mime(tree()->mimeData({dragged}));
    ASSERT_NE(mime, nullptr);
    EXPECT_TRUE(drop(view, *mime));
    EXPECT_EQ(view->map()->GetLayers().GetCount(), 1);
    EXPECT_GT(inkOf(view), 20);

    QMimeData text;
    text.setText(u"towns"_s);
    EXPECT_FALSE(drop(view, text)) << "a text is nothing to draw";
}

TEST_F(Window, DroppedFilesAreOpenedAsDatasources)
{
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(towns()), QUrl(u"https://example.org/x.gpkg"_s)});
    EXPECT_TRUE(drop(window.get(), mime));
    EXPECT_EQ(workspace().GetDataSources().GetCount(), 1);
    EXPECT_TRUE(prompts.warnings.isEmpty());
}

TEST_F(Window, AClosedDatasourceIsLetGoByMapAndTable)
{
    openTowns();
    CDatasetVector *dataset = vector(workspace(), u"towns"_s);
    area().addToMap(dataset);
    ASSERT_NE(area().showTable(dataset), nullptr);
    EXPECT_EQ(area().windowsOf(dataset).size(), 2);
    EXPECT_TRUE(window->document().closeDataSource(u"towns"_s));
    EXPECT_TRUE(area().tables().isEmpty());
    EXPECT_EQ(tree()->FindFirstItem(CTdOleDataNode::ItemDataSource), nullptr);
    MapWindow *view = area().currentMap();
    ASSERT_NE(view, nullptr);
    view->canvas()->Zoom(2);
    EXPECT_EQ(inkOf(view), 0) << "nothing of it is drawn any more";
    EXPECT_EQ(view->map()->GetLayers().GetCount(), 1) << "the layer waits for its datasource";

    openTowns();
    EXPECT_GT(inkOf(view), 20) << "and is drawn again when that comes back";
}

TEST_F(Window, ANewWorkspaceClosesEveryWindow)
{
    openTowns();
    CDatasetVector *dataset = vector(workspace(), u"towns"_s);
    area().addToMap(dataset);
    area().showTable(dataset);
    prompts.unsavedAnswer = Prompts::Unsaved::Discard;
    EXPECT_TRUE(window->document().newWorkspace());
    EXPECT_EQ(area().current(), nullptr);
    EXPECT_EQ(window->layerPane().list()->count(), 0);
    EXPECT_EQ(tree()->FindFirstItem(CTdOleDataNode::ItemMap), nullptr);
    QCoreApplication::processEvents();
}

TEST_F(Window, RefreshKeepsTheTableOfADatasetThatIsStillThere)
{
    openTowns();
    area().showTable(vector(workspace(), u"towns"_s));
    EXPECT_TRUE(window->document().refreshDataSource(u"towns"_s));
    ASSERT_EQ(area().tables().size(), 1);
    EXPECT_EQ(area().tables().first()->dataset(), vector(workspace(), u"towns"_s));
}

TEST_F(Window, LayersAreHiddenAndRemovedInTheLayerPane)
{
    openTowns();
    area().addToMap(vector(workspace(), u"towns"_s));
    MapWindow *view = area().currentMap();
    ASSERT_GT(inkOf(view), 20);
    QListWidget *list = window->layerPane().list();
    ASSERT_EQ(list->count(), 1);
    list->setCurrentRow(0);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_FALSE(view->map()->GetLayers().GetLayerAt(0)->IsVisible());
    EXPECT_EQ(inkOf(view), 0);
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(view->map()->GetLayers().GetCount(), 0);
    EXPECT_EQ(list->count(), 0);
}

TEST_F(Window, AStartWithAWorkspaceShowsItsFirstMap)
{
    openTowns();
    const QString workspaceFile = folder.filePath(u"two.txw"_s);
    for (const QString &name : {u"Second"_s, u"Alone"_s})
        ASSERT_TRUE(window->document().addMap(name));
    ASSERT_TRUE(workspace().GetMaps().Rename(workspace().GetMaps().GetAt(0)->GetName(), u"First"_s));
    ASSERT_TRUE(workspace().SaveAs(workspaceFile));
    const auto shown = [this](const QStringList &files) {
        EXPECT_TRUE(window->document().newWorkspace());
        window->openAtStart(files);
        return area().currentMap() ? area().currentMap()->map()->GetName() : QString();
    };
    EXPECT_EQ(shown({workspaceFile}), u"First"_s);
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_EQ(shown({towns()}), QString());
}

TEST_F(Window, AMapThatIsOpenedBringsItsLayersAlong)
{
    openTowns();
    CTxMap *map = window->document().addMap(u"Stored"_s);
    map->GetLayers().Add(std::make_unique<CTxLayer>(&workspace().GetDataSources(), u"towns"_s, u"towns"_s));
    EXPECT_EQ(window->layerPane().list()->count(), 0);
    area().showMap(u"Stored"_s);
    EXPECT_EQ(window->layerPane().list()->count(), 1);
    EXPECT_NE(vector(workspace(), u"towns"_s), nullptr);
    area().currentMap()->canvas()->FinishDrawing();
    EXPECT_TRUE(vector(workspace(), u"towns"_s)->IsOpen()) << "drawing opens what it draws";
    QTreeWidgetItem *dataset = item(u"towns"_s, u"towns"_s);
    const CTdWkspImageList &images = tree()->GetWkspImageList();
    EXPECT_EQ(CWorkspaceBarTree::GetItemImage(dataset), images.GetImageIndex(CElemDatasetInfo::Point, 1));
}

TEST_F(Window, ADoubleClickedLayerFillsTheWindowAlsoInAnotherCoordinateSystem)
{
    // The same square degree around 10.5 E, 0.5 N, in metres of the Mercator projection.
    const QString metres = write(u"metres.geojson"_s, R"({"type":"FeatureCollection",
"crs":{"type":"name","properties":{"name":"urn:ogc:def:crs:EPSG::3857"}},"features":[{"type":"Feature","properties":{},
"geometry":{"type":"Polygon","coordinates":[[[1113194.9,0],[1224514.4,0],[1224514.4,111325.1],[1113194.9,111325.1],[1113194.9,0]]]}}]})");
    ASSERT_EQ(window->openFiles({districts(), metres}), 2);
    area().addToMap(vector(workspace(), u"districts"_s));
    area().addToMap(vector(workspace(), u"metres"_s));
    QListWidget *list = window->layerPane().list();
    const QPoint place = list->visualItemRect(list->item(0)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
    const CRect2D shown = area().currentMap()->canvas()->GetViewBounds();
    EXPECT_NEAR(shown.CenterPoint().x, 10.5, 0.01);
    EXPECT_NEAR(shown.CenterPoint().y, 0.5, 0.01);
    EXPECT_NEAR(shown.Height(), 1.1, 0.05);
}

TEST_F(Window, PropertiesTellWhatIsKnown)
{
    openTowns();
    const CDatasetVector *dataset = vector(workspace(), u"towns"_s);
    const PropertiesDialog properties(*dataset);
    EXPECT_EQ(properties.value(u"Kind"_s), "Point");
    EXPECT_EQ(properties.value(u"Records"_s), "3");
    EXPECT_TRUE(properties.value(u"Coordinate system"_s).contains(u"WGS 84"_s));
    EXPECT_TRUE(properties.value(u"Bounds"_s).contains(u"top 54.05"_s));
    EXPECT_EQ(properties.fields()->topLevelItemCount(), dataset->GetFieldCount());
    EXPECT_EQ(PropertiesDialog(*dataset->GetDataSource()).value(u"Datasets"_s), "1");
}

TEST_F(Window, AsksBeforeItClosesWithChanges)
{
    openTowns();
    prompts.unsavedAnswer = Prompts::Unsaved::Cancel;
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->isWindowModified());
    prompts.unsavedAnswer = Prompts::Unsaved::Discard;
    EXPECT_TRUE(window->close());
    EXPECT_EQ(prompts.unsavedQuestions, 2);
}

TEST_F(Window, BadFilesAreToldAndTheOthersOpened)
{
    const QString bad = write(u"bad.tdb"_s, "SQLite format 3");
    EXPECT_EQ(window->openFiles({bad, towns()}, false), 1);
    EXPECT_TRUE(prompts.warnings.isEmpty()) << "no message box at start";
    EXPECT_TRUE(window->outputPane().text().contains(u"bad.tdb"_s));
    EXPECT_EQ(window->openFiles({bad}), 0);
    ASSERT_EQ(prompts.warnings.size(), 1);
    EXPECT_FALSE(prompts.warnings[0].endsWith(u' ')) << "the reason is told";
}

TEST_F(Window, MissingDatasourcesAreRemovedInTheirDialog)
{
    const QString path = write(u"w.txw"_s, "");
    openTowns();
    ASSERT_TRUE(window->document().saveAs(path));
    ASSERT_TRUE(QFile::remove(folder.filePath(u"towns.geojson"_s)));
    ASSERT_TRUE(window->document().openWorkspace(path));
    EXPECT_TRUE(window->outputPane().text().contains(u"Missing datasource towns"_s));
    MissingDialog dialog(window->document(), prompts);
    dialog.show();
    ASSERT_EQ(dialog.list()->topLevelItemCount(), 1);
    for (QPushButton *button : dialog.findChildren<QPushButton *>())
        if (button->text() == u"&Remove"_s)
            QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(dialog.list()->topLevelItemCount(), 0);
    EXPECT_TRUE(workspace().GetMissingDataSources().isEmpty());
}

} // namespace
