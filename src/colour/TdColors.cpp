#include "colour/TdColors.h"

#include "colour/OleColor.h"
#include "colour/Random15.h"
#include "colour/TdColorsEnum.h"
#include "engine/symbol/TxColorFolder.h"

#include <algorithm>
#include <ctime>

CTdColors::CTdColors(QObject *parent) : QObject(parent) {}

CTdColors::~CTdColors() = default;

HResult CTdColors::SetCount(int /*count*/)
{
    return HResult::CTL_E_SETNOTSUPPORTED;
}

int CTdColors::Remove(int index, int count)
{
    if (!has(index) || count < 1)
        return 0;
    const int removed = std::min(count, GetCount() - index + 1);
    m_colors.remove(index - 1, removed);
    return removed;
}

bool CTdColors::InsertAt(int index, int color)
{
    const int place = index > GetCount() ? GetCount() : std::max(index, 1) - 1;
    m_colors.insert(m_colors.isEmpty() ? 0 : place, static_cast<COLORREF>(color));
    return true;
}

bool CTdColors::Exchange(int first, int second)
{
    if (!has(first) || !has(second))
        return false;
    m_colors.swapItemsAt(first - 1, second - 1);
    return true;
}

void CTdColors::RemoveAll()
{
    m_colors.clear();
}

bool CTdColors::Add(int color)
{
    m_colors.append(static_cast<COLORREF>(color));
    return true;
}

int CTdColors::GetItem(int index) const
{
    return has(index) ? static_cast<int>(m_colors[index - 1]) : 0;
}

void CTdColors::SetItem(int index, int color)
{
    if (has(index))
        m_colors[index - 1] = static_cast<COLORREF>(color);
}

std::unique_ptr<TdColorsEnum> CTdColors::GetNewEnum() const
{
    return std::make_unique<TdColorsEnum>(*this);
}

int CTdColors::MakeGradientColorset(int count, int color1, int color2)
{
    const auto first = translateOleColor(static_cast<quint32>(color1));
    const auto last = translateOleColor(static_cast<quint32>(color2));
    if (!first || !last)
        return 0;
    CTxColorFolder ramp;
    const int made = ramp.MakeGradient(count, *first, *last);
    FromColorFolder(ramp);
    return made;
}

int CTdColors::MakeGradientColorsetEx(int count, QObject *colors)
{
    const auto *through = qobject_cast<const CTdColors *>(colors);
    if (!through)
        return 0;
    CTxColorFolder folder;
    through->ToColorFolder(folder);
    CTxColorFolder ramp;
    const int made = ramp.MakeGradient(count, folder);
    FromColorFolder(ramp);
    return made;
}

int CTdColors::MakeStockGradientColorset(int count, int style, bool reverse)
{
    CTxColorFolder ramp;
    const int made = ramp.MakeStockGradient(count, style, reverse);
    FromColorFolder(ramp);
    return made;
}

int CTdColors::MakeRandomColorset(int count)
{
    m_colors.clear();
    if (count < 1 || count > CTxColorFolder::maxGradientCount)
        return 0;
    // Deliberate: seeded anew on every call, so that collections made within a second are alike. Scripts make several
    // that belong together so.
    Random15 random(static_cast<quint32>(std::time(nullptr)));
    const auto part = [&random] { return random.next() * 255 / Random15::largest; };
    m_colors.reserve(count);
    for (int i = 0; i < count; ++i) {
        const int red = part();
        const int green = part();
        const int blue = part();
        m_colors.append(TxColorRef::make(red, green, blue));
    }
    return GetCount();
}

bool CTdColors::FromColorFolder(const CTxColorFolder &folder)
{
    m_colors = folder.GetColors();
    return !m_colors.isEmpty();
}

bool CTdColors::ToColorFolder(CTxColorFolder &folder) const
{
    folder.RemoveAll();
    for (const COLORREF color : m_colors)
        folder.Add(color);
    return folder.GetCount() > 0;
}
