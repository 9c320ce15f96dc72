#include "engine/data/TxRasterReader.h"

#include "engine/base/TxNumberText.h"
#include "engine/data/TxCellValues.h"
#include "engine/data/TxRasterPrivate.h"
#include "engine/data/TxRasterWarper.h"

#include <gdal_utils.h>
#include <ogr_spatialref.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

std::nullptr_t refuse(const char *reason)
{
    CPLError(CE_Failure, CPLE_AppDefined, "%s", reason);
    return nullptr;
}

bool hasSystem(GDALDataset &raster)
{
    return TxRasterPlace::systemOf(raster) || raster.GetGCPCount() > 0;
}

bool isPlaced(GDALDataset &raster)
{
    std::array<double, 6> transform;
    return raster.GetGeoTransform(transform.data()) == CE_None;
}

/// @p source with the place, the coordinate system and the mask with which it is to be read, where these are others
/// than its own; nothing is copied. Null when it can be read as it is, and on @p failure.
TxGdal::DatasetPtr placed(GDALDataset &target, GDALDataset &source, const TxRasterBands &bands, const CRect2D &bounds,
                          bool &failure)
{
    CPLStringList options;
    const auto add = [&options](const char *word) { options.AddString(word); };
    const bool isGiven = !bounds.IsVoid();
    if (isGiven || !(isPlaced(source) || source.GetGCPCount() > 0)) {
        const CRect2D place =
            isGiven ? bounds : TxRasterPlace::of(source).bounds(source.GetRasterXSize(), source.GetRasterYSize());
        add("-a_ullr");
        for (const double value : {place.left, place.top, place.right, place.bottom})
            add(TxNumberText::shortest(value).toLatin1().constData());
    }
    const bool takesSystem = hasSystem(source) ? isGiven : hasSystem(target); // what is not said is the target's
    if (bands.sourceAlpha > 0) { // as a mask it says where data is, and no more
        add("-mask");
        add(QByteArray::number(bands.sourceAlpha).constData());
    }
    failure = false;
    if (options.empty() && !takesSystem)
        return nullptr;
    add("-of");
    add("VRT");
    GDALTranslateOptions *read = GDALTranslateOptionsNew(options.List(), nullptr);
    GDALDatasetH made = read ? GDALTranslate("", GDALDataset::ToHandle(&source), read, nullptr) : nullptr;
    GDALTranslateOptionsFree(read);
    TxGdal::DatasetPtr result(GDALDataset::FromHandle(made));
    failure = !result || (takesSystem && result->SetSpatialRef(TxRasterPlace::systemOf(target)) != CE_None);
    return result;
}

/// Reads a source that has the target's own cells.
class CellCopier : public TxRasterReader
{
public:
    CellCopier(GDALDataset &target, GDALDataset &source, const TxRasterBands &bands, int column, int row)
        : TxRasterReader(target, source, bands, true), m_column(column), m_row(row)
    {
        m_window.column = std::max(0, column);
        m_window.row = std::max(0, row);
        const auto end = [](int first, int count, int limit) {
            return static_cast<int>(std::clamp<qint64>(qint64(first) + count, 0, limit));
        };
        m_window.width = end(column, source.GetRasterXSize(), target.GetRasterXSize()) - m_window.column;
        m_window.height = end(row, source.GetRasterYSize(), target.GetRasterYSize()) - m_window.row;
    }

