#include "workspace/WorkspaceTreeRecords.h"

#include "workspace/WorkspaceTreeItem.h"

#include <cstring>

namespace {

constexpr size_t unitsPerBlock = sizeof(quint64) / sizeof(char16_t);
constexpr quint64 notAscii = 0xff80ff80ff80ff80u; // set bits of a block tell that some unit is no ASCII

/// Letter case taken from four ASCII units at once: 'A' to 'Z' get the bit 0x20.
quint64 foldedAscii(quint64 block)
{
    constexpr quint64 lanes = 0x0001000100010001u;
    const quint64 fromA = block + lanes * (0x80 - 'A');
    const quint64 behindZ = block + lanes * (0x80 - 'Z' - 1);
    return block | (((fromA ^ behindZ) & (lanes * 0x80)) >> 2);
}

/// Letter case taken from up to four units of any kind. The second half of a surrogate pair stands for the character.
quint64 foldedUnits(QStringView text, qsizetype first, qsizetype count)
{
    char16_t folded[unitsPerBlock] = {};
    for (qsizetype place = 0; place < count; ++place) {
        const char16_t unit = text.at(first + place).unicode();
        char32_t character = unit;
        if (QChar::isLowSurrogate(unit) && first + place > 0) {
            const char16_t before = text.at(first + place - 1).unicode();
            if (QChar::isHighSurrogate(before))
                character = QChar::surrogateToUcs4(before, unit);
        }
        folded[place] = char16_t(QChar::toCaseFolded(character));
    }
    quint64 block;
    std::memcpy(&block, folded, sizeof block);
    return block;
}

/// Mixes @p text into @p hash, so that texts that differ in letter case alone do the same.
size_t mixFolded(size_t hash, QStringView text)
{
    constexpr quint64 prime = 0x9E3779B97F4A7C15u;
    quint64 mixed = (hash + quint64(text.size())) * prime;
    for (qsizetype first = 0; first < text.size(); first += qsizetype(unitsPerBlock)) {
        const qsizetype count = qMin(text.size() - first, qsizetype(unitsPerBlock));
        quint64 block = notAscii;
        if (count == qsizetype(unitsPerBlock))
            std::memcpy(&block, text.utf16() + first, sizeof block);
        block = (block & notAscii) ? foldedUnits(text, first, count) : foldedAscii(block);
        mixed = (mixed ^ block) * prime;
        mixed ^= mixed >> 32;
    }
    return size_t(mixed);
}

/// @p text without a share in its memory: a look-up needs none, and counting shares costs more than the comparison.
QString borrowed(const QString &text)
{
    return QString::fromRawData(text.constData(), text.size());
}

/// Whether the texts differ in letter case at most. ASCII is settled four letters at a time, all else by
/// QString::compare().
bool equalFolded(QStringView left, QStringView right)
{
    if (left.size() != right.size())
        return false; // simple case folding keeps the length
    qsizetype first = 0;
    for (; first + qsizetype(unitsPerBlock) <= left.size(); first += qsizetype(unitsPerBlock)) {
        quint64 leftBlock, rightBlock;
        std::memcpy(&leftBlock, left.utf16() + first, sizeof leftBlock);
        std::memcpy(&rightBlock, right.utf16() + first, sizeof rightBlock);
        if ((leftBlock | rightBlock) & notAscii)
            return left.compare(right, Qt::CaseInsensitive) == 0;
        if (leftBlock != rightBlock && foldedAscii(leftBlock) != foldedAscii(rightBlock))
            return false;
    }
    return left.sliced(first).compare(right.sliced(first), Qt::CaseInsensitive) == 0;
}

} // namespace

size_t WorkspaceTreeRecords::hashOf(const QString &name, const QString &alias, qint32 kind)
{
    return mixFolded(mixFolded(quint32(kind), alias), name);
}

bool WorkspaceTreeRecords::Key::operator==(const Key &other) const
{
    return hash == other.hash && kind == other.kind && equalFolded(name, other.name) && equalFolded(alias, other.alias);
}

void WorkspaceTreeRecords::add(WorkspaceTreeItem *item)
{
    const auto *entry = item->entry();
    if (!entry)
        return;
    if (item->m_records)
        item->m_records->remove(item);
    item->m_records = this;
    item->m_keyName = entry->itemName;
    item->m_keyAlias = entry->alias;
    item->m_keyKind = entry->itemType;
    item->m_keyHash = hashOf(entry->itemName, entry->alias, entry->itemType);

    Chain &chain = m_chains[Key{entry->itemName, entry->alias, entry->itemType, item->m_keyHash}];
    if (const WorkspaceTreeItem *oldest = chain.oldest; chain.isUniform && oldest)
        chain.isUniform = item->m_keyName == oldest->m_keyName && item->m_keyAlias == oldest->m_keyAlias;
    item->m_previousAlike = chain.newest;
    if (chain.newest)
        chain.newest->m_nextAlike = item;
    else
        chain.oldest = item;
    chain.newest = item;
    ++m_count;
}

void WorkspaceTreeRecords::remove(WorkspaceTreeItem *item)
{
    if (item->m_records != this)
        return;
    WorkspaceTreeItem *const previous = std::exchange(item->m_previousAlike, nullptr);
    WorkspaceTreeItem *const next = std::exchange(item->m_nextAlike, nullptr);
    item->m_records = nullptr;
    --m_count;
    if (previous)
        previous->m_nextAlike = next;
    if (next)
        next->m_previousAlike = previous;
    if (previous && next)
        return;

    const auto at =
        m_chains.find(Key{borrowed(item->m_keyName), borrowed(item->m_keyAlias), item->m_keyKind, item->m_keyHash});
    if (!previous && !next) {
        m_chains.erase(at);
        return;
    }
    if (!previous)
        at->oldest = next;
    if (!next)
        at->newest = previous;
}

void WorkspaceTreeRecords::clear()
{
    for (const Chain &chain : std::as_const(m_chains)) {
        for (WorkspaceTreeItem *item = chain.oldest; item;) {
            item->m_records = nullptr;
            item->m_previousAlike = nullptr;
            item = std::exchange(item->m_nextAlike, nullptr);
        }
    }
    m_chains.clear();
    m_count = 0;
}

void WorkspaceTreeRecords::reserve(qsizetype more)
{
    // Doubling keeps many small fills linear.
    if (const qsizetype wanted = m_chains.size() + more; wanted > m_chains.capacity())
        m_chains.reserve(qMax(wanted, 2 * m_chains.size()));
}

WorkspaceTreeItem *WorkspaceTreeRecords::find(const QString &name, const QString &alias, qint32 kind, bool noCase) const
{
    const auto at = m_chains.constFind(Key{borrowed(name), borrowed(alias), kind, hashOf(name, alias, kind)});
    if (at == m_chains.constEnd())
        return nullptr;
    if (noCase)
        return at->oldest;
    if (at->isUniform) // the usual case, settled without a look at any item
        return at.key().name == name && at.key().alias == alias ? at->oldest : nullptr;
    for (WorkspaceTreeItem *item = at->oldest; item; item = item->m_nextAlike) {
        if (item->m_keyName == name && item->m_keyAlias == alias)
            return item;
    }
    return nullptr;
}
