#pragma once

#include <algorithm>
#include <cstddef>

/// Constant tables: arrays of rows, one row for a code.
namespace TdTable {

/// True when no two rows of @p table have the same value in the member @p key. For static_assert.
template<class Table, class Row, class Key>
constexpr bool hasUniqueKeys(const Table &table, Key Row::*key)
{
    for (auto row = table.begin(); row != table.end(); ++row)
        for (auto other = table.begin(); other != row; ++other)
            if ((*row).*key == (*other).*key)
                return false;
    return true;
}

/// The first row of @p table that has @p value in the member @p key; null when there is none.
template<class Table, class Row, class Key, class Value>
constexpr const Row *find(const Table &table, Key Row::*key, const Value &value)
{
    const auto row = std::ranges::find(table, value, key);
    return row == table.end() ? nullptr : &*row;
}

} // namespace TdTable
