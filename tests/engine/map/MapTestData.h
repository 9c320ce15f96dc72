#pragma once

#include "engine/data/TxDataSources.h"
#include "engine/map/TxMaps.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// Small files of known content for the tests of maps and workspaces, in a folder that goes with the object.
class MapTestData
{
public:
    QString path(const QString &name) const { return m_folder.filePath(name); }

    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(name);
        file.write(content);
        return file.fileName();
    }

    /// A GeoJSON file, whose one dataset bears the name of the file. @p features are "geometry" objects; record n has
    /// the field "name" with the text "Record n".
    QString writeGeoJson(const QString &name, const QList<QByteArray> &geometries) const
    {
        QByteArray features;
        for (qsizetype i = 0; i < geometries.size(); ++i) {
            features += (i ? ",\n" : "") + QByteArray(R"({"type":"Feature","properties":{"name":"Record )") +
                        QByteArray::number(i + 1) + R"("},"geometry":)" + geometries[i] + '}';
        }
        return write(name + ".geojson", R"({"type":"FeatureCollection","name":")" +
                                            QFileInfo(name).fileName().toUtf8() + R"(","features":[)" + features +
                                            "]}");
    }

    /// "points": @p count places on a square grid of whole degrees from (0, 0).
    QString writeGrid(const QString &name, int side) const
    {
        QList<QByteArray> geometries;
        for (int i = 0; i < side * side; ++i)
            geometries.append(R"({"type":"Point","coordinates":[)" + QByteArray::number(i % side) + ',' +
                              QByteArray::number(i / side) + "]}");
        return writeGeoJson(name, geometries);
    }

    /// A square from (0, 0) to (10, 10) with a hole from (4, 4) to (6, 6).
    QString writeSquare(const QString &name) const
    {
        return writeGeoJson(
            name,
            {R"({"type":"Polygon","coordinates":[[[0,0],[10,0],[10,10],[0,10],[0,0]],[[4,4],[6,4],[6,6],[4,6],[4,4]]]})"});
    }

    const QTemporaryDir &folder() const { return m_folder; }

private:
    QTemporaryDir m_folder;
};

/// A layer of @p map over the only dataset of the datasource @p alias.
inline CTxLayer *addLayer(CTxMap &map, const CTxDataSources &dataSources, const QString &alias)
{
    const CTxDataSource *dataSource = dataSources.find(alias);
    const QString dataset =
        dataSource && dataSource->GetDatasetCount() > 0 ? dataSource->GetDatasetAt(0)->GetName() : alias;
    return map.GetLayers().Add(std::make_unique<CTxLayer>(&dataSources, alias, dataset));
}
