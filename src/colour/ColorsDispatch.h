#pragma once

#include "colour/HResult.h"
#include "common/TdCommonExport.h"
#include "engine/base/TxVariant.h"

#include <QVariantList>

#include <array>
#include <limits>
#include <span>

class CTdColors;

/// The members of CTdColors by number and by name, for callers that know no C++: scripts and the automation bus.
namespace ColorsDispatch {

/// How a member is used. Callers give the bits: do not change them.
enum Kind : quint32 { Method = 1, PropertyGet = 2, PropertyPut = 4 };

/// The numbers of the members: their place in the table, but for the two that every automation object has. Callers
/// keep them: do not change them, and add at the end.
enum Number : qint32 {
    NewEnum = -4,
    Default = 0, ///< the default member, which is Item
    Count = 1,
    Remove,
    InsertAt,
    Exchange,
    RemoveAll,
    Add,
    MakeGradientColorset,
    MakeGradientColorsetEx,
    MakeStockGradientColorset,
    MakeRandomColorset,
    Item
};

/// What a call may add to the list.
enum class Growth : quint8 {
    None,
    One,    ///< a colour more
    ToCount ///< as many colours as the first argument says
};

/// The arguments of a call, converted: whole numbers and booleans by their place, and the object.
struct Arguments
{
    std::array<int, 3> numbers{};
    QObject *object = nullptr;
};

/// One use of one member. A property that can be read and written has two rows.
struct Member
{
    qint32 number;
    const char *name;
    Kind kind;
    CTxVariant::Type result;                    ///< Empty for none
    std::array<CTxVariant::Type, 3> parameters; ///< Empty behind the last
    Growth growth;
    QVariant (*run)(CTdColors &colors, const Arguments &arguments); ///< null: refused, the property is read-only
};

/// All members, in their order.
TDCOMMON_API std::span<const Member> members();
/// The number of the member called @p name, in any letter case.
/// @return S_OK, or DISP_E_UNKNOWNNAME with @p number -1
TDCOMMON_API HResult numberOf(QStringView name, qint32 &number);

/// Calls a member.
/// @param kinds one or several bits of Kind
/// @param arguments in the order of the declaration, the new value of a property last. Whole numbers of 32 bits with or
/// without a sign are taken bit by bit, others when they fit; a boolean may also be a whole number; an object is a
/// QObject *
/// @param result becomes what the member answers, invalid when it answers nothing; an enumerator is a
/// std::shared_ptr<TdColorsEnum>
/// @param maxColors refuses what would make the list longer
/// @return S_OK; DISP_E_MEMBERNOTFOUND, DISP_E_BADPARAMCOUNT, DISP_E_TYPEMISMATCH; CTL_E_SETNOTSUPPORTED for writing
/// Count; E_OUTOFMEMORY beyond @p maxColors. What is refused changes nothing
TDCOMMON_API HResult invoke(CTdColors &colors, qint32 number, quint32 kinds, const QVariantList &arguments,
                            QVariant &result, qint32 maxColors = std::numeric_limits<qint32>::max());

} // namespace ColorsDispatch
