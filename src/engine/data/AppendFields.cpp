#include "engine/data/AppendFields.h"

#include "engine/data/NativeSchema.h"
#include "engine/data/ShapefileFields.h"
#include "engine/data/TxFieldDefinition.h"
#include "engine/data/TxFieldTypes.h"
#include "engine/data/TxFieldValue.h"

#include <ogrsf_frmts.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr size_t shapefileText = 254; // bytes that a shapefile keeps of a text

bool isShapefile(const TxVectorPrivate &vector)
{
    return vector.dataSource().driver == "ESRI Shapefile";
}

/// @p name as a shapefile keeps it, ready to be compared.
QByteArray cutName(const QString &name)
{
    return name.toUtf8().left(ShapefileFields::nameBytes).toLower();
}

/// What a shapefile calls each user field of @p dataset, by its name.
QHash<QString, QString> namesInShapefile(TxVectorPrivate &dataset)
{
    QStringList names;
    for (const TxVectorField &field : dataset.fields()) {
        const QString &name = field.info.GetName();
        if (!field.info.IsSystemField() && name.compare(QLatin1String(NativeSchema::userId), Qt::CaseInsensitive) != 0)
            names << name;
    }
    const QStringList cut = ShapefileFields::cutNames(names);
    QHash<QString, QString> found;
    for (qsizetype i = 0; i < names.size(); ++i)
        found.insert(names[i], cut[i]);
    return found;
}

/// Numbers between the two are written to the field without a closer look.
void setRange(AppendFields::Pair &pair, const OGRFieldDefn &stored)
{
    constexpr double none = std::numeric_limits<double>::infinity();
    pair.lowest = none; // above the highest: every number is looked at
    pair.highest = -none;
    const int width = stored.GetWidth();
    switch (pair.info.GetType()) {
    case CTxFieldInfo::Boolean:
        return;
    case CTxFieldInfo::Byte:
        pair.lowest = 0;
        pair.highest = 255;
        break;
    case CTxFieldInfo::Short:
        pair.lowest = std::numeric_limits<qint16>::min();
        pair.highest = std::numeric_limits<qint16>::max();
        break;
    case CTxFieldInfo::Long:
        if (pair.storage == OFTInteger) {
            pair.lowest = std::numeric_limits<qint32>::min();
            pair.highest = std::numeric_limits<qint32>::max();
        } else {
            constexpr double exact = 9007199254740992.0; // 2^53
            pair.lowest = -exact;
            pair.highest = exact;
        }
        break;
    case CTxFieldInfo::Double:
    case CTxFieldInfo::Float:
    case CTxFieldInfo::Numeric:
        pair.highest = std::numeric_limits<double>::max();
        pair.lowest = -pair.highest;
        break;
    case CTxFieldInfo::Single:
        pair.highest = double(std::numeric_limits<float>::max());
        pair.lowest = -pair.highest;
        break;
    case CTxFieldInfo::Currency:
        pair.highest = TxFieldDefinition::largestCurrency;
        pair.lowest = -pair.highest;
        break;
    default:
        return;
    }
    if (width > 0) { // room for the sign, the point and the digit that rounding may add
        const int places = width - stored.GetPrecision() - (stored.GetPrecision() > 0 ? 1 : 0);
        const double bound = std::pow(10.0, std::max(0, std::min(places - 2, 300)));
        pair.highest = std::min(pair.highest, bound);
        pair.lowest = std::max(pair.lowest, -bound);
    }
}

bool isPlainUtf8(const TxRawValue &text)
{
    for (size_t i = 0; i < text.size; ++i) {
        const auto byte = static_cast<unsigned char>(text.data[i]);
        if (byte == 0)
            return false;
        if (byte >= 0x80)
            return CPLIsUTF8(text.data, static_cast<int>(text.size)) && std::strlen(text.data) == text.size;
    }
    return true;
}

bool isInRange(double number, const AppendFields::Pair &pair)
{
    return number >= pair.lowest && number <= pair.highest;
}

bool hasTimeOfDay(const OGRField &moment)
{
    return moment.Date.Hour != 0 || moment.Date.Minute != 0 || moment.Date.Second != 0.0F;
}

