#pragma once

#include "common/IconPlateDelegate.h"

/// Paints the items of the workspace tree. Names may be of any length and hold anything: a label is one line, and no
/// more of it is laid out than a window can show.
class WorkspaceTreeDelegate : public IconPlateDelegate
{
public:
    using IconPlateDelegate::IconPlateDelegate;

    QString displayText(const QVariant &value, const QLocale &locale) const override;

    /// @p text on one line, control characters as spaces, cut to @p longest characters (an ellipsis tells so).
    static QString shownText(const QString &text, qsizetype longest);
};
