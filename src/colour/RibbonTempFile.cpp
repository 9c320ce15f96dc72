#include "colour/RibbonTempFile.h"

#include "colour/RibbonFile.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cstdio>
#include <unistd.h>

QString RibbonTempFile::path()
{
    return QDir::tempPath() + QStringLiteral("/ribbon.tmp");
}

bool RibbonTempFile::read(RibbonStops &ribbon)
{
    // Nobody else can replace a file of ours in a temporary folder, so what is asked here still holds when it is read.
    const QFileInfo file(path());
    return !file.isSymLink() && file.isFile() && file.ownerId() == ::geteuid() &&
           RibbonFile::LoadRibbon(ribbon, file.filePath());
}

bool RibbonTempFile::write(const RibbonStops &ribbon)
{
    // A safe save to the known name would follow a link that another user put there, to any file of ours. So it goes
    // to a name that nobody could know, and renaming replaces the link itself.
    QTemporaryFile file(path() + QStringLiteral(".XXXXXX"));
    if (!file.open())
        return false;
    const QString name = file.fileName();
    file.close();
    if (!RibbonFile::SaveRibbon(ribbon, name) ||
        std::rename(QFile::encodeName(name).constData(), QFile::encodeName(path()).constData()) != 0)
        return false;
    file.setAutoRemove(false);
    return true;
}
