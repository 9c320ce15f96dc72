#include "engine/base/TxLogFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <mutex>

namespace {

constexpr int keptFiles = 3; // terravox.log.1 … .3
constexpr qint64 smallestMaximum = 1000;
/// The user's folder for what programs note down about their runs: $XDG_STATE_HOME, ~/.local/state where that is not
/// set. QStandardPaths knows it from Qt 6.7 on; like there, a test run has a folder of its own.
QString stateFolder()
{
    if (QStandardPaths::isTestModeEnabled())
        return QDir::homePath() + QStringLiteral("/.qttest/state");
    const QString fromEnvironment = qEnvironmentVariable("XDG_STATE_HOME");
    if (QDir::isAbsolutePath(fromEnvironment)) // relative ones are to be ignored
        return fromEnvironment;
    return QDir::homePath() + QStringLiteral("/.local/state");
}

constexpr std::array levelNames = {"DEBUG", "INFO", "WARNING", "ERROR", "FATAL"};

/// The one log of the program. The file is opened for every entry, so that a folder that is taken away, a full disk or
/// another program that rotates the file does no lasting harm; entries are rare.
class Log
{
public:
    static Log &instance()
    {
        static Log log;
        return log;
    }

    bool write(int level, const QString &text)
    {
        const std::scoped_lock lock(m_mutex); // GDAL may report from threads of its own
        if (level < threshold)
            return true;
        if (m_busy)
            return false;
        m_busy = true;
        const bool written = append(line(level, text));
        m_busy = false;
        return written;
    }

    QString path() const { return QDir(folder()).filePath(QStringLiteral("terravox.log")); }

    int threshold = CTxLogFile::Information;
    qint64 maximumSize = 1'000'000;
    QString ownFolder;

private:
    QString folder() const
    {
        if (!ownFolder.isEmpty())
            return ownFolder;
        const QString fromEnvironment = qEnvironmentVariable("TERRAVOX_LOG_DIR");
        if (!fromEnvironment.isEmpty())
            return fromEnvironment;
        return stateFolder() + QStringLiteral("/terravox/log");
    }

    static QByteArray line(int level, const QString &text)
    {
        const int known = std::clamp(level, 0, static_cast<int>(levelNames.size()) - 1);
        QString escaped = text;
        escaped.replace(u'\\', QStringLiteral("\\\\")).replace(u'\r', QStringLiteral("\\r"));
        escaped.replace(u'\n', QStringLiteral("\\n"));
        return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")).toLatin1() + ' ' +
               levelNames[static_cast<size_t>(known)] + ' ' + escaped.toUtf8() + '\n';
    }

    bool append(const QByteArray &bytes)
    {
        const QString file = path();
        if (!QDir().mkpath(QFileInfo(file).path()))
            return false;
        const QFileInfo old(file);
        const bool isFull = old.size() > 0 && old.size() + bytes.size() > maximumSize;
        // Where something stands in the way of the old files, the bound on the size counts more than they do.
        const bool isStuck = isFull && !rotate(file);
        QFile out(file);
        return out.open(QIODevice::WriteOnly | (isStuck ? QIODevice::Truncate : QIODevice::Append)) &&
               out.write(bytes) == bytes.size() && out.flush();
    }

    /// Moves the files on by one number. @return false when @p file stands where it stood.
    static bool rotate(const QString &file)
    {
        const auto numbered = [&file](int number) { return file + u'.' + QString::number(number); };
        QFile::remove(numbered(keptFiles));
        for (int number = keptFiles; number > 1; --number)
            QFile::rename(numbered(number - 1), numbered(number));
        return QFile::rename(file, numbered(1));
    }

    std::recursive_mutex m_mutex;
    bool m_busy = false; // a message that writing itself brings about is not logged again
};

QString withPosition(const QString &text, const QString &file, int line)
{
    return file.isEmpty() ? text : QStringLiteral("%1 [%2:%3]").arg(text, file, QString::number(line));
}

} // namespace

bool CTxLogFile::RecordLog(int level, const QString &text)
{
    return Log::instance().write(level, text);
}

bool CTxLogFile::RecordLog(int level, const QString &text, const QString &file, int line)
{
    return RecordLog(level, withPosition(text, file, line));
}

bool CTxLogFile::RecordDebugLog(const QString &text)
{
    return RecordLog(Debug, text);
}

bool CTxLogFile::RecordDebugLog(const QString &text, const QString &file, int line)
{
    return RecordLog(Debug, text, file, line);
}

bool CTxLogFile::WriteErrorLog(const QString &text, const QString &file, int line)
{
    return RecordLog(ErrorLevel, text, file, line);
}

bool CTxLogFile::WriteErrorLog(int code, const QString &text, int line)
{
    return RecordLog(ErrorLevel,
                     QStringLiteral("%1 (code %2, line %3)").arg(text, QString::number(code), QString::number(line)));
}

int CTxLogFile::GetThreshold()
{
    return Log::instance().threshold;
}

void CTxLogFile::SetThreshold(int level)
{
    Log::instance().threshold = level;
}

QString CTxLogFile::GetPath()
{
    return Log::instance().path();
}

void CTxLogFile::SetFolder(const QString &folder)
{
    Log::instance().ownFolder = folder;
}

void CTxLogFile::SetMaximumSize(qint64 bytes)
{
    Log::instance().maximumSize = std::max(bytes, smallestMaximum);
}
