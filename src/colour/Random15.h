#pragma once

#include <QtGlobal>

/// The linear congruential generator of 15 bits that C runtimes on the desktop long had for rand(): 31 bits of state,
/// of which the upper 15 come out. Scripts know its colours by their seed: do not change the numbers.
class Random15
{
public:
    static constexpr int largest = 32767;

    constexpr explicit Random15(quint32 seed) : m_state(seed) {}

    /// The next number, 0 to largest.
    constexpr int next()
    {
        m_state = m_state * 214013U + 2531011U;
        return static_cast<int>(m_state >> 16 & 0x7FFFU);
    }

private:
    quint32 m_state;
};