    /// Where in the target's grid the source's first cell lies, if the source has the target's cells.
    static std::optional<std::pair<int, int>> offset(GDALDataset &target, GDALDataset &source)
    {
        constexpr double tolerance = 0.01; // cells
        constexpr double farthest = 1 << 30;
        std::array<double, 6> from;
        const std::array<double, 6> to = TxRasterPlace::of(target).transform;
        if (source.GetGeoTransform(from.data()) != CE_None || from[2] != 0 || from[4] != 0 || to[2] != 0 || to[4] != 0)
            return std::nullopt;
        const OGRSpatialReference *fromSystem = TxRasterPlace::systemOf(source);
        const OGRSpatialReference *toSystem = TxRasterPlace::systemOf(target);
        if (fromSystem && toSystem && !fromSystem->IsSame(toSystem))
            return std::nullopt;
        const double column = (from[0] - to[0]) / to[1], row = (from[3] - to[3]) / to[5];
        const double drift = std::max(std::abs(from[1] / to[1] - 1) * source.GetRasterXSize(),
                                      std::abs(from[5] / to[5] - 1) * source.GetRasterYSize());
        const bool agree = std::abs(column) < farthest && std::abs(row) < farthest && drift < tolerance &&
                           std::abs(column - std::round(column)) < tolerance &&
                           std::abs(row - std::round(row)) < tolerance;
        return agree ? std::optional(std::pair(static_cast<int>(std::round(column)), static_cast<int>(std::round(row))))
                     : std::nullopt;
    }

protected:
    bool readBands(const TxCellWindow &window, uchar *bytes, std::vector<quint8> &hasData) override
    {
        const int column = window.column - m_column, row = window.row - m_row;
        if (m_source.RasterIO(GF_Read, column, row, window.width, window.height, bytes, window.width, window.height,
                              m_format, static_cast<int>(m_read.size()), m_read.data(), 0, 0, 0, nullptr) != CE_None)
            return false;
        for (const int number : m_bands.sources) {
            GDALRasterBand &band = *m_source.GetRasterBand(number);
            if (band.GetMaskFlags() == GMF_ALL_VALID) {
                std::fill(hasData.begin(), hasData.end(), quint8(1));
                break;
            }
            m_mask.resize(hasData.size());
            if (band.GetMaskBand()->RasterIO(GF_Read, column, row, window.width, window.height, m_mask.data(),
                                             window.width, window.height, GDT_Byte, 0, 0, nullptr) != CE_None)
                return false;
            for (size_t i = 0; i < hasData.size(); ++i)
                hasData[i] |= m_mask[i] != 0 ? 1 : 0;
            if ((band.GetMaskFlags() & GMF_PER_DATASET) != 0)
                break;
        }
        return true;
    }

private:
    const int m_column, m_row; // of the source's first cell in the target
    std::vector<quint8> m_mask;
};

/// Takes from @p hasData the cells that are NaN in each of @p bands bands.
template<class T>
void dropNotANumber(const uchar *bytes, size_t bands, std::vector<quint8> &hasData)
{
    const T *values = reinterpret_cast<const T *>(bytes);
    const size_t count = hasData.size();
    for (size_t i = 0; i < count; ++i) {
        bool isNumber = false;
        for (size_t band = 0; band < bands && !isNumber; ++band)
            isNumber = !std::isnan(values[band * count + i]);
        hasData[i] &= isNumber ? 1 : 0;
    }
}

GDALDataType sourceTypeOf(GDALDataset &source, const std::vector<int> &bands)
{
    GDALDataType type = source.GetRasterBand(bands.front())->GetRasterDataType();
    for (const int band : bands)
        type = GDALDataTypeUnion(type, source.GetRasterBand(band)->GetRasterDataType());
    return type;
}

} // namespace

TxRasterReader::TxRasterReader(GDALDataset &target, GDALDataset &source, const TxRasterBands &bands, bool isExact)
    : m_source(source), m_bands(bands), m_read(bands.sources), m_sourceType(sourceTypeOf(source, bands.sources)),
      m_targetType(target.GetRasterBand(1)->GetRasterDataType()), m_isExact(isExact)
{
    if (bands.sourceAlpha > 0 && bands.targetAlpha > 0)
        m_read.push_back(bands.sourceAlpha);
    const bool asTheyAre = !bands.expandsPalette && TxCellValues::isLossless(m_sourceType, m_targetType);
    m_format = asTheyAre ? m_targetType : GDT_Float64;
}

TxRasterReader::~TxRasterReader() = default;

