#include "engine/data/ShapefileKeeper.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <array>

namespace {

constexpr qint64 shapeHeader = 100; // bytes, of .shp and .shx
constexpr qint64 tableHeader = 32;  // the least that a .dbf has
constexpr std::array growingSuffixes = {"shp", "shx", "dbf"};

QString suffixOf(const QString &path)
{
    return QFileInfo(path).suffix().toLower();
}

quint32 bigWord(const QByteArray &bytes, qsizetype at)
{
    return qFromBigEndian<quint32>(bytes.constData() + at);
}

/// The size of a header, from its first bytes; 0 when they are none.
qint64 headerSize(const QString &suffix, const QByteArray &start)
{
    if (suffix != u"dbf")
        return start.size() >= shapeHeader ? shapeHeader : 0;
    return start.size() >= tableHeader ? qFromLittleEndian<quint16>(start.constData() + 8) : 0;
}

/// Where the records that a header describes end.
qint64 endOf(const QString &suffix, const QByteArray &head)
{
    if (suffix != u"dbf")
        return 2 * qint64(bigWord(head, 24)); // counted in words of 16 bits
    const qint64 records = qFromLittleEndian<quint32>(head.constData() + 4);
    return head.size() + records * qFromLittleEndian<quint16>(head.constData() + 10);
}

} // namespace

ShapefileKeeper::ShapefileKeeper(const QString &path)
{
    const QFileInfo shape(path);
    const QString base = shape.completeBaseName();
    for (const QFileInfo &file : shape.dir().entryInfoList(QDir::Files | QDir::Hidden)) {
        if (file.completeBaseName() != base)
            continue;
        const QString suffix = file.suffix().toLower();
        const bool grows = std::find(growingSuffixes.begin(), growingSuffixes.end(), suffix) != growingSuffixes.end();
        QFile whole(file.filePath());
        bool done = true;
        if (grows) {
            done = rememberGrowing(file.filePath());
        } else if (suffix == u"qix" || suffix == u"sbn" || suffix == u"sbx" || suffix == u"shz") {
            done = whole.open(QIODevice::ReadOnly);
            if (done)
                m_whole.push_back({file.filePath(), whole.readAll()});
            done = done && m_whole.back().bytes.size() == file.size();
        }
        if (!done)
            m_reason = QStringLiteral("the file “%1” cannot be read").arg(file.fileName());
    }
    if (m_growing.empty() && m_whole.empty())
        m_reason = QStringLiteral("the files of “%1” are not found").arg(shape.fileName());
}

ShapefileKeeper::~ShapefileKeeper()
{
    if (m_tableKept)
        QFile::remove(tableCopy());
}

bool ShapefileKeeper::describe(const QString &path, Growing &file)
{
    QFile in(path);
    if (!in.open(QIODevice::ReadOnly))
        return false;
    const QString suffix = suffixOf(path);
    const qint64 size = headerSize(suffix, in.peek(shapeHeader));
    file.path = path;
    file.head = in.read(size);
    if (size < tableHeader || file.head.size() != size)
        return false;
    file.end = std::min(endOf(suffix, file.head), in.size());
    return true;
}

bool ShapefileKeeper::rememberGrowing(const QString &path)
{
    Growing file;
    QFile in(path);
    if (!describe(path, file) || !in.open(QIODevice::ReadOnly) || !in.seek(file.end))
        return false;
    file.tail = in.readAll();
    if (file.end + file.tail.size() != in.size())
        return false;
    m_growing.push_back(std::move(file));
    return true;
}

const ShapefileKeeper::Growing *ShapefileKeeper::find(const QString &suffix) const
{
    const auto at = std::find_if(m_growing.begin(), m_growing.end(),
                                 [&suffix](const Growing &file) { return suffixOf(file.path) == suffix; });
    return at == m_growing.end() ? nullptr : &*at;
}

bool ShapefileKeeper::hadIndex() const
{
    return std::any_of(m_whole.begin(), m_whole.end(), [](const Whole &file) { return suffixOf(file.path) == u"qix"; });
}

QString ShapefileKeeper::tableCopy() const
{
    const Growing *table = find(QStringLiteral("dbf"));
    return table ? table->path + QStringLiteral(".before-append") : QString();
}

bool ShapefileKeeper::put(const Growing &file)
{
    QFile out(file.path);
    return out.open(QIODevice::ReadWrite) && out.resize(file.end) && out.seek(0) &&
           out.write(file.head) == file.head.size() && out.seek(file.end) && out.write(file.tail) == file.tail.size() &&
           out.flush() && out.size() == file.end + file.tail.size();
}

bool ShapefileKeeper::keepTable()
{
    const Growing *table = find(QStringLiteral("dbf"));
    if (m_tableKept || !table)
        return true;
    const QString copy = tableCopy();
    QFile::remove(copy);
    Growing restored = *table;
    restored.path = copy;
    m_tableKept = true; // from here on there is something to be removed
    return QFile::copy(table->path, copy) && put(restored);
}

bool ShapefileKeeper::isComplete(qint64 records) const
{
    return std::all_of(m_growing.begin(), m_growing.end(), [records](const Growing &known) {
        Growing now;
        if (!describe(known.path, now))
            return false;
        const QString suffix = suffixOf(known.path);
        const bool isWhole = QFileInfo(known.path).size() >= endOf(suffix, now.head);
        if (suffix == u"shx")
            return isWhole && now.end == shapeHeader + 8 * records;
        return isWhole && (suffix != u"dbf" || qFromLittleEndian<quint32>(now.head.constData() + 4) == records);
    });
}

bool ShapefileKeeper::restore()
{
    bool done = true;
    for (const Growing &file : m_growing) {
        if (m_tableKept && suffixOf(file.path) == u"dbf") {
            // One step, or none: the copy is the only one that there is.
            const bool back = std::rename(QFile::encodeName(tableCopy()), QFile::encodeName(file.path)) == 0;
            done = back && done;
            m_tableKept = false;
        } else {
            done = put(file) && done;
        }
    }
    for (const Whole &file : m_whole) {
        QFile out(file.path);
        const bool back = out.open(QIODevice::WriteOnly) && out.write(file.bytes) == file.bytes.size() && out.flush();
        done = back && done;
    }
    return done;
}
