#pragma once

#include <QtGlobal>

#include <bit>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// A set of keys, all of them numbers or all of them texts. Open addressing, since a node for each of a million keys
/// costs more than reading their records. A private header.
class TxKeySet
{
public:
    void insert(quint64 number) { insert(number, nullptr); }
    void insert(std::string_view text) { insert(std::hash<std::string_view>()(text), &text); }
    size_t size() const { return m_count; }

    /// Every number, in no order.
    std::vector<quint64> numbers() const
    {
        std::vector<quint64> all;
        all.reserve(m_count);
        for (const Slot &slot : m_slots) {
            if (slot.place != 0)
                all.push_back(slot.key);
        }
        return all;
    }
    /// Every text, in no order; valid until the set changes.
    std::vector<std::string_view> texts() const
    {
        std::vector<std::string_view> all;
        all.reserve(m_count);
        for (size_t at = 0; at < m_texts.size(); at += sizeof(size_t) + all.back().size())
            all.push_back(textAt(at));
        return all;
    }

private:
    struct Slot
    {
        quint64 key;   ///< the number, or the text's hash
        quint64 place; ///< one more than where the text begins in m_texts; 0 for a free slot
    };

    void insert(quint64 key, const std::string_view *text)
    {
        if (m_count * 2 >= m_slots.size())
            grow();
        Slot *slot = &m_slots[firstPlace(key)];
        while (slot->place != 0) {
            if (slot->key == key && (!text || textAt(slot->place - 1) == *text))
                return;
            if (++slot == m_slots.data() + m_slots.size())
                slot = m_slots.data();
        }
        *slot = {key, m_texts.size() + 1};
        ++m_count;
        if (text) {
            const size_t size = text->size();
            m_texts.append(reinterpret_cast<const char *>(&size), sizeof size).append(*text);
        }
    }

    /// Fibonacci hashing: numbers that follow one another are spread over the slots.
    size_t firstPlace(quint64 key) const { return (key * 0x9e3779b97f4a7c15U) >> m_shift; }

    std::string_view textAt(size_t place) const
    {
        size_t size = 0;
        std::memcpy(&size, m_texts.data() + place, sizeof size);
        return std::string_view(m_texts).substr(place + sizeof size, size);
    }

    void grow()
    {
        std::vector<Slot> old(m_slots.empty() ? 1024 : m_slots.size() * 2, Slot{0, 0});
        old.swap(m_slots);
        m_shift = 64 - std::countr_zero(m_slots.size());
        for (const Slot &taken : old) {
            size_t place = firstPlace(taken.key);
            while (taken.place != 0 && m_slots[place].place != 0)
                place = (place + 1) % m_slots.size();
            if (taken.place != 0)
                m_slots[place] = taken;
        }
    }

    std::vector<Slot> m_slots;
    std::string m_texts; // their sizes before them
    size_t m_count = 0;
    int m_shift = 64;
};
