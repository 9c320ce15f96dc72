#pragma once

#include "colour/RibbonStop.h"
#include "common/TdCommonExport.h"

#include <deque>
#include <vector>

/// What can be undone and redone in a ribbon: whole states, at most 100 of them and at most about 64 MB, the oldest
/// forgotten first. The last one is kept whatever its size.
class TDCOMMON_API RibbonHistory
{
public:
    struct State
    {
        std::vector<RibbonStop> stops;
        double minimum = 0.0;
        double maximum = 0.0;
        qint32 selected = -1;
    };

    /// Between begin and end all edits are one step. Pairs nest.
    void begin();
    void end();
    /// To be called before each edit with the state that it changes. What was undone can no longer be redone.
    void record(const State &before);

    bool canUndo() const { return !m_undo.empty(); }
    bool canRedo() const { return !m_redo.empty(); }
    /// Exchanges @p state for the one before (after) it. @return false when there is none
    bool undo(State &state) { return exchange(m_undo, m_redo, state); }
    bool redo(State &state) { return exchange(m_redo, m_undo, state); }
    /// Forgets all.
    void clear();

private:
    using States = std::deque<State>;

    bool exchange(States &from, States &to, State &state);

    States m_undo;
    States m_redo;
    int m_depth = 0;
    bool m_isRecorded = false; ///< the edits since the outermost begin have their step already
};
