#include "basic/TdOleDataNode.h"

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>
#include <QStringList>

namespace {

// What encode() writes, everything little-endian. Do not change: other processes read it.
//   quint32 magic, quint16 version, qint32 wndType, qint32 itemType, text name, text alias, quint32 flags,
//   qint32 number, quint32 entry count, then for each entry: text alias, text itemName, qint32 itemType,
//   qint32 datasetType. A text is a quint32 count of bytes (0xFFFFFFFF for none) and that many bytes of UTF-16.
constexpr quint32 magic = 0x4E445854; // "TXDN"
constexpr quint16 formatVersion = 1;
constexpr qsizetype smallestEntry = 16; // two texts of no bytes and two numbers

void prepare(QDataStream &stream)
{
    stream.setVersion(QDataStream::Qt_6_0);
    stream.setByteOrder(QDataStream::LittleEndian);
}

} // namespace

CTdOleDataNode::CTdOleDataNode(ItemWndType wnd, ItemType item, const QString &itemName, const QString &itemAlias,
                               quint32 flagWord, qint32 itemNumber)
    : wndType(wnd), itemType(item), name(itemName), alias(itemAlias), flags(flagWord),
      number(itemNumber), entries{{itemAlias, itemName, item, noDatasetType}}
{
}

CTdOleDataNode::~CTdOleDataNode() = default;

QString CTdOleDataNode::mimeType()
{
    return QStringLiteral("application/x-terravox-datanode");
}

QByteArray CTdOleDataNode::encode() const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    prepare(stream);
    stream << magic << formatVersion << wndType << itemType << name << alias << flags << number
           << static_cast<quint32>(entries.size());
    for (const CTdOleData &entry : entries)
        stream << entry.alias << entry.itemName << entry.itemType << entry.datasetType;
    return bytes;
}

bool CTdOleDataNode::decode(const QByteArray &bytes, CTdOleDataNode &node)
{
    QDataStream stream(bytes);
    prepare(stream);
    quint32 readMagic = 0;
    quint16 readVersion = 0;
    stream >> readMagic >> readVersion;
    if (stream.status() != QDataStream::Ok || readMagic != magic || readVersion != formatVersion)
        return false;

    CTdOleDataNode read;
    quint32 count = 0;
    stream >> read.wndType >> read.itemType >> read.name >> read.alias >> read.flags >> read.number >> count;
    // The count is believed only as far as the bytes that follow can hold it, so that it cannot make us allocate.
    if (stream.status() != QDataStream::Ok || count > stream.device()->bytesAvailable() / smallestEntry)
        return false;
    read.entries.reserve(count);
    for (quint32 i = 0; i < count; ++i) {
        CTdOleData entry;
        stream >> entry.alias >> entry.itemName >> entry.itemType >> entry.datasetType;
        if (stream.status() != QDataStream::Ok)
            return false;
        read.entries.append(entry);
    }
    if (!stream.atEnd())
        return false;
    node = read;
    return true;
}

void CTdOleDataNode::toMime(QMimeData &mime) const
{
    mime.setData(mimeType(), encode());
    QStringList names;
    for (const CTdOleData &entry : entries)
        names.append(entry.itemName);
    mime.setText(names.isEmpty() ? name : names.join(u'\n'));
}

bool CTdOleDataNode::fromMime(const QMimeData &mime, CTdOleDataNode &node)
{
    return mime.hasFormat(mimeType()) && decode(mime.data(mimeType()), node);
}
