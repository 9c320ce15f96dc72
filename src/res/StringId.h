#pragma once

#include <QtGlobal>

/// The identifiers of the library's texts by name; CTdModule::LoadString() gives the texts.
namespace TdStringId {
enum Id : quint32 {
#define TD_STRING(id, name, text) name = (id),
#include "res/strings.def"
#undef TD_STRING
};
} // namespace TdStringId
