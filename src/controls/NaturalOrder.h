#pragma once

#include "common/TdCommonExport.h"

#include <QStringList>

#include <vector>

/// The order in which people expect @p texts to stand: element i is the index of the text that comes i-th.
///
/// Numbers come first, by value ("-2" before "1.5" before "1e3"; decimal point, whatever the locale), then texts as the
/// user's language orders them, letter case ignored and digits in them taken as numbers ("Road 9" before "Road 10").
/// Empty texts come last in both directions; what is equal keeps its order in both.
TDCOMMON_API std::vector<int> naturalOrder(const QStringList &texts, Qt::SortOrder direction);
