#include "engine/data/TxRasterMosaic.h"

#include "engine/base/TxNumberText.h"
#include "engine/data/TxRasterPrivate.h"

#include <gdal_utils.h>
#include <ogr_spatialref.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace TxRasterMosaic {

namespace {

constexpr int mostCells = 1 << 20; ///< of one band that are held in memory at once

/// A rectangle of the target's cells.
struct Window
{
    int column = 0, row = 0, width = 0, height = 0;
};

bool refuse(const char *reason)
{
    CPLError(CE_Failure, CPLE_AppDefined, "%s", reason);
    return false;
}

GDALDataset *dataset(GDALDatasetH handle)
{
    return GDALDataset::FromHandle(handle);
}

QByteArray number(double value)
{
    return TxNumberText::shortest(value).toLatin1();
}

bool isAlpha(GDALDataset &raster, int band)
{
    return raster.GetRasterBand(band)->GetColorInterpretation() == GCI_AlphaBand;
}

/// How many bands tell colours or values.
int valueBands(GDALDataset &raster)
{
    int count = raster.GetRasterCount();
    return count > 1 && isAlpha(raster, count) ? count - 1 : count;
}

/// @p source with the target's bands, laid where it shall lie; nothing is copied yet.
TxGdal::DatasetPtr prepared(GDALDataset &target, GDALDataset &source, const CRect2D &bounds)
{
    CPLStringList options;
    options.AddString("-of");
    options.AddString("VRT");
    const int wanted = valueBands(target);
    const bool isPalette = source.GetRasterCount() > 0 && source.GetRasterBand(1)->GetColorTable();
    if (isPalette && wanted > 1) {
        options.AddString("-expand");
        options.AddString("rgb");
    } else {
        const int given = valueBands(source);
        if (given < wanted && given != 1) {
            refuse("the bands of the two do not match");
            return nullptr;
        }
        for (int band = 1; band <= wanted; ++band) {
            options.AddString("-b");
            options.AddString(QByteArray::number(given == 1 ? 1 : band).constData());
        }
        if (given < source.GetRasterCount()) {
            options.AddString("-b");
            options.AddString(QByteArray::number(source.GetRasterCount()).constData());
        }
    }

    double transform[6];
    const bool isPlaced = source.GetGeoTransform(transform) == CE_None;
    if (!bounds.IsVoid() || !isPlaced) {
        const CRect2D place = !bounds.IsVoid()
                                  ? bounds
                                  : TxRasterPlace::of(source).bounds(source.GetRasterXSize(), source.GetRasterYSize());
        options.AddString("-a_ullr");
        for (const double value : {place.left, place.top, place.right, place.bottom})
            options.AddString(number(value).constData());
    }
    // Coordinates that are given, or of which nothing is said, are the target's.
    const OGRSpatialReference *own = source.GetSpatialRef();
    if (!bounds.IsVoid() || !own || own->IsEmpty()) {
        const char *system = target.GetProjectionRef();
        options.AddString("-a_srs");
        options.AddString(system && *system ? system : "none");
    }
    GDALTranslateOptions *read = GDALTranslateOptionsNew(options.List(), nullptr);
    TxGdal::DatasetPtr made(dataset(read ? GDALTranslate("", GDALDataset::ToHandle(&source), read, nullptr) : nullptr));
    GDALTranslateOptionsFree(read);
    return made;
}

/// The rectangle of @p raster in the coordinate system of @p target; void when it has none there.
CRect2D boundsIn(GDALDataset &target, GDALDataset &raster)
{
    const CRect2D own = TxRasterPlace::of(raster).bounds(raster.GetRasterXSize(), raster.GetRasterYSize());
    const OGRSpatialReference *from = raster.GetSpatialRef();
    const OGRSpatialReference *to = target.GetSpatialRef();
    if (!from || from->IsEmpty() || !to || to->IsEmpty() || from->IsSame(to))
        return own;
    OGRSpatialReference fromSystem(*from), toSystem(*to);
    fromSystem.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    toSystem.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    const std::unique_ptr<OGRCoordinateTransformation> transformation(
        OGRCreateCoordinateTransformation(&fromSystem, &toSystem));
    CRect2D result;
    if (!transformation || !transformation->TransformBounds(own.left, own.bottom, own.right, own.top, &result.left,
                                                            &result.bottom, &result.right, &result.top, 21))
        return CRect2D();
    return result;
}

/// The target's cells that a rectangle may touch; empty when there is none.
Window windowOf(GDALDataset &target, const CRect2D &bounds)
{
    if (bounds.IsVoid())
        return Window();
    TxRasterPlace place = TxRasterPlace::of(target);
    CRect2D cells;
    for (const double x : {bounds.left, bounds.right}) {
        for (const double y : {bounds.bottom, bounds.top}) {
            double column = 0, row = 0;
            GDALApplyGeoTransform(place.inverse.data(), x, y, &column, &row);
            cells.Union(CRect2D(column, row, column, row));
        }
    }
    const auto limited = [](double value, int count) {
        return static_cast<int>(std::clamp(value, 0.0, double(count)));
    };
    Window window;
    window.column = limited(std::floor(cells.left + 1e-6), target.GetRasterXSize());
    window.row = limited(std::floor(cells.bottom + 1e-6), target.GetRasterYSize());
    window.width = limited(std::ceil(cells.right - 1e-6), target.GetRasterXSize()) - window.column;
    window.height = limited(std::ceil(cells.top - 1e-6), target.GetRasterYSize()) - window.row;
    return window;
}

/// @p source on the cells of the target's @p window, the nearest cell for each, with an alpha band behind its bands.
TxGdal::DatasetPtr onCells(GDALDataset &target, const Window &window, GDALDataset &source)
{
    const std::array<double, 6> t = TxRasterPlace::of(target).transform;
    if (t[2] != 0 || t[4] != 0 || t[1] <= 0 || t[5] >= 0) {
        refuse("its cells do not stand upright");
        return nullptr;
    }
    CPLStringList options;
    for (const char *word : {"-of", "VRT", "-r", "near", "-dstalpha", "-te"})
        options.AddString(word);
    options.AddString(number(t[0] + window.column * t[1]).constData());
    options.AddString(number(t[3] + (window.row + window.height) * t[5]).constData());
    options.AddString(number(t[0] + (window.column + window.width) * t[1]).constData());
    options.AddString(number(t[3] + window.row * t[5]).constData());
    options.AddString("-ts");
    options.AddString(QByteArray::number(window.width).constData());
    options.AddString(QByteArray::number(window.height).constData());
    const char *system = target.GetProjectionRef();
    if (system && *system) {
        options.AddString("-t_srs");
        options.AddString(system);
    }
    GDALWarpAppOptions *read = GDALWarpAppOptionsNew(options.List(), nullptr);
    GDALDatasetH from = GDALDataset::ToHandle(&source);
    TxGdal::DatasetPtr made(dataset(read ? GDALWarp("", nullptr, 1, &from, read, nullptr) : nullptr));
    GDALWarpAppOptionsFree(read);
    return made;
}

/// One strip of the work: reads, decides and writes.
class Strip
{
public:
    Strip(GDALDataset &target, GDALDataset &source, const Window &window, bool replace)
        : m_target(target), m_source(source), m_window(window), m_replace(replace), m_values(valueBands(target)),
          m_cells(static_cast<size_t>(window.width) * static_cast<size_t>(window.height))
    {
    }

