#include "res/StringTable.h"

#include <QtCore/qtmetamacros.h>

#include <algorithm>
#include <array>
#include <functional>

namespace {

constexpr auto table = std::to_array<TdStringRow>({
#define TD_STRING(id, name, text) {id, text},
#include "res/strings.def"
#undef TD_STRING
});

static_assert(std::ranges::adjacent_find(table, std::ranges::greater_equal{}, &TdStringRow::id) == table.end(),
              "ids in strings.def ascend, so no id stands twice");
static_assert(std::ranges::none_of(table, [](const TdStringRow &row) { return *row.text == '\0'; }),
              "every row of strings.def has a text");

} // namespace

std::span<const TdStringRow> TdStringTable()
{
    return table;
}
