#include "engine/data/TxStoragePath.h"

#include "engine/base/TxSqliteFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QtEndian>

#include <array>

namespace TxStoragePath {

namespace {

/// The first @p size bytes of a file; fewer when it is shorter.
QByteArray head(const QString &path, qint64 size)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(size) : QByteArray();
}

/// The last @p size bytes of a file.
QByteArray tail(const QString &path, qint64 size)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    file.seek(qMax<qint64>(0, file.size() - size));
    return file.read(size);
}

template<class T>
T bigEndian(const QByteArray &bytes, qsizetype at)
{
    return qFromBigEndian<T>(bytes.constData() + at);
}

template<class T>
T littleEndian(const QByteArray &bytes, qsizetype at)
{
    return qFromLittleEndian<T>(bytes.constData() + at);
}

QString shorterThan(qint64 size, qint64 wanted)
{
    return QStringLiteral("is cut: it has %1 bytes of %2").arg(size).arg(wanted);
}

/// A shapefile's main file or index says its own length at byte 24, in words of two bytes.
QString shapeDamage(const QString &path, qint64 size)
{
    constexpr qsizetype headerSize = 100;
    constexpr qint32 fileCode = 9994;
    const QByteArray bytes = head(path, headerSize);
    if (bytes.size() < headerSize)
        return shorterThan(size, headerSize);
    if (bigEndian<qint32>(bytes, 0) != fileCode)
        return QStringLiteral("has no header of a shapefile");
    const qint64 wanted = 2 * qint64(bigEndian<quint32>(bytes, 24));
    return wanted > size ? shorterThan(size, wanted) : QString();
}

/// A dBase table says at byte 4 how many records it has, then the lengths of its header and of a record.
QString tableDamage(const QString &path, qint64 size)
{
    constexpr qsizetype headerSize = 32;
    const QByteArray bytes = head(path, headerSize);
    if (bytes.size() < headerSize)
        return shorterThan(size, headerSize);
    const qint64 wanted =
        qint64(littleEndian<quint32>(bytes, 4)) * littleEndian<quint16>(bytes, 10) + littleEndian<quint16>(bytes, 8);
    return wanted > size ? shorterThan(size, wanted) : QString();
}

/// SQLite (file format, section 1.3): page size at byte 16, number of pages at 28, which holds when the counters at 24
/// and 92 agree.
QString sqliteDamage(const QString &path, qint64 size)
{
    const TxSqliteFile file(path);
    if (!file.isOpen())
        return size < TxSqliteFile::headerSize ? shorterThan(size, TxSqliteFile::headerSize) : QString();
    if (!file.isDatabase())
        return QStringLiteral("has no header of a database");
    return file.statedSize() > file.size() ? shorterThan(file.size(), file.statedSize()) : QString();
}

/// PNG ends with the chunk IEND; what programs append to it is rarely long.
QString pngDamage(const QString &path, qint64)
{
    return tail(path, 65536).contains("IEND") ? QString() : QStringLiteral("is cut: the end of the image is missing");
}

/// JPEG ends with the marker FFD9, behind which cameras may append as much as they like. Entropy-coded bytes never
/// hold it, so one anywhere in the last megabyte will do.
QString jpegDamage(const QString &path, qint64)
{
    return tail(path, 1 << 20).contains("\xFF\xD9") ? QString()
                                                    : QStringLiteral("is cut: the end of the image is missing");
}

/// An XML file ends with the end tag of its root element.
QString xmlDamage(const QString &path, qint64)
{
    static const QRegularExpression root(QStringLiteral("<([A-Za-z_][^\\s/>]*)"));
    const QRegularExpressionMatch match = root.match(QString::fromUtf8(head(path, 65536)));
    if (!match.hasMatch() || tail(path, 4096).contains("</" + match.captured(1).toUtf8()))
        return QString();
    return QStringLiteral("is cut: the end of <%1> is missing").arg(match.captured(1));
}

struct DamageRow
{
    const char16_t *extension;
    QString (*check)(const QString &path, qint64 size);
};

constexpr std::array damageRows = {
    DamageRow{u"shp", shapeDamage},   DamageRow{u"shx", shapeDamage},     DamageRow{u"dbf", tableDamage},
    DamageRow{u"gpkg", sqliteDamage}, DamageRow{u"sqlite", sqliteDamage}, DamageRow{u"gml", xmlDamage},
    DamageRow{u"kml", xmlDamage},     DamageRow{u"gpx", xmlDamage},       DamageRow{u"png", pngDamage},
    DamageRow{u"jpg", jpegDamage},    DamageRow{u"jpeg", jpegDamage},
};

} // namespace

bool isConnection(const QString &path)
{
    static const QRegularExpression prefix(QStringLiteral("^[A-Za-z][A-Za-z0-9_]+:"));
    return prefix.match(path).hasMatch() && !QFileInfo::exists(path);
}

QString aliasOf(const QString &path)
{
    if (isConnection(path)) {
        static const QRegularExpression key(QStringLiteral("dbname\\s*=\\s*'?([^\\s']+)"));
        static const QRegularExpression uri(QStringLiteral("^postgres(?:ql)?://[^/]*/([^?]+)"));
        for (const QRegularExpression &pattern : {key, uri}) {
            const QRegularExpressionMatch match = pattern.match(path);
            if (match.hasMatch())
                return match.captured(1);
        }
        return path.section(u':', 0, 0).toLower();
    }
    const QFileInfo info(QDir::cleanPath(path));
    return info.completeBaseName().isEmpty() ? info.fileName() : info.completeBaseName();
}

QString displayed(const QString &path)
{
    if (!isConnection(path))
        return path;
    static const QRegularExpression key(QStringLiteral("(password\\s*=\\s*)('(?:[^'\\\\]|\\\\.)*'|\\S+)"),
                                        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression uri(QStringLiteral("(://[^:/@]*:)[^@]*@"));
    return QString(path).replace(key, QStringLiteral("\\1***")).replace(uri, QStringLiteral("\\1***@"));
}

QString refusal(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        return info.isSymLink() ? QStringLiteral("is a link to “%1”, which does not exist").arg(info.symLinkTarget())
                                : QStringLiteral("does not exist");
    }
    if (!info.isReadable())
        return QStringLiteral("may not be read");
    if (info.isDir()) {
        if (info.suffix().compare(u"tdb", Qt::CaseInsensitive) == 0)
            return QStringLiteral("is a folder, not a native database");
        return QDir(path).isEmpty() ? QStringLiteral("is an empty folder") : QString();
    }
    if (!info.isFile())
        return QStringLiteral("is neither a file nor a folder"); // a pipe or device would be waited for without end
    return info.size() == 0 ? QStringLiteral("is an empty file") : QString();
}

QString damage(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return QString();
    const QString extension = info.suffix().toLower();
    QString reason;
    for (const DamageRow &row : damageRows) {
        if (extension == QStringView(row.extension))
            reason = row.check(path, info.size());
    }
    if (reason.isEmpty() && extension == u"shp") { // its index and its table belong to it
        for (const char *other : {"shx", "dbf"}) {
            const QString sibling = path.chopped(3) + QLatin1String(other);
            const QString its = damage(sibling);
            if (!its.isEmpty())
                return QStringLiteral("belongs together with “%1”, which ").arg(sibling) + its;
        }
    }
    return reason;
}

} // namespace TxStoragePath
