#include "engine/data/TxRasterCheck.h"

#include "engine/base/TxGdal.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>

namespace TxRasterCheck {

namespace {

/// The byte behind the last block of @p band that the file holds, of up to some hundred blocks spread over the band.
qint64 endOfBlocks(GDALRasterBand &band)
{
    constexpr int samplesPerAxis = 16;
    int width = 0, height = 0;
    band.GetBlockSize(&width, &height);
    const int columns = (band.GetXSize() + width - 1) / width;
    const int rows = (band.GetYSize() + height - 1) / height;
    const auto numberOf = [&band](const QByteArray &item) {
        const char *text = band.GetMetadataItem(item, "TIFF");
        return text ? QByteArray(text).toLongLong() : 0;
    };
    qint64 end = 0;
    for (int i = 0; i < std::min(columns, samplesPerAxis); ++i) {
        for (int j = 0; j < std::min(rows, samplesPerAxis); ++j) {
            // The last column and row are always among them.
            const QByteArray place = '_' + QByteArray::number(columns - 1 - i * columns / samplesPerAxis) + '_' +
                                     QByteArray::number(rows - 1 - j * rows / samplesPerAxis);
            const qint64 offset = numberOf("BLOCK_OFFSET" + place); // 0 for a block that is left out
            if (offset > 0)
                end = std::max(end, offset + numberOf("BLOCK_SIZE" + place));
        }
    }
    return end;
}

/// The byte behind the lists that tell where the image's blocks are. The driver takes lists behind the end of the file
/// for those of an image whose blocks are left out. 0 when the file is no TIFF.
qint64 endOfBlockLists(const QString &path)
{
    constexpr std::array listTags = {273u, 279u, 324u, 325u}; // offsets and sizes of strips and tiles
    constexpr std::array<quint32, 19> valueSizes = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4, 0, 0, 8, 8, 8}; // by type
    static constexpr quint64 beyondAnyFile = Q_UINT64_C(1) << 50;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray header = file.read(16);
    const bool bigEndian = header.startsWith('M');
    const auto number = [bigEndian](const QByteArray &bytes, qsizetype at, qsizetype size) {
        quint64 value = 0;
        for (qsizetype i = 0; i < size && at + i < bytes.size(); ++i)
            value |= quint64(static_cast<uchar>(bytes[at + i])) << (8 * (bigEndian ? size - 1 - i : i));
        return std::min(value, beyondAnyFile);
    };
    const bool wide = number(header, 2, 2) == 43; // 64-bit offsets
    const qsizetype offsetSize = wide ? 8 : 4;
    const qsizetype countSize = wide ? 8 : 2;
    const qsizetype entrySize = 4 + 2 * offsetSize; // tag, type, number of values, offset of the values
    if (!file.seek(qint64(number(header, offsetSize, offsetSize))))
        return 0;
    const quint64 count = std::min(number(file.read(countSize), 0, countSize), quint64(0xffff));
    const QByteArray entries = file.read(qint64(count) * entrySize);
    quint64 end = 0;
    for (qsizetype at = 0; at + entrySize <= entries.size(); at += entrySize) {
        const quint64 type = number(entries, at + 2, 2);
        const quint64 values = number(entries, at + 4, offsetSize);
        const quint64 size = type < valueSizes.size() ? valueSizes[type] * values : 0;
        const bool isList = std::find(listTags.begin(), listTags.end(), number(entries, at, 2)) != listTags.end();
        if (isList && size > quint64(offsetSize)) // short lists stand in place of the offset
            end = std::max(end, number(entries, at + 4 + offsetSize, offsetSize) + size);
    }
    return qint64(end);
}

QString tiffDamage(GDALDataset &gdal, const QString &path)
{
    const qint64 fileSize = QFileInfo(path).size();
    qint64 end = endOfBlockLists(path);
    for (const int band : {1, gdal.GetRasterCount()})
        end = std::max(end, endOfBlocks(*gdal.GetRasterBand(band)));
    return end > fileSize ? QStringLiteral("is cut: it has %1 bytes of %2").arg(fileSize).arg(end) : QString();
}

/// What stands in a text, word by word.
class Words
{
public:
    explicit Words(const char *begin, const char *end) : m_at(begin), m_end(end) {}

    /// The next word, empty behind the last.
    QByteArrayView next()
    {
        while (m_at != m_end && isSpace(*m_at))
            ++m_at;
        const char *begin = m_at;
        while (m_at != m_end && !isSpace(*m_at))
            ++m_at;
        return QByteArrayView(begin, m_at);
    }

private:
    static bool isSpace(char c) { return static_cast<unsigned char>(c) <= ' '; }

    const char *m_at;
    const char *m_end;
};

/// A text grid is counted out: the driver, asked for a row behind the end of the file, reads every row before it again
/// and again, for ever with some hundred rows.
QString textDamage(GDALDataset &gdal, const QString &path)
{
    QFile file(path);
    uchar *bytes = file.open(QIODevice::ReadOnly) ? file.map(0, file.size()) : nullptr;
    if (!bytes)
        return QStringLiteral("cannot be read");
    const char *begin = reinterpret_cast<const char *>(bytes);
    Words words(begin, begin + file.size());
    const qint64 wanted = qint64(gdal.GetRasterXSize()) * gdal.GetRasterYSize();
    const auto isKeyword = [](QByteArrayView word) {
        const bool startsSo = !word.isEmpty() && QChar::isLetter(static_cast<uchar>(word.front()));
        return startsSo && word.compare("nan", Qt::CaseInsensitive) != 0 && !word.startsWith('i') &&
               !word.startsWith('I');
    };
    qint64 count = 0;
    for (QByteArrayView word = words.next(); !word.isEmpty() && count < wanted; word = words.next()) {
        if (isKeyword(word))
            words.next(); // its value
        else
            ++count;
    }
    return count < wanted ? QStringLiteral("is cut: it has %1 cells of %2").arg(count).arg(wanted) : QString();
}

struct CheckRow
{
    const char *driver;
    QString (*check)(GDALDataset &gdal, const QString &path);
};

constexpr std::array checkRows = {
    CheckRow{"GTiff", tiffDamage},
    CheckRow{"AAIGrid", textDamage},
    CheckRow{"GRASSASCIIGrid", textDamage},
};

} // namespace

QString damage(GDALDataset &gdal, const QString &path)
{
    if (gdal.GetRasterCount() == 0)
        return QString();
    for (const CheckRow &row : checkRows) {
        if (qstrcmp(row.driver, gdal.GetDriverName()) == 0)
            return row.check(gdal, path);
    }
    return QString();
}

} // namespace TxRasterCheck
