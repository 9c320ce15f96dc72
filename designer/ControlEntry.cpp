#include "ControlEntry.h"

#include "ControlTable.h"

#include <QCoreApplication>
#include <QIcon>

using namespace Qt::StringLiterals;

ControlEntry::ControlEntry(const ControlRow &row, QObject *parent) : QObject(parent), m_row(row) {}

QString ControlEntry::name() const
{
    return QString::fromLatin1(m_row.className);
}

QString ControlEntry::group() const
{
    return u"TdCommon"_s;
}

QString ControlEntry::toolTip() const
{
    return QCoreApplication::translate("ControlTable", m_row.toolTip);
}

QString ControlEntry::whatsThis() const
{
    return toolTip();
}

QString ControlEntry::includeFile() const
{
    return QString::fromLatin1(m_row.header);
}

QIcon ControlEntry::icon() const
{
    return QIcon(u":/designer/%1.svg"_s.arg(QLatin1StringView(m_row.icon)));
}

bool ControlEntry::isContainer() const
{
    return false;
}

QWidget *ControlEntry::createWidget(QWidget *parent)
{
    return m_row.make(parent);
}

QString ControlEntry::domXml() const
{
    return u"<ui language=\"c++\"><widget class=\"%1\" name=\"%2\">%3</widget></ui>"_s.arg(
        name(), QLatin1StringView(m_row.objectName), QLatin1StringView(m_row.properties));
}
