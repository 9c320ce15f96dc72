#include "VirtualSource.h"

#include <QFile>

QString writeVirtualSource(const QString &folder, const QString &fileName, const QList<LayerRow> &layers)
{
    qputenv("OGR_VRT_FORCE_LOADING", "YES"); // long files are meant
    QFile table(folder + QStringLiteral("/one.csv"));
    if (!table.exists() && table.open(QIODevice::WriteOnly))
        table.write("id,x,y\n1,2,3\n");
    table.close();

    QFile file(folder + u'/' + fileName);
    if (!file.open(QIODevice::WriteOnly))
        return QString();
    file.write("<OGRVRTDataSource>\n");
    for (const LayerRow &row : layers) {
        file.write(QStringLiteral("<OGRVRTLayer name=\"%1\"><SrcDataSource>%2</SrcDataSource><SrcLayer>one</SrcLayer>"
                                  "<GeometryType>wkb%3</GeometryType></OGRVRTLayer>\n")
                       .arg(row.name.toHtmlEscaped(), table.fileName().toHtmlEscaped(), row.geometry)
                       .toUtf8());
    }
    file.write("</OGRVRTDataSource>\n");
    return file.fileName();
}

QString writeManyLayers(const QString &folder, const QString &fileName, int count)
{
    QList<LayerRow> layers;
    layers.reserve(count);
    const char *const geometries[] = {"Point", "LineString", "Polygon", "None"};
    for (int number = 0; number < count; ++number)
        layers.append({QStringLiteral("dataset_%1").arg(number, 6, 10, QChar(u'0')),
                       QString::fromLatin1(geometries[number % 4])});
    return writeVirtualSource(folder, fileName, layers);
}
