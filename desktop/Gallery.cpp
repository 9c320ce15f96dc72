#include "Gallery.h"

#include "GalleryData.h"
#include "GalleryWindows.h"
#include "Palettes.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QWidget>

QStringList Gallery::windows()
{
    QStringList names;
    for (const GalleryWindow &window : galleryWindows())
        names << QLatin1String(window.name);
    return names;
}

QString Gallery::fileName(const QString &window, bool dark, int scale)
{
    return QStringLiteral("%1-%2-%3x.png")
        .arg(window, dark ? QStringLiteral("dark") : QStringLiteral("light"))
        .arg(scale);
}

bool Gallery::draw(const QString &folder, const QStringList &files, QString &error)
{
    if (!QDir().mkpath(folder)) {
        error = QCoreApplication::translate("Gallery", "The folder %1 cannot be made.").arg(folder);
        return false;
    }
    const GalleryData data(files);
    const QPalette before = QApplication::palette();
    for (const bool dark : {false, true}) {
        QApplication::setPalette(dark ? Palettes::dark() : Palettes::light());
        for (const GalleryWindow &window : galleryWindows()) {
            const QPixmap picture = window.draw(data);
            const int scale = qRound(picture.devicePixelRatio());
            const QString path = QDir(folder).filePath(fileName(QLatin1String(window.name), dark, scale));
            constexpr int quickly = 85; // of a PNG picture: hardly larger, written in half the time
            if (!picture.save(path, "PNG", quickly)) {
                error = QCoreApplication::translate("Gallery", "%1 cannot be written.").arg(path);
                QApplication::setPalette(before);
                return false;
            }
        }
    }
    QApplication::setPalette(before);
    return true;
}
