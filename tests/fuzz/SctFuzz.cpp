// Any bytes as a colour-set table: read or refused; what was read is written and read again without a change.

#include "colour/ColorsetTable.h"

#include <QBuffer>

#include <cstdlib>

namespace {

void check(bool isRight)
{
    if (!isRight)
        std::abort();
}

QByteArray bytesOf(const ColorsetTable &table)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    check(table.write(buffer));
    return buffer.data();
}

bool readFrom(QByteArray &bytes, ColorsetTable &table)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    const bool isRead = table.read(buffer);
    check(!isRead || ColorsetTable::hasHeader(buffer));
    return isRead;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const char *data, size_t size)
{
    constexpr size_t headSize = 283;
    QByteArray bytes = QByteArray::fromRawData(data, static_cast<qsizetype>(size));
    ColorsetTable table;
    table.count = 77;
    if (!readFrom(bytes, table)) {
        check(table.count == 77 && table.entries.empty());
        return 0;
    }
    check(size >= headSize && table.entries.size() == (size - headSize + 15) / 16);
    // Bytes are compared, for numbers that are none differ from themselves.
    QByteArray written = bytesOf(table);
    check(written.sliced(255).startsWith(bytes.sliced(255)));
    ColorsetTable again;
    check(readFrom(written, again) && bytesOf(again) == written);
    return 0;
}
