#include "engine/symbol/TxGeoStyle.h"

#include "engine/base/TxNumberText.h"

#include <QStringList>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>

namespace {

constexpr qint32 maximumGradientColors = 4096;

double within(double value, double lowest, double highest, double otherwise)
{
    return std::isnan(value) ? otherwise : std::clamp(value, lowest, highest);
}

double turn(double angle)
{
    if (!std::isfinite(angle))
        return 0;
    const double rest = std::fmod(angle, 360.0);
    return rest < 0 ? rest + 360 : rest;
}

QString textOf(double value)
{
    return TxNumberText::shortest(value);
}

QString textOf(qint32 value)
{
    return TxNumberText::whole(value);
}

QString textOf(const QColor &color)
{
    return color.name(QColor::HexArgb);
}

QString textOf(TxGradientKind kind)
{
    return TxNumberText::whole(static_cast<qint32>(kind));
}

QString textOf(const CTxColorFolder &colors)
{
    QStringList names;
    for (const COLORREF color : colors.GetColors())
        names.append(TxColorRef::toQColor(color).name());
    return names.join(u' ');
}

void read(QStringView text, double &value)
{
    bool ok = false;
    const double number = TxNumberText::toDouble(text, &ok);
    if (ok && std::isfinite(number))
        value = number;
}

void read(QStringView text, qint32 &value)
{
    bool ok = false;
    const qint32 number = text.toInt(&ok);
    if (ok)
        value = number;
}

void read(QStringView text, QColor &value)
{
    const QColor color(text);
    if (color.isValid())
        value = color;
}

void read(QStringView text, TxGradientKind &value)
{
    qint32 number = -1;
    read(text, number);
    if (number >= 0 && number <= static_cast<qint32>(TxGradientKind::Conical))
        value = static_cast<TxGradientKind>(number);
}

void read(QStringView text, CTxColorFolder &value)
{
    value.RemoveAll();
    for (const QStringView name : text.tokenize(u' ', Qt::SkipEmptyParts)) {
        const QColor color(name);
        if (color.isValid() && value.GetCount() < maximumGradientColors)
            value.Add(TxColorRef::fromQColor(color));
    }
}

/// Calls @p visit with the element, the attribute and the member, for all members.
template<class Style, class Visit>
void visitMembers(Style &style, Visit visit)
{
    visit(u"line", u"style", style.lineStyle);
    visit(u"line", u"width", style.lineWidth);
    visit(u"line", u"color", style.lineColor);
    visit(u"line", u"back", style.lineBackColor);
    visit(u"fill", u"style", style.fillStyle);
    visit(u"fill", u"color", style.fillColor);
    visit(u"fill", u"back", style.fillBackColor);
    visit(u"fill", u"size", style.fillSize);
    visit(u"fill", u"angle", style.fillAngle);
    visit(u"fill", u"gradient", style.fillGradient);
    visit(u"fill", u"gradientColors", style.gradientColors);
    visit(u"symbol", u"style", style.symbolStyle);
    visit(u"symbol", u"size", style.symbolSize);
    visit(u"symbol", u"angle", style.symbolAngle);
    visit(u"symbol", u"color", style.symbolColor);
    visit(u"symbol", u"outlineWidth", style.symbolOutlineWidth);
    visit(u"symbol", u"outlineColor", style.symbolOutlineColor);
}

} // namespace

CTxGeoStyle CTxGeoStyle::inRange() const
{
    const CTxGeoStyle usual;
    CTxGeoStyle style = *this;
    style.lineWidth = within(lineWidth, minimumLineWidth, maximumLineWidth, usual.lineWidth);
    style.fillSize = within(fillSize, minimumFillSize, maximumFillSize, usual.fillSize);
    style.fillAngle = turn(fillAngle);
    style.symbolSize = within(symbolSize, minimumSymbolSize, maximumSymbolSize, usual.symbolSize);
    style.symbolAngle = turn(symbolAngle);
    style.symbolOutlineWidth = within(symbolOutlineWidth, 0, maximumOutlineWidth, usual.symbolOutlineWidth);
    return style;
}

QString CTxGeoStyle::ToXML() const
{
    QString text;
    QXmlStreamWriter writer(&text);
    writer.writeStartElement(QStringLiteral("geoStyle"));
    QString open;
    visitMembers(*this, [&](QStringView element, QStringView attribute, const auto &value) {
        if (open != element) {
            if (!open.isEmpty())
                writer.writeEndElement();
            open = element.toString();
            writer.writeStartElement(open);
        }
        writer.writeAttribute(attribute.toString(), textOf(value));
    });
    writer.writeEndElement();
    writer.writeEndElement();
    return text;
}

bool CTxGeoStyle::FromXML(const QString &text)
{
    QXmlStreamReader reader(text);
    if (!reader.readNextStartElement() || reader.name() != u"geoStyle")
        return false;
    CTxGeoStyle style;
    while (reader.readNextStartElement()) {
        const QXmlStreamAttributes attributes = reader.attributes();
        visitMembers(style, [&](QStringView element, QStringView attribute, auto &value) {
            if (reader.name() == element && attributes.hasAttribute(attribute.toString()))
                read(attributes.value(attribute.toString()), value);
        });
        reader.skipCurrentElement();
    }
    while (!reader.atEnd())
        reader.readNext(); // what stands behind the element may be wrong too
    if (reader.hasError())
        return false;
    *this = style;
    return true;
}
