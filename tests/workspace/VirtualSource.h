#pragma once

#include <QList>
#include <QString>

/// A layer of a virtual datasource, with its OGR geometry type without "wkb".
struct LayerRow
{
    QString name;
    QString geometry = QStringLiteral("Point");
};

/// Writes a virtual datasource of tiny layers into @p folder. @return its path
QString writeVirtualSource(const QString &folder, const QString &fileName, const QList<LayerRow> &layers);
/// The same with @p count layers called "dataset_000000" and so on.
QString writeManyLayers(const QString &folder, const QString &fileName, int count);
