#include "common/FontCharsets.h"

#include "common/ConstantTable.h"
#include "common/TdCommMethods.h"
#include "common/TdModule.h"
#include "res/StringId.h"

#include <QFont>
#include <QFontDatabase>
#include <QMap>
#include <QRawFont>
#include <QtEndian>

#include <array>

namespace {

/// A character set: the bit of the field ulCodePageRange1 of the OpenType table "OS/2" that stands for it, the writing
/// system that tells of it where a font has no such table, and its script.
struct CharsetRow
{
    quint8 charset;
    int bit;
    QFontDatabase::WritingSystem system; ///< Any where no writing system tells of it
    TdStringId::Id script;
};
constexpr auto charsets = std::to_array<CharsetRow>({
    {0, 0, QFontDatabase::Latin, TdStringId::ScriptWestern},
    {2, 31, QFontDatabase::Symbol, TdStringId::ScriptSymbol},
    {77, 29, QFontDatabase::Any, TdStringId::ScriptMac},
    {128, 17, QFontDatabase::Japanese, TdStringId::ScriptJapanese},
    {129, 19, QFontDatabase::Korean, TdStringId::ScriptHangul},
    {130, 21, QFontDatabase::Any, TdStringId::ScriptHangulJohab},
    {134, 18, QFontDatabase::SimplifiedChinese, TdStringId::ScriptChineseSimplified},
    {136, 20, QFontDatabase::TraditionalChinese, TdStringId::ScriptChineseTraditional},
    {161, 3, QFontDatabase::Greek, TdStringId::ScriptGreek},
    {162, 4, QFontDatabase::Any, TdStringId::ScriptTurkish},
    {163, 8, QFontDatabase::Vietnamese, TdStringId::ScriptVietnamese},
    {177, 5, QFontDatabase::Hebrew, TdStringId::ScriptHebrew},
    {178, 6, QFontDatabase::Arabic, TdStringId::ScriptArabic},
    {186, 7, QFontDatabase::Any, TdStringId::ScriptBaltic},
    {204, 2, QFontDatabase::Cyrillic, TdStringId::ScriptCyrillic},
    {222, 16, QFontDatabase::Thai, TdStringId::ScriptThai},
    {238, 1, QFontDatabase::Any, TdStringId::ScriptCentralEuropean},
    {255, 30, QFontDatabase::Any, TdStringId::ScriptOem},
});
static_assert(TdTable::hasUniqueKeys(charsets, &CharsetRow::charset));
static_assert(TdTable::hasUniqueKeys(charsets, &CharsetRow::bit));

/// Where the table "OS/2" holds ulCodePageRange1 (big-endian), and the length of a table that has it (version 1).
constexpr qsizetype codePageOffset = 78;
constexpr qsizetype codePageEnd = 82;

std::function<QList<FontCharsets::Script>()> &source()
{
    static std::function<QList<FontCharsets::Script>()> function;
    return function;
}

QList<quint8> charsetsOfWritingSystems(const QString &family)
{
    const QList<QFontDatabase::WritingSystem> systems = QFontDatabase::writingSystems(family);
    QList<quint8> found;
    for (const CharsetRow &row : charsets)
        if (row.system != QFontDatabase::Any && systems.contains(row.system))
            found.append(row.charset);
    return found;
}

} // namespace

QList<quint8> FontCharsets::charsetsOfOs2Table(const QByteArray &table)
{
    QList<quint8> found;
    if (table.size() < codePageEnd || qFromBigEndian<quint16>(table.constData()) < 1)
        return found;
    const auto bits = qFromBigEndian<quint32>(table.constData() + codePageOffset);
    for (const CharsetRow &row : charsets)
        if (bits >> row.bit & 1u)
            found.append(row.charset);
    return found;
}

QString FontCharsets::scriptName(quint8 charset)
{
    const CharsetRow *row = TdTable::find(charsets, &CharsetRow::charset, charset);
    return row ? CTdModule::LoadString(row->script) : QString();
}

QList<FontCharsets::Script> FontCharsets::installedScripts()
{
    QList<Script> scripts;
    const QStringList families = QFontDatabase::families();
    for (const QString &family : families) {
        QList<quint8> found = charsetsOfOs2Table(QRawFont::fromFont(QFont(family)).fontTable("OS/2"));
        if (found.isEmpty())
            found = charsetsOfWritingSystems(family);
        for (const quint8 charset : found)
            scripts.append({charset, scriptName(charset)});
    }
    return scripts;
}

void FontCharsets::collect(const QList<Script> &scripts, QByteArray &charsetBytes, QStringList &names)
{
    QMap<quint8, QString> byCharset;
    for (const Script &script : scripts)
        byCharset.insert(script.charset, script.name);
    charsetBytes.clear();
    names.clear();
    for (auto entry = byCharset.cbegin(); entry != byCharset.cend(); ++entry) {
        charsetBytes.append(static_cast<char>(entry.key()));
        names.append(entry.value());
    }
}

void FontCharsets::setSource(std::function<QList<Script>()> newSource)
{
    source() = std::move(newSource);
}

bool CTdCommMethods::EnumCharset(QByteArray &charsetBytes, QStringList &scripts)
{
    FontCharsets::collect(source() ? source()() : FontCharsets::installedScripts(), charsetBytes, scripts);
    return true;
}
