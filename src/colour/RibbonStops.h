#pragma once

#include "colour/RibbonHistory.h"
#include "colour/RibbonStop.h"
#include "common/TdCommonExport.h"

#include <vector>

/// The ramp that the ribbon editor edits: colour stops in order over a range of numbers, which of them is selected, and
/// what a drag changes. Knows of pixels only where the usable band begins and how wide it is; no widget, no painting.
///
/// The first stop stands at the range's minimum, the last at its maximum; there is always at least one stop and, unless
/// a file brought a single one, two. A file may bring stops in any order and a range without width or with ends that
/// are no numbers: all here stays defined then. A position that cannot be reckoned is the left end of the band, one
/// that no 32 bits hold is the nearest that they do; a value that cannot be reckoned is the minimum.
///
/// How the window uses it:
/// - on resize: setBand(), which recalculates the positions
/// - mouse down on a marker: select(); on a slider's marker: setDragTarget(); then beginEdit(), and endEdit() on mouse
/// up
/// - mouse move: ChangeStopPos(x) when x lies within the usable band (target Stop), or setChannel()
/// - band click: insertStop(x, colour)
/// - keys: selectByKey(), removeSelected(), step()
/// - typing: editMaximum(), editMinimum(), editSelectedValue(), setChannel(); beginEdit() when an edit gets the focus
/// and
///   endEdit() when it loses it make one undo step of what was typed there
class TDCOMMON_API RibbonStops
{
public:
    using Stops = std::vector<RibbonStop>;
    /// What a drag, or an arrow key, changes. The numbers are given.
    enum class Target : qint32 { None = -1, Stop = 0, Red = 1, Green = 2, Blue = 3 };
    /// Where a key moves the selection: Page Up, Page Down, Home, End.
    enum class Go { Previous, Next, First, Last };

    /// White at 0 to black at 1000, nothing selected, a band of no width at 0.
    RibbonStops();

    const Stops &stops() const { return m_state.stops; }
    qint32 count() const { return static_cast<qint32>(m_state.stops.size()); }
    double minimum() const { return m_state.minimum; }
    double maximum() const { return m_state.maximum; }
    /// Index of the selected stop, -1 for none.
    qint32 selected() const { return m_state.selected; }
    /// The selected stop, null for none. Dead after the next change.
    const RibbonStop *selectedStop() const;
    Target dragTarget() const { return m_target; }
    /// True once an edit changed the ramp.
    bool isModified() const { return m_isModified; }
    void setModified(bool isModified) { m_isModified = isModified; }

    /// @name The range, as the host sets it (no undo step, positions stay: see CalculatePosition)
    /// @{
    /// Sets the range's end and, when there are at least two stops, the last stop's value.
    void SetMaxValue(double value);
    /// Sets the range's begin and, when there are at least two stops, the first stop's value.
    void SetMinValue(double value);
    /// A range that is empty, reversed or not finite becomes 0 to the band's width in pixels, and the end stops take
    /// these values; any other stays. For the start of the window. @return true when it was replaced
    bool replaceEmptyRange();
    /// Replaces the whole ramp, with no selection, as an undo step; positions are recalculated. No stops are refused.
    bool replaceAll(Stops stops, double minimum, double maximum);
    /// @}

    /// @name Values and pixels
    /// @{
    /// Where the usable band begins (F.left + 20) and how wide it is (F's width - 40), in logical pixels.
    void setBand(qint32 left, qint32 width);
    qint32 bandLeft() const { return m_left; }
    qint32 bandWidth() const { return m_width; }
    /// The value at pixel @p x: (x - left) / width * (maximum - minimum) + minimum.
    double Position2Value(qint32 x) const;
    /// Sets every stop's position by its value: truncate((value - first stop's value) / (maximum - minimum) * width +
    /// left). Counted from the first stop, wherever the range begins.
    void CalculatePosition();
    /// Rescales the stops' values from [first value, last value] onto [minimum, maximum]. Stops without a span between
    /// first and last stay as they are. Positions stay.
    void CalcValues();
    /// Moves the selected stop, when it is neither the first nor the last, to pixel @p x and its value with it.
    ///
    /// Deliberate: order is restored one step late. Only a stop that already stands beyond a neighbour changes places
    /// with it, so a stop may pass its neighbour on one move and is swapped on the next; equal positions never swap.
    /// The swapped stop stays selected.
    /// @return false when there is nothing to move
    bool ChangeStopPos(qint32 x);
    /// @}

