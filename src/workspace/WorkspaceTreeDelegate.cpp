#include "workspace/WorkspaceTreeDelegate.h"

#include <algorithm>

namespace {

/// More than a line of the widest screen holds.
constexpr qsizetype longestLabel = 600;

/// A character that would break or reverse the line it stands in.
bool isTroublesome(QChar unit)
{
    const char16_t code = unit.unicode();
    return code < 0x20 || code == 0x7f || code == 0x2028 || code == 0x2029 || (code >= 0x80 && code < 0xa0);
}

} // namespace

QString WorkspaceTreeDelegate::shownText(const QString &text, qsizetype longest)
{
    QString shown = text;
    if (shown.size() > longest) {
        qsizetype end = longest - 1;
        if (shown.at(end - 1).isHighSurrogate())
            --end; // an emoji is kept or left out as a whole
        shown = shown.left(end) + QChar(0x2026);
    }
    if (std::any_of(shown.cbegin(), shown.cend(), isTroublesome))
        std::replace_if(shown.begin(), shown.end(), isTroublesome, QChar(u' '));
    return shown;
}

QString WorkspaceTreeDelegate::displayText(const QVariant &value, const QLocale &) const
{
    return shownText(value.toString(), longestLabel);
}
