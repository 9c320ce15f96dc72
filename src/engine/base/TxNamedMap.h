#pragma once

#include <QHash>
#include <QString>

#include <memory>
#include <vector>

/// A place in a walk through a collection. 0 ends the walk; every other value belongs to the collection alone and is
/// dead after the next change of that collection.
using POSITION = quintptr;

/// Objects under unique names, owned, walked in the order in which they were added.
///
/// The base of the workspace's collections (datasources, maps, layouts). Names are compared exactly, so two names may
/// differ in letter case alone. Look-up costs one hash access; taking an object out costs the move of those behind it.
template<class T>
class TxNamedMap
{
public:
    TxNamedMap() = default;
    TxNamedMap(const TxNamedMap &) = delete;
    TxNamedMap &operator=(const TxNamedMap &) = delete;

    /// Finds the object called @p name. @p object becomes null when there is none.
    /// @return true when found.
    bool Lookup(const QString &name, T *&object) const
    {
        object = find(name);
        return object != nullptr;
    }

    /// The object called @p name, or null.
    T *find(const QString &name) const
    {
        const auto at = m_index.constFind(name);
        return at == m_index.constEnd() ? nullptr : m_entries[*at].object.get();
    }

    /// The first place of a walk, 0 when the collection is empty.
    POSITION GetStartPosition() const { return m_entries.empty() ? 0 : 1; }

    /// Gives the entry at @p position and moves @p position on; it becomes 0 behind the last entry. A position that
    /// belongs to no entry gives an empty name and null.
    void GetNextAssoc(POSITION &position, QString &name, T *&object) const
    {
        name.clear();
        object = nullptr;
        if (position != 0 && position <= m_entries.size()) {
            name = m_entries[position - 1].name;
            object = m_entries[position - 1].object.get();
        }
        position = position != 0 && position < m_entries.size() ? position + 1 : 0;
    }

    /// How many objects there are.
    int GetCount() const { return static_cast<int>(m_entries.size()); }

    /// The object at 0-based @p index in the order of the walk, null when out of range.
    T *GetAt(int index) const
    {
        return index >= 0 && index < GetCount() ? m_entries[static_cast<size_t>(index)].object.get() : nullptr;
    }

protected:
    ~TxNamedMap() = default;

    /// Takes @p object in under @p name.
    /// @return the object, or null (and the object is gone) when the name is taken already.
    T *insert(const QString &name, std::unique_ptr<T> object)
    {
        if (m_index.contains(name))
            return nullptr;
        m_index.insert(name, m_entries.size());
        m_entries.push_back({name, std::move(object)});
        return m_entries.back().object.get();
    }

    /// Takes the object called @p name out and gives it to the caller; null when there is none.
    std::unique_ptr<T> take(const QString &name)
    {
        const auto at = m_index.constFind(name);
        if (at == m_index.constEnd())
            return nullptr;
        const size_t place = *at;
        m_index.erase(at);
        std::unique_ptr<T> object = std::move(m_entries[place].object);
        m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(place));
        for (size_t i = place; i < m_entries.size(); ++i)
            m_index[m_entries[i].name] = i;
        return object;
    }

    /// Gives the object called @p name the name @p newName and keeps its place.
    /// @return false when there is no such object or the new name is taken.
    bool rename(const QString &name, const QString &newName)
    {
        const auto at = m_index.constFind(name);
        if (at == m_index.constEnd() || (name != newName && m_index.contains(newName)))
            return false;
        const size_t place = *at;
        m_index.erase(at);
        m_entries[place].name = newName;
        m_index.insert(newName, place);
        return true;
    }

    /// Frees every object, the last first.
    void clear()
    {
        m_index.clear();
        while (!m_entries.empty())
            m_entries.pop_back();
    }

private:
    struct Entry
    {
        QString name;
        std::unique_ptr<T> object;
    };
    std::vector<Entry> m_entries;
    QHash<QString, size_t> m_index;
};