std::unique_ptr<TxRasterReader> TxRasterReader::create(GDALDataset &target, GDALDataset &source,
                                                       const TxRasterOrder &order)
{
    const std::optional<TxRasterBands> bands = TxRasterBands::match(target, order.kind, source);
    if (!bands)
        return nullptr;
    if (order.bounds.IsVoid() && !isPlaced(source) && source.GetGCPCount() == 0 && isPlaced(target))
        return refuse("it has no georeference, and no bounds were given");
    bool failure = false;
    TxGdal::DatasetPtr other = placed(target, source, *bands, order.bounds, failure);
    if (failure)
        return nullptr;
    GDALDataset &from = other ? *other : source;
    std::unique_ptr<TxRasterReader> reader;
    if (const auto offset = CellCopier::offset(target, from)) {
        reader = std::make_unique<CellCopier>(target, from, *bands, offset->first, offset->second);
    } else {
        const bool isWhole = !GDALDataTypeIsFloating(target.GetRasterBand(1)->GetRasterDataType());
        const bool areClasses = TxRasterBands::holdsClasses(source) || TxRasterBands::holdsClasses(target) ||
                                (order.kind == CElemDatasetInfo::Grid && isWhole);
        reader = TxRasterWarper::create(target, from, *bands, areClasses);
    }
    if (!reader)
        return nullptr;
    reader->m_placed = std::move(other);
    if (reader->m_window.isEmpty())
        return refuse("the two do not overlap");
    return reader;
}

bool TxRasterReader::read(const TxCellWindow &window, TxCells &cells)
{
    const size_t count = window.count();
    cells.hasData.assign(count, 0);
    m_bytes.resize(count * m_read.size() * static_cast<size_t>(GDALGetDataTypeSizeBytes(m_format)));
    if (!readBands(window, m_bytes.data(), cells.hasData))
        return false;
    if (m_format == GDT_Float32)
        dropNotANumber<float>(m_bytes.data(), m_bands.sources.size(), cells.hasData);
    else if (m_format == GDT_Float64)
        dropNotANumber<double>(m_bytes.data(), m_bands.sources.size(), cells.hasData);
    if (m_bands.expandsPalette)
        expandPalette(count, cells.hasData);
    return convert(count, cells);
}

void TxRasterReader::expandPalette(size_t count, std::vector<quint8> &hasData)
{
    constexpr size_t channels = 4;
    const GDALColorTable &palette = *m_source.GetRasterBand(1)->GetColorTable();
    std::vector<std::array<double, channels>> colours;
    for (int i = 0; i < palette.GetColorEntryCount(); ++i) {
        const GDALColorEntry &entry = *palette.GetColorEntry(i);
        colours.push_back({double(entry.c1), double(entry.c2), double(entry.c3), double(entry.c4)});
    }
    const size_t planes = m_bands.targetAlpha > 0 ? channels : channels - 1;
    std::vector<uchar> bytes(count * planes * sizeof(double));
    const double *places = reinterpret_cast<const double *>(m_bytes.data());
    double *values = reinterpret_cast<double *>(bytes.data());
    for (size_t i = 0; i < count; ++i) {
        const bool isColour = hasData[i] && places[i] >= 0 && places[i] < double(colours.size());
        const std::array<double, channels> colour = isColour ? colours[size_t(places[i])] : std::array<double, 4>{};
        hasData[i] = colour[channels - 1] > 0 ? 1 : 0;
        for (size_t plane = 0; plane < planes; ++plane)
            values[plane * count + i] = colour[plane];
    }
    m_bytes.swap(bytes);
}

bool TxRasterReader::convert(size_t count, TxCells &cells) const
{
    const size_t bands = (m_bands.expandsPalette ? 3 : m_bands.sources.size()) + (m_bands.targetAlpha > 0 ? 1 : 0);
    const auto cellSize = static_cast<size_t>(GDALGetDataTypeSizeBytes(m_targetType));
    const auto readSize = static_cast<size_t>(GDALGetDataTypeSizeBytes(m_format));
    const size_t given = m_bytes.size() / readSize / count;
    cells.bytes.resize(bands * count * cellSize);
    if (m_format == m_targetType) {
        std::copy(m_bytes.begin(), m_bytes.end(), cells.bytes.begin());
    } else {
        const bool wholeNumbers = m_isExact && !GDALDataTypeIsFloating(m_sourceType);
        for (size_t band = 0; band < given; ++band) {
            if (!TxCellValues::write(m_bytes.data() + band * count * readSize, m_format, cells.hasData.data(), count,
                                     cells.bytes.data() + band * count * cellSize, m_targetType, wholeNumbers))
                return false;
        }
    }
    if (given < bands) { // alpha
        const double opaque = TxCellValues::opaque(m_targetType);
        GDALCopyWords64(&opaque, GDT_Float64, 0, cells.bytes.data() + given * count * cellSize, m_targetType,
                        static_cast<int>(cellSize), static_cast<GPtrDiff_t>(count));
    }
    return true;
}
