#pragma once

#include <QString>
#include <QStringList>

/// Pictures of every window and dialog, drawn without a display.
///
/// A picture is called "<window>-<light|dark>-<1x|2x>.png". The scale is that of the process: 2x pictures are drawn by
/// a process whose environment says QT_SCALE_FACTOR=2.
namespace Gallery {

/// Names of the windows that are drawn.
QStringList windows();

/// The file name of a picture.
QString fileName(const QString &window, bool dark, int scale);

/// Draws every window in both palettes at the scale of this process into the folder @p folder, which is made when it
/// does not exist. @p files are opened for it, the sample workspace where there are none, and a small one made on the
/// spot where that is missing. @return false, and @p error, when a picture cannot be written.
bool draw(const QString &folder, const QStringList &files, QString &error);

} // namespace Gallery
