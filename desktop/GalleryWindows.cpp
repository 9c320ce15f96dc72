#include "GalleryWindows.h"

#include "AboutDialog.h"
#include "AppendDialog.h"
#include "AttributeTable.h"
#include "ConnectionDialog.h"
#include "CopyDatasetDialog.h"
#include "DocumentArea.h"
#include "GalleryColours.h"
#include "GalleryControls.h"
#include "GalleryData.h"
#include "GalleryStage.h"
#include "GalleryStyles.h"
#include "MainWindow.h"
#include "MapWindow.h"
#include "MissingDialog.h"
#include "OutputPane.h"
#include "ParallelLineDialog.h"
#include "Prompts.h"
#include "PropertiesDialog.h"
#include "WorkspaceCommands.h"
#include "WorkspaceDocument.h"
#include "WorkspacePane.h"
#include "common/TdCommMethods.h"
#include "common/TdCommonReport.h"
#include "engine/data/DatasetVector.h"
#include "engine/ui/TxDlgProgress.h"
#include "workspace/WkspImageList.h"
#include "workspace/WorkspaceBarTree.h"
#include "workspace/WorkspaceTreeFilterBox.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QTabWidget>

using namespace GalleryStage;

namespace {

QPixmap drawMain(const GalleryData &data)
{
    Stage stage(data.files());
    stage.window.show();
    QApplication::processEvents();
    GalleryData::populate(stage.window);
    return photograph(stage.window);
}

QPixmap drawWelcome(const GalleryData &)
{
    Stage stage({});
    return photograph(stage.window);
}

QPixmap drawTree(const GalleryData &data)
{
    Stage stage(data.files());
    CWorkspaceBarTree *tree = stage.window.workspacePane().tree();
    tree->setParent(nullptr);
    tree->expandAll();
    tree->resize(320, 900);
    const QPixmap picture = photograph(*tree);
    tree->setParent(&stage.window.workspacePane());
    return picture;
}

QPixmap drawFilter(const GalleryData &data, const QString &text)
{
    Stage stage(data.files());
    WorkspacePane &pane = stage.window.workspacePane();
    stage.window.show();
    pane.filterBox()->SetText(text);
    letPass(400); // the filter works between events
    return photograph(pane);
}

QPixmap drawIcons(int size, int extent)
{
    CTdWkspImageList images;
    images.InitImageList(size);
    QWidget sheet;
    auto *grid = new QGridLayout(&sheet);
    grid->setSpacing(10);
    constexpr int columns = 8;
    for (int i = 0; i < CTdWkspImageList::imageCount; ++i) {
        auto *icon = new QLabel;
        icon->setPixmap(images.icon(i).pixmap(QSize(extent, extent), sheet.devicePixelRatio()));
        auto *number = new QLabel(QString::number(i));
        number->setForegroundRole(QPalette::PlaceholderText);
        grid->addWidget(icon, i / columns * 2, i % columns, Qt::AlignCenter);
        grid->addWidget(number, i / columns * 2 + 1, i % columns, Qt::AlignHCenter | Qt::AlignTop);
    }
    return photograph(sheet);
}

QPixmap drawMap(const GalleryData &data)
{
    Stage stage(data.files());
    stage.window.show();
    GalleryData::populate(stage.window);
    MapWindow *view = stage.window.documentArea().currentMap();
    return view ? photograph(*view) : photograph(stage.window);
}

QPixmap drawEmptyMap(const GalleryData &)
{
    Stage stage({});
    const CTxMap *map = stage.window.document().addMap(QStringLiteral("Map"));
    stage.window.show();
    MapWindow *view = stage.window.documentArea().showMap(map->GetName());
    return photograph(*view);
}

QPixmap drawTable(const GalleryData &data, const QString &filter)
{
    Stage stage(data.files());
    stage.window.show();
    GalleryData::populate(stage.window);
    const QList<AttributeTable *> tables = stage.window.documentArea().tables();
    if (tables.isEmpty())
        return photograph(stage.window);
    stage.window.documentArea().showTable(tables.first()->dataset());
    if (!filter.isEmpty())
        tables.first()->setFilter(filter);
    return photograph(*tables.first());
}

QPixmap drawReport(const GalleryData &)
{
    CTdCommonReport report(QStringLiteral("Import"), QStringLiteral("3 of 4 datasets were imported."),
                           QStringLiteral("countries: 177 records\nrivers: 98 records\ncities: 243 records\n"
                                          "roads: the file ends in the middle of record 1,204"));
    return photograph(report);
}

QPixmap drawMissing(const GalleryData &data)
{
    Stage stage({data.workspaceWithMissing()});
    MissingDialog dialog(stage.window.document(), stage.prompts);
    return photograph(dialog);
}

QPixmap drawConnection(const GalleryData &)
{
    ConnectionDialog dialog;
    return photograph(dialog);
}

/// The first dataset of the workspace that @p fits lets pass, null when there is none.
const CTxDataset *firstDataset(const CTxWorkspace &workspace, bool (*fits)(const CTxDataset &))
{
    for (int s = 0; s < workspace.GetDataSources().GetCount(); ++s)
        for (qint32 i = 0; i < workspace.GetDataSources().GetAt(s)->GetDatasetCount(); ++i)
            if (fits(*workspace.GetDataSources().GetAt(s)->GetDatasetAt(i)))
                return workspace.GetDataSources().GetAt(s)->GetDatasetAt(i);
    return nullptr;
}

bool isVector(const CTxDataset &dataset)
{
    return dataset.IsVector();
}

bool isRaster(const CTxDataset &dataset)
{
    return !dataset.IsVector();
}

QPixmap drawCopy(const GalleryData &data, bool (*fits)(const CTxDataset &))
{
    Stage stage(data.files());
    const CTxDataset *dataset = firstDataset(stage.window.document().workspace(), fits);
    if (!dataset)
        return photograph(stage.window);
    CopyDatasetDialog dialog(stage.window.document().workspace(), *dataset);
    return photograph(dialog);
}

QPixmap drawAppend(const GalleryData &data, bool (*fits)(const CTxDataset &))
{
    Stage stage(data.files());
    stage.window.show();
    GalleryData::populate(stage.window);
    const CTxWorkspace &workspace = stage.window.document().workspace();
    const MapWindow *view = stage.window.documentArea().currentMap();
    AppendDialog dialog(workspace, firstDataset(workspace, fits), view ? view->canvas() : nullptr, stage.prompts);
    return photograph(dialog);
}

QPixmap drawParallelLine(const GalleryData &data)
{
    Stage stage(data.files());
    const CTxDataset *lines = firstDataset(stage.window.document().workspace(), isVector);
    if (!lines)
        return photograph(stage.window);
    ParallelLineDialog dialog(stage.window.document().workspace(), static_cast<const CDatasetVector &>(*lines));
    return photograph(dialog);
}

QPixmap drawProgress(qint64 total)
{
    CTxDlgProgress dialog;
    dialog.SetWindowTitle(QStringLiteral("Terravox"));
    dialog.SetTitleMessage(QStringLiteral("Copying “rivers” to “archive”"));
    dialog.Create(nullptr);
    dialog.KeepAlive();
    const TxProgress progress = dialog.GetProgress();
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 40 && progress(412'345, total))
        QApplication::processEvents();
    return photograph(dialog);
}

QPixmap drawProperties(const GalleryData &data, int tab)
{
    Stage stage(data.files());
    const CTxDataset *dataset = firstDataset(stage.window.document().workspace(), isVector);
    if (!dataset)
        return photograph(stage.window);
    PropertiesDialog dialog(*dataset);
    dialog.findChild<QTabWidget *>()->setCurrentIndex(tab);
    return photograph(dialog);
}

QPixmap drawDataSourceProperties(const GalleryData &data)
{
    Stage stage(data.files());
    const CTxDataSources &sources = stage.window.document().workspace().GetDataSources();
    if (sources.GetCount() == 0)
        return photograph(stage.window);
    PropertiesDialog dialog(*sources.GetAt(0));
    return photograph(dialog);
}

QPixmap drawAbout(const GalleryData &)
{
    AboutDialog dialog;
    return photograph(dialog);
}

QPixmap drawUnsaved(const GalleryData &)
{
    const std::unique_ptr<QMessageBox> box = DialogPrompts::unsavedBox(nullptr, QStringLiteral("world"));
    return photograph(*box);
}

QPixmap drawFolder(const GalleryData &)
{
    const Stage stage({});
    for (const char *name : {"Districts", "Rivers", "Towns"})
        QDir(stage.folder.path()).mkdir(QLatin1String(name));
    const QString initial = stage.folder.filePath(QStringLiteral("Rivers"));
    return photographModal(
        [&] { CTdCommMethods::GetFolder(nullptr, initial, QStringLiteral("Open Folder as Datasource")); });
}

QPixmap drawCloseQuestion(const GalleryData &data)
{
    Stage stage(data.files());
    GalleryData::populate(stage.window);
    const QList<AttributeTable *> tables = stage.window.documentArea().tables();
    CTxDataset *shown = tables.isEmpty() ? nullptr : tables.first()->dataset();
    return photographModal([&] { CTdCommMethods::PromoteCloseDataset(shown); });
}

QPixmap drawDelete(const GalleryData &data)
{
    Stage stage(data.files());
    CTxDataset *dataset = stage.window.document().workspace().GetDataSources().GetAt(0)->GetDatasetAt(0);
    const std::unique_ptr<QMessageBox> box = DialogPrompts::confirmBox(
        nullptr, WorkspaceCommands::deleteQuestion({dataset}),
        WorkspaceCommands::deleteExplanation({QStringLiteral("World"), QStringLiteral("Europe")}),
        QCoreApplication::translate("WorkspaceCommands", "Delete"));
    return photograph(*box);
}

QPixmap drawMenu(int index)
{
    Stage stage({});
    stage.window.show();
    QMenu *menu = stage.window.menuBar()->actions().at(index)->menu();
    menu->popup(QPoint(0, 0));
    return photograph(*menu);
}

constexpr GalleryWindow table[] = {
    {"main", drawMain},
    {"welcome", drawWelcome},
    {"tree", drawTree},
    {"filter-hits", [](const GalleryData &d) { return drawFilter(d, QStringLiteral("ri")); }},
    {"filter-none", [](const GalleryData &d) { return drawFilter(d, QStringLiteral("no such thing")); }},
    {"icons-16", [](const GalleryData &) { return drawIcons(1, 16); }},
    {"icons-32", [](const GalleryData &) { return drawIcons(0, 32); }},
    {"map", drawMap},
    {"map-empty", drawEmptyMap},
    {"table", [](const GalleryData &d) { return drawTable(d, QString()); }},
    {"table-none", [](const GalleryData &d) { return drawTable(d, QStringLiteral("1 = 0")); }},
    {"table-error", [](const GalleryData &d) { return drawTable(d, QStringLiteral("no_such_field > 3")); }},
    {"report", drawReport},
    {"missing", drawMissing},
    {"connection", drawConnection},
    {"copy-dataset", [](const GalleryData &d) { return drawCopy(d, isVector); }},
    {"append", [](const GalleryData &d) { return drawAppend(d, isVector); }},
    {"append-raster", [](const GalleryData &d) { return drawAppend(d, isRaster); }},
    {"parallel-line", drawParallelLine},
    {"progress", [](const GalleryData &) { return drawProgress(1'000'000); }},
    {"progress-busy", [](const GalleryData &) { return drawProgress(-1); }},
    {"properties", [](const GalleryData &d) { return drawProperties(d, 0); }},
    {"properties-fields", [](const GalleryData &d) { return drawProperties(d, 1); }},
    {"properties-datasource", drawDataSourceProperties},
    {"about", drawAbout},
    {"unsaved", drawUnsaved},
    {"folder", drawFolder},
    {"close-question", drawCloseQuestion},
    {"delete", drawDelete},
    {"menu-file", [](const GalleryData &) { return drawMenu(0); }},
    {"menu-data", [](const GalleryData &) { return drawMenu(1); }},
    {"colour-ramp", GalleryColours::drawRibbon},
    {"colour-set", [](const GalleryData &) { return GalleryColours::drawColorSet(false); }},
    {"colour-set-auto", [](const GalleryData &) { return GalleryColours::drawColorSet(true); }},
    {"colour-stock", [](const GalleryData &) { return GalleryColours::drawStockRamp(false); }},
    {"colour-stock-list", [](const GalleryData &) { return GalleryColours::drawStockRamp(true); }},
    {"relief", GalleryColours::drawRelief},
    {"styles", GalleryStyles::drawMap},
    {"layer-style", [](const GalleryData &) { return GalleryStyles::drawDialog(CElemDatasetInfo::Region, false); }},
    {"layer-style-symbol",
     [](const GalleryData &) { return GalleryStyles::drawDialog(CElemDatasetInfo::Point, false); }},
    {"layer-style-all", [](const GalleryData &) { return GalleryStyles::drawDialog(CElemDatasetInfo::CAD, true); }},
    {"controls-angle", [](const GalleryData &) { return GalleryControls::draw("Angle"); }},
    {"controls-number", [](const GalleryData &) { return GalleryControls::draw("Number"); }},
    {"controls-slider", [](const GalleryData &) { return GalleryControls::draw("Slider edit"); }},
    {"controls-toolbars", [](const GalleryData &) { return GalleryControls::draw("Slider on toolbars"); }},
    {"controls-triangle", [](const GalleryData &) { return GalleryControls::draw("Triangle button"); }},
    {"controls-selection", [](const GalleryData &) { return GalleryControls::draw("Multi-selection list"); }},
    {"controls-report", [](const GalleryData &) { return GalleryControls::draw("Report list"); }},
    {"controls-drag", [](const GalleryData &) { return GalleryControls::draw("Drag list"); }},
    {"controls-width", [](const GalleryData &) { return GalleryControls::drawDropped("Auto-width combo box"); }},
    {"controls-images", [](const GalleryData &) { return GalleryControls::drawDropped("Image combo box"); }},
    {"controls-combos", [](const GalleryData &) { return GalleryControls::draw("Combo boxes on toolbars"); }},
    {"controls-color", [](const GalleryData &) { return GalleryControls::draw("Colour button"); }},
    {"controls-label", [](const GalleryData &) { return GalleryControls::draw("Label button"); }},
    {"controls-style", [](const GalleryData &) { return GalleryControls::draw("Style buttons"); }},
    {"controls-bitmap", [](const GalleryData &) { return GalleryControls::draw("Bitmap"); }},
    {"controls-files", [](const GalleryData &) { return GalleryControls::draw("File dialog"); }},
    {"controls-taborder", [](const GalleryData &) { return GalleryControls::draw("Tab order"); }},
    {"controls-annotation", [](const GalleryData &) { return GalleryControls::draw("Annotation standard"); }},
    {"controls-upright", [](const GalleryData &) { return GalleryControls::draw("Upright slider"); }},
    {"controls-tree", [](const GalleryData &) { return GalleryControls::draw("Workspace tree"); }},
    {"controls-mouse", [](const GalleryData &) { return GalleryControls::draw("Mouse hook"); }},
    {"style-line", [](const GalleryData &) { return GalleryControls::drawStyles(TdStyle::Line); }},
    {"style-fill", [](const GalleryData &) { return GalleryControls::drawStyles(TdStyle::Fill); }},
    {"style-symbol", [](const GalleryData &) { return GalleryControls::drawStyles(TdStyle::Symbol); }},
    {"controls-hue", [](const GalleryData &) { return GalleryControls::draw("Hue and brightness"); }},
    {"controls-cube", [](const GalleryData &) { return GalleryControls::draw("Colour cube"); }},
    {"controls-colours", [](const GalleryData &) { return GalleryControls::draw("Colour list"); }},
    {"controls-ramps", [](const GalleryData &) { return GalleryControls::draw("Stock ramps"); }},
    {"menu-colour", [](const GalleryData &) { return drawMenu(3); }},
    {"menu-view", [](const GalleryData &) { return drawMenu(4); }},
};

} // namespace

std::span<const GalleryWindow> galleryWindows()
{
    return table;
}
