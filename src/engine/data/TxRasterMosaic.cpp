#include "engine/data/TxRasterMosaic.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace TxRasterMosaic {

namespace {

bool refuse(const char *reason)
{
    CPLError(CE_Failure, CPLE_AppDefined, "%s", reason);
    return false;
}

/// Writes pieces of cells into a raster.
class Writer
{
public:
    explicit Writer(GDALDataset &target, bool replace)
        : m_target(target), m_replace(replace), m_type(target.GetRasterBand(1)->GetRasterDataType()),
          m_cellSize(static_cast<size_t>(GDALGetDataTypeSizeBytes(m_type))),
          m_bands(static_cast<size_t>(target.GetRasterCount())), m_bandList(m_bands)
    {
        std::iota(m_bandList.begin(), m_bandList.end(), 1);
    }

    /// Writes the cells of @p cells that hold data; without m_replace only into those that hold none yet.
    bool write(const TxCellWindow &window, TxCells &cells)
    {
        const auto isChosen = [](quint8 value) { return value != 0; };
        const bool isFull = std::all_of(cells.hasData.begin(), cells.hasData.end(), isChosen);
        if (!isFull || !m_replace) {
            m_there.resize(cells.bytes.size());
            if (!exchange(GF_Read, window, m_there.data()))
                return false;
            if (!m_replace && !keepTaken(window, cells))
                return false;
            if (std::none_of(cells.hasData.begin(), cells.hasData.end(), isChosen))
                return true;
            merge(window.count(), cells);
        }
        return exchange(GF_Write, window, cells.bytes.data()) && setMask(window, cells);
    }

private:
    bool exchange(GDALRWFlag flag, const TxCellWindow &window, uchar *bytes)
    {
        return m_target.RasterIO(flag, window.column, window.row, window.width, window.height, bytes, window.width,
                                 window.height, m_type, static_cast<int>(m_bands), m_bandList.data(), 0, 0, 0,
                                 nullptr) == CE_None;
    }

    bool exchangeMask(GDALRWFlag flag, const TxCellWindow &window)
    {
        m_mask.resize(window.count());
        return m_target.GetRasterBand(1)->GetMaskBand()->RasterIO(flag, window.column, window.row, window.width,
                                                                  window.height, m_mask.data(), window.width,
                                                                  window.height, GDT_Byte, 0, 0, nullptr) == CE_None;
    }

    /// Takes from @p cells those where the target holds data already.
    bool keepTaken(const TxCellWindow &window, TxCells &cells)
    {
        if (!exchangeMask(GF_Read, window))
            return false;
        for (size_t i = 0; i < m_mask.size(); ++i) {
            if (m_mask[i] != 0 && !isNotANumber(i))
                cells.hasData[i] = 0;
        }
        return true;
    }

    /// True when the first band's cell number @p i that is there is NaN.
    bool isNotANumber(size_t i) const
    {
        if (m_type == GDT_Float32)
            return std::isnan(reinterpret_cast<const float *>(m_there.data())[i]);
        return m_type == GDT_Float64 && std::isnan(reinterpret_cast<const double *>(m_there.data())[i]);
    }

    /// Puts what is there into the cells that are not to be written.
    void merge(size_t count, TxCells &cells) const
    {
        for (size_t band = 0; band < m_bands; ++band) {
            const size_t first = band * count * m_cellSize;
            for (size_t i = 0; i < count; ++i) {
                if (!cells.hasData[i])
                    std::copy_n(m_there.data() + first + i * m_cellSize, m_cellSize,
                                cells.bytes.data() + first + i * m_cellSize);
            }
        }
    }

    /// Marks the cells written as valid, in a file that keeps a mask beside its bands.
    bool setMask(const TxCellWindow &window, const TxCells &cells)
    {
        if (m_target.GetRasterBand(1)->GetMaskFlags() != GMF_PER_DATASET)
            return true;
        if (!exchangeMask(GF_Read, window))
            return false;
        for (size_t i = 0; i < m_mask.size(); ++i)
            m_mask[i] = cells.hasData[i] ? 255 : m_mask[i];
        return exchangeMask(GF_Write, window);
    }

    GDALDataset &m_target;
    const bool m_replace;
    const GDALDataType m_type;
    const size_t m_cellSize;
    const size_t m_bands;
    std::vector<int> m_bandList;
    std::vector<uchar> m_there;
    std::vector<quint8> m_mask;
};

/// The size of the pieces: whole blocks of the target, as far as memory allows.
TxCellWindow pieceSize(GDALDataset &target, const TxRasterReader &reader)
{
    constexpr double mostCells = 1 << 20;       // of the target
    constexpr double mostSourceCells = 4 << 20; // of the source
    int blockWidth = 1, blockHeight = 1;
    target.GetRasterBand(1)->GetBlockSize(&blockWidth, &blockHeight);
    const double cells = std::max(1.0, std::min(mostCells, mostSourceCells / std::max(reader.density(), 1e-9)));
    const auto wholeBlocks = [](double wanted, int block) {
        const int whole = static_cast<int>(std::clamp(wanted, 1.0, double(1 << 30)));
        return whole > block ? whole / block * block : whole;
    };
    // Rows of blocks where they are narrow; a square where whole rows would be thinner than a block.
    const double rowWidth = target.GetRasterXSize();
    TxCellWindow piece;
    piece.width = wholeBlocks(std::min(rowWidth, std::max(std::sqrt(cells), cells / blockHeight)), blockWidth);
    piece.height = wholeBlocks(cells / piece.width, blockHeight);
    return piece;
}

} // namespace

bool lay(GDALDataset &target, GDALDataset &source, const TxRasterOrder &order, const TxProgress &progress)
{
    const std::unique_ptr<TxRasterReader> reader = TxRasterReader::create(target, source, order);
    if (!reader)
        return false;
    const TxCellWindow &all = reader->window();
    const TxCellWindow size = pieceSize(target, *reader);
    const qint64 total = qint64(all.width) * all.height;
    qint64 done = 0;
    bool hasWritten = false;
    Writer writer(target, order.replace);
    TxCells cells;
    TxCellWindow piece;
    // Pieces end where those of the whole target would, so that blocks are not written twice.
    const auto next = [](int at, int step, int end) { return std::min((at / step + 1) * step, end); };
    const int bottom = all.row + all.height, right = all.column + all.width;
    for (piece.row = all.row; piece.row < bottom; piece.row += piece.height) {
        piece.height = next(piece.row, size.height, bottom) - piece.row;
        for (piece.column = all.column; piece.column < right; piece.column += piece.width) {
            piece.width = next(piece.column, size.width, right) - piece.column;
            if (progress && !progress(done, total))
                return refuse("it was stopped");
            if (!reader->read(piece, cells))
                return false;
            const bool hasData =
                std::any_of(cells.hasData.begin(), cells.hasData.end(), [](quint8 v) { return v != 0; });
            if (hasData && !writer.write(piece, cells))
                return false;
            hasWritten = hasWritten || hasData;
            done += qint64(piece.width) * piece.height;
        }
    }
    if (progress && !progress(done, total))
        return refuse("it was stopped");
    return hasWritten || refuse("no cell of it that holds data lies there");
}

} // namespace TxRasterMosaic
