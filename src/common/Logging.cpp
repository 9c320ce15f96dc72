#include "basic/TdHostMessage.h"
#include "common/TdCommMethods.h"
#include "common/TdModule.h"
#include "common/TdSendMessage.h"
#include "engine/base/TxLogFile.h"

#include <QTime>

bool CTdCommMethods::ShowText(const SuggestiveTextFormat &format)
{
    QString line;
    if (format.flags & SuggestiveTextFormat::Caption)
        line += format.caption + QStringLiteral(":\t");
    if (format.flags & SuggestiveTextFormat::Text)
        line += format.text;
    if (format.flags & SuggestiveTextFormat::TimeOfDay)
        line += QTime::currentTime().toString(u"\tHH:mm:ss");
    CTdHostMessage message(CTdHostMessage::OutputText, line);
    return TdSendMessageToMainWnd(message);
}

bool CTdCommMethods::ShowText(const QString &caption, const QString &text, quint32 flags)
{
    return ShowText(SuggestiveTextFormat{caption, text, flags});
}

bool CTdCommMethods::ShowText(quint32 captionId, quint32 textId, quint32 flags)
{
    return ShowText(CTdModule::LoadString(captionId), CTdModule::LoadString(textId), flags);
}

void CTdCommMethods::PromptWrong(const QString &, int)
{
    // Deliberate: a prompt that is switched off. Callers report what users cannot mend, on paths that users meet every
    // day (a dataset hidden by a filter), and rely on being silent.
}

// The wrappers take the source position first, so that a caller's macro can put its own before the arguments, and pass
// it on last. Deliberate: do not straighten the order.

bool CTdCommMethods::RecordLog(int level, const QString &message)
{
    return CTxLogFile::RecordLog(level, message);
}

bool CTdCommMethods::RecordLog(const QString &file, int line, int level, const QString &message)
{
    return CTxLogFile::RecordLog(level, message, file, line);
}

bool CTdCommMethods::RecordDebugLog(const QString &message)
{
    return CTxLogFile::RecordDebugLog(message);
}

bool CTdCommMethods::RecordDebugLog(const QString &file, int line, const QString &message)
{
    return CTxLogFile::RecordDebugLog(message, file, line);
}

bool CTdCommMethods::WriteErrorLog(int code, const QString &message, int line)
{
    return CTxLogFile::WriteErrorLog(code, message, line);
}

bool CTdCommMethods::WriteErrorLog(const QString &message, const QString &file, int line)
{
    return CTxLogFile::WriteErrorLog(message, file, line);
}
