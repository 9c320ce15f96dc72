#pragma once

#include <ogr_core.h>

#include <QByteArrayView>

#include <optional>

/// A look into a GeoPackage geometry: a header ("GP", version, flags, system, bounds), then well-known binary.
/// GeoPackage 1.3, clause 2.1.3. A private header.
///
/// Looks, and copies nothing: the bytes must live as long as this object.
class TxGeoPackageBlob
{
public:
    explicit TxGeoPackageBlob(QByteArrayView bytes);

    /// True when the bytes begin with a whole header.
    bool isValid() const { return m_headerSize > 0; }
    /// True when the header says that the geometry is empty.
    bool isEmpty() const;
    /// The identifier of the coordinate system, as gpkg_spatial_ref_sys lists it.
    qint32 systemId() const;
    /// The well-known binary behind the header.
    QByteArrayView wkb() const { return m_bytes.sliced(m_headerSize); }
    /// The ISO code of the geometry's type (1 point … 1000 and more with Z, 2000 with M, 3000 with both); 0 when the
    /// bytes end before it.
    quint32 wkbType() const;
    /// What the geometry covers: the header's bounds where it has some, else those of the geometry itself. Nothing for
    /// empty geometries, for those that cannot be read, and for coordinates that are no numbers.
    std::optional<OGREnvelope> bounds() const;

    /// Where the identifier of the coordinate system stands.
    static constexpr qsizetype systemIdOffset = 4;
    /// True when the header's numbers have their low byte first.
    bool isLittleEndian() const;

private:
    double realAt(qsizetype offset, bool little) const;

    const QByteArrayView m_bytes;
    qsizetype m_headerSize = 0;
    bool m_hasBounds = false;
};
