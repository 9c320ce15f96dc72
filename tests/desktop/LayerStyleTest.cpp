#include "DesktopFixture.h"
#include "LayerLegend.h"
#include "LayerPane.h"
#include "LayerStyleDialog.h"
#include "MapWindow.h"
#include "controls/TdStyleButton.h"
#include "controls/TdStyleDialog.h"
#include "engine/map/TxMap.h"
#include "engine/map/TxMapWnd.h"

#include <QLabel>
#include <QListWidget>

#include <algorithm>

namespace {

constexpr qint32 railway = 12;

class LayerStyles : public WindowFixture
{
protected:
    /// A map of the district below a grid of heights and the towns.
    void openMap()
    {
        const QString grid = write(u"relief.asc"_s, "ncols 2\nnrows 2\nxllcorner 10\nyllcorner 53\ncellsize 1\n"
                                                    "NODATA_value -9\n0 -9\n100 200\n");
        ASSERT_EQ(window->openFiles({districts(), towns(), grid}), 3);
        for (const QString &alias : {u"relief"_s, u"districts"_s, u"towns"_s})
            area().addToMap(workspace().GetDataSources().find(alias)->GetDatasetAt(0));
        view()->canvas()->FinishDrawing();
    }

    MapWindow *view() const { return area().currentMap(); }
    QListWidget *list() const { return window->layerPane().list(); }
    /// Selects the layer of the datasource @p alias.
    CTxLayer *select(const QString &alias)
    {
        CTxLayers &layers = view()->map()->GetLayers();
        int row = 0;
        while (row < layers.GetCount() && layers.GetLayerAt(row)->GetDataSourceAlias() != alias)
            ++row;
        list()->setCurrentRow(row);
        return layers.GetLayerAt(row);
    }
    template<class Use>
    void inStyleDialog(Use &&use)
    {
        inDialog<LayerStyleDialog>([this] { action(Actions::LayerStyle)->trigger(); }, use);
    }
    /// What the map shows, once it is drawn.
    QImage seen() const
    {
        view()->canvas()->FinishDrawing();
        return view()->canvas()->grab().toImage();
    }
    static QPushButton *apply(QDialog &dialog)
    {
        return dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Apply);
    }
    /// Puts @p text into the number that Alt and @p mnemonic go to.
    static void enter(QDialog &dialog, Qt::Key mnemonic, const QString &text)
    {
        key(dialog, mnemonic, Qt::AltModifier);
        key(dialog, Qt::Key_A, Qt::ControlModifier);
        key(dialog, Qt::Key_Backspace);
        type(text);
    }
};

TEST_F(LayerStyles, TheCommandNeedsALayerThatIsDrawnWithAStyleAndSaysWhy)
{
    const auto expect = [this](bool usable, const QString &says) {
        EXPECT_EQ(action(Actions::LayerStyle)->isEnabled(), usable);
        EXPECT_TRUE(action(Actions::LayerStyle)->toolTip().contains(says))
            << qPrintable(action(Actions::LayerStyle)->toolTip());
    };
    expect(false, u"Open a map"_s);
    openMap();
    list()->clearSelection();
    expect(false, u"Select one layer"_s);
    select(u"relief"_s);
    expect(false, u"Colour menu"_s);
    select(u"towns"_s);
    expect(true, u"Choose the line"_s);
    select(u"districts"_s)->SetDatasetName(u"gone"_s);
    window->layerPane().refresh();
    select(u"districts"_s);
    expect(false, u"missing"_s);
    area().closeAll();
    expect(false, u"Open a map"_s);
}

