#include "engine/data/TxNameRules.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace TxNameRules {

namespace {

constexpr std::array reservedPrefixes = {u"gpkg_", u"gpkgext_", u"sqlite_", u"rtree_", u"tdb_", u"pg_"};

/// The reserved words of SQL:2016 that the storages we write refuse or misread as bare names.
constexpr const char *reservedWords =
    "ADD ALL ALTER AND ANY AS ASC BETWEEN BY CASE CAST CHECK COLLATE COLUMN COMMIT CONSTRAINT CREATE CROSS "
    "CURRENT_DATE "
    "CURRENT_TIME CURRENT_TIMESTAMP CURRENT_USER DEFAULT DEFERRABLE DELETE DESC DISTINCT DROP ELSE END ESCAPE EXCEPT "
    "EXISTS FALSE FETCH FOR FOREIGN FROM FULL GRANT GROUP HAVING IN INDEX INNER INSERT INTERSECT INTO IS JOIN LEADING "
    "LEFT LIKE LIMIT NATURAL NOT NULL OFFSET ON OR ORDER OUTER PRIMARY REFERENCES REVOKE RIGHT ROLLBACK SELECT "
    "SESSION_USER SET SOME TABLE THEN TO TRAILING TRANSACTION TRIGGER TRUE UNION UNIQUE UPDATE USER USING VALUES VIEW "
    "WHEN WHERE WITH";

/// The letters and digits of all scripts, combining marks included, and the underscore.
bool mayStandBehind(char32_t c)
{
    return c == U'_' || QChar::isLetterOrNumber(c) || QChar::isMark(c);
}

bool mayStandFirst(char32_t c)
{
    return c == U'_' || QChar::isLetter(c);
}

} // namespace

bool isIdentifier(const QString &name)
{
    const QList<uint> characters = name.toUcs4();
    return !characters.isEmpty() && characters.size() <= maximumLength && mayStandFirst(characters.front()) &&
           std::all_of(characters.begin() + 1, characters.end(), [](uint c) { return mayStandBehind(c); });
}

bool isDatasetName(const QString &name)
{
    return isIdentifier(name) &&
           std::none_of(reservedPrefixes.begin(), reservedPrefixes.end(),
                        [&](const auto *prefix) { return name.startsWith(QStringView(prefix), Qt::CaseInsensitive); });
}

bool isFieldName(const QString &name)
{
    static const QStringList list = QString::fromLatin1(reservedWords).split(u' ');
    static const QSet<QString> words(list.begin(), list.end());
    return isIdentifier(name) && !words.contains(name.toUpper());
}

QString madeDatasetName(const QString &proposal)
{
    QList<uint> characters = proposal.toUcs4();
    characters.resize(std::min<qsizetype>(characters.size(), maximumLength));
    for (uint &c : characters) {
        if (!mayStandBehind(c))
            c = U'_';
    }
    if (characters.isEmpty() || !mayStandFirst(characters.front()))
        characters.prepend(U'_');
    characters.resize(std::min<qsizetype>(characters.size(), maximumLength));
    const QString name =
        QString::fromUcs4(reinterpret_cast<const char32_t *>(characters.constData()), characters.size());
    return isDatasetName(name) ? name : madeDatasetName(u'_' + name);
}

QString firstFree(const QString &base, const std::function<bool(const QString &)> &isFree)
{
    if (isFree(base))
        return base;
    const QList<uint> characters = base.toUcs4();
    for (int number = 1;; ++number) {
        const QString suffix = u'_' + QString::number(number);
        const qsizetype length = std::min<qsizetype>(characters.size(), maximumLength - suffix.size());
        const QString name =
            QString::fromUcs4(reinterpret_cast<const char32_t *>(characters.constData()), length) + suffix;
        if (isFree(name))
            return name;
    }
}

} // namespace TxNameRules
