#include "engine/map/TxWorkspaceWriter.h"

#include "engine/base/TxNumberText.h"
#include "engine/map/TxUnknownXml.h"
#include "engine/map/TxXmlText.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>

TxPlainLooks TxPlainLooks::nearest(const CTxGeoStyle &style)
{
    constexpr double digits = 1e9; // so that what was subtracted is found again
    const double size = std::round((style.symbolSize + style.symbolOutlineWidth) * digits) / digits;
    return {style.lineColor, style.fillColor, std::clamp(style.lineWidth, minimumLineWidth, maximumLineWidth),
            std::clamp(size, minimumSymbolSize, maximumSymbolSize)};
}

namespace {

class Writer
{
public:
    explicit Writer(QByteArray &bytes) : m_xml(&bytes)
    {
        m_xml.setAutoFormatting(true);
        m_xml.setAutoFormattingIndent(2);
    }

    void writeWorkspace(const TxWorkspaceDocument &document)
    {
        m_xml.writeStartDocument();
        m_xml.writeStartElement(QStringLiteral("terravox-workspace"));
        m_xml.writeAttribute(QStringLiteral("version"), QString::number(TxWorkspaceDocument::version));
        if (!document.name.isEmpty())
            writeText(u"name", document.name);
        TxUnknownXml::writeAttributes(document.unknown, m_xml);
        for (const TxDataSourceRecord &record : document.dataSources)
            writeDataSource(record);
        for (const TxMapRecord &record : document.maps)
            writeMap(record);
        for (const TxContentRecord &record : document.layouts)
            writeContent(u"layout", record);
        for (const TxContentRecord &record : document.scenes)
            writeContent(u"scene", record);
        TxUnknownXml::writeElements(document.unknown, m_xml);
        m_xml.writeEndDocument();
    }

private:
    void writeText(QStringView name, const QString &value)
    {
        m_xml.writeAttribute(name.toString(), TxXmlText::encode(value));
    }
    void writeNumber(QStringView name, double value)
    {
        m_xml.writeAttribute(name.toString(), TxNumberText::shortest(value));
    }
    void writeFlag(QStringView name, bool value)
    {
        m_xml.writeAttribute(name.toString(), value ? QStringLiteral("true") : QStringLiteral("false"));
    }
    void writeColour(QStringView name, const QColor &value)
    {
        m_xml.writeAttribute(name.toString(), value.name(value.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb));
    }

    void writeDataSource(const TxDataSourceRecord &record)
    {
        m_xml.writeStartElement(QStringLiteral("datasource"));
        writeText(u"alias", record.alias);
        writeText(u"path", record.path);
        m_xml.writeAttribute(QStringLiteral("type"), QString::number(record.engineType));
        m_xml.writeAttribute(QStringLiteral("options"), QString::number(record.options));
        finish(record.unknown);
    }

    void writeMap(const TxMapRecord &record)
    {
        m_xml.writeStartElement(QStringLiteral("map"));
        writeText(u"name", record.name);
        if (record.background.isValid())
            writeColour(u"background", record.background);
        if (!record.view.IsVoid()) {
            writeNumber(u"left", record.view.left);
            writeNumber(u"bottom", record.view.bottom);
            writeNumber(u"right", record.view.right);
            writeNumber(u"top", record.view.top);
        }
        TxUnknownXml::writeAttributes(record.unknown, m_xml);
        for (const TxLayerRecord &layer : record.layers)
            writeLayer(layer);
        TxUnknownXml::writeElements(record.unknown, m_xml);
        m_xml.writeEndElement();
    }

    void writeLayer(const TxLayerRecord &record)
    {
        m_xml.writeStartElement(QStringLiteral("layer"));
        if (!record.name.isEmpty())
            writeText(u"name", record.name);
        writeText(u"alias", record.alias);
        writeText(u"dataset", record.dataset);
        writeFlag(u"visible", record.visible);
        writeFlag(u"selectable", record.selectable);
        writeFlag(u"snapable", record.snapable);
        writeFlag(u"editable", record.editable);
        writeFlag(u"locked", record.editableLock);
        const TxPlainLooks looks = TxPlainLooks::nearest(record.style.geoStyle);
        writeColour(u"line", looks.line);
        writeColour(u"fill", looks.fill);
        writeNumber(u"lineWidth", looks.lineWidth);
        writeNumber(u"symbolSize", looks.symbolSize);
        if (!record.style.labelField.isEmpty())
            writeText(u"label", record.style.labelField);
        writeNumber(u"opacity", record.style.opacity);
        TxUnknownXml::writeAttributes(record.unknown, m_xml);
        if (!record.unknownGeoStyle.isEmpty() || looks.toGeoStyle() != record.style.geoStyle)
            writeGeoStyle(record);
        if (record.style.colors.GetSize() > 0)
            writeColorset(record);
        TxUnknownXml::writeElements(record.unknown, m_xml);
        m_xml.writeEndElement();
    }

    void writeGeoStyle(const TxLayerRecord &record)
    {
        QXmlStreamReader parts(record.style.geoStyle.ToXML());
        while (!parts.atEnd()) {
            parts.readNext();
            const QString unknown = record.unknownGeoStyle.value(parts.name().toString());
            if (parts.isStartElement()) {
                m_xml.writeStartElement(parts.name().toString());
                m_xml.writeAttributes(parts.attributes());
                TxUnknownXml::writeAttributes(unknown, m_xml);
            } else if (parts.isEndElement()) {
                TxUnknownXml::writeElements(unknown, m_xml);
                m_xml.writeEndElement();
            }
        }
    }

    void writeColorset(const TxLayerRecord &record)
    {
        const CTxColorsetEx &colors = record.style.colors;
        m_xml.writeStartElement(QStringLiteral("colorset"));
        writeNumber(u"floor", colors.GetZFloor());
        writeNumber(u"ceiling", colors.GetZCeiling());
        writeFlag(u"stepped", record.style.stepped);
        TxUnknownXml::writeAttributes(record.unknownColorset, m_xml);
        QString text;
        text.reserve(8 * colors.GetSize());
        for (qint32 i = 0; i < colors.GetSize(); ++i) {
            if (i > 0)
                text += u' ';
            text += TxColorRef::toQColor(colors.GetRGB(i)).name();
        }
        writeWithin(text, record.unknownColorset);
    }

    void writeContent(QStringView element, const TxContentRecord &record)
    {
        m_xml.writeStartElement(element.toString());
        writeText(u"name", record.name);
        TxUnknownXml::writeAttributes(record.unknown, m_xml);
        writeWithin(TxXmlText::encode(record.content), record.unknown);
    }

    /// Ends an element that has @p text in it.
    void writeWithin(const QString &text, const QString &unknown)
    {
        m_xml.setAutoFormatting(false); // white space would join the text
        if (!text.isEmpty())
            m_xml.writeCharacters(text);
        TxUnknownXml::writeElements(unknown, m_xml);
        m_xml.writeEndElement();
        m_xml.setAutoFormatting(true);
    }

    void finish(const QString &unknown)
    {
        TxUnknownXml::writeAttributes(unknown, m_xml);
        TxUnknownXml::writeElements(unknown, m_xml);
        m_xml.writeEndElement();
    }

    QXmlStreamWriter m_xml;
};

} // namespace

QByteArray TxWorkspaceWriter::write(const TxWorkspaceDocument &document)
{
    QByteArray bytes;
    Writer(bytes).writeWorkspace(document);
    return bytes;
}
