#include "engine/symbol/TxStyleLibrary.h"

#include <QCoreApplication>

qint32 CTxStyleLibrary::GetAt(qint32 index) const
{
    return index >= 0 && index < m_count ? m_keyAt(index).id : -1;
}

qint32 CTxStyleLibrary::FindByID(qint32 id) const
{
    for (qint32 index = 0; index < m_count; ++index) {
        if (m_keyAt(index).id == id)
            return index;
    }
    return -1;
}

QString CTxStyleLibrary::GetName(qint32 id) const
{
    const qint32 index = FindByID(id);
    return index < 0 ? QString() : QCoreApplication::translate("TdCommon", m_keyAt(index).name);
}
