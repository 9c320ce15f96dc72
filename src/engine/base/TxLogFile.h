#pragma once

#include "engine/base/TxExport.h"

#include <QString>

/// The engine's log file.
///
/// One line an entry, UTF-8: local time with milliseconds, level, text, and the source position where it is known. Line
/// ends inside a text are written as "\n". The file is "terravox/log/terravox.log" below the user's folder for state
/// ($XDG_STATE_HOME, ~/.local/state where that is not set) unless the environment variable TERRAVOX_LOG_DIR or
/// SetFolder() names another folder. It is rotated at 1 MB: terravox.log.1 to terravox.log.3 keep what was before; where
/// they cannot be replaced it begins anew. A folder that cannot be written makes every call answer false; nothing else
/// happens.
class TX_EXPORT CTxLogFile
{
public:
    /// How grave an entry is. Do not change the values.
    enum Level { Debug = 0, Information = 1, Warning = 2, ErrorLevel = 3, Fatal = 4 };

    /// Records @p text at @p level. @return true when the line is in the file, or when the level is below the
    /// threshold.
    static bool RecordLog(int level, const QString &text);
    /// The same with the source position that the entry comes from.
    static bool RecordLog(int level, const QString &text, const QString &file, int line);
    /// Records @p text at level Debug.
    static bool RecordDebugLog(const QString &text);
    static bool RecordDebugLog(const QString &text, const QString &file, int line);
    /// Records @p text at level ErrorLevel, with the source position.
    static bool WriteErrorLog(const QString &text, const QString &file, int line);
    /// Records @p text with the error code @p code and a line number.
    static bool WriteErrorLog(int code, const QString &text, int line);

    /// The lowest level that is written; Information at start.
    static int GetThreshold();
    static void SetThreshold(int level);
    /// Full path of the log file.
    static QString GetPath();
    /// Writes to "terravox.log" in @p folder from now on; an empty folder goes back to the platform's.
    static void SetFolder(const QString &folder);
    /// The size in bytes at which the file is rotated; 1,000,000 at start, at least 1,000.
    static void SetMaximumSize(qint64 bytes);
};
