#include "DesktopFixture.h"
#include "LayerColours.h"
#include "LayerPane.h"
#include "MapWindow.h"
#include "StockRampDialog.h"
#include "colour/TdDlgRibbon.h"
#include "colour/TdIDEDlgColorSet.h"
#include "engine/map/TxMapWnd.h"
#include "engine/symbol/TxColorFolder.h"
#include "engine/symbol/TxHeightColors.h"
#include "engine/symbol/TxStockGradient.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>

#include <array>

namespace {

constexpr std::array colourCommands = {Actions::StockRamp,    Actions::EditColorSet, Actions::EditRamp,
                                       Actions::LoadRampFile, Actions::SaveRampFile, Actions::SteppedColours,
                                       Actions::ResetColours};

class Colours : public WindowFixture
{
protected:
    /// A map with a grid of the heights 0, 100, 200 and a cell without data, and the towns above it.
    void openMap()
    {
        const QString grid = write(u"relief.asc"_s, "ncols 2\nnrows 2\nxllcorner 10\nyllcorner 53\ncellsize 1\n"
                                                    "NODATA_value -9\n0 -9\n100 200\n");
        ASSERT_EQ(window->openFiles({grid, towns()}), 2);
        area().addToMap(workspace().GetDataSources().find(u"relief"_s)->GetDatasetAt(0));
        area().addToMap(vector(workspace(), u"towns"_s));
        view()->canvas()->FinishDrawing();
    }
    void openGrid()
    {
        openMap();
        selectLayer(1);
    }

    void selectLayer(int row) const { window->layerPane().list()->setCurrentRow(row); }
    MapWindow *view() const { return area().currentMap(); }
    CTxLayer *layer() const { return view()->map()->GetLayers().GetLayerAt(1); }
    const CTxColorsetEx &own() const { return layer()->style().colors; }

    /// What the map shows at a place, once it is drawn.
    QRgb seen(double x, double y) const
    {
        view()->canvas()->FinishDrawing();
        return view()->canvas()->grab().toImage().pixel(view()->canvas()->MapToPixel(CPoint2D(x, y)).toPoint());
    }

