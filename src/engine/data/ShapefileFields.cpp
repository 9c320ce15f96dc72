#include "engine/data/ShapefileFields.h"

#include <QSet>

#include <algorithm>

namespace ShapefileFields {

namespace {

/// The first bytes of @p name, without half a character.
QString firstBytes(const QString &name, qsizetype bytes)
{
    const QByteArray whole = name.toUtf8();
    qsizetype end = std::min(bytes, whole.size());
    while (end > 0 && end < whole.size() && (static_cast<unsigned char>(whole[end]) & 0xC0) == 0x80)
        --end;
    return QString::fromUtf8(whole.left(end));
}

} // namespace

QStringList cutNames(const QStringList &names)
{
    QSet<QString> taken;
    for (const QString &name : names) {
        if (name.toUtf8().size() <= nameBytes)
            taken.insert(name.toCaseFolded());
    }
    QStringList cut;
    for (const QString &name : names) {
        QString made = firstBytes(name, nameBytes);
        for (int number = 1; made != name && taken.contains(made.toCaseFolded()); ++number) {
            const QString suffix = u'_' + QString::number(number);
            made = firstBytes(name, nameBytes - suffix.size()) + suffix;
        }
        taken.insert(made.toCaseFolded());
        cut << made;
    }
    return cut;
}

} // namespace ShapefileFields
