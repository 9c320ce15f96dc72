#include "engine/data/TxRasterWarper.h"

#include "engine/data/TxRasterPrivate.h"

#include <ogr_spatialref.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr double errorThreshold = 0.125; ///< of a place, in cells

/// Formats whose every value a Float32 holds exactly.
constexpr std::array smallTypes = {GDT_Byte, GDT_Int16, GDT_UInt16, GDT_Float32};

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// The cells of one raster that a rectangle of another's touches.
struct Extent
{
    CRect2D cells;
    bool isWhole = true; ///< every point had a place there
};

/// Where the rectangle of @p width by @p height cells from (@p column, @p row) lies, by points spread over it.
Extent extentOf(void *transformer, bool toSource, double column, double row, double width, double height)
{
    constexpr int steps = 20;
    constexpr int points = (steps + 1) * (steps + 1);
    std::vector<double> x, y, z(points, 0.0);
    std::vector<int> success(points, 0);
    for (int i = 0; i <= steps; ++i) {
        for (int j = 0; j <= steps; ++j) {
            x.push_back(column + width * i / steps);
            y.push_back(row + height * j / steps);
        }
    }
    {
        const CPLErrorHandlerPusher quiet(CPLQuietErrorHandler); // points without a place are no failures
        GDALGenImgProjTransform(transformer, toSource ? TRUE : FALSE, points, x.data(), y.data(), z.data(),
                                success.data());
    }
    Extent extent;
    for (size_t i = 0; i < points; ++i) {
        if (success[i] && std::isfinite(x[i]) && std::isfinite(y[i]))
            extent.cells.Union(CRect2D(x[i], y[i], x[i], y[i]));
        else
            extent.isWhole = false;
    }
    return extent;
}

double limited(double value, int limit)
{
    return std::clamp(value, 0.0, double(limit));
}

} // namespace

TxRasterWarper::TxRasterWarper(GDALDataset &target, GDALDataset &source, const TxRasterBands &bands, bool areClasses)
    : TxRasterReader(target, source, bands, areClasses)
{
    const bool isSmall = std::all_of(m_read.begin(), m_read.end(), [&source](int band) {
        const GDALDataType type = source.GetRasterBand(band)->GetRasterDataType();
        return std::find(smallTypes.begin(), smallTypes.end(), type) != smallTypes.end();
    });
    m_format = isSmall && !bands.expandsPalette ? GDT_Float32 : GDT_Float64;
}

std::unique_ptr<TxRasterReader> TxRasterWarper::create(GDALDataset &target, GDALDataset &source,
                                                       const TxRasterBands &bands, bool areClasses)
{
    std::unique_ptr<TxRasterWarper> made(new TxRasterWarper(target, source, bands, areClasses));
    if (!made->connect(target))
        return nullptr;
    made->findWindow();
    if (!made->m_window.isEmpty() && !made->prepare(areClasses))
        return nullptr;
    return made;
}

bool TxRasterWarper::connect(GDALDataset &target)
{
    GDALDriver *memory = GetGDALDriverManager()->GetDriverByName("MEM");
    m_frame.reset(memory ? memory->Create("", target.GetRasterXSize(), target.GetRasterYSize(), 0, GDT_Byte, nullptr)
                         : nullptr);
    if (!m_frame)
        return false;
    TxRasterPlace place = TxRasterPlace::of(target);
    m_frame->SetGeoTransform(place.transform.data());
    const OGRSpatialReference *own = TxRasterPlace::systemOf(target);
    const OGRSpatialReference *other =
        m_source.GetSpatialRef() ? m_source.GetSpatialRef() : m_source.GetGCPSpatialRef();
    m_frame->SetSpatialRef(own ? own : other);
    m_transformer.reset(GDALCreateGenImgProjTransformer2(GDALDataset::ToHandle(&m_source),
                                                         GDALDataset::ToHandle(m_frame.get()), nullptr));
    return m_transformer != nullptr;
}

