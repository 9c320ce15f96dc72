#pragma once

#include <QtGlobal>

#include <gdal.h>

#include <cstddef>

/// Numbers that become cells of a pixel format. A private header.
namespace TxCellValues {

/// True when every value of @p from is one of @p to.
bool isLossless(GDALDataType from, GDALDataType to);

/// Writes @p count values of @p format (Float32 or Float64) as cells of @p type. Fractions are rounded where the cells
/// are whole numbers; cells whose @p hasData is 0 get some value.
/// @param[in] wholeNumbers the values come unchanged from whole numbers, and are to stay exactly the same
/// @return false when a value with data is beyond the range of @p type, which is reported to the collectors
bool write(const void *values, GDALDataType format, const quint8 *hasData, size_t count, void *cells, GDALDataType type,
           bool wholeNumbers);

/// The largest value of @p type, as alpha the opaque one.
double opaque(GDALDataType type);

} // namespace TxCellValues