    /// @name Selection
    /// @{
    /// Selects a stop, which becomes what a drag moves; anything out of range selects nothing.
    void select(qint32 index);
    /// Moves the selection, as far as there are stops; what a drag changes stays. @return false when nothing is
    /// selected
    bool selectByKey(Go where);
    void setDragTarget(Target target) { m_target = target; }
    /// @}

    /// @name Edits: each is an undo step, unless it refuses or changes nothing
    /// @{
    /// Where a click at pixel @p x inserts: behind the first segment whose stops enclose x, both ends included.
    /// Deliberate: when none does, behind the second stop (behind the last when there are not so many).
    qint32 insertionIndex(qint32 x) const;
    /// Inserts a stop there with the value at @p x. A selected stop stays selected. @return its index
    qint32 insertStop(qint32 x, COLORREF color);
    /// True when removeSelected() would.
    bool canRemoveSelected() const;
    /// Removes the selected stop: an interior one always, an end only when more than two stops are there. The range
    /// then ends (begins) at the value of the new last (first) stop. The stop in its place is selected; positions are
    /// recalculated. @return false when it stays
    bool removeSelected();
    /// One arrow key: moves the drag target by @p by (-1: Left, Down; 1: Right, Up), a stop by pixels, within the
    /// usable band, a channel by its numbers, 0 to 255. @return false when nothing is selected or moves
    bool step(qint32 by);
    /// Sets the range's end and the last stop's value to a finite number above the minimum and the second-to-last
    /// stop's value. @return false when @p value is refused
    bool editMaximum(double value);
    /// Sets the range's begin and the first stop's value to a finite number below the maximum and the second stop's
    /// value. @return false when @p value is refused
    bool editMinimum(double value);
    /// Sets the selected stop's value: of an interior one, strictly between its neighbours' values; an end stop takes
    /// the end of the range and no other. @return false when @p value is refused
    bool editSelectedValue(double value);
    /// Sets a channel (Red, Green, Blue) of the selected stop; @p value is cut to 0 to 255.
    /// @return false when nothing is selected or @p channel is none
    bool setChannel(Target channel, qint32 value);
    /// The channel of the selected stop, 0 to 255; 0 when nothing is selected or @p channel is none.
    qint32 channel(Target channel) const;
    /// Sets the selected stop's colour. @return false when nothing is selected
    bool setSelectedColor(COLORREF color);
    /// Spreads the values of the stops evenly from the minimum to the maximum, and the positions with them.
    bool distributeEvenly();
    /// Turns the ramp round within its range; the selected stop stays selected.
    bool reverse();
    /// @}

    /// @name Undo
    /// @{
    /// Between these two all edits are one undo step (a drag, a text being typed). Pairs nest.
    void beginEdit() { m_history.begin(); }
    void endEdit() { m_history.end(); }
    bool canUndo() const { return m_history.canUndo(); }
    bool canRedo() const { return m_history.canRedo(); }
    /// Back to before (after) the last edit, the selection with it. @return false when there is none
    bool undo();
    bool redo();
    /// Forgets what can be undone and redone: the ramp as it stands is where the user starts.
    void clearHistory() { m_history.clear(); }
    /// @}

private:
    void aboutToEdit();
    bool hasSelection() const { return m_state.selected >= 0; }
    bool isInterior(qint32 index) const { return index > 0 && index < count() - 1; }
    bool showState();

    RibbonHistory::State m_state;
    RibbonHistory m_history;
    Target m_target = Target::None;
    bool m_isModified = false;
    qint32 m_left = 0;
    qint32 m_width = 0;
};
