#include "engine/map/TxWorkspaceReader.h"

#include "engine/base/TxNumberText.h"
#include "engine/data/TxDataSource.h"
#include "engine/map/TxUnknownXml.h"
#include "engine/map/TxXmlText.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// The attributes of the element that a reader stands on: each is asked for by name, the rest is unknown.
class Attributes
{
public:
    explicit Attributes(QXmlStreamReader &reader) : m_reader(reader), m_attributes(reader.attributes()) {}

    QString text(QStringView name)
    {
        const auto at = find(name);
        if (at == m_attributes.end())
            return QString();
        const QString text = TxXmlText::decode(at->value());
        m_attributes.erase(at);
        return text;
    }

    /// A text that must be there and not be empty.
    QString required(QStringView name)
    {
        const QString value = text(name);
        if (value.isEmpty())
            fail(name, QStringLiteral("is missing or empty"));
        return value;
    }

    double number(QStringView name, double fallback, double least, double most)
    {
        const QString value = text(name);
        if (value.isNull())
            return fallback;
        bool ok = false;
        const double result = TxNumberText::toDouble(value, &ok);
        if (!ok || !std::isfinite(result))
            fail(name, QStringLiteral("is no number"));
        return std::clamp(result, least, most);
    }

    template<class Integer>
    Integer integer(QStringView name, Integer fallback)
    {
        const QString value = text(name);
        if (value.isNull())
            return fallback;
        bool ok = false;
        const qlonglong result = value.toLongLong(&ok);
        if (!ok || result < std::numeric_limits<Integer>::min() || result > std::numeric_limits<Integer>::max())
            fail(name, QStringLiteral("is no whole number in range"));
        return static_cast<Integer>(result);
    }

    bool flag(QStringView name, bool fallback)
    {
        const QString value = text(name);
        if (value.isNull())
            return fallback;
        if (value == u"true" || value == u"1")
            return true;
        if (value != u"false" && value != u"0")
            fail(name, QStringLiteral("is neither true nor false"));
        return false;
    }

    QColor colour(QStringView name, const QColor &fallback)
    {
        const QString value = text(name);
        if (value.isNull())
            return fallback;
        const QColor result = value.startsWith(u'#') ? QColor(value) : QColor();
        if (!result.isValid())
            fail(name, QStringLiteral("is no colour"));
        return result;
    }

    /// Gives what nobody asked for to @p unknown.
    void giveRest(TxUnknownXml &unknown) const
    {
        for (const QXmlStreamAttribute &attribute : m_attributes)
            unknown.addAttribute(attribute.qualifiedName(), attribute.value());
    }

private:
    QXmlStreamAttributes::iterator find(QStringView name)
    {
        return std::find_if(m_attributes.begin(), m_attributes.end(),
                            [name](const QXmlStreamAttribute &attribute) { return attribute.qualifiedName() == name; });
    }
    void fail(QStringView name, const QString &what)
    {
        if (!m_reader.hasError())
            m_reader.raiseError(QStringLiteral("the attribute \"%1\" of \"%2\" %3")
                                    .arg(name.toString(), m_reader.qualifiedName().toString(), what));
    }

    QXmlStreamReader &m_reader;
    QXmlStreamAttributes m_attributes;
};

/// Walks the children of the element that @p reader stands on: @p element gets each element and says whether it knew
/// it; the others go to @p unknown.
template<class Element>
void readChildren(QXmlStreamReader &reader, TxUnknownXml &unknown, Element element, QString *content = nullptr)
{
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isEndElement())
            return;
        if (reader.isStartElement()) {
            if (!element(reader.qualifiedName()))
                unknown.addElement(reader);
        } else if (reader.isCharacters() && content) {
            *content += reader.text();
        } else if (reader.isCharacters() && !reader.isWhitespace()) {
            reader.raiseError(QStringLiteral("text where none belongs"));
        }
    }
}

bool knowsNone(QStringView)
{
    return false;
}

/// Reads the element that @p reader stands on: @p take asks for the attributes that it knows, @p element and @p content
/// get the children (see readChildren). @return what nobody knew
template<class Take, class Element = decltype(&knowsNone)>
QString readElement(QXmlStreamReader &reader, Take take, Element element = knowsNone, QString *content = nullptr)
{
    TxUnknownXml unknown;
    Attributes attributes(reader);
    take(attributes);
    attributes.giveRest(unknown);
    readChildren(reader, unknown, element, content);
    return unknown.text();
}