    static CTxColorsetEx twoColors()
    {
        CTxColorsetEx colors;
        colors.SetZFloor(50);
        colors.SetZCeiling(150);
        colors.AddColor(0x0000FF);
        colors.AddColor(0xFF0000);
        return colors;
    }
    void give(const CTxColorsetEx &colors)
    {
        TxLayerStyle style = layer()->style();
        style.colors = colors;
        layer()->setStyle(style);
        window->layerPane().refresh();
        view()->refresh();
    }
    void save()
    {
        prompts.fileToSave = folder.filePath(u"colours.txw"_s);
        ASSERT_TRUE(window->document().save());
        ASSERT_FALSE(window->isWindowModified());
    }
};

TEST_F(Colours, CommandsNeedALayerOfHeightsAndSayWhich)
{
    const auto expect = [this](bool usable, const QString &says) {
        for (const Actions::Id id : colourCommands) {
            EXPECT_EQ(action(id)->isEnabled(), usable && id != Actions::ResetColours);
            EXPECT_TRUE(usable || action(id)->statusTip().contains(says)) << qPrintable(action(id)->statusTip());
        }
    };
    expect(false, u"Open a map"_s);
    openMap();
    window->layerPane().list()->clearSelection();
    expect(false, u"Select one layer"_s);
    selectLayer(0);
    expect(false, u"“towns@towns” has no heights"_s);
    selectLayer(1);
    expect(true, {});
    EXPECT_TRUE(action(Actions::ResetColours)->statusTip().contains(u"usual colours"_s));
    window->layerPane().list()->selectAll();
    expect(false, u"Select one layer"_s);
    selectLayer(1);
    view()->map()->GetLayers().GetLayerAt(1)->SetDatasetName(u"gone"_s);
    window->layerPane().refresh();
    expect(false, u"missing"_s);
    area().closeAll();
    expect(false, u"Open a map"_s);
}

TEST_F(Colours, AStockRampIsChosenByKeyboardSeenSavedAndReopened)
{
    openGrid();
    save();
    inDialog<StockRampDialog>([this] { action(Actions::StockRamp)->trigger(); },
                              [this](StockRampDialog &dialog) {
                                  EXPECT_EQ(dialog.colors().GetZFloor(), 0);
                                  EXPECT_EQ(dialog.colors().GetZCeiling(), 200);
                                  type(u"viri"_s);
                                  key(dialog, Qt::Key_H, Qt::AltModifier);
                                  type(u"100,5"_s);
                                  key(dialog, Qt::Key_L, Qt::AltModifier);
                                  type(u"300"_s);
                                  EXPECT_FALSE(ok(dialog)->isEnabled()) << "the range is reversed";
                                  key(dialog, Qt::Key_A, Qt::ControlModifier);
                                  type(u"99.5"_s);
                                  ASSERT_TRUE(ok(dialog)->isEnabled());
                                  key(dialog, Qt::Key_Return);
                              });
    CTxColorFolder viridis;
    viridis.MakeStockGradient(256, static_cast<qint32>(TxStockGradient::Viridis));
    ASSERT_EQ(own().GetSize(), 256);
    EXPECT_EQ(own().GetZFloor(), 99.5);
    EXPECT_EQ(own().GetZCeiling(), 100.5);
    EXPECT_TRUE(window->isWindowModified());
    const auto check = [&] {
        EXPECT_EQ(seen(10.5, 54.5), TxColorRef::toRgb(viridis.GetAt(0))) << "below the range";
        EXPECT_EQ(seen(11.5, 53.5), TxColorRef::toRgb(viridis.GetAt(255))) << "above it";
        EXPECT_EQ(seen(10.5, 53.5), TxHeightColors(own(), false).at(100)) << "in its middle";
        EXPECT_EQ(seen(11.5, 54.5), seen(9.9, 54.5)) << "no data";
    };
    check();
    ASSERT_TRUE(window->document().save());
    const CTxColorsetEx kept = own();
    const QString name = view()->map()->GetName();
    ASSERT_TRUE(window->document().openWorkspace(prompts.fileToSave));
    ASSERT_TRUE(area().showMap(name));
    EXPECT_EQ(own(), kept);
    check();
}

TEST_F(Colours, WhatIsGivenUpLeavesNoTrace)
{
    openGrid();
    give(twoColors());
    save();
    const TxLayerStyle before = layer()->style();
    const QRgb seenBefore = seen(10.5, 53.5);
    inDialog<StockRampDialog>([this] { action(Actions::StockRamp)->trigger(); },
                              [&](StockRampDialog &dialog) {
                                  EXPECT_TRUE(QTest::qWaitFor([&] { return layer()->style() != before; }, 2000))
                                      << "the map shows it meanwhile";
                                  key(dialog, Qt::Key_Escape);
                              });
    EXPECT_EQ(layer()->style(), before);
    inDialog<CTdDlgRibbon>([this] { action(Actions::EditRamp)->trigger(); },
                           [&](CTdDlgRibbon &dialog) {
                               Q_EMIT dialog.rampChanged();
                               key(dialog, Qt::Key_Escape);
                           });
    inDialog<CTdIDEDlgColorSet>([this] { action(Actions::EditColorSet)->trigger(); },
                                [](CTdIDEDlgColorSet &dialog) { key(dialog, Qt::Key_Escape); });
    EXPECT_EQ(layer()->style(), before);
    EXPECT_EQ(seen(10.5, 53.5), seenBefore);
    EXPECT_FALSE(window->document().isModified());
}

TEST_F(Colours, WhatGoesWhileADialogStandsIsNotMissed)
{
    openGrid();
    give(twoColors());
    const auto accept = [this](auto &&lose) {
        inDialog<StockRampDialog>([this] { action(Actions::StockRamp)->trigger(); },
                                  [&](StockRampDialog &dialog) {
                                      lose();
                                      dialog.accept();
                                  });
    };
    const CTxMap *map = view()->map();
    accept([this] { area().closeAll(); });
    EXPECT_EQ(map->GetLayers().GetLayerAt(1)->style().colors.GetSize(), 256) << "the layer is still there";
    ASSERT_TRUE(area().showMap(map->GetName()));
    selectLayer(1);
    accept(
        [this] { EXPECT_TRUE(window->document().closeDataSource(workspace().GetDataSources().GetAt(0)->GetAlias())); });
    selectLayer(1);
    window->document().removeMap(map->GetName());
    EXPECT_FALSE(action(Actions::StockRamp)->isEnabled());
}

TEST_F(Colours, EditorsBeginWithWhatTheLayerShows)
{
    openGrid();
    inDialog<CTdDlgRibbon>([this] { action(Actions::EditRamp)->trigger(); },
                           [](CTdDlgRibbon &dialog) { dialog.accept(); });
    EXPECT_EQ(own(), usualColors(0, 200)) << "the usual colours over the data's range";
    give(twoColors());
    inDialog<CTdDlgRibbon>([this] { action(Actions::EditRamp)->trigger(); },
                           [](CTdDlgRibbon &dialog) {
                               dialog.SetStops({{0, 0x0000FF, 50}, {0, 0x00FF00, 75}, {0, 0xFF0000, 150}});
                               dialog.accept();
                           });
    EXPECT_GT(own().GetSize(), 100) << "stops that are not even are read off the ramp";
    EXPECT_EQ(own().GetRGB(own().GetSize() - 1), 0xFF0000U);
    give(twoColors());
    inDialog<CTdIDEDlgColorSet>([this] { action(Actions::EditColorSet)->trigger(); },
                                [](CTdIDEDlgColorSet &dialog) {
                                    dialog.GetDlgItem<QLineEdit>(CTdIDEDlgColorSet::MaximumEdit)->setText(u"175"_s);
                                    dialog.accept();
                                });
    CTxColorsetEx expected = twoColors();
    expected.SetZCeiling(175);
    EXPECT_EQ(own(), expected);
}

TEST_F(Colours, StepsAndResetWorkOnTheSelectedLayer)
{
    openGrid();
    const QRgb usual = seen(10.5, 53.5);
    give(twoColors());
    const QRgb blended = seen(10.5, 53.5);
    action(Actions::SteppedColours)->trigger();
    EXPECT_EQ(seen(10.5, 53.5), qRgb(0, 0, 255)) << "the bound of two steps belongs to the upper one";
    EXPECT_TRUE(action(Actions::SteppedColours)->isChecked());
    selectLayer(0);
    EXPECT_FALSE(action(Actions::SteppedColours)->isChecked());
    selectLayer(1);
    action(Actions::SteppedColours)->trigger();
    EXPECT_EQ(seen(10.5, 53.5), blended);
    action(Actions::ResetColours)->trigger();
    EXPECT_EQ(seen(10.5, 53.5), usual);
    EXPECT_EQ(own().GetSize(), 0);
    EXPECT_FALSE(action(Actions::ResetColours)->isEnabled());
}

TEST_F(Colours, RampFilesAreLoadedSavedAndTellWhatTheyLose)
{
    openGrid();
    // Not made for these heights: stretched over 0 to 200.
    prompts.filesToOpen = {write(u"a.cpt"_s, "0 black 1 white\nB red\n")};
    action(Actions::LoadRampFile)->trigger();
    EXPECT_EQ(own().GetZCeiling(), 200);
    EXPECT_EQ(own().GetRGB(own().GetSize() - 1), 0xFFFFFFU);
    ASSERT_EQ(prompts.warnings.size(), 1);
    EXPECT_TRUE(prompts.warnings.takeLast().contains(u"below and above the range. (line 2)"_s));
    EXPECT_EQ(qRed(seen(10.5, 53.5)), 128);

    prompts.filesToOpen = {write(u"near.rules"_s, "0 black\n150 black\n150 white\n150.5 red\n200 red\n")};
    action(Actions::LoadRampFile)->trigger();
    EXPECT_EQ(own().GetSize(), 401); // so many that the stops half apart are not lost

    prompts.filesToOpen = {write(u"b.rules"_s, "0% red\n100% blue\n")};
    action(Actions::LoadRampFile)->trigger();
    EXPECT_EQ(own().GetRGB(0), 0x0000FFU);
    EXPECT_EQ(own().GetZCeiling(), 200);
    EXPECT_TRUE(prompts.warnings.isEmpty());

    const CTxColorsetEx before = own();
    for (const QString &ending : {u"cpt"_s, u"rules"_s, u"sct"_s, u"ggr"_s}) {
        prompts.fileToSave = folder.filePath(u"saved."_s + ending);
        action(Actions::SaveRampFile)->trigger();
        action(Actions::ResetColours)->trigger();
        prompts.filesToOpen = {prompts.fileToSave};
        action(Actions::LoadRampFile)->trigger();
        EXPECT_EQ(own(), before) << qPrintable(ending);
    }
    EXPECT_EQ(prompts.warnings.size(), 1); // GIMP's has no heights

    prompts.filesToOpen = {write(u"c.ggr"_s, "nonsense\n")};
    action(Actions::LoadRampFile)->trigger();
    EXPECT_EQ(own(), before);
    EXPECT_TRUE(prompts.warnings.last().contains(u"“c.ggr” was not loaded"_s));
}

TEST_F(Colours, TheLayerPaneShowsALegendAndOffersTheCommands)
{
    openGrid();
    give(twoColors());
    QListWidget *list = window->layerPane().list();
    const QListWidgetItem *item = list->item(1);
    EXPECT_EQ(item->data(Qt::AccessibleDescriptionRole).toString(), "Colours of heights from 50 to 150");
    const QRect place = list->visualItemRect(item);
    EXPECT_GT(place.height(), list->visualItemRect(list->item(0)).height() + 10);
    const QImage picture = list->viewport()->grab(place).toImage();
    int reds = 0, blues = 0;
    for (int y = 0; y < picture.height(); ++y) {
        reds += picture.pixelColor(picture.width() * 3 / 10, y).red() > 150 &&
                picture.pixelColor(picture.width() * 3 / 10, y).green() < 20;
        blues += picture.pixelColor(picture.width() * 9 / 10, y).blue() > 150 &&
                 picture.pixelColor(picture.width() * 9 / 10, y).green() < 20;
    }
    EXPECT_GE(std::min(reds, blues), 5) << "from red to blue";

    QStringList offered;
    QTimer::singleShot(0, window.get(), [&] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        for (const QAction *one : menu->actions())
            offered << one->text();
        menu->close();
    });
    QContextMenuEvent event(QContextMenuEvent::Keyboard, place.center(), list->viewport()->mapToGlobal(place.center()));
    QCoreApplication::sendEvent(list->viewport(), &event);
    for (const Actions::Id id : colourCommands)
        EXPECT_TRUE(offered.contains(action(id)->text())) << qPrintable(action(id)->text());
}

