#pragma once

#include "MainWindow.h"
#include "Prompts.h"
#include "basic/TdProfileFile.h"

#include <QPixmap>
#include <QTemporaryDir>

#include <functional>

/// What the gallery's pictures are taken with.
namespace GalleryStage {

/// A main window with data in it.
struct Stage
{
    explicit Stage(const QStringList &files);

    QTemporaryDir folder;
    Prompts prompts;
    CTdProfileFile profile;
    MainWindow window;
};

/// Lets events pass for @p milliseconds: for what works on a thread or between events.
void letPass(int milliseconds);
/// Lets a shown widget lay itself out and paint, then takes its picture.
QPixmap photograph(QWidget &widget);
/// The picture of the window that @p open waits in; it is closed then.
QPixmap photographModal(const std::function<void()> &open);

} // namespace GalleryStage
