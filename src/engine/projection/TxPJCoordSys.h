#pragma once

#include "engine/base/TxExport.h"

#include <QString>

#include <memory>

/// A coordinate system: projected, geographic, or none (plane coordinates without a place on earth). A value type.
class TX_EXPORT CTxPJCoordSys
{
public:
    /// What kind of system it is.
    enum Type : qint32 { None = 0, Geographic = 1, Projected = 2, Local = 3 };

    /// No system.
    CTxPJCoordSys();
    ~CTxPJCoordSys();
    CTxPJCoordSys(const CTxPJCoordSys &other);
    CTxPJCoordSys &operator=(const CTxPJCoordSys &other);

    /// Reads WKT, "EPSG:…", a PROJ string or any other text PROJ understands. Neither network nor files are touched.
    /// @return false, and the object is left as it was, when the text says nothing valid.
    bool FromText(const QString &text);
    /// The system as WKT; empty for none.
    QString ToWkt() const;
    /// The system's name; empty for none.
    QString GetName() const;
    Type GetType() const;
    /// Length of the unit of coordinates in tenths of a millimetre; 0 for degrees, 10000 (a metre) for none.
    qint32 GetDistUnits() const;

    bool operator==(const CTxPJCoordSys &other) const;

private:
    friend class TxCoordSysPrivate;
    std::unique_ptr<class TxCoordSysPrivate> d; // never null
};
