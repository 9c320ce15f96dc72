#pragma once

#include "common/TdCommonExport.h"

#include <QString>
#include <QStringList>

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
    /// A "-" among them moves to the very front. There is nothing to undo then.
    void fill(const QString &text);
    /// The same as a change by the user, which can be undone.
    void replace(const QString &text);
    /// Takes @p text as it stands, for an edit that shows no mask at present.
    void show(const QString &text);
    /// What the edit must show.
    const QString &text() const { return m_text; }

    /// The user changed the text.
    /// @param changed what the edit shows now
    /// @param caret where its selection starts now, 0 to the length of @p changed
    /// @return where the caret must go once the edit shows text(); -1 to leave both as they are
    int edited(const QString &changed, int caret, Key key);

    /// Changes that the user made and can take back, the last 100. A change that was refused is none.
    bool canUndo() const { return !m_undo.isEmpty(); }
    bool canRedo() const { return !m_redo.isEmpty(); }
    /// Takes the last change back.
    /// @return where the caret must go, -1 when there is none
    int undo() { return step(m_undo, m_redo); }
    /// Makes the change again that was taken back last; else as above.
    int redo();

    /// True when the position @p index of the mask is a literal.
    bool isLiteral(qsizetype index) const;

private:
    QString filled(const QString &text) const;
    bool isEntry(qsizetype index) const;
    int entryAtOrBehind(int index) const;
    int applied(const QString &changed, int caret, Key key);
    void remember(const QString &before);
    int step(QStringList &from, QStringList &to);
    int erasedBefore(int caret);
    int erasedAt(int caret);
    int typedBefore(int caret, QChar typed);
    void put(qsizetype index, QChar character);

    QString m_mask;
    QString m_text;
    QStringList m_undo; // texts that stood here before, the last one at the end
    QStringList m_redo;
    QChar m_prompt = u'_';
};
