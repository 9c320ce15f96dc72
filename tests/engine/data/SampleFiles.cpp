#include "engine/data/SampleFiles.h"

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <QFile>

#include <array>
#include <memory>
#include <vector>

namespace SampleFiles {

namespace {

using Dataset = std::unique_ptr<GDALDataset, GDALDatasetUniquePtrDeleter>;

GDALDriver *driverCalled(const char *name)
{
    GDALAllRegister();
    return GetGDALDriverManager()->GetDriverByName(name);
}

} // namespace

bool makePoints(const QString &path, const char *driverName, const QString &layerName)
{
    GDALDriver *driver = driverCalled(driverName);
    Dataset file(driver ? driver->Create(path.toUtf8(), 0, 0, 0, GDT_Unknown, nullptr) : nullptr);
    if (!file)
        return false;
    OGRSpatialReference wgs84;
    wgs84.importFromEPSG(4326);
    wgs84.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    OGRLayer *layer = file->CreateLayer(layerName.toUtf8(), &wgs84, wkbPoint, nullptr);
    if (!layer)
        return false;
    OGRFieldDefn name("name", OFTString), whole("n", OFTInteger), real("v", OFTReal);
    name.SetWidth(20);
    if (layer->TestCapability(OLCCreateField)) {
        layer->CreateField(&name);
        layer->CreateField(&whole);
        layer->CreateField(&real);
    }
    const std::array<const char *, 3> names = {"one", "two", "three"};
    for (int i = 0; i < 3; ++i) {
        OGRFeature feature(layer->GetLayerDefn());
        const auto set = [&feature](const char *field, auto value) {
            const int index = feature.GetFieldIndex(field);
            if (index >= 0)
                feature.SetField(index, value);
        };
        set("name", names[static_cast<size_t>(i)]);
        set("n", i + 1);
        set("v", i + 0.5);
        OGRPoint point(2 * i + 1, 2 * i + 2);
        feature.SetGeometry(&point);
        if (layer->CreateFeature(&feature) != OGRERR_NONE)
            return false;
    }
    return true;
}

bool makeRaster(const QString &path, const char *driverName, int width, int height, int bands, const char *pixelFormat)
{
    GDALDriver *driver = driverCalled(driverName);
    GDALDriver *memory = driverCalled("MEM");
    if (!driver || !memory)
        return false;
    if (qstrcmp(driverName, "VRT") == 0) { // it holds no cells, but says where they are
        const QString cells = path + ".tif";
        if (!makeRaster(cells, "GTiff", width, height, bands, pixelFormat))
            return false;
        const Dataset from(GDALDataset::Open(cells.toUtf8()));
        return from && Dataset(driver->CreateCopy(path.toUtf8(), from.get(), FALSE, nullptr, nullptr, nullptr));
    }
    Dataset image(memory->Create("", width, height, bands, GDALGetDataTypeByName(pixelFormat), nullptr));
    std::array<double, 6> place = {100, 1, 0, 200.0 + height, 0, -1};
    image->SetGeoTransform(place.data());
    std::vector<double> values(static_cast<size_t>(width) * static_cast<size_t>(height));
    for (size_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<double>(i);
    for (int band = 1; band <= bands; ++band) {
        if (image->GetRasterBand(band)->RasterIO(GF_Write, 0, 0, width, height, values.data(), width, height,
                                                 GDT_Float64, 0, 0, nullptr) != CE_None)
            return false;
    }
    return Dataset(driver->CreateCopy(path.toUtf8(), image.get(), FALSE, nullptr, nullptr, nullptr)) != nullptr;
}

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool cut(const QString &path, qint64 size)
{
    return QFile::resize(path, size);
}

} // namespace SampleFiles
