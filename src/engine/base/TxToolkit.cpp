#include "engine/base/TxToolkit.h"

#include <QFileInfo>

void CTxToolkit::SplitPath(const QString &path, QString &drive, QString &dir, QString &name, QString &ext)
{
    qsizetype start = 0;
    if (path.size() >= 2 && path.at(1) == u':' && path.at(0).isLetter())
        start = 2;
    const qsizetype slash = qMax(path.lastIndexOf(u'/'), start == 2 ? path.lastIndexOf(u'\\') : qsizetype(-1));
    const qsizetype file = qMax(slash + 1, start);
    qsizetype dot = path.lastIndexOf(u'.');
    if (dot <= file)
        dot = path.size();
    drive = path.left(start);
    dir = path.mid(start, file - start);
    name = path.mid(file, dot - file);
    ext = path.mid(dot);
}

bool CTxToolkit::IsFileExisted(const QString &path)
{
    return QFileInfo(path).isFile();
}
