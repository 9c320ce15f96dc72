#pragma once

#include "engine/base/TxGdal.h"
#include "engine/data/ElemDatasetInfo.h"
#include "engine/data/TxRasterBands.h"
#include "engine/geometry/Rect2D.h"

#include <memory>
#include <vector>

/// A rectangle of cells.
struct TxCellWindow
{
    int column = 0, row = 0, width = 0, height = 0;

    bool isEmpty() const { return width <= 0 || height <= 0; }
    size_t count() const { return static_cast<size_t>(width) * static_cast<size_t>(height); }
};

/// Cells of a window, in the pixel format of the raster that they are for.
struct TxCells
{
    std::vector<uchar> bytes;    ///< of every band one after another, alpha last
    std::vector<quint8> hasData; ///< for every cell whether it is to be written, 1 or 0
};

/// How one raster is laid into another.
struct TxRasterOrder
{
    CRect2D bounds; ///< where the source lies, in the target's coordinate system; void: where it says itself
    CElemDatasetInfo::Type kind = CElemDatasetInfo::Image; ///< of the target
    bool replace = true; ///< write every cell for which there is data, not only those without
};

/// The cells of one raster (the source) as another (the target) wants them: on its grid, in its bands and its pixel
/// format. A private header.
class TxRasterReader
{
public:
    /// Prepares reading. @return null when the two do not go together, which is reported to the collectors. Both must
    /// outlive the reader.
    static std::unique_ptr<TxRasterReader> create(GDALDataset &target, GDALDataset &source, const TxRasterOrder &order);
    virtual ~TxRasterReader();

    /// The target's cells for which there may be some.
    const TxCellWindow &window() const { return m_window; }
    /// How many cells of the source stand for one of the target's; what is read at once is to be limited by it.
    double density() const { return m_density; }

    /// Reads what belongs into the cells of @p window of the target. @return false when reading fails, or when a value
    /// does not fit into the target's cells.
    bool read(const TxCellWindow &window, TxCells &cells);

protected:
    TxRasterReader(GDALDataset &target, GDALDataset &source, const TxRasterBands &bands, bool isExact);

    /// Reads the bands m_read of the source in the format m_format, one after another, into @p bytes, which are of the
    /// right size, and tells in @p hasData (all 0) which cells hold data.
    virtual bool readBands(const TxCellWindow &window, uchar *bytes, std::vector<quint8> &hasData) = 0;

    GDALDataset &m_source;
    const TxRasterBands m_bands;
    std::vector<int> m_read; // bands of the source, alpha last if the target has one as well
    GDALDataType m_format;   // in which they are read: the target's, Float32 or Float64
    TxCellWindow m_window;
    double m_density = 1;

private:
    void expandPalette(size_t count, std::vector<quint8> &hasData);
    bool convert(size_t count, TxCells &cells) const;

    const GDALDataType m_sourceType;
    const GDALDataType m_targetType;
    const bool m_isExact;        // values are taken over, not reckoned between
    TxGdal::DatasetPtr m_placed; // the source with another place or mask, if it needs one
    std::vector<uchar> m_bytes;
};
