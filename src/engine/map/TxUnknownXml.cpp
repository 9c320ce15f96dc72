#include "engine/map/TxUnknownXml.h"

#include <QXmlStreamReader>

namespace {

/// Copies the element @p reader stands on to @p writer, and moves @p reader to its end. Its inside is not formatted:
/// white space beside text would change it.
void copyElement(QXmlStreamReader &reader, QXmlStreamWriter &writer)
{
    const bool isFormatting = writer.autoFormatting();
    int depth = 0;
    QString space; // white space that counts only when nothing else stands in the element
    bool atStart = false;
    while (!reader.atEnd()) {
        if (reader.isStartElement()) {
            if (++depth > TxUnknownXml::maximumDepth) {
                reader.raiseError(QStringLiteral("elements are nested too deeply"));
                return;
            }
            writer.writeStartElement(reader.qualifiedName().toString());
            const QXmlStreamAttributes attributes = reader.attributes();
            for (const QXmlStreamAttribute &attribute : attributes)
                writer.writeAttribute(attribute.qualifiedName().toString(), attribute.value().toString());
            writer.setAutoFormatting(false);
            space.clear();
            atStart = true;
        } else if (reader.isCharacters()) {
            if (reader.isWhitespace())
                space += reader.text();
            else
                writer.writeCharacters(reader.text().toString());
        } else if (reader.isEndElement()) {
            if (atStart && !space.isEmpty())
                writer.writeCharacters(space);
            writer.writeEndElement();
            atStart = false;
            if (--depth == 0)
                break;
        }
        reader.readNext();
    }
    writer.setAutoFormatting(isFormatting);
}

/// Calls @p visit with a reader that stands on the outer element of @p text.
template<class Visit>
void readText(const QString &text, Visit visit)
{
    if (text.isEmpty())
        return;
    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false);
    if (reader.readNextStartElement())
        visit(reader);
}

} // namespace

TxUnknownXml::TxUnknownXml() : m_writer(&m_text)
{
    m_writer.writeStartElement(QStringLiteral("unknown"));
}

void TxUnknownXml::addAttribute(QStringView name, QStringView value)
{
    m_writer.writeAttribute(name.toString(), value.toString());
    m_isEmpty = false;
}

void TxUnknownXml::addElement(QXmlStreamReader &reader)
{
    copyElement(reader, m_writer);
    m_isEmpty = false;
}

QString TxUnknownXml::text()
{
    if (m_isEmpty)
        return QString();
    m_writer.writeEndElement();
    return m_text;
}

void TxUnknownXml::writeAttributes(const QString &text, QXmlStreamWriter &writer)
{
    readText(text, [&writer](QXmlStreamReader &reader) {
        const QXmlStreamAttributes attributes = reader.attributes();
        for (const QXmlStreamAttribute &attribute : attributes)
            writer.writeAttribute(attribute.qualifiedName().toString(), attribute.value().toString());
    });
}

void TxUnknownXml::writeElements(const QString &text, QXmlStreamWriter &writer)
{
    readText(text, [&writer](QXmlStreamReader &reader) {
        while (reader.readNextStartElement())
            copyElement(reader, writer);
    });
}
