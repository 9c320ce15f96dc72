#include "engine/data/TxGeoPackageBlob.h"

#include <ogr_geometry.h>

#include <QtEndian>

#include <array>
#include <bit>
#include <cmath>
#include <memory>

namespace {

constexpr qsizetype fixedHeader = 8;
constexpr qsizetype flagsOffset = 3;

template<class Number>
Number numberAt(QByteArrayView bytes, qsizetype offset, bool little)
{
    const char *at = bytes.data() + offset;
    return little ? qFromLittleEndian<Number>(at) : qFromBigEndian<Number>(at);
}

} // namespace

TxGeoPackageBlob::TxGeoPackageBlob(QByteArrayView bytes) : m_bytes(bytes)
{
    if (bytes.size() < fixedHeader || bytes[0] != 'G' || bytes[1] != 'P')
        return;
    constexpr std::array<qsizetype, 5> boundsSizes = {0, 32, 48, 48, 64};
    const size_t boundsKind = (static_cast<quint8>(bytes[flagsOffset]) >> 1) & 7;
    if (boundsKind >= boundsSizes.size() || bytes.size() < fixedHeader + boundsSizes[boundsKind])
        return;
    m_hasBounds = boundsKind > 0;
    m_headerSize = fixedHeader + boundsSizes[boundsKind];
}

bool TxGeoPackageBlob::isEmpty() const
{
    constexpr int emptyFlag = 0x10;
    return (m_bytes[flagsOffset] & emptyFlag) != 0;
}

bool TxGeoPackageBlob::isLittleEndian() const
{
    return (m_bytes[flagsOffset] & 1) != 0;
}

qint32 TxGeoPackageBlob::systemId() const
{
    return numberAt<qint32>(m_bytes, systemIdOffset, isLittleEndian());
}

quint32 TxGeoPackageBlob::wkbType() const
{
    constexpr qsizetype wkbHeader = 5; // byte order, type
    const QByteArrayView body = wkb();
    return body.size() < wkbHeader ? 0 : numberAt<quint32>(body, 1, body[0] == 1);
}

double TxGeoPackageBlob::realAt(qsizetype offset, bool little) const
{
    return std::bit_cast<double>(numberAt<quint64>(m_bytes, offset, little));
}

std::optional<OGREnvelope> TxGeoPackageBlob::bounds() const
{
    if (!isValid() || isEmpty())
        return std::nullopt;
    OGREnvelope box;
    constexpr qsizetype step = sizeof(double);
    constexpr qsizetype pointCoordinates = 5;
    if (m_hasBounds) {
        const bool little = isLittleEndian();
        box.MinX = realAt(fixedHeader, little);
        box.MaxX = realAt(fixedHeader + step, little);
        box.MinY = realAt(fixedHeader + 2 * step, little);
        box.MaxY = realAt(fixedHeader + 3 * step, little);
    } else if (wkbType() % 1000 == wkbPoint && wkb().size() >= pointCoordinates + 2 * step) {
        const bool little = wkb()[0] == 1;
        box.MinX = box.MaxX = realAt(m_headerSize + pointCoordinates, little);
        box.MinY = box.MaxY = realAt(m_headerSize + pointCoordinates + step, little);
    } else {
        OGRGeometry *made = nullptr;
        OGRGeometryFactory::createFromWkb(wkb().data(), nullptr, &made, static_cast<size_t>(wkb().size()),
                                          wkbVariantIso);
        const std::unique_ptr<OGRGeometry> geometry(made);
        if (!geometry || geometry->IsEmpty())
            return std::nullopt;
        geometry->getEnvelope(&box);
    }
    if (std::isnan(box.MinX) || std::isnan(box.MaxX) || std::isnan(box.MinY) || std::isnan(box.MaxY))
        return std::nullopt;
    return box;
}
