#pragma once

#include "engine/base/TxColorRef.h"
#include "engine/base/TxExport.h"

#include <QtGlobal>

#include <vector>

/// The colours of a range of heights, from its floor to its ceiling. A value type.
class TX_EXPORT CTxColorsetEx
{
public:
    /// Adds a colour at the end. @p height is its height where colours are not spread evenly, else 0.
    void AddColor(COLORREF color, double height = 0.0);
    /// The colour at 0-based @p index, 0 when out of range.
    COLORREF GetRGB(qint32 index) const;
    /// The height that came with the colour at @p index, 0 when out of range.
    double GetHeight(qint32 index) const;
    /// How many colours there are.
    qint32 GetSize() const { return static_cast<qint32>(m_entries.size()); }
    /// Takes all colours away; the range stays.
    void RemoveAll() { m_entries.clear(); }

    /// The lower end of the range of heights.
    double GetZFloor() const { return m_floor; }
    void SetZFloor(double floor) { m_floor = floor; }
    /// The upper end of the range of heights.
    double GetZCeiling() const { return m_ceiling; }
    void SetZCeiling(double ceiling) { m_ceiling = ceiling; }

    bool operator==(const CTxColorsetEx &other) const = default;

private:
    struct Entry
    {
        COLORREF color;
        double height;

        bool operator==(const Entry &other) const = default;
    };
    std::vector<Entry> m_entries;
    double m_floor = 0.0;
    double m_ceiling = 0.0;
};
