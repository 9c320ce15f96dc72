#include "engine/data/TxFilterText.h"

#include "engine/base/TxGdal.h"

namespace TxFilterText {

namespace {

/// A piece of a condition.
struct Token
{
    enum Kind { Name, QuotedName, Text, Space, Mark, Broken };
    Kind kind;
    qsizetype begin;
    qsizetype end;
};

bool startsName(QChar c)
{
    return c == u'_' || c.isLetter() || c.isSurrogate();
}

bool continuesName(QChar c)
{
    return startsName(c) || c.isDigit() || c.isMark() || c == u'$';
}

/// The token that begins at @p begin.
Token tokenAt(const QString &text, qsizetype begin)
{
    const auto quoted = [&](QChar close, Token::Kind kind) {
        for (qsizetype at = begin + 1; at < text.size(); ++at) {
            if (text.at(at) != close)
                continue;
            if (close != u']' && at + 1 < text.size() && text.at(at + 1) == close)
                ++at; // doubled: the quote itself
            else
                return Token{kind, begin, at + 1};
        }
        return Token{Token::Broken, begin, text.size()};
    };
    const QChar c = text.at(begin);
    const QStringView rest = QStringView(text).sliced(begin);
    if (c == u'\'')
        return quoted(c, Token::Text);
    if (c == u'"' || c == u'`')
        return quoted(c, Token::QuotedName);
    if (c == u'[')
        return quoted(u']', Token::QuotedName);
    if (rest.startsWith(u"--")) {
        const qsizetype end = text.indexOf(u'\n', begin);
        return {Token::Space, begin, end < 0 ? text.size() : end};
    }
    if (rest.startsWith(u"/*")) {
        const qsizetype end = text.indexOf(u"*/", begin + 2);
        return end < 0 ? Token{Token::Broken, begin, text.size()} : Token{Token::Space, begin, end + 2};
    }
    qsizetype end = begin + 1;
    if (c.isSpace())
        return {Token::Space, begin, end};
    if (startsName(c) || c.isDigit()) { // a number with its exponent is kept together, so that "1e5" holds no name
        while (end < text.size() && continuesName(text.at(end)))
            ++end;
        return {c.isDigit() ? Token::Mark : Token::Name, begin, end};
    }
    return {Token::Mark, begin, end};
}

QString nameOf(const QString &text, const Token &token)
{
    if (token.kind == Token::Name)
        return text.sliced(token.begin, token.end - token.begin);
    const QChar quote = text.at(token.end - 1);
    return text.sliced(token.begin + 1, token.end - token.begin - 2).replace(QString(2, quote), QString(quote));
}

/// The first character at or behind @p at that is no space, null when there is none.
QChar characterBehind(const QString &text, qsizetype at)
{
    while (at < text.size() && text.at(at).isSpace())
        ++at;
    return at < text.size() ? text.at(at) : QChar();
}

} // namespace

bool isWhole(const QString &filter)
{
    int depth = 0;
    for (qsizetype at = 0; at < filter.size();) {
        const Token token = tokenAt(filter, at);
        if (token.kind == Token::Broken)
            return false;
        if (token.kind == Token::Mark) {
            const QChar c = filter.at(token.begin);
            depth += c == u'(' ? 1 : c == u')' ? -1 : 0;
            if (depth < 0 || c == u';')
                return false;
        }
        at = token.end;
    }
    return depth == 0;
}

QString replaceNames(const QString &filter,
                     const std::function<QString(const QString &name, bool isQuoted)> &replacement)
{
    QString result;
    QChar before; // the last character that is no space
    for (qsizetype at = 0; at < filter.size();) {
        const Token token = tokenAt(filter, at);
        const QString piece = filter.sliced(token.begin, token.end - token.begin);
        at = token.end;
        if (token.kind == Token::Space) {
            result += piece;
            continue;
        }
        QString text = piece;
        if (token.kind == Token::Name || token.kind == Token::QuotedName) {
            const QString name = nameOf(filter, token);
            const QChar behind = characterBehind(filter, token.end);
            const bool isBare = before != u'.' && behind != u'.' && behind != u'(';
            const QString replaced = isBare ? replacement(name, token.kind == Token::QuotedName) : QString();
            if (!replaced.isEmpty())
                text = replaced;
            else if (token.kind == Token::QuotedName)
                text = TxGdal::quoteIdentifier(name);
        }
        before = filter.at(token.end - 1);
        result += text;
    }
    return result;
}

} // namespace TxFilterText
