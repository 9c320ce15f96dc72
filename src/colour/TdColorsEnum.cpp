#include "colour/TdColorsEnum.h"

#include "colour/TdColors.h"
#include "engine/base/TxVariant.h"

#include <algorithm>
#include <new>

TdColorsEnum::TdColorsEnum(const CTdColors &colors) : m_colors(&colors) {}

TdColorsEnum::~TdColorsEnum() = default;

HResult TdColorsEnum::Next(quint32 count, CTxVariant *variants, quint32 *fetched)
{
    if (fetched)
        *fetched = 0;
    if (!m_colors)
        return HResult::E_UNEXPECTED;
    if ((count > 1 && !fetched) || (count > 0 && !variants))
        return HResult::E_INVALIDARG;
    std::fill_n(variants, count, CTxVariant());
    const quint32 taken = std::min(count, remaining());
    for (quint32 i = 0; i < taken; ++i)
        variants[i] = CTxVariant(m_colors->GetItem(static_cast<int>(++m_passed)));
    if (fetched)
        *fetched = taken;
    return taken == count ? HResult::S_OK : HResult::S_FALSE;
}

HResult TdColorsEnum::Reset()
{
    if (!m_colors)
        return HResult::E_UNEXPECTED;
    m_passed = 0;
    return HResult::S_OK;
}

HResult TdColorsEnum::Skip(quint32 count)
{
    if (!m_colors)
        return HResult::E_UNEXPECTED;
    const quint32 passed = std::min(count, remaining());
    m_passed += passed;
    return passed == count ? HResult::S_OK : HResult::S_FALSE;
}

HResult TdColorsEnum::Clone(std::unique_ptr<TdColorsEnum> &copy) const
{
    copy.reset();
    if (!m_colors)
        return HResult::E_UNEXPECTED;
    copy.reset(new (std::nothrow) TdColorsEnum(*m_colors));
    if (!copy)
        return HResult::E_OUTOFMEMORY;
    copy->m_passed = m_passed;
    return HResult::S_OK;
}

quint32 TdColorsEnum::remaining() const
{
    const quint32 count = m_colors ? static_cast<quint32>(m_colors->GetCount()) : 0;
    return count - std::min(count, m_passed);
}
