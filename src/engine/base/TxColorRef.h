#pragma once

#include <QColor>
#include <QtGlobal>

/// A colour in 32 bits, 0x00BBGGRR: red in the low byte, then green, then blue; the high byte is 0.
using COLORREF = quint32;

/// Colours of 32 bits to and from their parts and Qt's colours.
namespace TxColorRef {

/// The colour with the given parts; only the low 8 bits of each count.
constexpr COLORREF make(int red, int green, int blue)
{
    return (static_cast<quint32>(red) & 0xFFU) | (static_cast<quint32>(green) & 0xFFU) << 8 |
           (static_cast<quint32>(blue) & 0xFFU) << 16;
}

constexpr int red(COLORREF color)
{
    return static_cast<int>(color & 0xFFU);
}

constexpr int green(COLORREF color)
{
    return static_cast<int>(color >> 8 & 0xFFU);
}

constexpr int blue(COLORREF color)
{
    return static_cast<int>(color >> 16 & 0xFFU);
}

/// The opaque pixel of the colour.
constexpr QRgb toRgb(COLORREF color)
{
    return qRgb(red(color), green(color), blue(color));
}

/// The colour of a pixel, whatever its opacity.
constexpr COLORREF fromRgb(QRgb pixel)
{
    return make(qRed(pixel), qGreen(pixel), qBlue(pixel));
}

inline QColor toQColor(COLORREF color)
{
    return QColor::fromRgb(toRgb(color));
}

inline COLORREF fromQColor(const QColor &color)
{
    return fromRgb(color.rgb());
}

} // namespace TxColorRef
