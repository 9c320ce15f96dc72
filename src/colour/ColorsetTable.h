#pragma once

#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"

#include <QString>

#include <vector>

class QIODevice;

/// The content of a colour-set table file (".sct"): a ramp of colours over a range of numbers. docs/sct-format.md tells
/// the layout byte by byte. A value type.
class TDCOMMON_API ColorsetTable
{
public:
    /// One entry, laid out as a record of the file.
    struct Entry
    {
        double value = 0.0; ///< place in the range
        COLORREF color = 0;
        quint32 unused = 0; ///< carries no meaning; as it stood in the file

        bool operator==(const Entry &other) const { return value == other.value && color == other.color; }
    };

    /// Files of more entries are not read: there are no more colours.
    static constexpr qint64 maximumEntries = 1 << 24;

    double step = 0.0;    ///< (maximum - minimum) / count, as the writer reckoned it
    qint32 count = 0;     ///< how many entries the writer says there are; may differ from how many there are
    double minimum = 0.0; ///< of the range; nothing keeps the file from holding NaN or a reversed range
    double maximum = 0.0;
    std::vector<Entry> entries;

    /// Sets count and step by the entries and the range. The step of no entries is 0.
    void reckonStep();

    /// True when the file begins as a colour-set table does: the name stands in its first 255 bytes, up to the first
    /// NUL; letter case, and white space around it, do not count.
    static bool hasHeader(QIODevice &device);
    /// Reads a table from an open device with a known size. Missing bytes of a last record that is cut are 0.
    /// @return false, with this left as it was, when it is none, ends before its records begin, or holds too many
    bool read(QIODevice &device);
    /// Reads a table from the file @p path. @return false also when it cannot be opened, or is no plain file
    bool load(const QString &path);
    /// Writes the table. @return false when the device does not take it
    bool write(QIODevice &device) const;
    /// Writes the table to the file @p path, which is replaced only when the new one is complete on the disk.
    bool save(const QString &path) const;
};
