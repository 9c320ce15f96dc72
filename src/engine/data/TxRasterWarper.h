#pragma once

#include "engine/data/TxRasterReader.h"

#include <gdalwarper.h>

/// Reads a source whose cells are not the target's: resamples it, and reprojects it where the coordinate systems
/// differ. A private header.
class TxRasterWarper : public TxRasterReader
{
public:
    /// @param[in] areClasses the nearest cell is to be taken, since the values say nothing of those between them
    /// @return null when there is no way from one to the other, which is reported to the collectors
    static std::unique_ptr<TxRasterReader> create(GDALDataset &target, GDALDataset &source, const TxRasterBands &bands,
                                                  bool areClasses);

protected:
    bool readBands(const TxCellWindow &window, uchar *bytes, std::vector<quint8> &hasData) override;

private:
    struct TransformerCloser
    {
        void operator()(void *transformer) const { GDALDestroyTransformer(transformer); }
    };

    TxRasterWarper(GDALDataset &target, GDALDataset &source, const TxRasterBands &bands, bool areClasses);
    bool connect(GDALDataset &target);
    void findWindow();
    bool prepare(bool areClasses);

    TxGdal::DatasetPtr m_frame; // the target's grid without its cells
    std::unique_ptr<void, TransformerCloser> m_transformer;
    GDALWarpOperation m_operation;
};
