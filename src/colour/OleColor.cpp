#include "colour/OleColor.h"

#include <QPalette>

#include <iterator>

namespace {

struct SystemColor
{
    QPalette::ColorRole role;
    QPalette::ColorGroup group = QPalette::Active;
};

/// The system colours by their number, which callers know. Do not change the order.
constexpr SystemColor systemColors[] = {
    {QPalette::Mid},                            // 0 scroll bar
    {QPalette::Dark},                           // 1 desktop
    {QPalette::Highlight},                      // 2 active caption
    {QPalette::Highlight, QPalette::Inactive},  // 3 inactive caption
    {QPalette::Window},                         // 4 menu
    {QPalette::Base},                           // 5 window
    {QPalette::Shadow},                         // 6 window frame
    {QPalette::WindowText},                     // 7 menu text
    {QPalette::Text},                           // 8 window text
    {QPalette::HighlightedText},                // 9 caption text
    {QPalette::Button},                         // 10 active border
    {QPalette::Button, QPalette::Inactive},     // 11 inactive border
    {QPalette::Dark},                           // 12 application workspace
    {QPalette::Highlight},                      // 13 selection
    {QPalette::HighlightedText},                // 14 selected text
    {QPalette::Button},                         // 15 button face
    {QPalette::Dark},                           // 16 button shadow
    {QPalette::Text, QPalette::Disabled},       // 17 grey text
    {QPalette::ButtonText},                     // 18 button text
    {QPalette::WindowText, QPalette::Inactive}, // 19 inactive caption text
    {QPalette::Light},                          // 20 button highlight
    {QPalette::Shadow},                         // 21 dark shadow
    {QPalette::Midlight},                       // 22 light edge
    {QPalette::ToolTipText},                    // 23 tip text
    {QPalette::ToolTipBase},                    // 24 tip background
    {QPalette::AlternateBase},                  // 25 alternate button face
    {QPalette::Link},                           // 26 link
    {QPalette::Highlight},                      // 27 end of the active caption's gradient
    {QPalette::Highlight, QPalette::Inactive},  // 28 end of the inactive caption's gradient
    {QPalette::Highlight},                      // 29 selected menu entry
    {QPalette::Window},                         // 30 menu bar
};

} // namespace

std::optional<COLORREF> translateOleColor(quint32 oleColor)
{
    const quint32 rest = oleColor & 0x00FFFFFFU;
    switch (oleColor >> 24) {
    case 0x00:
    case 0x02:
        return rest;
    case 0x80:
        if (rest >= std::size(systemColors))
            return std::nullopt;
        return TxColorRef::fromQColor(QPalette().color(systemColors[rest].group, systemColors[rest].role));
    default:
        return std::nullopt;
    }
}
