#include "engine/data/TxCellValues.h"

#include "engine/base/TxNumberText.h"

#include <cpl_error.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace TxCellValues {

namespace {

struct TypeRow
{
    GDALDataType type;
    double lowest, highest;
    bool isWhole;
};

template<class T>
constexpr TypeRow rowOf(GDALDataType type)
{
    using Limits = std::numeric_limits<T>;
    return {type, static_cast<double>(Limits::lowest()), static_cast<double>(Limits::max()), Limits::is_integer};
}

constexpr std::array typeRows = {
    rowOf<quint8>(GDT_Byte),    rowOf<qint16>(GDT_Int16),   rowOf<quint16>(GDT_UInt16),
    rowOf<qint32>(GDT_Int32),   rowOf<quint32>(GDT_UInt32), rowOf<qint64>(GDT_Int64),
    rowOf<quint64>(GDT_UInt64), rowOf<float>(GDT_Float32),  rowOf<double>(GDT_Float64),
};

const TypeRow &find(GDALDataType type)
{
    const auto row =
        std::find_if(typeRows.begin(), typeRows.end(), [type](const TypeRow &entry) { return entry.type == type; });
    return row == typeRows.end() ? typeRows.back() : *row;
}

bool fits(double value, const TypeRow &row, bool wholeNumbers)
{
    if (row.isWhole) // what rounds to the range; false for NaN
        return value > row.lowest - 0.5 && value < row.highest + 0.5;
    if (wholeNumbers && row.type == GDT_Float32)
        return static_cast<double>(static_cast<float>(value)) == value;
    return std::isinf(value) || (value >= row.lowest && value <= row.highest) || std::isnan(value);
}

template<class T>
bool allFit(const void *values, const quint8 *hasData, size_t count, const TypeRow &row, bool wholeNumbers)
{
    const T *at = static_cast<const T *>(values);
    for (size_t i = 0; i < count; ++i) {
        if (!hasData[i] || fits(static_cast<double>(at[i]), row, wholeNumbers))
            continue;
        const QByteArray text = TxNumberText::shortest(static_cast<double>(at[i])).toLatin1();
        CPLError(CE_Failure, CPLE_AppDefined, "the value %s does not fit into cells of the format %s", text.constData(),
                 GDALGetDataTypeName(row.type));
        return false;
    }
    return true;
}

} // namespace

bool isLossless(GDALDataType from, GDALDataType to)
{
    return GDALDataTypeUnion(from, to) == to;
}

bool write(const void *values, GDALDataType format, const quint8 *hasData, size_t count, void *cells, GDALDataType type,
           bool wholeNumbers)
{
    const auto check = format == GDT_Float32 ? allFit<float> : allFit<double>;
    if (!isLossless(format, type) && !check(values, hasData, count, find(type), wholeNumbers))
        return false;
    GDALCopyWords64(values, format, GDALGetDataTypeSizeBytes(format), cells, type, GDALGetDataTypeSizeBytes(type),
                    static_cast<GPtrDiff_t>(count));
    return true;
}

double opaque(GDALDataType type)
{
    const TypeRow &row = find(type);
    return row.isWhole ? row.highest : 1.0;
}

} // namespace TxCellValues
