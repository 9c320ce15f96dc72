#pragma once

#include "engine/base/TxGdal.h"

#include <ogr_spatialref.h>

/// The coordinate system that a new dataset is given. A private header.
class TxNewCoordSys
{
public:
    /// Reads @p text, anything CTxPJCoordSys::FromText reads; an empty one means none. @return false when it says
    /// nothing that is known.
    bool read(const QString &text);

    /// The system; null for none.
    OGRSpatialReference *reference() { return m_isGiven ? &m_system : nullptr; }

    /// True when @p errors, which saw the dataset being made, has a failure. The GeoPackage driver always tries the old
    /// form of text too, and of a system that has none PROJ reports a failure though the driver can do without: that
    /// one does not count.
    bool hasFailed(const TxGdal::ErrorCollector &errors) const;

    /// How many columns the GeoPackage @p dataset has for a system. The driver adds some with the first system that
    /// needs them; a connection that was opened before, and did not add them itself, cannot add systems any more.
    static qint64 columnCount(GDALDataset &dataset);

private:
    OGRSpatialReference m_system;
    bool m_isGiven = false;
    QStringList m_complaints; // of the old form of text
};
