#pragma once

#include "engine/base/TxGdal.h"
#include "engine/base/TxProgress.h"

#include <memory>

class TxRasterPrivate;

/// Changes of a raster's cells that are made whole or not at all. A private header.
///
/// In a GeoPackage they are one transaction, taken back when the object goes without commit(). Of an image file, a copy
/// is changed that takes the file's place at commit(); until then, and after a crash, the file is what it was.
class TxRasterUpdate
{
public:
    /// Begins. @return null when the raster cannot be changed, which is reported to the collectors. @p progress is
    /// asked while a file is copied, and must live as long as the result.
    static std::unique_ptr<TxRasterUpdate> begin(TxRasterPrivate &raster, const TxProgress &progress);
    virtual ~TxRasterUpdate();

    /// The raster to change.
    GDALDataset &raster() { return *m_raster; }
    /// Brings what is derived from the cells (overviews, statistics) up to date, and makes the changes last.
    /// @return false when they cannot be kept; they are then taken back.
    bool commit();

protected:
    explicit TxRasterUpdate(const TxProgress &progress) : m_progress(progress) {}

    /// Makes what was written last. @p errors has collected since commit() began.
    virtual bool keep(const TxGdal::ErrorCollector &errors) = 0;

    TxGdal::DatasetPtr m_raster;
    const TxProgress &m_progress;

private:
    bool refreshOverviews();
};
