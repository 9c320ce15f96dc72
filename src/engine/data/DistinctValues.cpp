#include "engine/base/TxErrorMsg.h"
#include "engine/base/TxVectorState.h"
#include "engine/data/TxFieldTypes.h"
#include "engine/data/TxRecordset.h"
#include "engine/data/TxRecordsetPrivate.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <string_view>

namespace {

/// A set of keys: numbers, and texts by their hash and their bytes. Open addressing, since a node for each of a million
/// keys costs more than reading their records.
class KeySet
{
public:
    /// @return false when the number is there already.
    bool insert(quint64 key) { return insert(key, nullptr); }
    bool insert(std::string_view bytes) { return insert(std::hash<std::string_view>()(bytes), &bytes); }
    void clear() { *this = KeySet(); }

private:
    struct Slot
    {
        quint64 key;
        quint64 place; ///< of a text one more than where its size and bytes begin; of a number 1; 0 for a free slot
    };

    bool insert(quint64 key, const std::string_view *bytes)
    {
        if (m_count * 2 >= m_slots.size())
            grow();
        Slot *slot = &m_slots[firstPlace(key)];
        while (slot->place != 0) {
            if (slot->key == key && (!bytes || bytesAt(slot->place - 1) == *bytes))
                return false;
            if (++slot == m_slots.data() + m_slots.size())
                slot = m_slots.data();
        }
        *slot = {key, bytes ? m_bytes.size() + 1 : 1};
        if (bytes) {
            const size_t size = bytes->size();
            m_bytes.append(reinterpret_cast<const char *>(&size), sizeof size).append(*bytes);
        }
        ++m_count;
        return true;
    }

    /// Fibonacci hashing: numbers that follow one another are spread over the slots.
    size_t firstPlace(quint64 key) const { return (key * 0x9e3779b97f4a7c15U) >> m_shift; }

    std::string_view bytesAt(size_t place) const
    {
        size_t size = 0;
        std::memcpy(&size, m_bytes.data() + place, sizeof size);
        return std::string_view(m_bytes).substr(place + sizeof size, size);
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
    std::string m_bytes;
    size_t m_count = 0;
    int m_shift = 64;
};

/// Whole numbers as unsigned ones in the same order.
quint64 ascending(qint64 value)
{
    return static_cast<quint64>(value) ^ (quint64(1) << 63);
}

/// Real numbers as whole ones in the same order; what is no number comes last.
quint64 ascending(double value)
{
    if (std::isnan(value))
        return std::numeric_limits<quint64>::max();
    const auto bits = std::bit_cast<quint64>(value + 0.0); // one zero
    return bits >> 63 ? ~bits : bits | quint64(1) << 63;
}

/// The first characters of a text, or bytes, as a number in the order of the texts.
template<class Text>
quint64 leading(const Text &text, int bits)
{
    quint64 prefix = 0;
    for (size_t i = 0; i < size_t(64 / bits); ++i)
        prefix = prefix << bits | (i < text.size() ? static_cast<quint64>(text[i]) : 0);
    return prefix;
}

/// A value with a number that tells most of its order, so that sorting does not touch the values themselves.
struct SortEntry
{
    quint64 prefix;
    const CTxVariant *value;

    static quint64 prefixOf(const CTxVariant &value)
    {
        switch (value.GetType()) {
        case CTxVariant::Boolean:
            return value.toBool() ? 1 : 0;
        case CTxVariant::Float:
        case CTxVariant::Double:
        case CTxVariant::Currency:
            return ascending(value.toDouble());
        case CTxVariant::String: {
            const QString text = value.toText();
            return leading(std::u16string_view(reinterpret_cast<const char16_t *>(text.utf16()), size_t(text.size())),
                           16);
        }
        case CTxVariant::ByteArray: {
            const QByteArray bytes = value.toBytes();
            return leading(
                std::basic_string_view(reinterpret_cast<const uchar *>(bytes.constData()), size_t(bytes.size())), 8);
        }
        default: // whole numbers and dates
            return ascending(value.toInt64());
        }
    }

    std::strong_ordering operator<=>(const SortEntry &other) const
    {
        if (prefix != other.prefix)
            return prefix <=> other.prefix;
        int order = 0;
        if (value->GetType() == CTxVariant::String)
            order = QString::compare(value->toText(), other.value->toText());
        else if (value->GetType() == CTxVariant::ByteArray)
            order = value->toBytes().compare(other.value->toBytes());
        return order <=> 0;
    }
    bool operator==(const SortEntry &other) const { return *this <=> other == 0; }
};

/// Gathers the different ones among the values of a field.
class DistinctValues
{
public:
    DistinctValues(qint16 type, qint64 limit) : m_type(type), m_limit(limit) {}

