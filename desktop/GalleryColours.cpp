#include "GalleryColours.h"

#include "DocumentArea.h"
#include "GalleryData.h"
#include "GalleryStage.h"
#include "LayerColours.h"
#include "LayerPane.h"
#include "MapWindow.h"
#include "StockRampDialog.h"
#include "WorkspaceDocument.h"
#include "colour/TdDlgRibbon.h"
#include "colour/TdIDEDlgColorSet.h"
#include "engine/data/TxDataSource.h"
#include "engine/map/TxMap.h"
#include "engine/symbol/TxStockGradient.h"
#include "engine/ui/TxComboBoxGradientColors.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QListWidget>
#include <QMouseEvent>

#include <cmath>

using namespace GalleryStage;

namespace {

CTxColorsetEx reliefColors(int count)
{
    return LayerColours::stock(static_cast<qint32>(TxStockGradient::Hypsometric), false, count, -1500, 2500, true);
}

/// The place of a layer of heights in @p map, -1 when it has none.
int heightLayer(const CTxMap &map)
{
    int place = map.GetLayers().GetCount() - 1;
    while (place >= 0 && !LayerColours::showsHeights(map.GetLayers().GetLayerAt(place)))
        --place;
    return place;
}

/// A grid of hills that rise from the sea, in @p folder.
QString makeHills(const QTemporaryDir &folder)
{
    constexpr int side = 120;
    QByteArray text = "ncols 120\nnrows 120\nxllcorner 0\nyllcorner 0\ncellsize 1\nNODATA_value -9999\n";
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const double u = x / 15.0, v = y / 19.0;
            const double height = 900 * std::sin(u) * std::cos(v) + 500 * std::sin(2.3 * v + u) + 12 * (x - 50);
            text += QByteArray::number(std::lround(height)) + ' ';
        }
        text += '\n';
    }
    QFile file(folder.filePath(QStringLiteral("hills.asc")));
    if (file.open(QIODevice::WriteOnly))
        file.write(text);
    return file.fileName();
}

constexpr int markerPlace = 28; // pixels from the middle of a ribbon's markers to its bottom

void click(QWidget &widget, const QPoint &place)
{
    const QPointF global(widget.mapToGlobal(place));
    QMouseEvent press(QEvent::MouseButtonPress, place, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, place, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &release);
}

} // namespace

QPixmap GalleryColours::drawRibbon(const GalleryData &)
{
    CTdDlgRibbon dialog;
    dialog.SetStops({{0, 0x6B2A14, -1500},
                     {0, 0xC8A05A, -200},
                     {0, 0x5A8C3C, 0},
                     {0, 0x78C8DC, 700},
                     {0, 0x3C64A0, 1600},
                     {0, 0xFAFAFA, 2500}});
    dialog.show();
    if (auto *vision = dialog.findChild<QComboBox *>(QStringLiteral("visionCombo")))
        vision->setCurrentIndex(2);
    if (QWidget *ribbon = dialog.GetDlgItem(CTdDlgRibbon::RibbonFrame)) {
        QApplication::processEvents(); // the stops find their places
        click(*ribbon, QPoint(dialog.GetStops().at(3).position, ribbon->height() - markerPlace));
    }
    return photograph(dialog);
}

QPixmap GalleryColours::drawColorSet(bool expanded)
{
    CTdIDEDlgColorSet dialog(0x3CA0C8);
    dialog.InitColorset(reliefColors(24));
    dialog.SetElevationMode(true);
    dialog.show();
    if (auto *panel = dialog.GetDlgItem<QAbstractButton>(CTdIDEDlgColorSet::AutoPanelButton); panel && expanded)
        panel->click();
    return photograph(dialog);
}

QPixmap GalleryColours::drawStockRamp(bool list)
{
    StockRampDialog dialog(QStringLiteral("Relief"), reliefColors(2), std::pair(-1430.7, 2244.7));
    if (!list)
        return photograph(dialog);
    dialog.show();
    auto *ramps = dialog.findChild<CTxComboBoxGradientColors *>();
    ramps->setCurrentIndex(static_cast<int>(TxStockGradient::Viridis));
    ramps->showPopup();
    QApplication::processEvents();
    return ramps->view()->window()->grab();
}

QPixmap GalleryColours::drawRelief(const GalleryData &data)
{
    Stage stage(data.files());
    stage.window.show();
    DocumentArea &area = stage.window.documentArea();
    const CTxMaps &maps = stage.window.document().workspace().GetMaps();
    int place = -1;
    for (int i = 0; i < maps.GetCount() && place < 0; ++i) {
        place = heightLayer(*maps.GetAt(i));
        if (place >= 0)
            area.showMap(maps.GetAt(i)->GetName());
    }
    if (place < 0) {
        stage.window.openFiles({makeHills(stage.folder)}, false);
        CTxDataSource *hills = stage.window.document().workspace().GetDataSources().find(QStringLiteral("hills"));
        if (!hills || !area.addToNewMap(hills->GetDatasetAt(0)))
            return photograph(stage.window);
        place = 0;
        CTxLayer *layer = area.currentMap()->map()->GetLayers().GetLayerAt(place);
        TxLayerStyle style = layer->style();
        style.colors = reliefColors(64);
        layer->setStyle(style);
        area.refreshMaps();
    }
    photograph(stage.window); // draws the map
    stage.window.layerPane().refresh();
    stage.window.layerPane().list()->setCurrentRow(place);
    return photograph(stage.window);
}
