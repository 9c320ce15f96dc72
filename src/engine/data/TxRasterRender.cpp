#include "engine/data/TxRasterRender.h"

#include "engine/symbol/TxHeightColors.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace TxRasterRender {

namespace {

constexpr qint64 mostPixels = qint64(1) << 27; // of the image: 512 MB
constexpr double mostAveragedCells = 64e6;     // beyond, every n-th cell is read
constexpr int rampSize = 256;

/// The affine way from pixels of the image to columns and rows of the raster.
struct PixelToCell
{
    double column0, columnPerX, columnPerY;
    double row0, rowPerX, rowPerY;

    PixelToCell(const TxRasterPlace &place, const CRect2D &bounds, const QSize &size)
    {
        const double unitX = bounds.Width() / size.width();
        const double unitY = -bounds.Height() / size.height(); // pixels count downward
        const std::array<double, 6> &inverse = place.inverse;
        column0 = inverse[0] + inverse[1] * bounds.left + inverse[2] * bounds.top;
        row0 = inverse[3] + inverse[4] * bounds.left + inverse[5] * bounds.top;
        columnPerX = inverse[1] * unitX;
        columnPerY = inverse[2] * unitY;
        rowPerX = inverse[4] * unitX;
        rowPerY = inverse[5] * unitY;
    }
    double column(double x, double y) const { return column0 + columnPerX * x + columnPerY * y; }
    double row(double x, double y) const { return row0 + rowPerX * x + rowPerY * y; }
    bool isFinite() const
    {
        return std::isfinite(column0 + columnPerX + columnPerY) && std::isfinite(row0 + rowPerX + rowPerY);
    }
};

/// The part of the raster that is read, and the size that it is read at.
struct Window
{
    int column = 0, row = 0, width = 0, height = 0;
    int bufferWidth = 0, bufferHeight = 0;
    GDALRIOResampleAlg sampling = GRIORA_NearestNeighbour;

