#include "GalleryStage.h"

#include "engine/map/TxMapWnd.h"

#include <QApplication>
#include <QEventLoop>
#include <QTimer>

GalleryStage::Stage::Stage(const QStringList &files)
    : profile(folder.filePath(QStringLiteral("profile.ini"))), window(prompts, profile)
{
    window.openFiles(files, false);
}

void GalleryStage::letPass(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

QPixmap GalleryStage::photograph(QWidget &widget)
{
    widget.show();
    QApplication::processEvents();
    for (CTxMapWnd *canvas : widget.findChildren<CTxMapWnd *>())
        if (canvas->isVisible())
            canvas->FinishDrawing();
    QApplication::processEvents();
    return widget.grab();
}

QPixmap GalleryStage::photographModal(const std::function<void()> &open)
{
    QPixmap picture;
    QTimer::singleShot(0, qApp, [&picture] {
        QWidget *window = QApplication::activeModalWidget();
        if (!window)
            return;
        letPass(300); // lists of files are filled by a thread
        picture = photograph(*window);
        window->close();
    });
    open();
    return picture;
}
