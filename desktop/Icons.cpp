#include "Icons.h"

#include <QFile>

QIcon Icons::action(const QString &name)
{
    const QString path = QStringLiteral(":/terravox/icons/actions/%1.svg").arg(name);
    return QFile::exists(path) ? QIcon(path) : QIcon();
}

QIcon Icons::application()
{
    return QIcon(QStringLiteral(":/terravox/icons/app/terravox.svg"));
}