void TxRasterWarper::findWindow()
{
    const int width = m_frame->GetRasterXSize(), height = m_frame->GetRasterYSize();
    const int sourceWidth = m_source.GetRasterXSize(), sourceHeight = m_source.GetRasterYSize();
    const Extent there = extentOf(m_transformer.get(), false, 0, 0, sourceWidth, sourceHeight);
    const CRect2D &cells = there.cells;
    if (cells.IsVoid())
        return;
    // Between the points an edge may bulge. Where some have no place in the target's coordinate system, as the poles
    // have none in many, those beside them may lie anywhere.
    const double margin =
        there.isWhole ? 2 + 0.02 * std::max(cells.Width(), cells.Height()) : std::numeric_limits<double>::infinity();
    m_window.column = static_cast<int>(limited(std::floor(cells.left - margin), width));
    m_window.row = static_cast<int>(limited(std::floor(cells.bottom - margin), height));
    m_window.width = static_cast<int>(limited(std::ceil(cells.right + margin), width)) - m_window.column;
    m_window.height = static_cast<int>(limited(std::ceil(cells.top + margin), height)) - m_window.row;
    if (m_window.isEmpty())
        return;
    const CRect2D back =
        extentOf(m_transformer.get(), true, m_window.column, m_window.row, m_window.width, m_window.height).cells;
    if (!back.IsVoid()) {
        // Some of the window may lie beside the source: what is counted is a cell's size, not how many there are.
        m_density = back.Width() * back.Height() / static_cast<double>(m_window.count());
        m_density = std::min(m_density, double(sourceWidth) * sourceHeight);
    }
}

bool TxRasterWarper::prepare(bool areClasses)
{
    constexpr double muchFiner = 2 * 2; // cells of the source for one
    GDALWarpOptions *options = GDALCreateWarpOptions();
    options->eResampleAlg = areClasses ? GRA_NearestNeighbour : m_density > muchFiner ? GRA_Average : GRA_Bilinear;
    options->eWorkingDataType = m_format;
    options->hSrcDS = GDALDataset::ToHandle(&m_source);
    GDALWarpInitDefaultBandMapping(options, static_cast<int>(m_read.size()));
    bool hasNoData = false;
    for (size_t i = 0; i < m_read.size(); ++i)
        options->panSrcBands[i] = m_read[i];
    if (m_bands.sourceAlpha == 0) {      // else the mask says more
        constexpr double none = -1.1e20; // the warper's word for it
        GDALWarpInitSrcNoDataReal(options, none);
        for (size_t i = 0; i < m_read.size(); ++i) {
            GDALRasterBand &band = *m_source.GetRasterBand(m_read[i]);
            int isSet = FALSE;
            const double value = band.GetNoDataValue(&isSet);
            const bool isFloating = GDALDataTypeIsFloating(band.GetRasterDataType()) != FALSE;
            const bool hasMask = (band.GetMaskFlags() & GMF_PER_DATASET) != 0 && !isSet;
            if (isSet || (isFloating && !hasMask)) { // one NaN would make its neighbours NaN
                options->padfSrcNoDataReal[i] = isSet ? value : double(notANumber);
                hasNoData = true;
            }
        }
    }
    if (!hasNoData) {
        CPLFree(options->padfSrcNoDataReal);
        options->padfSrcNoDataReal = nullptr;
    }
    options->papszWarpOptions = CSLSetNameValue(options->papszWarpOptions, "UNIFIED_SRC_NODATA", "YES");
    void *approximate = GDALCreateApproxTransformer(GDALGenImgProjTransform, m_transformer.get(), errorThreshold);
    bool done = approximate != nullptr;
    if (done) {
        m_transformer.release(); // the other owns it from here on
        GDALApproxTransformerOwnsSubtransformer(approximate, TRUE);
        m_transformer.reset(approximate);
        options->pfnTransformer = GDALApproxTransform;
        options->pTransformerArg = approximate;
        done = m_operation.Initialize(options) == CE_None;
    }
    GDALDestroyWarpOptions(options);
    return done;
}

bool TxRasterWarper::readBands(const TxCellWindow &window, uchar *bytes, std::vector<quint8> &hasData)
{
    const size_t values = window.count() * m_read.size();
    if (m_format == GDT_Float32)
        std::fill_n(reinterpret_cast<float *>(bytes), values, notANumber);
    else
        std::fill_n(reinterpret_cast<double *>(bytes), values, double(notANumber));
    std::fill(hasData.begin(), hasData.end(), quint8(1)); // where nothing was written NaN stays
    return m_operation.WarpRegionToBuffer(window.column, window.row, window.width, window.height, bytes, m_format) ==
           CE_None;
}
