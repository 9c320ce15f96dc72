#include "colour/ColorsetTable.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <new>

namespace {

constexpr char title[] = "Terravox Colorset Table";
constexpr qint64 titleSize = 255;
// Behind the title: step, count, minimum, maximum. Nothing is aligned.
constexpr qint64 stepAt = 255;
constexpr qint64 countAt = 263;
constexpr qint64 minimumAt = 267;
constexpr qint64 maximumAt = 275;
constexpr qint64 recordsAt = 283;
constexpr qint64 recordSize = 16;

using Entry = ColorsetTable::Entry;
static_assert(sizeof(Entry) == recordSize && offsetof(Entry, value) == 0 && offsetof(Entry, color) == 8);

using Head = std::array<char, recordsAt>;

/// What the file is written in, to or from what the processor reckons in.
void swapIfBig(std::vector<Entry> &entries)
{
    if constexpr (QSysInfo::ByteOrder == QSysInfo::BigEndian) {
        for (Entry &entry : entries) {
            entry.value = qFromLittleEndian<double>(&entry.value);
            entry.color = qFromLittleEndian(entry.color);
        }
    }
}

bool isTitle(const char *bytes, qint64 size)
{
    const QByteArrayView all(bytes, size);
    const qsizetype end = all.indexOf('\0');
    return (end < 0 ? all : all.first(end)).trimmed().compare(title, Qt::CaseInsensitive) == 0;
}

} // namespace

void ColorsetTable::reckonStep()
{
    count = static_cast<qint32>(entries.size());
    step = count > 0 ? (maximum - minimum) / count : 0.0;
}

bool ColorsetTable::hasHeader(QIODevice &device)
{
    std::array<char, titleSize> bytes;
    const qint64 got = device.seek(0) ? device.read(bytes.data(), titleSize) : -1;
    return got > 0 && isTitle(bytes.data(), got);
}

bool ColorsetTable::read(QIODevice &device)
{
    Head head;
    if (!device.seek(0) || device.read(head.data(), recordsAt) != recordsAt || !isTitle(head.data(), titleSize))
        return false;
    qint64 rest = device.size() - recordsAt;
    if (rest < 0 || rest > maximumEntries * recordSize) // below 0: a device that does not know its size
        return false;
    // In pieces that stay in the processor's cache: room for all at once would first be filled with zeros.
    std::vector<Entry> records;
    try {
        records.reserve(static_cast<size_t>((rest + recordSize - 1) / recordSize));
    } catch (const std::bad_alloc &) {
        return false;
    }
    std::array<Entry, 2048> piece;
    while (rest > 0) {
        const qint64 size = std::min<qint64>(rest, sizeof piece);
        const auto last = piece.begin() + (size + recordSize - 1) / recordSize;
        *(last - 1) = {}; // may be cut
        if (device.read(reinterpret_cast<char *>(piece.data()), size) != size)
            return false;
        records.insert(records.end(), piece.begin(), last);
        rest -= size;
    }
    swapIfBig(records);
    step = qFromLittleEndian<double>(head.data() + stepAt);
    count = qFromLittleEndian<qint32>(head.data() + countAt);
    minimum = qFromLittleEndian<double>(head.data() + minimumAt);
    maximum = qFromLittleEndian<double>(head.data() + maximumAt);
    entries = std::move(records);
    return true;
}

bool ColorsetTable::load(const QString &path)
{
    if (!QFileInfo(path).isFile()) // a pipe would keep us waiting
        return false;
    QFile file(path);
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) && read(file);
}

bool ColorsetTable::write(QIODevice &device) const
{
    Head head = {};
    std::memcpy(head.data(), title, sizeof title);
    qToLittleEndian(step, head.data() + stepAt);
    qToLittleEndian(count, head.data() + countAt);
    qToLittleEndian(minimum, head.data() + minimumAt);
    qToLittleEndian(maximum, head.data() + maximumAt);
    const auto put = [&device](const std::vector<Entry> &records) {
        const qint64 size = static_cast<qint64>(records.size()) * recordSize;
        return device.write(reinterpret_cast<const char *>(records.data()), size) == size;
    };
    if (device.write(head.data(), recordsAt) != recordsAt)
        return false;
    if constexpr (QSysInfo::ByteOrder == QSysInfo::LittleEndian)
        return put(entries);
    std::vector<Entry> swapped = entries;
    swapIfBig(swapped);
    return put(swapped);
}

bool ColorsetTable::save(const QString &path) const
{
    const QFileInfo old(path);
    if (old.exists() && !old.isFile()) // not to put a file in the place of a device
        return false;
    QSaveFile file(path);
    // Flushed first: committing does not tell that the last bytes found no room on the disk.
    return file.open(QIODevice::WriteOnly) && write(file) && file.flush() && file.commit();
}
