#pragma once

#include "engine/base/TxColorRef.h"
#include "engine/base/TxExport.h"

#include <QList>
#include <QString>

/// An ordered list of colours, and the generators of colour ramps. A value type.
class TX_EXPORT CTxColorFolder
{
public:
    /// How many colours there are.
    qint32 GetCount() const { return static_cast<qint32>(m_colors.size()); }
    /// The colour at 0-based @p index, 0 when out of range.
    COLORREF GetAt(qint32 index) const { return m_colors.value(index); }
    /// All colours, in order.
    const QList<COLORREF> &GetColors() const { return m_colors; }

    bool operator==(const CTxColorFolder &other) const = default;

    /// Adds a colour at the end.
    void Add(COLORREF color) { m_colors.append(color); }
    /// Inserts a colour before the one at 0-based @p index; an index out of range is the nearer end.
    void InsertAt(qint32 index, COLORREF color);
    /// Replaces the colour at @p index. @return false when out of range.
    bool SetAt(qint32 index, COLORREF color);
    /// Removes the colour at @p index. @return false when out of range.
    bool RemoveAt(qint32 index);
    void RemoveAll() { m_colors.clear(); }

    /// The most colours a ramp can have.
    static constexpr qint32 maxGradientCount = 1 << 24;

    /// Makes this a ramp of @p count colours from @p first to @p last, interpolated in red, green and blue and rounded.
    /// Both ends are exact; a single colour is the first one.
    /// @return how many colours were made: 0, and an empty list, for a count below 1 or above maxGradientCount
    qint32 MakeGradient(qint32 count, COLORREF first, COLORREF last);
    /// Makes this a ramp of @p count colours through those of @p colors, which are spread evenly over it. The ends are
    /// exact; between two neighbours every channel is monotone.
    /// @return how many colours were made: 0, and an empty list, also when @p colors has none
    qint32 MakeGradient(qint32 count, const CTxColorFolder &colors);
    /// Makes this the stock ramp @p style (a TxStockGradient, 0 to GetStockGradientCount() - 1) in @p count colours,
    /// low to high, or exactly the same colours high to low when @p reverse is set. The ends are exact; a single colour
    /// is the low end. Of a ramp with sea level the first count / 2 colours are water and the others land.
    /// @return how many colours were made: 0, and an empty list, also for a style that does not exist
    qint32 MakeStockGradient(qint32 count, qint32 style, bool reverse = false);

    /// How many stock ramps there are.
    static qint32 GetStockGradientCount();
    /// The name of a stock ramp, in the current language; empty when out of range.
    static QString GetStockGradientName(qint32 style);

private:
    QList<COLORREF> m_colors;
};
