#include "GalleryWindows.h"

#include "AboutDialog.h"
#include "AttributeTable.h"
#include "ConnectionDialog.h"
#include "DocumentArea.h"
#include "GalleryData.h"
#include "MainWindow.h"
#include "MapWindow.h"
#include "MissingDialog.h"
#include "OutputPane.h"
#include "Prompts.h"
#include "PropertiesDialog.h"
#include "WorkspaceCommands.h"
#include "WorkspaceDocument.h"
#include "WorkspacePane.h"
#include "basic/TdProfileFile.h"
#include "common/TdCommMethods.h"
#include "common/TdCommonReport.h"
#include "engine/data/DatasetVector.h"
#include "engine/map/TxMapWnd.h"
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
#include <QTimer>

#include <functional>

namespace {

/// A main window with data in it, as the gallery's pictures need it.
struct Stage
{
    explicit Stage(const QStringList &files)
        : profile(folder.filePath(QStringLiteral("profile.ini"))), window(prompts, profile)
    {
        window.openFiles(files, false);
    }

    QTemporaryDir folder;
    Prompts prompts;
    CTdProfileFile profile;
    MainWindow window;
};

/// Lets a shown widget lay itself out and paint, then takes its picture.
QPixmap photograph(QWidget &widget)
{
    widget.show();
    QApplication::processEvents();
    for (CTxMapWnd *canvas : widget.findChildren<CTxMapWnd *>())
        if (canvas->isVisible())
            canvas->FinishDrawing();
    QApplication::processEvents();
    return widget.grab();
}

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
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 400) // the filter works between events
        QApplication::processEvents(QEventLoop::AllEvents, 20);
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

/// The first vector dataset of the workspace, null when there is none.
const CTxDataset *firstVector(const CTxWorkspace &workspace)
{
    for (int s = 0; s < workspace.GetDataSources().GetCount(); ++s)
        for (qint32 i = 0; i < workspace.GetDataSources().GetAt(s)->GetDatasetCount(); ++i)
            if (workspace.GetDataSources().GetAt(s)->GetDatasetAt(i)->IsVector())
                return workspace.GetDataSources().GetAt(s)->GetDatasetAt(i);
    return nullptr;
}

QPixmap drawProperties(const GalleryData &data, int tab)
{
    Stage stage(data.files());
    const CTxDataset *dataset = firstVector(stage.window.document().workspace());
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

/// The picture of the window that @p open waits in; it is closed then.
QPixmap photographModal(const std::function<void()> &open)
{
    QPixmap picture;
    QTimer::singleShot(0, qApp, [&picture] {
        QWidget *window = QApplication::activeModalWidget();
        if (!window)
            return;
        QElapsedTimer clock; // lists of files are filled by a thread
        clock.start();
        while (!clock.hasExpired(300))
            QApplication::processEvents(QEventLoop::AllEvents, 50);
        picture = photograph(*window);
        window->close();
    });
    open();
    return picture;
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
    {"menu-view", [](const GalleryData &) { return drawMenu(3); }},
};

} // namespace

std::span<const GalleryWindow> galleryWindows()
{
    return table;
}