TEST(LayerColoursTest, TheSeaOfAStockRampEndsAtHeightZero)
{
    const auto style = static_cast<qint32>(TxStockGradient::Hypsometric);
    CTxColorFolder even;
    even.MakeStockGradient(4, style);
    const CTxColorsetEx shallow = LayerColours::stock(style, false, 20, -100, 900, true);
    EXPECT_EQ(shallow.GetSize(), 20);
    EXPECT_EQ(shallow.GetRGB(0), even.GetAt(0));
    EXPECT_EQ(shallow.GetRGB(1), even.GetAt(1)) << "two of twenty are water";
    EXPECT_EQ(shallow.GetRGB(2), even.GetAt(2)) << "then land begins";
    EXPECT_EQ(shallow.GetRGB(19), even.GetAt(3));
    even.MakeStockGradient(20, style);
    EXPECT_EQ(LayerColours::stock(style, false, 20, -100, 900, false).GetRGB(2), even.GetAt(2)) << "as it is";
    even.MakeStockGradient(40, style);
    const CTxColorsetEx land = LayerColours::stock(style, false, 20, 100, 900, true);
    const CTxColorsetEx sea = LayerColours::stock(style, false, 20, -900, -100, true);
    for (qint32 i = 0; i < 20; ++i) {
        EXPECT_EQ(land.GetRGB(i), even.GetAt(20 + i)) << "hills are not drowned";
        EXPECT_EQ(sea.GetRGB(i), even.GetAt(i));
    }
}

