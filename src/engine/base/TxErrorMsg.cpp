#include "engine/base/TxErrorMsg.h"

void CTxErrorMsg::SetErrorMessage(const QString &message)
{
    m_message = message;
    ++m_count;
}

CTxErrorMsg &TxGetErrorMsgObj()
{
    static CTxErrorMsg object;
    return object;
}