/// Writes what needs no conversion. @return false when a closer look is needed; nothing was written then.
bool writeDirectly(OGRFeature &feature, const AppendFields::Pair &pair, const TxRawValue &value)
{
    constexpr int utc = 100, localZone = 1;
    switch (value.kind) {
    case TxRawValue::Integer:
        if (pair.storage == OFTInteger && isInRange(static_cast<double>(value.integer), pair))
            feature.SetField(pair.to, static_cast<int>(value.integer));
        else if (pair.storage == OFTInteger64 && isInRange(static_cast<double>(value.integer), pair))
            feature.SetField(pair.to, static_cast<GIntBig>(value.integer));
        else
            return false;
        return true;
    case TxRawValue::Real:
        if (pair.storage != OFTReal || !isInRange(value.real, pair))
            return false;
        feature.SetField(pair.to, value.real);
        return true;
    case TxRawValue::Text:
        if (pair.storage != OFTString || pair.info.GetType() == CTxFieldInfo::Time || value.size > pair.safeBytes ||
            !isPlainUtf8(value))
            return false;
        feature.SetField(pair.to, value.data);
        return true;
    case TxRawValue::Moment: {
        const auto &date = value.moment.Date;
        const bool isDated = date.Year > 0 && date.Year <= 9999 && (date.TZFlag <= localZone || date.TZFlag == utc);
        if ((pair.storage != OFTDateTime && (pair.storage != OFTDate || hasTimeOfDay(value.moment))) || !isDated ||
            pair.info.GetType() == CTxFieldInfo::Time)
            return false;
        feature.SetField(pair.to, &value.moment);
        return true;
    }
    case TxRawValue::Bytes:
        if (pair.storage != OFTBinary || value.size > pair.safeBytes)
            return false;
        feature.SetField(pair.to, static_cast<int>(value.size), value.data);
        return true;
    case TxRawValue::Null:
        break;
    }
    return false;
}

} // namespace

AppendFields::AppendFields(const TxRecordsetPrivate &source, TxVectorPrivate &target, int tagIndex)
    : m_toShapefile(isShapefile(target))
{
    OGRLayer *layer = target.layer();
    if (!layer)
        return;
    const char *encoding = m_toShapefile ? layer->GetMetadataItem("SOURCE_ENCODING", "SHAPEFILE") : nullptr;
    if (encoding && qstricmp(encoding, CPL_ENC_UTF8) != 0)
        m_encoding = encoding;
    const std::vector<TxVectorField> &fields = target.fields();
    const auto isKey = [](const TxVectorField &field) { return NativeSchema::isKeyField(field.info.GetName()); };
    const bool hasKeys = std::any_of(fields.begin(), fields.end(), isKey);
    const bool keepsKeys = hasKeys && layer->GetFeatureCount(TRUE) == 0; // among others they would tie the wrong ones
    const auto isCopied = [keepsKeys](const CTxFieldInfo &info) {
        return !info.IsSystemField() || (keepsKeys && NativeSchema::isKeyField(info.GetName()));
    };
    std::vector<bool> isTaken(fields.size(), false);
    for (size_t i = 0; i < fields.size(); ++i) {
        const TxVectorField &field = fields[i];
        const bool isWritable = field.info.CanUpdate() || (field.info.IsSystemField() && isCopied(field.info));
        isTaken[i] = field.ogrIndex < 0 || field.ogrIndex == tagIndex || !isWritable;
    }
    const auto pairUp = [&](size_t from, size_t to) {
        isTaken[to] = true;
        add(static_cast<int>(from), source.fields[from].info, fields[to],
            *layer->GetLayerDefn()->GetFieldDefn(fields[to].ogrIndex));
    };
    std::vector<size_t> without;
    for (size_t from = 0; from < source.visibleCount; ++from) {
        const CTxFieldInfo &info = source.fields[from].info;
        if (!isCopied(info))
            continue;
        const int to = target.findField(info.GetName());
        if (to >= 0 && !isTaken[static_cast<size_t>(to)])
            pairUp(from, static_cast<size_t>(to));
        else if (to < 0)
            without.push_back(from);
    }
    if (!m_toShapefile && !isShapefile(source.vector()))
        return;
    const QHash<QString, QString> sourceNames = namesInShapefile(source.vector());
    const QHash<QString, QString> targetNames = namesInShapefile(target);
    QHash<QString, int> byCutName;
    for (size_t to = 0; to < fields.size(); ++to)
        byCutName.insert(targetNames.value(fields[to].info.GetName()).toCaseFolded(), static_cast<int>(to));
    for (const size_t from : without) {
        const QString &whole = source.fields[from].info.GetName();
        int same = target.findField(sourceNames.value(whole));
        if (same < 0)
            same = byCutName.value(whole.toCaseFolded(), -1);
        if (same >= 0 && !isTaken[static_cast<size_t>(same)]) {
            pairUp(from, static_cast<size_t>(same));
            continue;
        }
        const QByteArray name = cutName(source.fields[from].info.GetName());
        std::vector<size_t> alike;
        for (size_t to = 0; to < fields.size(); ++to) {
            if (!isTaken[to] && name.size() == ShapefileFields::nameBytes && cutName(fields[to].info.GetName()) == name)
                alike.push_back(to);
        }
        if (alike.size() == 1)
            pairUp(from, alike.front());
    }
}