TEST_F(LayerStyles, AStyleIsChosenByKeyboardDrawnSavedAndReopened)
{
    openMap();
    CTxLayer *layer = select(u"districts"_s);
    const QImage before = seen();
    const QImage legendBefore = list()->currentItem()->icon().pixmap(LayerLegend::sampleSize).toImage();
    inStyleDialog([&](LayerStyleDialog &dialog) {
        EXPECT_EQ(dialog.findChildren<CTdStyleButton *>().size(), 2) << "regions have lines and fills, no symbols";
        EXPECT_TRUE(qobject_cast<CTdStyleButton *>(QApplication::focusWidget()));
        inDialog<CTdStyleDialog>([&] { key(dialog, Qt::Key_Space); },
                                 [](CTdStyleDialog &styles) {
                                     type(u"Railway"_s);
                                     key(styles, Qt::Key_Return);
                                 });
        dialog.activateWindow(); // as window managers do
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
        EXPECT_TRUE(QTest::qWaitFor([] { return QApplication::focusWidget() != nullptr; }));
        enter(dialog, Qt::Key_W, u"2.5"_s);
        enter(dialog, Qt::Key_P, u"80"_s);
        EXPECT_EQ(layer->style().geoStyle.lineStyle, 0) << "nothing is applied yet";
        key(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(layer->style().geoStyle.lineStyle, railway);
    EXPECT_EQ(layer->style().geoStyle.lineWidth, 2.5);
    EXPECT_EQ(layer->style().opacity, 0.8);
    const QImage after = seen();
    EXPECT_NE(after, before);
    EXPECT_NE(list()->item(list()->currentRow())->icon().pixmap(LayerLegend::sampleSize).toImage(), legendBefore);
    EXPECT_TRUE(window->isWindowModified());

    prompts.fileToSave = folder.filePath(u"styles.txw"_s);
    ASSERT_TRUE(window->document().save());
    const TxLayerStyle kept = layer->style();
    const QString name = view()->map()->GetName();
    ASSERT_TRUE(window->document().openWorkspace(prompts.fileToSave));
    ASSERT_TRUE(area().showMap(name));
    EXPECT_EQ(select(u"districts"_s)->style(), kept);
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(LayerStyles, ApplyIsSeenAtOnceAndCancelTakesItBack)
{
    openMap();
    CTxLayer *layer = select(u"towns"_s);
    prompts.fileToSave = folder.filePath(u"styles.txw"_s);
    ASSERT_TRUE(window->document().save());
    const TxLayerStyle before = layer->style();
    const QImage seenBefore = seen();
    inStyleDialog([&](LayerStyleDialog &dialog) {
        enter(dialog, Qt::Key_Z, u"40"_s);
        key(dialog, Qt::Key_A, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return layer->style().geoStyle.symbolSize == 40; }, 2000));
        EXPECT_NE(seen(), seenBefore);
        EXPECT_TRUE(window->isWindowModified());
        key(dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(layer->style(), before);
    EXPECT_EQ(seen(), seenBefore);
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(LayerStyles, NumbersOutOfRangeAreAnsweredAndCannotBeApplied)
{
    openMap();
    CTxLayer *layer = select(u"towns"_s);
    inStyleDialog([&](LayerStyleDialog &dialog) {
        const auto says = [&dialog](const QString &text) {
            const QList<QLabel *> labels = dialog.findChildren<QLabel *>();
            return std::any_of(labels.begin(), labels.end(),
                               [&](const QLabel *label) { return label->text().contains(text); });
        };
        for (const QString &wrong : {u""_s, u"-"_s, u"0.5"_s, u"1e"_s}) {
            enter(dialog, Qt::Key_Z, wrong);
            EXPECT_FALSE(ok(dialog)->isEnabled() || apply(dialog)->isEnabled()) << qPrintable(wrong);
            EXPECT_TRUE(says(u"“Size” must be a number from 1 to 1000"_s)) << qPrintable(wrong);
        }
        enter(dialog, Qt::Key_Z, u"10005"_s); // the last digit is refused
        EXPECT_TRUE(ok(dialog)->isEnabled());
        EXPECT_FALSE(says(u"must be"_s));
        key(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(layer->style().geoStyle.symbolSize, 1000);
}

TEST_F(LayerStyles, WhatGoesWhileTheDialogStandsIsNotMissed)
{
    const auto acceptAfter = [this](auto &&lose) {
        select(u"towns"_s);
        inStyleDialog([&](LayerStyleDialog &dialog) {
            enter(dialog, Qt::Key_Z, u"33"_s);
            lose();
            apply(dialog)->click();
            key(dialog, Qt::Key_Return);
        });
    };
    openMap();
    MapWindow *first = view();
    area().addToNewMap(vector(workspace(), u"districts"_s));
    MapWindow *second = view();
    ASSERT_TRUE(area().showMap(first->map()->GetName()));
    CTxLayer *layer = select(u"towns"_s);
    acceptAfter([&] { area().showMap(second->map()->GetName()); });
    EXPECT_EQ(layer->style().geoStyle.symbolSize, 33) << "another map came to the front";

    ASSERT_TRUE(area().showMap(first->map()->GetName()));
    acceptAfter([&] { first->map()->GetLayers().Remove(0); });
    area().addToMap(vector(workspace(), u"towns"_s));
    acceptAfter([&] { area().closeCurrent(); });
    prompts.unsavedAnswer = Prompts::Unsaved::Discard;
    openMap();
    acceptAfter([&] { window->document().newWorkspace(); });
    EXPECT_EQ(workspace().GetMaps().GetCount(), 0);
}

TEST_F(LayerStyles, ADoubleClickOnTheSampleOpensTheDialogAndOneOnTheNameZooms)
{
    openMap();
    select(u"relief"_s); // the click selects another
    const CRect2D whole = view()->canvas()->GetViewBounds();
    const QListWidgetItem *towns = list()->item(0);
    const QRect row = list()->visualItemRect(towns);
    const auto doubleClick = [&](const QPoint &place) {
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, place);
    };
    inDialog<LayerStyleDialog>([&] { doubleClick(LayerLegend::sampleRect(*list(), *towns).center()); },
                               [](LayerStyleDialog &dialog) { key(dialog, Qt::Key_Escape); });
    EXPECT_EQ(view()->canvas()->GetViewBounds(), whole);
    doubleClick(QPoint(LayerLegend::sampleRect(*list(), *towns).right() + 20, row.center().y()));
    EXPECT_NE(view()->canvas()->GetViewBounds(), whole);
}

} // namespace
