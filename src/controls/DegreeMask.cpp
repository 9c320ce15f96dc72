#include "controls/DegreeMask.h"

#include <algorithm>
#include <utility>

namespace {

constexpr QChar digitPosition = u'#';
constexpr QChar signPosition = u'?';
constexpr qsizetype rememberedChanges = 100;

bool takes(QChar position, QChar typed)
{
    return position == digitPosition ? typed >= u'0' && typed <= u'9' : typed == u'+' || typed == u'-';
}

} // namespace

void DegreeMask::setMask(const QString &mask, QChar prompt)
{
    m_mask = mask;
    m_prompt = prompt;
    show(filled({}));
}

bool DegreeMask::isEntry(qsizetype index) const
{
    return index >= 0 && index < m_mask.size() && (m_mask[index] == digitPosition || m_mask[index] == signPosition);
}

bool DegreeMask::isLiteral(qsizetype index) const
{
    return index >= 0 && index < m_mask.size() && !isEntry(index);
}

QString DegreeMask::filled(const QString &text) const
{
    QString result = m_mask;
    qsizetype used = 0;
    for (qsizetype i = 0; i < m_mask.size(); ++i) {
        if (isEntry(i))
            result[i] = used < text.size() ? text[used++] : m_prompt;
    }
    return result;
}

void DegreeMask::show(const QString &text)
{
    m_text = text;
    m_undo.clear();
    m_redo.clear();
}

void DegreeMask::replace(const QString &text)
{
    DegreeMask other = *this;
    other.fill(text);
    if (other.m_text != m_text)
        remember(std::exchange(m_text, other.m_text));
}

void DegreeMask::fill(const QString &text)
{
    show(filled(text));
    if (m_text.contains(u'-')) {
        m_text.remove(u'-');
        m_text.prepend(u'-');
    }
}

int DegreeMask::entryAtOrBehind(int index) const
{
    while (isLiteral(index))
        ++index;
    return index;
}

void DegreeMask::put(qsizetype index, QChar character)
{
    if (index >= m_text.size())
        m_text = m_text.leftJustified(index + 1, m_prompt);
    m_text[index] = character;
}

int DegreeMask::edited(const QString &changed, int caret, Key key)
{
    if (changed == m_text)
        return -1;
    const QString before = m_text;
    const int next = applied(changed, caret, key);
    if (m_text != before)
        remember(before);
    return next;
}

void DegreeMask::remember(const QString &before)
{
    m_undo.append(before);
    if (m_undo.size() > rememberedChanges)
        m_undo.removeFirst();
    m_redo.clear();
}

int DegreeMask::redo()
{
    const int changed = step(m_redo, m_undo);
    return changed < 0 ? -1 : entryAtOrBehind(changed + 1);
}

int DegreeMask::step(QStringList &from, QStringList &to)
{
    if (from.isEmpty())
        return -1;
    to.append(std::exchange(m_text, from.takeLast()));
    const QString &left = to.constLast();
    const auto difference = std::mismatch(m_text.cbegin(), m_text.cend(), left.cbegin(), left.cend());
    return static_cast<int>(difference.first - m_text.cbegin());
}

int DegreeMask::applied(const QString &changed, int caret, Key key)
{
    switch (key) {
    case Key::Backspace:
        return erasedBefore(caret);
    case Key::Delete:
        return erasedAt(caret);
    case Key::Other:
        break;
    }
    // Nothing stands before the caret after all was cut: the text comes back.
    return caret > 0 && caret <= changed.size() ? typedBefore(caret, changed[caret - 1]) : entryAtOrBehind(0);
}

int DegreeMask::erasedBefore(int caret)
{
    if (isEntry(caret) || isLiteral(caret))
        put(caret, isLiteral(caret) ? m_mask[caret] : m_prompt);
    int before = caret - 1;
    while (isLiteral(before))
        --before;
    return before + 1;
}

int DegreeMask::erasedAt(int caret)
{
    if (isLiteral(caret)) {
        put(caret, m_mask[caret]);
    } else if (isEntry(caret)) {
        // The parts are right-aligned: what stands left of the gap moves into it.
        put(caret, m_prompt);
        for (int gap = caret; isEntry(gap - 1); --gap)
            std::swap(m_text[gap], m_text[gap - 1]);
    }
    return entryAtOrBehind(caret + 1);
}

int DegreeMask::typedBefore(int caret, QChar typed)
{
    const int position = caret - 1;
    if (isLiteral(position))
        put(position, m_mask[position]);
    else if (isEntry(position) && takes(m_mask[position], typed))
        put(position, typed);
    return entryAtOrBehind(caret);
}
