#include "engine/map/TxXmlText.h"

namespace {

constexpr qsizetype escapeLength = 7; // "_xHHHH_"

/// The code that the escape at @p place of @p text stands for, -1 when none stands there.
int escapeAt(QStringView text, qsizetype place)
{
    if (place + escapeLength > text.size() || text[place] != u'_' || text[place + 1] != u'x' || text[place + 6] != u'_')
        return -1;
    bool ok = false;
    const int code = text.mid(place + 2, 4).toInt(&ok, 16);
    return ok && text[place + 2] != u'-' && text[place + 2] != u'+' ? code : -1;
}

bool canStand(QStringView text, qsizetype place)
{
    const QChar c = text[place];
    if (c.isHighSurrogate())
        return place + 1 < text.size() && text[place + 1].isLowSurrogate();
    if (c.isLowSurrogate())
        return place > 0 && text[place - 1].isHighSurrogate();
    return (c >= u' ' && c != u'\xfffe' && c != u'\xffff') || c == u'\t' || c == u'\n';
}

void appendEscape(QString &text, char16_t code)
{
    text += QStringLiteral("_x%1_").arg(QString::number(code, 16).rightJustified(4, u'0').toUpper());
}

} // namespace

QString TxXmlText::encode(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!canStand(text, i) || escapeAt(text, i) >= 0)
            appendEscape(result, text[i].unicode());
        else
            result += text[i];
    }
    return result;
}

QString TxXmlText::decode(QStringView text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const int code = escapeAt(text, i);
        result += code >= 0 ? QChar(static_cast<char16_t>(code)) : text[i];
        if (code >= 0)
            i += escapeLength - 1;
    }
    return result;
}
