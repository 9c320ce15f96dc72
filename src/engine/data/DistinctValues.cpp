#include "engine/base/TxErrorMsg.h"
#include "engine/base/TxVectorState.h"
#include "engine/data/TxFieldTypes.h"
#include "engine/data/TxKeySet.h"
#include "engine/data/TxRecordset.h"
#include "engine/data/TxRecordsetPrivate.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr quint64 signBit = quint64(1) << 63;

/// @name Numbers as unsigned whole ones in the same order, and back.
/// @{
quint64 keyOf(qint64 value)
{
    return static_cast<quint64>(value) ^ signBit;
}
qint64 integerOf(quint64 key)
{
    return static_cast<qint64>(key ^ signBit);
}
/// There is one zero, and one "no number", behind all others.
quint64 keyOf(double value)
{
    const auto bits =
        std::bit_cast<quint64>(std::isnan(value) ? std::numeric_limits<double>::quiet_NaN() : value + 0.0);
    return bits & signBit ? ~bits : bits | signBit;
}
double realOf(quint64 key)
{
    return std::bit_cast<double>(key & signBit ? key ^ signBit : ~key);
}
/// @}

/// A moment as a number; its order is that of the clock, whatever the zone.
quint64 keyOf(const OGRField &moment)
{
    const auto &date = moment.Date;
    const auto milliseconds = static_cast<quint64>(std::lround(double(date.Second) * 1000.0));
    return quint64(static_cast<quint16>(date.Year)) << 44 | quint64(date.Month) << 40 | quint64(date.Day) << 35 |
           quint64(date.Hour) << 30 | quint64(date.Minute) << 24 | milliseconds << 8 | date.TZFlag;
}
OGRField momentOf(quint64 key)
{
    OGRField moment = {};
    auto &date = moment.Date;
    date.Year = static_cast<GInt16>(key >> 44);
    date.Month = key >> 40 & 15;
    date.Day = key >> 35 & 31;
    date.Hour = key >> 30 & 31;
    date.Minute = key >> 24 & 63;
    date.Second = static_cast<float>(key >> 8 & 0xffff) / 1000.0F;
    date.TZFlag = key & 255;
    return moment;
}

/// Sorts by the bytes of the numbers, the last first; bytes that are the same in all are passed over.
void sortNumbers(std::vector<quint64> &numbers)
{
    std::array<std::array<size_t, 256>, 8> counts = {};
    for (const quint64 number : numbers) {
        for (size_t byte = 0; byte < 8; ++byte)
            ++counts[byte][number >> (8 * byte) & 255];
    }
    std::vector<quint64> sorted(numbers.size());
    for (size_t byte = 0; byte < 8; ++byte) {
        auto &places = counts[byte];
        if (std::find(places.begin(), places.end(), numbers.size()) != places.end())
            continue;
        size_t place = 0;
        for (size_t &count : places)
            place += std::exchange(count, place);
        for (const quint64 number : numbers)
            sorted[places[number >> (8 * byte) & 255]++] = number;
        numbers.swap(sorted);
    }
}

/// Sorts texts by their bytes. What all begin with is passed over, and the eight bytes behind it stand in a number:
/// so two texts themselves are rarely looked at.
void sortTexts(std::vector<std::string_view> &texts)
{
    if (texts.empty())
        return;
    size_t common = texts.front().size();
    for (const std::string_view &text : texts) {
        const auto end = texts.front().begin() + std::min(common, text.size());
        common =
            static_cast<size_t>(std::mismatch(texts.front().begin(), end, text.begin()).first - texts.front().begin());
    }
    struct Entry
    {
        quint64 leading;
        std::string_view text;
    };
    std::vector<Entry> entries;
    entries.reserve(texts.size());
    for (const std::string_view &text : texts) {
        quint64 leading = 0;
        for (size_t i = common; i < common + 8; ++i)
            leading = leading << 8 | (i < text.size() ? static_cast<uchar>(text[i]) : 0U);
        entries.push_back({leading, text});
    }
    std::sort(entries.begin(), entries.end(), [](const Entry &a, const Entry &b) {
        return a.leading != b.leading ? a.leading < b.leading : a.text < b.text;
    });
    std::transform(entries.begin(), entries.end(), texts.begin(), [](const Entry &entry) { return entry.text; });
}

/// Gathers the different ones among the values of a field, as the storage gives them.
class DistinctValues
{
public:
    DistinctValues(qint16 type, qint64 limit) : m_type(type), m_limit(limit) {}

