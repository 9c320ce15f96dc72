#include "Palettes.h"

namespace {

struct Colours
{
    QRgb window, windowText, base, alternate, button, highlight, highlightedText, link, placeholder, disabled;
};

constexpr Colours lightColours{0xfff0f0f0, 0xff202124, 0xffffffff, 0xfff6f7f9, 0xffefefef,
                               0xff2f6fb7, 0xffffffff, 0xff1a5fb4, 0xff6b7280, 0xffa3a7ad};
constexpr Colours darkColours{0xff2b2d30, 0xffe4e6e8, 0xff1f2123, 0xff26282b, 0xff35383c,
                              0xff3a6ea5, 0xffffffff, 0xff78b0f0, 0xff9aa0a8, 0xff74787e};

QPalette make(const Colours &c)
{
    QPalette palette(QColor::fromRgb(c.button), QColor::fromRgb(c.window));
    const auto set = [&palette](QPalette::ColorRole role, QRgb colour) {
        palette.setColor(role, QColor::fromRgb(colour));
    };
    set(QPalette::WindowText, c.windowText);
    set(QPalette::Base, c.base);
    set(QPalette::AlternateBase, c.alternate);
    set(QPalette::Text, c.windowText);
    set(QPalette::ButtonText, c.windowText);
    set(QPalette::Highlight, c.highlight);
    set(QPalette::HighlightedText, c.highlightedText);
    set(QPalette::Link, c.link);
    set(QPalette::ToolTipBase, c.base);
    set(QPalette::ToolTipText, c.windowText);
    set(QPalette::PlaceholderText, c.placeholder);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(c.disabled));
    return palette;
}

} // namespace

QPalette Palettes::light()
{
    return make(lightColours);
}

QPalette Palettes::dark()
{
    return make(darkColours);
}
