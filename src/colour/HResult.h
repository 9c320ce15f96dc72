#pragma once

#include <QtGlobal>

/// What automation operations answer. Callers compare the numbers: do not change them.
enum class HResult : quint32 {
    S_OK = 0,
    S_FALSE = 1,                        ///< done, but for less than was asked
    DISP_E_MEMBERNOTFOUND = 0x80020003, ///< no member of that number, or not of that kind
    DISP_E_TYPEMISMATCH = 0x80020005,   ///< an argument is of a type that does not fit
    DISP_E_UNKNOWNNAME = 0x80020006,    ///< no member of that name
    DISP_E_BADPARAMCOUNT = 0x8002000E,  ///< too few or too many arguments
    E_UNEXPECTED = 0x8000FFFF,          ///< the object that it is about is gone
    E_ACCESSDENIED = 0x80070005,        ///< the object belongs to somebody else
    E_OUTOFMEMORY = 0x8007000E,         ///< no memory, or more than is allowed
    E_INVALIDARG = 0x80070057,
    CTL_E_SETNOTSUPPORTED = 0x800A017F ///< the property cannot be written
};

/// True for the codes of success.
constexpr bool succeeded(HResult result)
{
    return (static_cast<quint32>(result) & 0x80000000U) == 0;
}
