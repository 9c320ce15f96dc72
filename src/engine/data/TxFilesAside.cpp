#include "engine/data/TxFilesAside.h"

#include "engine/base/TxLogFile.h"

#include <QDir>
#include <QFile>

QString TxFilesAside::take(const QString &folder, const QStringList &names)
{
    m_folder = folder;
    m_aside = std::make_unique<QTemporaryDir>(QDir(folder).filePath(QStringLiteral(".terravox-deleted-XXXXXX")));
    if (!m_aside->isValid())
        return m_aside->errorString();
    for (const QString &name : names) {
        QFile file(QDir(folder).filePath(name));
        if (!file.rename(m_aside->filePath(name))) {
            bringBack();
            return QStringLiteral("%1: %2").arg(name, file.errorString());
        }
        m_names.append(name);
    }
    return QString();
}

void TxFilesAside::bringBack()
{
    for (const QString &name : std::as_const(m_names)) {
        // A driver that closes its files may have made a new one in the meantime; what lies here is the whole one.
        const QString place = QDir(m_folder).filePath(name);
        if (QFile::exists(place))
            QFile::remove(place);
        if (!QFile::rename(m_aside->filePath(name), place)) {
            m_aside->setAutoRemove(false); // better left there than lost
            CTxLogFile::RecordLog(CTxLogFile::ErrorLevel,
                                  QStringLiteral("“%1” is left in %2").arg(name, m_aside->path()));
        }
    }
    m_names.clear();
    m_aside.reset();
}

void TxFilesAside::drop()
{
    m_names.clear();
    m_aside.reset();
}
