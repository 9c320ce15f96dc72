#pragma once

#include "common/TdCommonExport.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <functional>

/// The character sets that fonts support.
namespace FontCharsets {

/// One character set of one font.
struct Script
{
    quint8 charset; ///< the charset byte
    QString name;   ///< the name of the script
};

/// The charset bytes that the table "OS/2" of a font says the font supports (its code page ranges); empty when the
/// table is too short or too old to say it.
TDCOMMON_API QList<quint8> charsetsOfOs2Table(const QByteArray &table);

/// The display name of the script that belongs to a charset byte, empty when there is none.
TDCOMMON_API QString scriptName(quint8 charset);

/// Every script of every installed font, font by font.
TDCOMMON_API QList<Script> installedScripts();

/// One entry for each charset in @p scripts, ascending, with the name that came last.
TDCOMMON_API void collect(const QList<Script> &scripts, QByteArray &charsets, QStringList &names);

/// Where CTdCommMethods::EnumCharset() takes the scripts from; an empty function for installedScripts().
TDCOMMON_API void setSource(std::function<QList<Script>()> source);

} // namespace FontCharsets