    /// @p firstRow counts in the source. @p written becomes true when a cell of the source held data.
    bool run(int firstRow, bool &written)
    {
        if (!chooseCells(firstRow, written))
            return false;
        if (std::none_of(m_chosen.begin(), m_chosen.end(), [](quint8 chosen) { return chosen != 0; }))
            return true;
        for (int band = 1; band <= m_values; ++band) {
            if (!copyBand(band, band, firstRow))
                return false;
        }
        const int alpha = m_target.GetRasterCount();
        return alpha == m_values || copyBand(m_source.GetRasterCount(), alpha, firstRow);
    }

private:
    template<class T>
    bool readSource(int band, int firstRow, GDALDataType type, std::vector<T> &cells)
    {
        cells.resize(m_cells);
        return m_source.GetRasterBand(band)->RasterIO(GF_Read, 0, firstRow, m_window.width, m_window.height,
                                                      cells.data(), m_window.width, m_window.height, type, 0, 0,
                                                      nullptr) == CE_None;
    }

    template<class T>
    bool exchange(GDALRasterBand &band, GDALRWFlag flag, GDALDataType type, std::vector<T> &cells)
    {
        cells.resize(m_cells);
        return band.RasterIO(flag, m_window.column, m_window.row, m_window.width, m_window.height, cells.data(),
                             m_window.width, m_window.height, type, 0, 0, nullptr) == CE_None;
    }

    bool chooseCells(int firstRow, bool &written)
    {
        if (!readSource(m_source.GetRasterCount(), firstRow, GDT_Byte, m_chosen) ||
            !readSource(1, firstRow, GDT_Float64, m_buffer))
            return false;
        for (size_t i = 0; i < m_cells; ++i) {
            if (std::isnan(m_buffer[i]))
                m_chosen[i] = 0;
            written = written || m_chosen[i] != 0;
        }
        if (m_replace)
            return true;
        GDALRasterBand &mask = *m_target.GetRasterBand(1)->GetMaskBand();
        std::vector<quint8> taken;
        if (!exchange(mask, GF_Read, GDT_Byte, taken))
            return false;
        for (size_t i = 0; i < m_cells; ++i)
            m_chosen[i] = taken[i] ? 0 : m_chosen[i];
        return true;
    }

    bool copyBand(int from, int to, int firstRow)
    {
        GDALRasterBand &band = *m_target.GetRasterBand(to);
        std::vector<double> there;
        if (!readSource(from, firstRow, GDT_Float64, m_buffer) || !exchange(band, GF_Read, GDT_Float64, there))
            return false;
        for (size_t i = 0; i < m_cells; ++i)
            there[i] = m_chosen[i] ? m_buffer[i] : there[i];
        return exchange(band, GF_Write, GDT_Float64, there);
    }

    GDALDataset &m_target;
    GDALDataset &m_source;
    const Window m_window;
    const bool m_replace;
    const int m_values;
    const size_t m_cells;
    std::vector<quint8> m_chosen; // cells that are written
    std::vector<double> m_buffer;
};

} // namespace

bool lay(GDALDataset &target, GDALDataset &source, const CRect2D &bounds, bool replace, const TxProgress &progress)
{
    const TxGdal::DatasetPtr laid = prepared(target, source, bounds);
    if (!laid)
        return false;
    const Window window = windowOf(target, boundsIn(target, *laid));
    if (window.width <= 0 || window.height <= 0)
        return refuse("the two do not overlap");
    const TxGdal::DatasetPtr cells = onCells(target, window, *laid);
    if (!cells)
        return false;
    bool written = false;
    const int rows = std::max(1, mostCells / window.width);
    for (int row = 0; row < window.height; row += rows) {
        if (progress && !progress(row, window.height))
            return refuse("it was stopped");
        const Window part = {window.column, window.row + row, window.width, std::min(rows, window.height - row)};
        if (!Strip(target, *cells, part, replace).run(row, written))
            return false;
    }
    return written || refuse("no cell of it that holds data lies there");
}

} // namespace TxRasterMosaic
