#pragma once

#include <QString>

/// A line for the host's output pane, in parts.
struct SuggestiveTextFormat
{
    /// Which parts are printed; the flags are combined. Do not change the values.
    enum Flag : quint32 { Caption = 1, Text = 2, TimeOfDay = 4 };

    QString caption;   ///< the label before the text
    QString text;      ///< the message
    quint32 flags = 0; ///< flags of Flag
};
