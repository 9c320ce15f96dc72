#pragma once

#include <QString>
#include <QXmlStreamWriter>

class QXmlStreamReader;

/// Collects attributes and elements that this version does not know, so that they survive being read and written.
///
/// They are kept as one XML text, "<unknown attribute…>element…</unknown>", that TxUnknownXml alone reads and writes.
/// Comments and processing instructions are dropped, and white space between elements.
class TxUnknownXml
{
public:
    /// How deep elements may be nested in one another.
    static constexpr int maximumDepth = 256;

    TxUnknownXml();

    /// Takes an attribute over. Attributes come before elements.
    void addAttribute(QStringView name, QStringView value);
    /// Takes the element over that @p reader stands on, and moves @p reader to its end. Elements nested too deeply
    /// raise an error in @p reader.
    void addElement(QXmlStreamReader &reader);
    /// All of it as text; empty when there is nothing.
    QString text();

    /// Writes the attributes or the elements of @p text to @p writer.
    static void writeAttributes(const QString &text, QXmlStreamWriter &writer);
    static void writeElements(const QString &text, QXmlStreamWriter &writer);

private:
    QString m_text;
    QXmlStreamWriter m_writer;
    bool m_isEmpty = true;
};
