#pragma once

#include "engine/base/TxExport.h"

#include <QString>

/// The engine's last error.
///
/// An engine operation that fails on data or storage says here what failed and why, in one or more sentences for people.
/// Collections that refuse a name for the one reason that their comment gives, and look-ups, say nothing. A success does
/// not clear it. What the libraries beneath the engine report (GDAL, PROJ, SQLite) is caught, never printed, and joins
/// the text.
class TX_EXPORT CTxErrorMsg
{
public:
    /// The text of the last error; empty when there was none since Clear().
    QString GetErrorMessage() const { return m_message; }
    /// How many errors were stored since the program began; lets a caller see whether an operation stored one.
    int GetErrorCount() const { return m_count; }

    /// Stores @p message as the last error and records it in the log.
    void SetErrorMessage(const QString &message);
    /// Forgets the last error.
    void Clear() { m_message.clear(); }

private:
    QString m_message;
    int m_count = 0;
};

/// The engine's error object; each thread has its own.
TX_EXPORT CTxErrorMsg &TxGetErrorMsgObj();
