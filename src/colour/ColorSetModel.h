#pragma once

#include "colour/ColorsetTable.h"
#include "colour/TdColors.h"
#include "common/TdCommonExport.h"
#include "engine/symbol/TxColorsetEx.h"

#include <optional>

class CTxColorFolder;

/// What the dialog "Edit Colorset" edits: an ordered list of colours, from low to high, and the range of heights that
/// they stand for. Colours are named by 0-based index.
class TDCOMMON_API ColorSetModel
{
public:
    /// Colours side by side in the list; there is at least one.
    struct SubRange
    {
        qint32 first = 0;
        qint32 count = 0;
    };
    /// Why a range cannot be saved or handed back.
    enum class RangeFault {
        None,
        Reversed, ///< the minimum is above the maximum
        Endless,  ///< an end, or the width, is no finite number
        Flat,     ///< both ends are the same
    };

    double minimum = 0.0; ///< of the range; colours of other heights are not loaded
    double maximum = 0.0;
    bool takesRangeOfFile = false; ///< elevation mode: loading takes the file's range, and all its colours
    qint32 intervalCount = 0;      ///< what a file that was loaded in elevation mode said about its intervals

    /// Takes the colours and the range of @p colorset.
    void setColorset(const CTxColorsetEx &colorset);
    /// The colours, without heights of their own, and the range.
    CTxColorsetEx colorset() const;

    qint32 count() const { return m_colors.GetCount(); }
    COLORREF at(qint32 index) const;
    /// All colours, for the window that shows them.
    CTxColorFolder folder() const;

    void add(COLORREF color);
    /// Inserts before the colour at @p index. Operations on an index that is out of range do nothing.
    void insert(qint32 index, COLORREF color);
    void remove(qint32 index);
    void replace(qint32 index, COLORREF color);
    void removeAll();

    /// The colours from @p start to @p end, to the last one where @p end lies behind it. Nothing when the list is
    /// empty,
    /// @p start is no index of it, or @p end does not lie behind @p start.
    std::optional<SubRange> subRange(qint64 start, qint64 end) const;
    /// Replaces the colours of a sub-range by @p colors, from the last to the first when @p inverse is set. Where there
    /// are fewer, the rest of the sub-range stays.
    void fill(SubRange range, const CTxColorFolder &colors, bool inverse);
    /// Fills a sub-range with random colours.
    void fillRandom(SubRange range, bool inverse);
    /// Fills a sub-range with the ramp from its first colour to its last.
    void fillBetween(SubRange range, bool inverse);
    /// Fills a sub-range with the engine's stock ramp @p style.
    void fillStock(SubRange range, qint32 style, bool inverse);

    RangeFault rangeFault() const;
    /// The file that the colours and the range are saved as: the colours stand evenly from the minimum on, the last one
    /// a step below the maximum.
    ColorsetTable table() const;
    /// Takes the colours of @p table: in elevation mode all of them and its range, else those whose values lie within
    /// the range, which stays.
    void load(const ColorsetTable &table);

private:
    bool isWithinRange(double value) const;

    CTdColors m_colors;
};
