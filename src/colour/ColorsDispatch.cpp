#include "colour/ColorsDispatch.h"

#include "colour/TdColors.h"
#include "colour/TdColorsEnum.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace ColorsDispatch {

namespace {

constexpr auto None = CTxVariant::Empty;
constexpr auto Long = CTxVariant::Long;
constexpr auto Bool = CTxVariant::Boolean;
constexpr auto Object = CTxVariant::Dispatch;
using C = CTdColors;
using A = Arguments;

constexpr Member table[] = {
    {Count, "Count", PropertyGet, Long, {}, Growth::None, [](C &c, const A &) { return QVariant(c.GetCount()); }},
    {Count, "Count", PropertyPut, None, {Long}, Growth::None, nullptr},
    {Remove,
     "Remove",
     Method,
     Long,
     {Long, Long},
     Growth::None,
     [](C &c, const A &a) { return QVariant(c.Remove(a.numbers[0], a.numbers[1])); }},
    {InsertAt,
     "InsertAt",
     Method,
     Bool,
     {Long, Long},
     Growth::One,
     [](C &c, const A &a) { return QVariant(c.InsertAt(a.numbers[0], a.numbers[1])); }},
    {Exchange,
     "Exchange",
     Method,
     Bool,
     {Long, Long},
     Growth::None,
     [](C &c, const A &a) { return QVariant(c.Exchange(a.numbers[0], a.numbers[1])); }},
    {RemoveAll,
     "RemoveAll",
     Method,
     None,
     {},
     Growth::None,
     [](C &c, const A &) {
         c.RemoveAll();
         return QVariant();
     }},
    {Add, "Add", Method, Bool, {Long}, Growth::One, [](C &c, const A &a) { return QVariant(c.Add(a.numbers[0])); }},
    {MakeGradientColorset,
     "MakeGradientColorset",
     Method,
     Long,
     {Long, Long, Long},
     Growth::ToCount,
     [](C &c, const A &a) { return QVariant(c.MakeGradientColorset(a.numbers[0], a.numbers[1], a.numbers[2])); }},
    {MakeGradientColorsetEx,
     "MakeGradientColorsetEx",
     Method,
     Long,
     {Long, Object},
     Growth::ToCount,
     [](C &c, const A &a) { return QVariant(c.MakeGradientColorsetEx(a.numbers[0], a.object)); }},
    {MakeStockGradientColorset,
     "MakeStockGradientColorset",
     Method,
     Long,
     {Long, Long, Bool},
     Growth::ToCount,
     [](C &c, const A &a) {
         return QVariant(c.MakeStockGradientColorset(a.numbers[0], a.numbers[1], a.numbers[2] != 0));
     }},
    {MakeRandomColorset,
     "MakeRandomColorset",
     Method,
     Long,
     {Long},
     Growth::ToCount,
     [](C &c, const A &a) { return QVariant(c.MakeRandomColorset(a.numbers[0])); }},
    {Item,
     "Item",
     PropertyGet,
     Long,
     {Long},
     Growth::None,
     [](C &c, const A &a) { return QVariant(c.GetItem(a.numbers[0])); }},
    {Item,
     "Item",
     PropertyPut,
     None,
     {Long, Long},
     Growth::None,
     [](C &c, const A &a) {
         c.SetItem(a.numbers[0], a.numbers[1]);
         return QVariant();
     }},
    {NewEnum,
     "_NewEnum",
     PropertyGet,
     CTxVariant::Unknown,
     {},
     Growth::None,
     [](C &c, const A &) { return QVariant::fromValue(std::shared_ptr<TdColorsEnum>(c.GetNewEnum())); }},
};

/// The whole number in @p value, nothing when it is none of 32 bits.
std::optional<int> toLong(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::UInt:
        return static_cast<int>(value.toUInt()); // colours with the high bit are often given without a sign
    case QMetaType::Int:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::UChar:
    case QMetaType::SChar:
        return value.toInt();
    case QMetaType::LongLong:
        if (const qint64 wide = value.toLongLong(); static_cast<int>(wide) == wide)
            return static_cast<int>(wide);
        return std::nullopt;
    case QMetaType::ULongLong:
        if (const quint64 wide = value.toULongLong(); wide <= std::numeric_limits<int>::max())
            return static_cast<int>(wide);
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

/// Converts one argument into its place. @return false when its type does not fit
bool convert(const QVariant &value, CTxVariant::Type type, int &number, QObject *&object)
{
    if (type == Object) {
        object = value.value<QObject *>();
        return value.metaType().flags().testFlag(QMetaType::PointerToQObject);
    }
    const std::optional<int> converted =
        type == Bool && value.typeId() == QMetaType::Bool ? value.toInt() : toLong(value);
    number = converted.value_or(0);
    return converted.has_value();
}

bool exceeds(const CTdColors &colors, Growth growth, int count, qint32 maxColors)
{
    return (growth == Growth::One && colors.GetCount() >= maxColors) ||
           (growth == Growth::ToCount && count > maxColors);
}

} // namespace

std::span<const Member> members()
{
    return table;
}

HResult numberOf(QStringView name, qint32 &number)
{
    const auto *member = std::find_if(std::begin(table), std::end(table), [name](const Member &row) {
        return name.compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0;
    });
    const bool found = member != std::end(table);
    number = found ? member->number : -1;
    return found ? HResult::S_OK : HResult::DISP_E_UNKNOWNNAME;
}

HResult invoke(CTdColors &colors, qint32 number, quint32 kinds, const QVariantList &arguments, QVariant &result,
               qint32 maxColors)
{
    result = QVariant();
    const qint32 wanted = number == Default ? static_cast<qint32>(Item) : number;
    const auto *member = std::find_if(std::begin(table), std::end(table), [wanted, kinds](const Member &row) {
        return row.number == wanted && (row.kind & kinds) != 0;
    });
    if (member == std::end(table))
        return HResult::DISP_E_MEMBERNOTFOUND;
    if (!member->run)
        return HResult::CTL_E_SETNOTSUPPORTED;
    const auto parameterCount = std::distance(member->parameters.begin(),
                                              std::find(member->parameters.begin(), member->parameters.end(), None));
    if (arguments.size() != parameterCount)
        return HResult::DISP_E_BADPARAMCOUNT;
    Arguments converted;
    for (std::size_t i = 0; i < static_cast<std::size_t>(parameterCount); ++i) {
        if (!convert(arguments[static_cast<qsizetype>(i)], member->parameters[i], converted.numbers[i],
                     converted.object))
            return HResult::DISP_E_TYPEMISMATCH;
    }
    if (exceeds(colors, member->growth, converted.numbers[0], maxColors))
        return HResult::E_OUTOFMEMORY;
    result = member->run(colors, converted);
    return HResult::S_OK;
}

} // namespace ColorsDispatch