TxDataSourceRecord readDataSource(QXmlStreamReader &reader)
{
    TxDataSourceRecord record;
    record.unknown = readElement(reader, [&](Attributes &attributes) {
        record.alias = attributes.required(u"alias");
        record.path = attributes.required(u"path");
        record.engineType = attributes.integer<qint32>(u"type", -1);
        record.options = attributes.integer<quint32>(u"options", CTxDataSource::Normal);
    });
    return record;
}

/// The colours of a layer: "#rrggbb" one after another, with white space between.
void readColorset(QXmlStreamReader &reader, TxLayerRecord &record)
{
    CTxColorsetEx &colors = record.style.colors;
    const auto take = [&](Attributes &attributes) {
        constexpr double most = std::numeric_limits<double>::max();
        colors.SetZFloor(attributes.number(u"floor", 0, -most, most));
        colors.SetZCeiling(attributes.number(u"ceiling", 0, -most, most));
        record.style.stepped = attributes.flag(u"stepped", false);
    };
    QString content;
    record.unknownColorset = readElement(reader, take, knowsNone, &content);
    const auto words = QStringView(content).split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    for (const QStringView word : words) {
        constexpr qsizetype length = 7;
        const QColor color = word.size() == length && word[0] == u'#' ? QColor(word) : QColor();
        if (!color.isValid()) {
            reader.raiseError(QStringLiteral("\"%1\" in \"colorset\" is no colour").arg(word.left(32)));
            return;
        }
        colors.AddColor(TxColorRef::fromQColor(color));
    }
}

using PartNames = QMap<QString, QStringList>; // the names of attributes by that of their element

/// The parts of a geoStyle and what is said of them.
const PartNames &geoStyleParts()
{
    static const PartNames parts = [] {
        PartNames names;
        QXmlStreamReader reader(CTxGeoStyle().ToXML());
        reader.readNextStartElement(); // the whole
        for (; reader.readNextStartElement(); reader.skipCurrentElement()) {
            const QXmlStreamAttributes attributes = reader.attributes();
            for (const QXmlStreamAttribute &attribute : attributes)
                names[reader.name().toString()].append(attribute.name().toString());
        }
        return names;
    }();
    return parts;
}

/// Takes what is known out of a geoStyle, for CTxGeoStyle to read.
void readGeoStyle(QXmlStreamReader &reader, TxLayerRecord &record)
{
    QString text;
    QXmlStreamWriter known(&text);
    known.writeStartElement(QStringLiteral("geoStyle"));
    PartNames parts = geoStyleParts();
    QString whole = readElement(
        reader, [](Attributes &) {},
        [&](QStringView name) {
            const QString part = name.toString();
            const QStringList attributeNames = parts.take(part); // nothing for a second one
            if (attributeNames.isEmpty())
                return false;
            known.writeStartElement(part);
            QString unknown = readElement(reader, [&](Attributes &attributes) {
                for (const QString &attribute : attributeNames) {
                    if (const QString value = attributes.text(attribute); !value.isNull())
                        known.writeAttribute(attribute, value);
                }
            });
            record.unknownGeoStyle.insert(part, std::move(unknown));
            known.writeEndElement();
            return true;
        });
    record.unknownGeoStyle.insert(QStringLiteral("geoStyle"), std::move(whole));
    known.writeEndElement();
    record.style.geoStyle.FromXML(text);
}

TxLayerRecord readLayer(QXmlStreamReader &reader)
{
    TxLayerRecord record;
    const auto take = [&](Attributes &attributes) {
        record.name = attributes.text(u"name");
        record.alias = attributes.required(u"alias");
        record.dataset = attributes.required(u"dataset");
        record.visible = attributes.flag(u"visible", record.visible);
        record.selectable = attributes.flag(u"selectable", record.selectable);
        record.snapable = attributes.flag(u"snapable", record.snapable);
        record.editable = attributes.flag(u"editable", record.editable);
        record.editableLock = attributes.flag(u"locked", record.editableLock);
        TxLayerStyle &style = record.style;
        TxPlainLooks looks = TxPlainLooks::nearest(style.geoStyle);
        looks.line = attributes.colour(u"line", looks.line);
        looks.fill = attributes.colour(u"fill", looks.fill);
        looks.lineWidth = attributes.number(u"lineWidth", looks.lineWidth, TxPlainLooks::minimumLineWidth,
                                            TxPlainLooks::maximumLineWidth);
        looks.symbolSize = attributes.number(u"symbolSize", looks.symbolSize, TxPlainLooks::minimumSymbolSize,
                                             TxPlainLooks::maximumSymbolSize);
        style.geoStyle = looks.toGeoStyle();
        style.labelField = attributes.text(u"label");
        style.opacity = attributes.number(u"opacity", style.opacity, 0, 1);
    };
    record.unknown = readElement(reader, take, [&](QStringView name) {
        if (name == u"colorset" && record.style.colors.GetSize() == 0)
            readColorset(reader, record);
        else if (name == u"geoStyle" && record.unknownGeoStyle.isEmpty())
            readGeoStyle(reader, record);
        else
            return false;
        return true;
    });
    return record;
}

