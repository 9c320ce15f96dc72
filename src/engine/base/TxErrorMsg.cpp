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
    // Each thread has its own: what fails while a file is looked at in the background is not the user's last error.
    thread_local CTxErrorMsg object;
    return object;
}