TEST(LayerColoursTest, FewStopsHoldARamp)
{
    for (const TxStockGradient style :
         {TxStockGradient::Grey, TxStockGradient::Viridis, TxStockGradient::Hypsometric, TxStockGradient::HueCircle}) {
        const CTxColorsetEx colors = LayerColours::stock(static_cast<qint32>(style), false, 256, -10, 30, false);
        const QList<RibbonStop> stops = LayerColours::toStops(colors);
        EXPECT_LT(stops.size(), 40) << int(style);
        EXPECT_EQ(stops.first().value, -10);
        EXPECT_EQ(stops.last().value, 30);
        const CTxColorsetEx back = LayerColours::fromStops(stops, 256);
        int most = 0;
        for (qint32 i = 0; i < 256; ++i)
            most = std::max(most, std::abs(TxColorRef::green(back.GetRGB(i)) - TxColorRef::green(colors.GetRGB(i))));
        EXPECT_LE(most, 4) << int(style);
    }
    EXPECT_EQ(LayerColours::fromStops({{0, 5, 1}}, 0).GetSize(), 0) << "no ramp";
    const CTxColorsetEx late = LayerColours::fromStops({{0, 1, 0}, {0, 3, 2}, {0, 2, 1}}, 0);
    EXPECT_EQ(late.GetRGB(1), 2U) << "stops that wait to be put in order";
}

} // namespace