void AppendFields::add(int from, const CTxFieldInfo &source, const TxVectorField &target, const OGRFieldDefn &stored)
{
    Pair pair;
    pair.from = from;
    pair.fromType = source.GetType();
    pair.to = target.ogrIndex;
    pair.storage = stored.GetType();
    pair.info = target.info;
    pair.isNullable = stored.IsNullable();
    setRange(pair, stored);
    const auto noted = static_cast<size_t>(TxFieldDefinition::bound(target.info));
    const auto width = static_cast<size_t>(std::max(0, stored.GetWidth()));
    pair.safeBytes = noted > 0 ? noted : width;
    if (pair.safeBytes == 0)
        pair.safeBytes = m_toShapefile ? shapefileText : static_cast<size_t>(std::numeric_limits<int>::max());
    m_pairs.push_back(std::move(pair));
}

int AppendFields::findTag(TxVectorPrivate &target, const QString &name)
{
    int index = target.findField(name);
    if (index < 0 && isShapefile(target))
        index = target.findField(QString::fromUtf8(name.toUtf8().left(ShapefileFields::nameBytes)));
    return index < 0 ? -1 : target.fields()[static_cast<size_t>(index)].ogrIndex;
}

bool AppendFields::widens(const Pair &pair, const TxRawValue &value) const
{
    return m_toShapefile && value.kind == TxRawValue::Text && pair.storage == OFTString && value.size > pair.safeBytes;
}

/// The driver would write question marks in their place.
bool AppendFields::isKnownToEncoding(const TxRawValue &text) const
{
    if (std::all_of(text.data, text.data + text.size, [](char c) { return static_cast<signed char>(c) > 0; }))
        return true;
    const TxGdal::ErrorCollector warnings;
    const std::unique_ptr<char, decltype(&VSIFree)> there(CPLRecode(text.data, CPL_ENC_UTF8, m_encoding), &VSIFree);
    const std::unique_ptr<char, decltype(&VSIFree)> back(CPLRecode(there.get(), m_encoding, CPL_ENC_UTF8), &VSIFree);
    return std::strcmp(back.get(), text.data) == 0;
}

QString AppendFields::write(OGRFeature &feature, const Pair &pair, const TxRawValue &value) const
{
    if (value.kind == TxRawValue::Null && pair.isNullable) {
        feature.SetFieldNull(pair.to);
        return QString();
    }
    if (!m_encoding.isEmpty() && value.kind == TxRawValue::Text && !isKnownToEncoding(value))
        return QStringLiteral("has characters that the encoding %1 does not know").arg(QString::fromUtf8(m_encoding));
    if (writeDirectly(feature, pair, value))
        return QString();
    const bool isText = value.kind == TxRawValue::Text && pair.storage == OFTString;
    if (m_toShapefile && isText && value.size > shapefileText)
        return QStringLiteral("has more than %1 bytes").arg(shapefileText);
    if (value.kind == TxRawValue::Moment && pair.storage == OFTDate && hasTimeOfDay(value.moment))
        return QStringLiteral("has a time of day, which the field does not keep");
    const QString reason =
        TxFieldValue::write(feature, pair.to, pair.info, TxFieldTypes::fromRaw(value, pair.fromType));
    return reason.isEmpty() ? QString() : reason;
}
