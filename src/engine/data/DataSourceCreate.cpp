#include "engine/data/NativeCatalogue.h"
#include "engine/data/TxDataSourcePrivate.h"
#include "engine/data/TxDataSources.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

/// Makes an empty GeoPackage, with a catalogue where it is to be a native database, at @p path.
///
/// It is made in a folder of its own beside the place and moved there when it is whole, so that no half-made file is
/// ever seen under the name, and no file that has appeared there meanwhile is overwritten.
bool createGeoPackage(const QString &path, bool native)
{
    const TxGdal::ErrorCollector errors;
    const QString failure = QStringLiteral("Cannot create “%1”").arg(path);
    const QTemporaryDir workshop(QFileInfo(path).absolutePath() + QStringLiteral("/.terravox-XXXXXX"));
    if (!workshop.isValid())
        return TxGdal::fail(failure + QStringLiteral(": ") + workshop.errorString());
    const QString made = workshop.filePath(QStringLiteral("new.gpkg"));
    GDALDriver *driver = GetGDALDriverManager()->GetDriverByName("GPKG");
    TxGdal::DatasetPtr storage(driver ? driver->Create(made.toUtf8().constData(), 0, 0, 0, GDT_Unknown, nullptr)
                                      : nullptr);
    if (!storage || (native && !NativeCatalogue::create(*storage)))
        return errors.fail(failure);
    storage.reset();
    if (errors.hasFailure())
        return errors.fail(failure);
    QFile file(made);
    return file.rename(path) || TxGdal::fail(failure + QStringLiteral(": ") + file.errorString());
}

/// Makes an empty folder for shapefiles and opens it.
TxGdal::DatasetPtr createShapefileFolder(const QString &path)
{
    const TxGdal::ErrorCollector errors;
    GDALDriver *driver = GetGDALDriverManager()->GetDriverByName("ESRI Shapefile");
    TxGdal::DatasetPtr storage(driver ? driver->Create(path.toUtf8().constData(), 0, 0, 0, GDT_Unknown, nullptr)
                                      : nullptr);
    if (!storage)
        errors.fail(QStringLiteral("Cannot create the folder “%1”").arg(path));
    return storage;
}

/// Why a datasource of the kind @p type cannot be made at @p path; empty when nothing speaks against it.
QString refusal(const QString &path, CTxDataSourceStorage::Type type)
{
    const CTxDataSourceStorage::Entry *row = CTxDataSourceStorage::find(type);
    if (!row || !row->canCreate)
        return QStringLiteral("Datasources of the kind “%1” cannot be created")
            .arg(row ? row->caption : QString::number(type));
    if (path.trimmed().isEmpty() || path.contains(QChar(u'\0')))
        return QStringLiteral("No path of a datasource was given");
    const QFileInfo info(path);
    if (info.exists() || info.isSymLink())
        return QStringLiteral("“%1” exists already").arg(path);
    if (!QFileInfo(info.absolutePath()).isDir())
        return QStringLiteral("The folder “%1” does not exist").arg(info.absolutePath());
    // What a file without the extension is, only its driver could say, and the driver knows no native databases.
    if (type == CTxDataSourceStorage::Native && info.suffix().compare(u"tdb", Qt::CaseInsensitive) != 0)
        return QStringLiteral("The name of a native database ends in “.tdb”, which “%1” does not").arg(path);
    return QString();
}

} // namespace

CTxDataSource *CTxDataSources::Create(const QString &path, const QString &alias, CTxDataSourceStorage::Type type)
{
    TxGdal::initialize();
    QString reason = refusal(path, type);
    if (reason.isEmpty() && !alias.isEmpty() && find(alias))
        reason = QStringLiteral("A datasource with the alias “%1” is open already").arg(alias);
    if (!reason.isEmpty()) {
        TxGdal::fail(reason);
        return nullptr;
    }
    if (type != CTxDataSourceStorage::Shapefile)
        return createGeoPackage(path, type == CTxDataSourceStorage::Native) ? Open(path, alias) : nullptr;

    // An empty folder says nothing of what it is for, so it cannot be opened like another datasource.
    TxGdal::DatasetPtr storage = createShapefileFolder(path);
    if (!storage)
        return nullptr;
    std::unique_ptr<CTxDataSource> dataSource(new CTxDataSource);
    TxDataSourcePrivate &d = TxDataSourcePrivate::of(*dataSource);
    d.alias = alias.isEmpty() ? GetUnoccupiedAlias(QFileInfo(path).completeBaseName()) : alias;
    d.path = path;
    d.engineType = type;
    d.gdal = std::move(storage);
    d.gdalName = path.toUtf8();
    d.driver = d.gdal->GetDriverName();
    ++d.generation;
    const QString key = d.alias;
    return insert(key, std::move(dataSource));
}
