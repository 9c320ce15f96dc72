#pragma once

#include "engine/base/TxVariant.h"
#include "engine/data/TxFieldInfo.h"

class OGRFeature;

/// Writes values into features. A private header.
namespace TxFieldValue {

/// Converts @p value to the type of the field @p info and writes it to field @p ogrIndex of @p feature. Nothing is cut,
/// rounded to a whole number or wrapped around: what does not fit is refused.
/// @return why it was refused, in words that follow the value; empty when it was written
QString write(OGRFeature &feature, int ogrIndex, const CTxFieldInfo &info, const CTxVariant &value);

} // namespace TxFieldValue
