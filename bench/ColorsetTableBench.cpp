// Colour-set tables of one million records: read against one block read of the same bytes, written against one block
// written safely (beside the old file, then renamed). Field by field is what a plain reader and writer would do.

#include "colour/ColorsetTable.h"

#include <QDataStream>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int records = 1000000;
constexpr qint64 headSize = 283;
constexpr qint64 fileSize = headSize + records * 16LL;

/// A table in a file of a folder that is removed at the end of the run.
struct Sample
{
    QTemporaryDir folder;
    QString path = folder.filePath(u"ramp.sct"_s);
    ColorsetTable table;

    Sample()
    {
        table.maximum = records;
        for (int i = 0; i < records; ++i)
            table.entries.push_back({static_cast<double>(i), static_cast<COLORREF>(i)});
        table.reckonStep();
        table.save(path);
    }
};

const Sample &sample()
{
    static const Sample only;
    return only;
}

/// Times @p job, which answers whether it went well.
template<class Job>
void repeat(benchmark::State &state, Job job)
{
    sample();
    for (auto _ : state) {
        if (!job())
            state.SkipWithError("failed");
    }
    state.SetItemsProcessed(state.iterations() * records);
}

void readBlock(benchmark::State &state)
{
    repeat(state, [] {
        QFile file(sample().path);
        const std::unique_ptr<char[]> bytes(new char[fileSize]); // not set to 0 before
        const bool isRead =
            file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) && file.read(bytes.get(), fileSize) == fileSize;
        benchmark::DoNotOptimize(bytes.get());
        return isRead;
    });
}

void readTable(benchmark::State &state)
{
    repeat(state, [] {
        ColorsetTable table;
        return table.load(sample().path) && table.entries.size() == records;
    });
}

void readFieldByField(benchmark::State &state)
{
    repeat(state, [] {
        QFile file(sample().path);
        if (!file.open(QIODevice::ReadOnly) || !file.seek(headSize))
            return false;
        QDataStream stream(&file);
        stream.setByteOrder(QDataStream::LittleEndian);
        std::vector<ColorsetTable::Entry> entries;
        while (!stream.atEnd()) {
            ColorsetTable::Entry entry;
            stream >> entry.value >> entry.color >> entry.unused;
            entries.push_back(entry);
        }
        return entries.size() == records;
    });
}

void writeBlock(benchmark::State &state)
{
    const QByteArray bytes(fileSize, 'x');
    repeat(state, [&bytes] {
        QSaveFile file(sample().folder.filePath(u"block"_s));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == fileSize && file.commit();
    });
}

void writeTable(benchmark::State &state)
{
    repeat(state, [] { return sample().table.save(sample().folder.filePath(u"table.sct"_s)); });
}

void writeFieldByField(benchmark::State &state)
{
    repeat(state, [] {
        QFile file(sample().folder.filePath(u"fields.sct"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray(headSize, '\0')) != headSize)
            return false;
        QDataStream stream(&file);
        stream.setByteOrder(QDataStream::LittleEndian);
        for (const ColorsetTable::Entry &entry : sample().table.entries) {
            file.seek(file.size());
            stream << entry.value << entry.color << entry.unused;
        }
        return file.flush();
    });
}

BENCHMARK(readBlock)->UseRealTime();
BENCHMARK(readTable)->UseRealTime();
BENCHMARK(readFieldByField)->UseRealTime();
BENCHMARK(writeBlock)->UseRealTime();
BENCHMARK(writeTable)->UseRealTime();
BENCHMARK(writeFieldByField)->UseRealTime()->Iterations(1);

} // namespace
