#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// Remembers the files of a shapefile, to put them back as they were after records were added to it. A private header.
///
/// Adding records leaves what stands in the files alone, but for the headers and what lies behind the last record:
/// those and the sizes are remembered, so that neither keeping nor restoring copies a large file, and restoring needs
/// no room on the disk. The small files beside (the spatial index, which goes when records come) are remembered whole.
/// A change of the table's fields rewrites it, and needs keepTable() before.
class ShapefileKeeper
{
public:
    /// Remembers the files of the shapefile @p path (that of its .shp, or its .dbf where there is no other).
    explicit ShapefileKeeper(const QString &path);
    ~ShapefileKeeper();
    ShapefileKeeper(const ShapefileKeeper &) = delete;
    ShapefileKeeper &operator=(const ShapefileKeeper &) = delete;

    /// Why the files cannot be remembered; empty when they are.
    const QString &reason() const { return m_reason; }
    /// True when there was a spatial index, which the driver drops when records come.
    bool hadIndex() const;
    /// Copies the table as it was beside itself, before its fields change. It may have got records already. Does
    /// nothing the second time. @return false when it cannot be copied
    bool keepTable();
    /// True when each file holds what its header says, and the table @p records records: what was written has arrived.
    bool isComplete(qint64 records) const;
    /// Puts the files back. Nobody may have them open. @return false when a file cannot be written; the copy of the
    /// table, if there is one, then stays where it is
    bool restore();

private:
    /// A file that grows at its end.
    struct Growing
    {
        QString path;
        QByteArray head; ///< the header
        qint64 end = 0;  ///< of what the header describes
        QByteArray tail; ///< what lies behind
    };
    /// A file that is remembered whole.
    struct Whole
    {
        QString path;
        QByteArray bytes;
    };

    bool rememberGrowing(const QString &path);
    static bool describe(const QString &path, Growing &file);
    static bool put(const Growing &file);
    const Growing *find(const QString &suffix) const;
    QString tableCopy() const;

    std::vector<Growing> m_growing;
    std::vector<Whole> m_whole;
    bool m_tableKept = false;
    QString m_reason;
};
