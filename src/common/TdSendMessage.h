#pragma once

#include "common/TdCommonExport.h"

#include <QtGlobal>

class CTdHostMessage;
class QObject;

/// Sends @p message to @p receiver and waits until it has been handled; message.result() is the answer.
/// @return the answer; 0, and nothing is sent, when @p receiver is null or lives on another thread than the caller's
/// (which is also logged).
TDCOMMON_API qint64 TdSendMessage(QObject *receiver, CTdHostMessage &message);

/// Sends @p message to the host's main window (CTdModule::GetMainWnd()) and waits until it has been handled;
/// message.result() is the answer.
/// @return true when a main window received it; false when there is none, or when this is not the user-interface thread
/// (which is also logged).
TDCOMMON_API bool TdSendMessageToMainWnd(CTdHostMessage &message);
