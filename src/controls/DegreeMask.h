#pragma once

#include "common/TdCommonExport.h"

#include <QString>

/// The text of an edit under a mask: positions that take a character, and literals between them that never change. What
/// the user types replaces what stands there. A value type, without a window: it is told what an edit's text became and
/// answers what it must be.
class TDCOMMON_API DegreeMask
{
public:
    /// The key that changed the text, as far as it matters.
    enum class Key { Other, Backspace, Delete };

    /// In @p mask "#" takes a digit and "?" a sign; every other character is a literal. All positions show @p prompt.
    void setMask(const QString &mask, QChar prompt);
    const QString &mask() const { return m_mask; }
    QChar prompt() const { return m_prompt; }

    /// Fills the positions with the characters of @p text in order, whatever they are, and with prompts behind its end.
    /// A "-" among them moves to the very front.
    void fill(const QString &text);
    /// Takes @p text as it stands, for an edit that shows no mask at present.
    void show(const QString &text) { m_text = text; }
    /// What the edit must show.
    const QString &text() const { return m_text; }

    /// The user changed the text.
    /// @param changed what the edit shows now
    /// @param caret where its selection starts now, 0 to the length of @p changed
    /// @return where the caret must go once the edit shows text(); -1 to leave both as they are
    int edited(const QString &changed, int caret, Key key);

    /// True when the position @p index of the mask is a literal.
    bool isLiteral(qsizetype index) const;

private:
    QString filled(const QString &text) const;
    bool isEntry(qsizetype index) const;
    int entryAtOrBehind(int index) const;
    int erasedBefore(int caret);
    int erasedAt(int caret);
    int typedBefore(int caret, QChar typed);
    void put(qsizetype index, QChar character);

    QString m_mask;
    QString m_text;
    QChar m_prompt = u'_';
};
