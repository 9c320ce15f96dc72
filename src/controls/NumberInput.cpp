#include "controls/NumberInput.h"

namespace {

bool isExponentLetter(QChar character)
{
    return character == u'e' || character == u'E';
}

bool hasExponent(QStringView text)
{
    return text.contains(u'e', Qt::CaseInsensitive);
}

bool acceptsSign(QStringView text, qsizetype caret)
{
    return caret == 0 ? !text.startsWith(u'-') : isExponentLetter(text[caret - 1]);
}

bool acceptsExponent(QStringView text, qsizetype caret)
{
    return caret > (text.startsWith(u'-') ? 1 : 0) && !hasExponent(text);
}

bool acceptsPoint(QStringView text, qsizetype caret)
{
    return !text.contains(u'.') && !hasExponent(text.left(caret));
}

} // namespace

bool NumberInput::accepts(int mode, QStringView text, qsizetype caret, QChar typed)
{
    if (mode != Whole && mode != Real)
        return false;
    caret = qBound<qsizetype>(0, caret, text.size());
    if (typed >= u'0' && typed <= u'9')
        return true;
    if (typed == u'-')
        return acceptsSign(text, caret);
    if (isExponentLetter(typed))
        return acceptsExponent(text, caret);
    return typed == u'.' && mode == Real && acceptsPoint(text, caret);
}