    size_t cells() const { return static_cast<size_t>(bufferWidth) * static_cast<size_t>(bufferHeight); }
};

/// One axis of the window: the cells from @p low to @p high, of @p count, read so that about @p perPixel cells fall on
/// one.
void chooseRange(double low, double high, int count, double perPixel, int &first, int &length, int &bufferLength)
{
    // One cell more on each side, since a pixel's middle decides.
    const double from = std::clamp(std::floor(low) - 1, 0.0, double(count));
    const double to = std::clamp(std::ceil(high) + 1, from, double(count));
    first = static_cast<int>(from);
    length = static_cast<int>(to - from);
    bufferLength = static_cast<int>(std::ceil(length / std::max(perPixel, 1.0)));
}

Window chooseWindow(GDALDataset &gdal, const PixelToCell &way, const QSize &size, bool mayAverage)
{
    double lowColumn = HUGE_VAL, highColumn = -HUGE_VAL, lowRow = HUGE_VAL, highRow = -HUGE_VAL;
    for (const int x : {0, size.width()}) {
        for (const int y : {0, size.height()}) {
            lowColumn = std::min(lowColumn, way.column(x, y));
            highColumn = std::max(highColumn, way.column(x, y));
            lowRow = std::min(lowRow, way.row(x, y));
            highRow = std::max(highRow, way.row(x, y));
        }
    }
    Window window;
    const double columnsPerPixel = std::hypot(way.columnPerX, way.columnPerY);
    const double rowsPerPixel = std::hypot(way.rowPerX, way.rowPerY);
    chooseRange(lowColumn, highColumn, gdal.GetRasterXSize(), columnsPerPixel, window.column, window.width,
                window.bufferWidth);
    chooseRange(lowRow, highRow, gdal.GetRasterYSize(), rowsPerPixel, window.row, window.height, window.bufferHeight);
    const bool isReduced = window.bufferWidth < window.width || window.bufferHeight < window.height;
    const bool isCheap =
        gdal.GetRasterBand(1)->GetOverviewCount() > 0 || double(window.width) * window.height <= mostAveragedCells;
    if (isReduced && mayAverage && isCheap)
        window.sampling = GRIORA_Average;
    return window;
}

template<class T>
bool read(GDALRasterBand &band, const Window &window, GDALDataType type, GDALRIOResampleAlg sampling,
          std::vector<T> &cells)
{
    cells.resize(window.cells());
    GDALRasterIOExtraArg extra;
    INIT_RASTERIO_EXTRA_ARG(extra);
    extra.eResampleAlg = sampling;
    return band.RasterIO(GF_Read, window.column, window.row, window.width, window.height, cells.data(),
                         window.bufferWidth, window.bufferHeight, type, 0, 0, &extra) == CE_None;
}

/// The bands of an image: three that make colours, or one.
std::vector<int> colourBands(GDALDataset &gdal)
{
    std::array<int, 3> byName = {0, 0, 0};
    for (int band = gdal.GetRasterCount(); band >= 1; --band) {
        switch (gdal.GetRasterBand(band)->GetColorInterpretation()) {
        case GCI_RedBand:
            byName[0] = band;
            break;
        case GCI_GreenBand:
            byName[1] = band;
            break;
        case GCI_BlueBand:
            byName[2] = band;
            break;
        default:
            break;
        }
    }
    if (byName[0] && byName[1] && byName[2])
        return {byName.begin(), byName.end()};
    const bool hasThree = gdal.GetRasterCount() >= 3 &&
                          gdal.GetRasterBand(2)->GetColorInterpretation() != GCI_AlphaBand &&
                          gdal.GetRasterBand(3)->GetColorInterpretation() != GCI_AlphaBand;
    return hasThree ? std::vector<int>{1, 2, 3} : std::vector<int>{1};
}

/// Reads a band as bytes: as they are, or stretched between its smallest and largest value.
bool readBytes(TxRasterPrivate &raster, int number, const Window &window, std::vector<quint8> &bytes,
               std::vector<quint8> &invalid)
{
    GDALRasterBand &band = *raster.gdal->GetRasterBand(number);
    if (band.GetRasterDataType() == GDT_Byte)
        return read(band, window, GDT_Byte, window.sampling, bytes);
    std::vector<float> values;
    if (!read(band, window, GDT_Float32, window.sampling, values))
        return false;
    const auto [low, high] = raster.valueRange(number).value_or(std::make_pair(0.0, 0.0));
    const double scale = high > low ? (rampSize - 1) / (high - low) : 0.0;
    bytes.resize(values.size());
    for (size_t i = 0; i < values.size(); ++i) {
        const double value = double(values[i]);
        if (std::isnan(value)) {
            invalid[i] = 1;
            continue;
        }
        const double place = scale > 0 ? (value - low) * scale : (rampSize - 1) / 2.0;
        bytes[i] = static_cast<quint8>(std::clamp(place + 0.5, 0.0, double(rampSize - 1)));
    }
    return true;
}

/// The opacity of every cell: 0 where none of the bands has data.
bool readOpacity(GDALDataset &gdal, const std::vector<int> &bands, const Window &window, std::vector<quint8> &opacity)
{
    opacity.assign(window.cells(), 0);
    std::vector<quint8> mask;
    for (const int number : bands) {
        GDALRasterBand &band = *gdal.GetRasterBand(number);
        if (band.GetMaskFlags() == GMF_ALL_VALID) {
            std::fill(opacity.begin(), opacity.end(), quint8(255));
            return true;
        }
        if (!read(*band.GetMaskBand(), window, GDT_Byte, GRIORA_NearestNeighbour, mask))
            return false;
        std::transform(opacity.begin(), opacity.end(), mask.begin(), opacity.begin(),
                       [](quint8 a, quint8 b) { return std::max(a, b); });
    }
    return true;
}

/// What a byte of a single band shows.
std::array<QRgb, rampSize> singleBandColours(const GDALColorTable *palette, bool isGrid, const QList<QRgb> &ramp)
{
    std::array<QRgb, rampSize> colours;
    for (int i = 0; i < rampSize; ++i) {
        QRgb colour = qRgb(i, i, i);
        if (palette) {
            GDALColorEntry entry = {0, 0, 0, 0};
            const bool isKnown = i < palette->GetColorEntryCount() && palette->GetColorEntryAsRGB(i, &entry);
            colour = isKnown ? qRgba(entry.c1, entry.c2, entry.c3, entry.c4) : qRgba(0, 0, 0, 0);
        } else if (isGrid && !ramp.isEmpty()) {
            colour = ramp.at((i * (ramp.size() - 1) + rampSize / 2) / (rampSize - 1)); // the nearest of a shorter one
        }
        colours[static_cast<size_t>(i)] = colour;
    }
    return colours;
}

/// The colour of every cell that was read, not premultiplied; empty on failure.
std::vector<QRgb> readColours(TxRasterPrivate &raster, const Window &window, const QList<QRgb> &ramp)
{
    GDALDataset &gdal = *raster.gdal;
    const std::vector<int> bands = colourBands(gdal);
    std::vector<std::vector<quint8>> bytes(bands.size());
    std::vector<quint8> invalid(window.cells(), 0);
    std::vector<quint8> opacity;
    for (size_t i = 0; i < bands.size(); ++i) {
        if (!readBytes(raster, bands[i], window, bytes[i], invalid))
            return {};
    }
    if (!readOpacity(gdal, bands, window, opacity))
        return {};
    std::vector<QRgb> colours(window.cells());
    if (bands.size() == 3) {
        for (size_t i = 0; i < colours.size(); ++i)
            colours[i] = qRgba(bytes[0][i], bytes[1][i], bytes[2][i], invalid[i] ? 0 : opacity[i]);
        return colours;
    }
    const CElemDatasetInfo::Type kind = raster.q->GetType();
    const bool isGrid = kind == CElemDatasetInfo::Grid || kind == CElemDatasetInfo::DEM;
    const auto shown = singleBandColours(gdal.GetRasterBand(bands[0])->GetColorTable(), isGrid, ramp);
    for (size_t i = 0; i < colours.size(); ++i) {
        const QRgb colour = shown[bytes[0][i]];
        const int alpha = invalid[i] ? 0 : qAlpha(colour) * opacity[i] / 255;
        colours[i] = qRgba(qRed(colour), qGreen(colour), qBlue(colour), alpha);
    }
    return colours;
}

/// The same of a grid whose values have colours of their own.
std::vector<QRgb> readHeights(GDALDataset &gdal, const Window &window, const TxHeightColors &heights)
{
    std::vector<double> values; // single precision would not do for whole numbers of 32 bits
    std::vector<quint8> opacity;
    if (!read(*gdal.GetRasterBand(1), window, GDT_Float64, window.sampling, values) ||
        !readOpacity(gdal, {1}, window, opacity))
        return {};
    std::vector<QRgb> colours(values.size(), 0);
    for (size_t i = 0; i < colours.size(); ++i) {
        if (opacity[i] > 0 && !std::isnan(values[i]))
            colours[i] = heights.at(values[i]) & (quint32(opacity[i]) << 24 | RGB_MASK);
    }
    return colours;
}

/// Paints what @p readColours gives for a window of the raster: the colour of every cell, empty on failure.
template<class ReadColours>
QImage paint(GDALDataset &gdal, const CRect2D &bounds, const QSize &size, ReadColours readColours)
{
    const PixelToCell way(TxRasterPlace::of(gdal), bounds, size);
    if (gdal.GetRasterCount() == 0 || !way.isFinite() || qint64(size.width()) * size.height() > mostPixels)
        return QImage();
    QImage image(size, QImage::Format_ARGB32);
    if (image.isNull())
        return image;
    image.fill(Qt::transparent);
    const bool hasPalette = gdal.GetRasterBand(1)->GetColorTable() != nullptr;
    const Window window = chooseWindow(gdal, way, size, !hasPalette);
    if (window.cells() == 0)
        return image; // the raster is elsewhere
    const std::vector<QRgb> colours = readColours(window);
    if (colours.empty())
        return QImage();

    const double columnScale = double(window.bufferWidth) / window.width;
    const double rowScale = double(window.bufferHeight) / window.height;
    for (int y = 0; y < size.height(); ++y) {
        QRgb *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const double column = way.column(x + 0.5, y + 0.5);
            const double row = way.row(x + 0.5, y + 0.5);
            if (column < 0 || row < 0 || column >= gdal.GetRasterXSize() || row >= gdal.GetRasterYSize())
                continue;
            const int bufferColumn = static_cast<int>((column - window.column) * columnScale);
            const int bufferRow = static_cast<int>((row - window.row) * rowScale);
            if (bufferColumn >= 0 && bufferRow >= 0 && bufferColumn < window.bufferWidth &&
                bufferRow < window.bufferHeight)
                line[x] = colours[static_cast<size_t>(bufferRow) * static_cast<size_t>(window.bufferWidth) +
                                  static_cast<size_t>(bufferColumn)];
        }
    }
    return image;
}

} // namespace

QImage render(TxRasterPrivate &raster, const CRect2D &bounds, const QSize &size, const QList<QRgb> &ramp)
{
    return paint(*raster.gdal, bounds, size, [&](const Window &window) { return readColours(raster, window, ramp); });
}

QImage render(TxRasterPrivate &raster, const CRect2D &bounds, const QSize &size, const TxHeightColors &colors)
{
    return paint(*raster.gdal, bounds, size,
                 [&](const Window &window) { return readHeights(*raster.gdal, window, colors); });
}

} // namespace TxRasterRender
