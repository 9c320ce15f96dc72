#pragma once

#include "common/TdCommonExport.h"
#include "engine/data/TxDataSourceStorage.h"
#include "engine/geometry/Rect2D.h"

#include <QDateTime>
#include <QSize>
#include <QString>

/// What there is to know of a data file before it is opened: size and times, what it is stored as, how many datasets it
/// holds and where they lie.
///
/// A value type. Read() may be called on any thread; everything else is plain data.
class TDCOMMON_API CTdFileInfo
{
public:
    /// How far Read() came.
    enum State {
        Missing,    ///< there is no such file
        Unreadable, ///< it may not be read
        NoFile,     ///< a device, a pipe or a socket: nothing is read from it
        Folder,     ///< it is a folder that is no datasource
        TooLarge,   ///< a text that would have to be read as a whole, or a picture too large: only size and times known
        Refused,    ///< no data file, or a damaged one; message says why
        Known       ///< everything there is to know
    };

    /// Texts that a driver reads as a whole are looked into up to this size, in bytes.
    static constexpr qint64 greatestText = qint64(16) * 1024 * 1024;

    State state = Missing;
    QString path;
    qint64 size = 0; ///< in bytes; 0 for folders
    QDateTime created;
    QDateTime modified;
    CTxDataSourceStorage::Type storage = CTxDataSourceStorage::Unknown;
    QString kind;                   ///< what users call the storage (English)
    QString driver;                 ///< the short name of the GDAL driver that opens it
    int datasetCount = 0;           ///< of the datasource
    CRect2D extent;                 ///< of all datasets that lie anywhere; void when it is not known
    QString coordSysName;           ///< of the coordinate system that the extent is in; empty for none
    bool hasSeveralSystems = false; ///< the datasets lie in different coordinate systems: they have no common extent
    bool isWholeExtent = false;     ///< every dataset has been asked; there is no time for thousands of them
    QSize imageSize;                ///< of a picture, in pixels
    QString message;                ///< the engine's words when it refused

    /// Looks at the file or folder @p path, and leaves nothing open and nothing behind. Takes a few milliseconds, up to
    /// about a second where there are many datasets.
    static CTdFileInfo Read(const QString &path);

    /// Why not everything is known, for the user; empty when it is. User-interface thread only.
    QString GetProblem() const;
};