    void add(const TxRawValue &raw)
    {
        if (raw.kind == TxRawValue::Null) {
            m_hasNull = true;
        } else if (isNew(raw)) {
            m_values.push_back(TxFieldTypes::fromRaw(raw, m_type));
            // Of a few that are wanted among millions that differ, those too large go again and again.
            constexpr qint64 plenty = 65536;
            if (m_limit >= 0 && qint64(m_values.size()) >= plenty + 2 * m_limit)
                sortAndCut();
        }
    }

    QList<CTxVariant> take()
    {
        sortAndCut();
        QList<CTxVariant> all;
        all.reserve(qsizetype(m_values.size()) + 1);
        if (m_hasNull && m_limit != 0)
            all.append(CTxVariant::null());
        for (CTxVariant &value : m_values) {
            if (m_limit >= 0 && all.size() >= m_limit)
                break;
            all.append(std::move(value));
        }
        return all;
    }

private:
    bool isNew(const TxRawValue &raw)
    {
        switch (raw.kind) {
        case TxRawValue::Integer:
            return m_keys.insert(static_cast<quint64>(raw.integer));
        case TxRawValue::Real:
            return m_keys.insert(std::bit_cast<quint64>(raw.real));
        case TxRawValue::Moment: {
            const auto &date = raw.moment.Date;
            const auto milliseconds = static_cast<quint64>(std::lround(double(date.Second) * 1000.0));
            quint64 key = static_cast<quint16>(date.Year);
            for (const auto &[part, bits] : {std::pair<quint64, int>{date.Month, 4},
                                             {date.Day, 5},
                                             {date.Hour, 5},
                                             {date.Minute, 6},
                                             {milliseconds, 16},
                                             {date.TZFlag, 8}})
                key = key << bits | part;
            return m_keys.insert(key);
        }
        default:
            return m_keys.insert(std::string_view(raw.data, raw.size));
        }
    }

    /// Sorts what there is, drops what is there twice (what differs in the storage may be equal as a value of the
    /// field), and what is more than wanted.
    void sortAndCut()
    {
        std::vector<SortEntry> entries;
        entries.reserve(m_values.size());
        for (const CTxVariant &value : m_values)
            entries.push_back({SortEntry::prefixOf(value), &value});
        std::sort(entries.begin(), entries.end());
        entries.erase(std::unique(entries.begin(), entries.end()), entries.end());
        if (m_limit >= 0 && qint64(entries.size()) > m_limit) {
            entries.resize(size_t(m_limit));
            m_keys.clear();
        }
        std::vector<CTxVariant> kept;
        kept.reserve(entries.size());
        for (const SortEntry &entry : entries)
            kept.push_back(*entry.value);
        m_values.swap(kept);
    }

    const qint16 m_type;
    const qint64 m_limit; // negative for none
    KeySet m_keys;
    std::vector<CTxVariant> m_values;
    bool m_hasNull = false;
};

/// Gives a recordset back, unless it is dead.
struct Releaser
{
    void operator()(CTxRecordset *recordset) const
    {
        if (CDatasetVector *dataset = CTxRecordset::GetDatasetOf(recordset))
            dataset->ReleaseRecordset(recordset);
    }
};

} // namespace

bool CDatasetVector::GetDistinctValues(const QString &field, QList<CTxVariant> &values, qint64 limit,
                                       const QString &filter, const TxProgress &progress) const
{
    const qint64 total = progress && filter.trimmed().isEmpty() ? GetRecordCount() : -1;
    CTxQueryDef query;
    query.fields = QStringList{field};
    query.filter = filter;
    query.options = CTxQueryDef::SkipGeometry | CTxQueryDef::AnyOrder;
    const std::unique_ptr<CTxRecordset, Releaser> recordset(d->q->Query(query));
    if (!recordset)
        return false;
    TxRecordsetPrivate &records = TxRecordsetPrivate::of(*recordset);
    const int index = records.findField(field);
    CTxFieldInfo info;
    if (!recordset->GetFieldInfo(index, info))
        return TxGdal::fail(QStringLiteral("“%1” has no field “%2”").arg(GetName(), field));

    const TxGdal::ErrorCollector errors;
    const int errorCount = TxGetErrorMsgObj().GetErrorCount();
    DistinctValues distinct(info.GetType(), limit);
    TxVectorState::clearUpperHalves();
    qint64 done = 0;
    for (bool isOn = records.onRecord; isOn && limit != 0; isOn = records.cursor->next()) {
        constexpr qint64 step = 8192;
        if (progress && done++ % step == 0) {
            const bool goesOn = progress(done - 1, total);
            if (!goesOn || !CTxRecordset::GetDatasetOf(recordset.get()) || !records.cursor) // it may have closed us
                return TxGdal::fail(QStringLiteral("Looking for the values of “%1” was stopped").arg(field));
        }
        distinct.add(records.cursor->raw(index));
    }
    if (errors.hasFailure())
        return errors.fail(QStringLiteral("The values of “%1” cannot be read").arg(field));
    if (TxGetErrorMsgObj().GetErrorCount() != errorCount)
        return false;
    values = distinct.take();
    return true;
}
