// Texts of values against snprintf: the same mix of types, of a table of real records (half of it real numbers, a
// quarter whole numbers, the rest texts, dates, truth values). The peer writes into a buffer that is there already;
// ours makes a text of its own each time.

#include "common/TdCommMethods.h"
#include "engine/base/TxVariant.h"

#include <QDateTime>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

namespace {

using V = CTxVariant;

std::vector<V> mixedValues()
{
    std::mt19937_64 random(1);
    const auto real = [&random] {
        return (static_cast<double>(random() >> 11) * 0x1p-53 - 0.5) * std::pow(10.0, static_cast<int>(random() % 9));
    };
    std::vector<V> values;
    for (int i = 0; i < 50000; ++i) {
        const auto whole = static_cast<qint32>(random());
        values.insert(values.end(), {V(real()), V(real()), V(real()), V(static_cast<float>(real())),
                                     V(static_cast<float>(real())), V(real()), V(whole), V(whole >> 16),
                                     V(static_cast<qint16>(whole)), V(QStringLiteral("Gravel road")),
                                     V(QDateTime(QDate(2026, 1, 1).addDays(whole % 9999), QTime(12, 30), Qt::UTC)),
                                     V(whole % 2 == 0)});
    }
    return values;
}

void textByVar2Str(benchmark::State &state)
{
    const std::vector<V> values = mixedValues();
    for (auto _ : state) {
        for (const V &value : values)
            benchmark::DoNotOptimize(CTdCommMethods::VAR2STR(value));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<qint64>(values.size()));
}

/// What a value is to C.
struct Plain
{
    V::Type type;
    double real;
    int whole;
    std::string text;
    std::tm date;
};

int print(char *buffer, size_t size, const Plain &value)
{
    switch (value.type) {
    case V::Float:
        return std::snprintf(buffer, size, "%.4f", value.real);
    case V::Double:
        return std::snprintf(buffer, size, "%.8f", value.real);
    case V::String:
        return std::snprintf(buffer, size, "%s", value.text.c_str());
    case V::Date:
        return static_cast<int>(std::strftime(buffer, size, "%Y-%m-%d %H:%M:%S", &value.date));
    case V::Boolean:
        return std::snprintf(buffer, size, "%s", value.whole != 0 ? "TRUE" : "FALSE");
    default:
        return std::snprintf(buffer, size, "%d", value.whole);
    }
}

void textBySnprintf(benchmark::State &state)
{
    std::vector<Plain> values;
    for (const V &value : mixedValues()) {
        const QDateTime moment = value.toDateTime();
        std::tm date = {};
        if (moment.isValid()) {
            date.tm_year = moment.date().year() - 1900;
            date.tm_mon = moment.date().month() - 1;
            date.tm_mday = moment.date().day();
            date.tm_hour = moment.time().hour();
            date.tm_min = moment.time().minute();
        }
        values.push_back({value.GetType(), value.toDouble(), value.toInt32(), value.toText().toStdString(), date});
    }
    char buffer[400];
    for (auto _ : state) {
        for (const Plain &value : values)
            benchmark::DoNotOptimize(print(buffer, sizeof buffer, value));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<qint64>(values.size()));
}

BENCHMARK(textBySnprintf);
BENCHMARK(textByVar2Str);

} // namespace
