#include "workspace/WorkspaceTreeRecords.h"

#include "workspace/WorkspaceTreeItem.h"

namespace {

/// Mixes @p text into @p hash, so that texts that differ in letter case alone do the same.
size_t mixFolded(size_t hash, QStringView text)
{
    constexpr size_t prime = 0x9E3779B97F4A7C15ull;
    char16_t before = 0;
    for (const QChar unit : text) {
        const char16_t code = unit.unicode();
        char32_t folded = code;
        if (code < 0x80) {
            if (code >= u'A' && code <= u'Z')
                folded = code | 0x20;
        } else if (QChar::isLowSurrogate(code) && QChar::isHighSurrogate(before)) {
            folded = QChar::toCaseFolded(QChar::surrogateToUcs4(before, code));
        } else {
            folded = QChar::toCaseFolded(char32_t(code));
        }
        before = code;
        hash = (hash ^ folded) * prime;
        hash ^= hash >> 29;
    }
    return hash;
}

} // namespace

WorkspaceTreeRecords::Key::Key(const QString &keyName, const QString &keyAlias, qint32 keyKind)
    : name(keyName), alias(keyAlias), kind(keyKind),
      hash(mixFolded(mixFolded(size_t(quint32(keyKind)) + 1, keyAlias) + 1, keyName))
{
}

bool WorkspaceTreeRecords::Key::operator==(const Key &other) const
{
    return hash == other.hash && kind == other.kind && name.compare(other.name, Qt::CaseInsensitive) == 0 &&
           alias.compare(other.alias, Qt::CaseInsensitive) == 0;
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

    Chain &chain = m_chains[Key(entry->itemName, entry->alias, entry->itemType)];
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

    const auto at = m_chains.find(Key(item->m_keyName, item->m_keyAlias, item->m_keyKind));
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
    const auto at = m_chains.constFind(Key(name, alias, kind));
    if (at == m_chains.constEnd())
        return nullptr;
    if (noCase)
        return at->oldest;
    for (WorkspaceTreeItem *item = at->oldest; item; item = item->m_nextAlike) {
        if (item->m_keyName == name && item->m_keyAlias == alias)
            return item;
    }
    return nullptr;
}
