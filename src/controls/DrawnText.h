#pragma once

#include <QString>

/// What is drawn and measured of @p text: all of it, or the beginning of one that no screen has room for. Styles lay a
/// text out as a whole, which for one of a million characters takes a second.
inline QString drawnText(const QString &text)
{
    constexpr qsizetype most = 4096; // characters
    if (text.size() <= most)
        return text;
    const qsizetype kept = text.at(most - 1).isHighSurrogate() ? most - 1 : most;
    return text.left(kept) + u'\u2026';
}
