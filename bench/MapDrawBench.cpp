// Drawing a map against merely reading the geometries that it shows. The goals, in processor time: points take at most
// twice what the walk over them takes, lines of 20 points 10 times; both grow no faster than the number of records; no
// slice is much longer than the 10 ms that are meant.

#include "engine/data/DatasetVector.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/ElemGeometry.h"
#include "engine/map/MapRenderer.h"
#include "engine/map/TxWorkspace.h"

#include <ogrsf_frmts.h>

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>

namespace {

/// What a layer holds, as the first argument of a benchmark.
enum Content { Points, Lines };

constexpr double width = 1000;
constexpr double height = 700;

/// Evenly spread numbers from 0 to 1, the same in every run.
class Spread
{
public:
    double next()
    {
        m_state = m_state * 1664525U + 1013904223U;
        return (m_state >> 8) / 16777216.0;
    }

private:
    quint32 m_state = 1;
};

/// A GeoPackage with a spatial index, made once. Lines have 20 points.
QString fileOf(Content content, int count)
{
    static const QTemporaryDir folder;
    static std::map<std::pair<Content, int>, QString> made;
    QString &path = made[{content, count}];
    if (!path.isEmpty())
        return path;
    path = folder.filePath(QStringLiteral("%1_%2.gpkg").arg(content).arg(count));
    GDALAllRegister();
    const GDALDatasetUniquePtr file(
        GetGDALDriverManager()->GetDriverByName("GPKG")->Create(path.toUtf8(), 0, 0, 0, GDT_Unknown, nullptr));
    OGRLayer *layer = file->CreateLayer("layer", nullptr, content == Points ? wkbPoint : wkbLineString);
    Spread spread;
    file->StartTransaction();
    for (int i = 0; i < count; ++i) {
        OGRFeature feature(layer->GetLayerDefn());
        double x = spread.next() * width;
        double y = spread.next() * height;
        if (content == Points) {
            feature.SetGeometryDirectly(new OGRPoint(x, y));
        } else {
            auto *line = new OGRLineString;
            for (int k = 0; k < 20; ++k)
                line->addPoint(x += spread.next() - 0.5, y += spread.next() - 0.5);
            feature.SetGeometryDirectly(line);
        }
        if (layer->CreateFeature(&feature) != OGRERR_NONE)
            return QString();
    }
    file->CommitTransaction();
    return path;
}

/// Railways with their sleepers, and capitals.
TxLayerStyle librariesStyle()
{
    TxLayerStyle style;
    style.geoStyle.lineStyle = 12;
    style.geoStyle.symbolStyle = 14;
    style.geoStyle.symbolSize = 12;
    return style;
}

/// A workspace with one map of one layer.
class Fixture
{
public:
    explicit Fixture(const benchmark::State &state, bool isStyled = false)
    {
        const auto count = static_cast<int>(state.range(1));
        CTxDataSource *source =
            m_workspace.GetDataSources().Open(fileOf(static_cast<Content>(state.range(0)), count), QStringLiteral("a"));
        dataset = static_cast<CDatasetVector *>(source->GetDatasetAt(0));
        dataset->Open();
        map = m_workspace.GetMaps().Add(QStringLiteral("Map"));
        auto layer = std::make_unique<CTxLayer>(&m_workspace.GetDataSources(), QStringLiteral("a"), dataset->GetName());
        layer->setStyle(isStyled ? librariesStyle() : defaultStyle(dataset->GetType(), 0));
        map->GetLayers().Add(std::move(layer));
    }

    CDatasetVector *dataset;
    CTxMap *map;

private:
    CTxWorkspace m_workspace;
};

void walkGeometries(benchmark::State &state)
{
    const Fixture fixture(state);
    CTxQueryDef query;
    query.options = CTxQueryDef::SkipAttributes;
    for (auto _ : state) {
        CTxRecordset *records = fixture.dataset->Query(query);
        for (; !records->IsEOF(); records->MoveNext()) {
            CElemGeometry *geometry = nullptr;
            records->GetGeometry(geometry);
            benchmark::DoNotOptimize(geometry);
            delete geometry;
        }
        fixture.dataset->ReleaseRecordset(records);
    }
}

/// Draws the view that is @p part of the width and the height of everything.
void draw(benchmark::State &state, double part, bool isStyled = false)
{
    const Fixture fixture(state, isStyled);
    MapRenderer renderer;
    renderer.setMap(fixture.map);
    const CRect2D bounds(0, 0, width * part, height * part);
    double longest = 0;
    for (auto _ : state) {
        renderer.start({MapView::fitting(bounds, QSizeF(width, height)), 1.0, Qt::white, QFont()});
        for (bool hasMore = true; hasMore;) {
            QElapsedTimer slice;
            slice.start();
            hasMore = renderer.step(10);
            longest = std::max(longest, static_cast<double>(slice.nsecsElapsed()) / 1e6);
        }
    }
    state.counters["longest_slice_ms"] = longest;
}

void drawEverything(benchmark::State &state)
{
    draw(state, 1.0);
}

void drawHalf(benchmark::State &state)
{
    draw(state, 0.7);
}

void drawSmallPart(benchmark::State &state)
{
    draw(state, 0.01);
}

/// With styles of the libraries.
void drawStyled(benchmark::State &state)
{
    draw(state, 1.0, true);
}

#define MAP_BENCHMARK(function)                                                                                        \
    BENCHMARK(function)                                                                                                \
        ->Args({Points, 100000})                                                                                       \
        ->Args({Points, 1000000})                                                                                      \
        ->Args({Lines, 10000})                                                                                         \
        ->Args({Lines, 100000})                                                                                        \
        ->Unit(benchmark::kMillisecond)

MAP_BENCHMARK(walkGeometries);
MAP_BENCHMARK(drawEverything);
MAP_BENCHMARK(drawHalf);
MAP_BENCHMARK(drawSmallPart);
BENCHMARK(drawStyled)->Args({Points, 100000})->Args({Lines, 10000})->Unit(benchmark::kMillisecond);

} // namespace
