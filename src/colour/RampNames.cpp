// The names of colours in ramp files.

#include "colour/RampText.h"

#include <QColor>

#include <algorithm>
#include <cmath>

namespace {

struct Name
{
    const char *name;
    QRgb rgb;
};

std::optional<COLORREF> find(std::span<const Name> names, const QByteArray &name)
{
    const auto at = std::find_if(names.begin(), names.end(), [&](const Name &row) { return name == row.name; });
    return at == names.end() ? std::nullopt : std::optional(TxColorRef::fromRgb(at->rgb));
}

/// What X11 knows beside the names of the Web, or knows otherwise.
constexpr Name x11Names[] = {
    {"gray", 0xbebebe},      {"grey", 0xbebebe},     {"green", 0x00ff00},
    {"maroon", 0xb03060},    {"purple", 0xa020f0},   {"lightgoldenrod", 0xeedd82},
    {"violetred", 0xd02090}, {"navyblue", 0x000080}, {"lightslateblue", 0x8470ff},
};

/// The first of X11's numbered shades where it is not the colour without a number.
constexpr Name x11FirstShades[] = {
    {"antiquewhite", 0xffefdb},
    {"brown", 0xff4040},
    {"burlywood", 0xffd39b},
    {"cadetblue", 0x98f5ff},
    {"chocolate", 0xff7f24},
    {"coral", 0xff7256},
    {"darkgoldenrod", 0xffb90f},
    {"darkolivegreen", 0xcaff70},
    {"darkorange", 0xff7f00},
    {"darkorchid", 0xbf3eff},
    {"darkseagreen", 0xc1ffc1},
    {"darkslategray", 0x97ffff},
    {"firebrick", 0xff3030},
    {"goldenrod", 0xffc125},
    {"hotpink", 0xff6eb4},
    {"indianred", 0xff6a6a},
    {"khaki", 0xfff68f},
    {"lightblue", 0xbfefff},
    {"lightgoldenrod", 0xffec8b},
    {"lightpink", 0xffaeb9},
    {"lightskyblue", 0xb0e2ff},
    {"lightsteelblue", 0xcae1ff},
    {"maroon", 0xff34b3},
    {"mediumorchid", 0xe066ff},
    {"mediumpurple", 0xab82ff},
    {"olivedrab", 0xc0ff3e},
    {"orchid", 0xff83fa},
    {"palegreen", 0x9aff9a},
    {"paleturquoise", 0xbbffff},
    {"palevioletred", 0xff82ab},
    {"pink", 0xffb5c5},
    {"plum", 0xffbbff},
    {"purple", 0x9b30ff},
    {"rosybrown", 0xffc1c1},
    {"royalblue", 0x4876ff},
    {"salmon", 0xff8c69},
    {"seagreen", 0x54ff9f},
    {"sienna", 0xff8247},
    {"skyblue", 0x87ceff},
    {"slateblue", 0x836fff},
    {"slategray", 0xc6e2ff},
    {"steelblue", 0x63b8ff},
    {"tan", 0xffa54f},
    {"thistle", 0xffe1ff},
    {"turquoise", 0x00f5ff},
    {"violetred", 0xff3e96},
    {"wheat", 0xffe7ba},
};

constexpr Name grassNames[] = {
    {"white", 0xffffff}, {"black", 0x000000},  {"red", 0xff0000},     {"green", 0x00ff00},
    {"blue", 0x0000ff},  {"yellow", 0xffff00}, {"magenta", 0xff00ff}, {"cyan", 0x00ffff},
    {"aqua", 0x6480ff},  {"grey", 0x808080},   {"gray", 0x808080},    {"orange", 0xff8000},
    {"brown", 0xb44d19}, {"purple", 0x800080}, {"violet", 0x8000ff},  {"indigo", 0x0080ff},
};

constexpr qsizetype longestName = 32;

/// @p name in lower case, nothing where it is no word of letters and digits.
QByteArray plain(QStringView name)
{
    const auto isPart = [](QChar c) { return c < QChar(128) && c.isLetterOrNumber(); };
    if (name.isEmpty() || name.size() > longestName || !name.front().isLetter() ||
        !std::all_of(name.begin(), name.end(), isPart))
        return {};
    return name.toLatin1().toLower();
}

std::optional<COLORREF> unnumbered(const QByteArray &name)
{
    if (const auto own = find(x11Names, name))
        return own;
    const QColor web(QLatin1StringView{name});
    return web.isValid() && web.alpha() == 255 ? std::optional(TxColorRef::fromQColor(web)) : std::nullopt;
}

} // namespace

std::optional<COLORREF> RampText::hexColor(QStringView text)
{
    if (!text.startsWith(u'#') || (text.size() != 4 && text.size() != 7))
        return std::nullopt;
    const QColor color(text);
    return color.isValid() ? std::optional(TxColorRef::fromQColor(color)) : std::nullopt;
}

std::optional<COLORREF> RampText::x11Color(QStringView text)
{
    const QByteArray name = plain(text);
    qsizetype letters = name.size();
    while (letters > 0 && name[letters - 1] >= '0' && name[letters - 1] <= '9')
        --letters;
    if (letters == name.size())
        return name.isEmpty() ? std::nullopt : unnumbered(name);
    const QByteArray base = name.first(letters);
    const int number = name.sliced(letters).toInt();
    if ((base == "gray" || base == "grey") && number <= 100) {
        const auto level = static_cast<double>(number) * 2.55;
        return color({level, level, level});
    }
    // Brightness of the shades 1 to 4, as X11's table was made with.
    constexpr double shades[] = {1.0, 0.932, 0.804, 0.548};
    const std::optional<COLORREF> first = find(x11FirstShades, base);
    const std::optional<COLORREF> brightest = first ? first : unnumbered(base);
    if (!brightest || number < 1 || number > 4)
        return std::nullopt;
    Channels result = channels(*brightest);
    for (double &channel : result)
        channel *= shades[number - 1];
    return color(result);
}

std::optional<COLORREF> RampText::grassColor(QStringView name)
{
    return find(grassNames, plain(name));
}
