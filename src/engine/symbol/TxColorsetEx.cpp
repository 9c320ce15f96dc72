#include "engine/symbol/TxColorsetEx.h"

void CTxColorsetEx::AddColor(COLORREF color, double height)
{
    m_entries.push_back({color, height});
}

COLORREF CTxColorsetEx::GetRGB(qint32 index) const
{
    return index >= 0 && index < GetSize() ? m_entries[static_cast<size_t>(index)].color : 0;
}

double CTxColorsetEx::GetHeight(qint32 index) const
{
    return index >= 0 && index < GetSize() ? m_entries[static_cast<size_t>(index)].height : 0.0;
}
