#pragma once

#include "colour/ColorRamp.h"
#include "common/TdCommonExport.h"

#include <QByteArray>
#include <QStringList>

#include <array>
#include <optional>

/// What a ramp file holds that could not be read, or what of a ramp its kind of file cannot hold. A value type of a
/// fixed size: a note is kept once, with the first line it came up in and how often it did.
class TDCOMMON_API RampReport
{
public:
    enum Note {
        // The file is refused.
        Unreadable,
        TooLarge,
        UnknownKind,
        WrongHead,
        NoColors,
        BadLine,
        BadNumber,
        BadColor,
        BadOrder,
        NeedsRange,
        NotWritten,
        // What was read is not all that the file holds.
        BeyondLost,
        NoValueLost,
        AlphaLost,
        Sampled,
        Categories,
        Relative,
        HingeLost,
        CycleLost,
        LabelsLost,
        GapClosed,
        ChosenColors,
        // What was written is not all that the ramp holds.
        RangeLost,
        SpacingLost,
        noteCount
    };
    static constexpr Note lastRefusal = NotWritten;

    /// Notes @p note, at 1-based @p line of the file, 0 for none.
    void add(Note note, int line = 0)
    {
        Item &item = m_items[static_cast<size_t>(note)];
        if (item.count++ == 0)
            item.line = line;
    }
    bool has(Note note) const { return m_items[static_cast<size_t>(note)].count > 0; }
    /// The line @p note came up in first, 0 for none.
    int line(Note note) const { return m_items[static_cast<size_t>(note)].line; }
    /// True when nothing was read or written.
    bool isRefusal() const
    {
        for (int note = 0; note <= lastRefusal; ++note) {
            if (has(static_cast<Note>(note)))
                return true;
        }
        return false;
    }
    bool isEmpty() const { return *this == RampReport(); }
    /// The notes in sentences for the user.
    QStringList texts() const;

    bool operator==(const RampReport &other) const = default;

private:
    struct Item
    {
        int count = 0;
        int line = 0;

        bool operator==(const Item &other) const = default;
    };
    std::array<Item, noteCount> m_items = {};
};

/// What reading a ramp file gave. Without a ramp the report says why.
struct RampReading
{
    std::optional<ColorRamp> ramp;
    RampReport report;
    bool isRelative = false; ///< the values only say where in a range, to be stretched over that of the data
};

/// What writing a ramp as a file gave: its bytes, and what they do not hold.
struct RampWriting
{
    QByteArray bytes;
    RampReport report;
};