    void add(const TxRawValue &raw)
    {
        switch (raw.kind) {
        case TxRawValue::Null:
            m_hasNull = true;
            return;
        case TxRawValue::Integer:
            m_keys.insert(keyOf(raw.integer));
            break;
        case TxRawValue::Real:
            m_keys.insert(keyOf(raw.real));
            break;
        case TxRawValue::Moment:
            m_keys.insert(keyOf(raw.moment));
            break;
        case TxRawValue::Text:
        case TxRawValue::Bytes:
            m_keys.insert(std::string_view(raw.data, raw.size));
            break;
        }
        m_kind = raw.kind;
        // Of a few that are wanted among millions that differ, those too large go again and again.
        constexpr size_t plenty = 65536;
        if (m_limit >= 0 && m_keys.size() >= plenty + 2 * static_cast<size_t>(m_limit) && keepsOrder())
            dropLarge();
    }

    QList<CTxVariant> take()
    {
        QList<CTxVariant> values;
        values.reserve(static_cast<qsizetype>(m_keys.size()) + 1);
        if (m_hasNull)
            values.append(CTxVariant::null());
        if (isText()) {
            for (const std::string_view &text : sortedTexts())
                values.append(TxFieldTypes::fromRaw(TxRawValue::ofData(m_kind, text.data(), text.size()), m_type));
        } else {
            for (const quint64 key : sortedNumbers())
                values.append(TxFieldTypes::fromRaw(rawOf(key), m_type));
        }
        if (!keepsOrder()) {
            const auto isLess = [](const CTxVariant &a, const CTxVariant &b) { return orderOf(a) < orderOf(b); };
            if (!std::is_sorted(values.begin(), values.end(), isLess))
                std::sort(values.begin(), values.end(), isLess);
            values.erase(std::unique(values.begin(), values.end()), values.end());
        }
        if (m_limit >= 0 && values.size() > m_limit)
            values.resize(m_limit);
        return values;
    }

private:
    bool isText() const { return m_kind == TxRawValue::Text || m_kind == TxRawValue::Bytes; }

    /// True when the values of the field differ, and follow one another, just as those in the storage: neither rounded
    /// nor cut nor turned to another zone.
    bool keepsOrder() const
    {
        constexpr std::array exact = {CTxFieldInfo::Long, CTxFieldInfo::Double, CTxFieldInfo::Numeric,
                                      CTxFieldInfo::Float};
        return isText() || std::find(exact.begin(), exact.end(), m_type) != exact.end();
    }

    /// A number in the order of values that do not keep that of the storage; null comes first.
    static double orderOf(const CTxVariant &value)
    {
        if (value.IsNull())
            return -std::numeric_limits<double>::infinity();
        if (value.GetType() == CTxVariant::Boolean)
            return value.toBool() ? 1.0 : 0.0;
        return value.GetType() == CTxVariant::Date ? static_cast<double>(value.toInt64()) : value.toDouble();
    }

    TxRawValue rawOf(quint64 key) const
    {
        if (m_kind == TxRawValue::Moment)
            return TxRawValue::ofMoment(momentOf(key));
        return m_kind == TxRawValue::Real ? TxRawValue::ofReal(realOf(key)) : TxRawValue::ofInteger(integerOf(key));
    }

    /// The keys ascending; where the order is kept, not more than are wanted.
    std::vector<quint64> sortedNumbers() const
    {
        std::vector<quint64> numbers = m_keys.numbers();
        sortNumbers(numbers);
        numbers.resize(wantedOf(numbers.size()));
        return numbers;
    }
    std::vector<std::string_view> sortedTexts() const
    {
        std::vector<std::string_view> texts = m_keys.texts();
        sortTexts(texts);
        texts.resize(wantedOf(texts.size()));
        return texts;
    }
    size_t wantedOf(size_t count) const
    {
        return m_limit >= 0 && keepsOrder() ? std::min(count, static_cast<size_t>(m_limit)) : count;
    }

    void dropLarge()
    {
        TxKeySet kept;
        if (isText()) {
            for (const std::string_view &text : sortedTexts())
                kept.insert(text);
        } else {
            for (const quint64 key : sortedNumbers())
                kept.insert(key);
        }
        m_keys = std::move(kept);
    }

    const qint16 m_type;
    const qint64 m_limit; // negative for none
    TxRawValue::Kind m_kind = TxRawValue::Null;
    TxKeySet m_keys;
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
