#pragma once

#include "engine/base/TxExport.h"
#include "engine/symbol/TxColorsetEx.h"

#include <QColor>

#include <algorithm>
#include <vector>

/// A colour set made ready to colour many heights: a table and the way into it. A value type.
///
/// The colours are spread evenly from the set's floor to its ceiling; heights beyond get the colours of the ends.
class TX_EXPORT TxHeightColors
{
public:
    /// None at all.
    TxHeightColors() = default;
    /// The colours of @p colors. Blended, the first is at the floor, the last at the ceiling, and every height between
    /// has a mixture of its neighbours. With @p stepped each colour fills one of as many equal steps of height, its
    /// lower bound included. Where floor and ceiling are the same, only heights above have the last colour.
    TxHeightColors(const CTxColorsetEx &colors, bool stepped);

    bool isEmpty() const { return m_table.empty(); }
    /// The opaque colour of @p height; of NaN, the first. There must be colours.
    QRgb at(double height) const
    {
        // Multiplied before it is divided, so that heights on the bounds of steps are exact.
        const double place = (height - m_floor) * m_steps / m_span + m_offset;
        return m_table[place > 0 ? static_cast<size_t>(std::min(place, m_last)) : 0]; // false for NaN
    }

private:
    std::vector<QRgb> m_table;
    double m_floor = 0.0;
    double m_span = 0.0;
    double m_steps = 0.0; // places of the table that the span has
    double m_offset = 0.0;
    double m_last = 0.0; // place of the table
};
