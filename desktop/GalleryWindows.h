#pragma once

#include <QPixmap>

#include <span>

class GalleryData;

/// One window of the gallery.
struct GalleryWindow
{
    const char *name; ///< the first part of the picture's file name
    QPixmap (*draw)(const GalleryData &data);
};

/// Every window and dialog of the desktop, and those of the library that it uses.
std::span<const GalleryWindow> galleryWindows();
