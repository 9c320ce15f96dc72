#include "engine/base/TxErrorMsg.h"

#include "engine/base/TxLogFile.h"

void CTxErrorMsg::SetErrorMessage(const QString &message)
{
    m_message = message;
    ++m_count;
    CTxLogFile::RecordLog(CTxLogFile::ErrorLevel, message);
}

CTxErrorMsg &TxGetErrorMsgObj()
{
    static CTxErrorMsg object;
    return object;
}
