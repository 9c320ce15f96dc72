#include "engine/map/TxPortablePath.h"

#include <QDir>
#include <QRegularExpression>

bool TxPortablePath::isConnection(const QString &path)
{
    static const QRegularExpression pattern(
        QStringLiteral(R"(^([a-z][a-z0-9_+.-]+:|[a-z]:[\\/]|/vsi[a-z0-9_]+/|[<{]))"),
        QRegularExpression::CaseInsensitiveOption);
    return pattern.match(path).hasMatch();
}

QString TxPortablePath::toStored(const QString &path, const QString &folder)
{
    if (path.isEmpty() || isConnection(path))
        return path;
    const QString absolute = QDir::cleanPath(QDir::current().absoluteFilePath(path));
    if (folder.isEmpty())
        return absolute;
    const QString relative = QDir(folder).relativeFilePath(absolute);
    if (relative == u".." || relative.startsWith(u"../") || QDir::isAbsolutePath(relative))
        return absolute;
    return isConnection(relative) ? QStringLiteral("./") + relative : relative;
}

QString TxPortablePath::fromStored(const QString &stored, const QString &folder)
{
    if (stored.isEmpty() || isConnection(stored))
        return stored;
    return QDir::cleanPath(QDir(folder).absoluteFilePath(stored));
}

QString TxPortablePath::withoutPassword(const QString &connection)
{
    static const QRegularExpression keyword(
        QStringLiteral(R"re([ ,;]?\b(password|passwd|pwd)\s*=\s*('(\\.|''|[^'\\])*'|"[^"]*"|[^\s,;'"]*))re"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression address(QStringLiteral(R"((//[^/@:\s]*):[^@/\s]*@)"));
    QString result = connection;
    if (!isConnection(connection))
        return result;
    result.replace(keyword, QString());
    result.replace(address, QStringLiteral("\\1@"));
    return result;
}
