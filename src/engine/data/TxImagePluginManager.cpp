#include "engine/data/TxImagePluginManager.h"

#include "engine/base/TxGdal.h"

#include <QSet>

namespace {

/// One entry for every extension of every raster driver; the first driver of an extension has it.
QList<CTxImagePluginDef> makeList()
{
    TxGdal::initialize();
    QList<CTxImagePluginDef> list;
    QSet<QString> seen;
    GDALDriverManager &manager = *GetGDALDriverManager();
    for (int index = 0; index < manager.GetDriverCount(); ++index) {
        GDALDriver &driver = *manager.GetDriver(index);
        if (!driver.GetMetadataItem(GDAL_DCAP_RASTER) || !driver.GetMetadataItem(GDAL_DCAP_OPEN))
            continue;
        // A driver of vectors too (GeoPackage, PDF …) does not make a file an image.
        if (driver.GetMetadataItem(GDAL_DCAP_VECTOR))
            continue;
        const QString extensions = QString::fromUtf8(driver.GetMetadataItem(GDAL_DMD_EXTENSIONS));
        for (const QString &extension : extensions.split(u' ', Qt::SkipEmptyParts)) {
            const QString dotted = u'.' + extension.toUpper();
            if (seen.contains(dotted))
                continue;
            seen.insert(dotted);
            list.append({dotted, QString::fromUtf8(driver.GetDescription()),
                         QString::fromUtf8(driver.GetMetadataItem(GDAL_DMD_LONGNAME))});
        }
    }
    return list;
}

const QList<CTxImagePluginDef> &plugins()
{
    static const QList<CTxImagePluginDef> list = makeList();
    return list;
}

} // namespace

int CTxImagePluginManager::GetImagePluginCount()
{
    return static_cast<int>(plugins().size());
}

const CTxImagePluginDef *CTxImagePluginManager::GetPluginAt(int index)
{
    return index >= 0 && index < GetImagePluginCount() ? &plugins().at(index) : nullptr;
}