TxMapRecord readMap(QXmlStreamReader &reader)
{
    TxMapRecord record;
    const auto take = [&](Attributes &attributes) {
        record.name = attributes.required(u"name");
        record.background = attributes.colour(u"background", QColor());
        constexpr double most = std::numeric_limits<double>::max();
        const CRect2D none;
        record.view.left = attributes.number(u"left", none.left, -most, most);
        record.view.bottom = attributes.number(u"bottom", none.bottom, -most, most);
        record.view.right = attributes.number(u"right", none.right, -most, most);
        record.view.top = attributes.number(u"top", none.top, -most, most);
        if (record.view.IsVoid())
            record.view = none;
    };
    record.unknown = readElement(reader, take, [&](QStringView name) {
        if (name != u"layer")
            return false;
        record.layers.append(readLayer(reader));
        return true;
    });
    return record;
}

TxContentRecord readContent(QXmlStreamReader &reader)
{
    TxContentRecord record;
    QString content;
    const auto take = [&](Attributes &attributes) { record.name = attributes.required(u"name"); };
    record.unknown = readElement(reader, take, knowsNone, &content);
    record.content = TxXmlText::decode(content);
    return record;
}

void readWorkspace(QXmlStreamReader &reader, TxWorkspaceDocument &document)
{
    const auto take = [&](Attributes &attributes) {
        const int version = attributes.integer<int>(u"version", 0);
        if (!reader.hasError() && version > TxWorkspaceDocument::version)
            reader.raiseError(
                QStringLiteral("it was written by a newer version of this program (format %1)").arg(version));
        else if (!reader.hasError() && version < 1)
            reader.raiseError(QStringLiteral("it does not say which version of the format it has"));
        document.name = attributes.text(u"name");
    };
    document.unknown = readElement(reader, take, [&](QStringView name) {
        if (name == u"datasource")
            document.dataSources.append(readDataSource(reader));
        else if (name == u"map")
            document.maps.append(readMap(reader));
        else if (name == u"layout")
            document.layouts.append(readContent(reader));
        else if (name == u"scene")
            document.scenes.append(readContent(reader));
        else
            return false;
        return true;
    });
}

/// Makes the names of @p records unique. @return true when one had to be changed.
template<class Record>
bool makeUnique(QList<Record> &records, QString Record::*name)
{
    QSet<QString> names;
    for (const Record &record : records)
        names.insert(record.*name);
    if (names.size() == records.size())
        return false;
    QSet<QString> used;
    QHash<QString, int> lastNumber;
    for (Record &record : records) {
        const QString wanted = record.*name;
        while (used.contains(record.*name) || (record.*name != wanted && names.contains(record.*name)))
            record.*name = QStringLiteral("%1_%2").arg(wanted, QString::number(++lastNumber[wanted]));
        used.insert(record.*name);
    }
    return true;
}

} // namespace

std::optional<TxWorkspaceDocument> TxWorkspaceReader::read(const QByteArray &xml, QString &error)
{
    TxWorkspaceDocument document;
    QXmlStreamReader reader(xml);
    reader.setNamespaceProcessing(false);
    bool hasRoot = false;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isDTD()) {
            reader.raiseError(QStringLiteral("a document type definition does not belong into it"));
        } else if (reader.isStartElement()) {
            hasRoot = reader.qualifiedName() == u"terravox-workspace";
            if (hasRoot)
                readWorkspace(reader, document);
            else
                reader.raiseError(QStringLiteral("it is no workspace file"));
        }
    }
    if (reader.hasError() || !hasRoot) {
        error = QStringLiteral("line %1, column %2: %3")
                    .arg(reader.lineNumber())
                    .arg(reader.columnNumber())
                    .arg(reader.errorString());
        return std::nullopt;
    }
    const bool changed[] = {
        makeUnique(document.dataSources, &TxDataSourceRecord::alias), makeUnique(document.maps, &TxMapRecord::name),
        makeUnique(document.layouts, &TxContentRecord::name), makeUnique(document.scenes, &TxContentRecord::name)};
    document.repaired = std::find(std::begin(changed), std::end(changed), true) != std::end(changed);
    return document;
}
