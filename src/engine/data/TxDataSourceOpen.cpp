#include "engine/data/TxDataSourcePrivate.h"

#include "engine/data/TdbDataSourcePlus.h"
#include "engine/data/TxDatasetListing.h"
#include "engine/data/TxRasterCheck.h"
#include "engine/data/TxStoragePath.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <array>

namespace {

/// How what a driver opens can be changed here.
enum class Changes {
    None,
    InPlace, ///< through the datasource's own connection
    ByACopy, ///< by a changed copy that takes the file's place
};

/// What a driver wants to be told, and how what it opens can be changed.
struct DriverRow
{
    const char *driver;
    Changes changes;
    const char *openOption; ///< null for none
};

constexpr std::array driverRows = {
    DriverRow{"GPKG", Changes::InPlace, "LIST_ALL_TABLES=NO"}, // tables of our own are no layers
    DriverRow{"ESRI Shapefile", Changes::InPlace, nullptr},
    DriverRow{"SQLite", Changes::InPlace, "LIST_ALL_TABLES=YES"}, // those without a geometry too
    DriverRow{"PostgreSQL", Changes::InPlace, nullptr},
    DriverRow{"GML", Changes::None, "WRITE_GFS=NO"},        // looking at a file must leave nothing beside it
    DriverRow{"CSV", Changes::None, "AUTODETECT_TYPE=YES"}, // else every field is a text
    DriverRow{"GTiff", Changes::ByACopy, nullptr},
};

const DriverRow *findDriver(const QString &driver)
{
    const auto row = std::find_if(driverRows.begin(), driverRows.end(), [&driver](const DriverRow &r) {
        return driver.compare(QLatin1String(r.driver), Qt::CaseInsensitive) == 0;
    });
    return row == driverRows.end() ? nullptr : &*row;
}

/// One attempt after another to open a path.
class Opener
{
public:
    Opener(TxDataSourcePrivate &dataSource, const QString &path)
        : m_d(dataSource), m_path(path), m_name(gdalName(path)), m_extension(QFileInfo(path).suffix().toLower())
    {
    }

    /// Opens the storage. @return why it cannot be opened, in words that follow its name; empty on success.
    QString open()
    {
        const bool isConnection = TxStoragePath::isConnection(m_path);
        if (!isConnection) {
            QString reason = TxStoragePath::refusal(m_path);
            if (reason.isEmpty())
                reason = TxStoragePath::damage(m_path);
            if (!reason.isEmpty())
                return reason;
        }
        const bool isNative = !isConnection && m_extension == u"tdb";
        if (isNative && !CTdbDataSourcePlus::IsTdb5File(m_path))
            return QStringLiteral("is no native database that can be opened here");
        if (!openByExtension() && (isLocked() || !openAnyhow()))
            return reasonOfFailure();
        m_d.driver = m_d.gdal->GetDriverName();
        m_d.engineType =
            isNative ? CTxDataSourceStorage::Native
                     : CTxDataSourceStorage::typeOfDriver(QString::fromUtf8(m_d.driver), m_d.gdal->GetLayerCount() > 0);
        return QString();
    }

private:
    static QByteArray gdalName(const QString &path)
    {
        // A server that does not answer would be waited for as long as the network pleases.
        if (path.startsWith(u"PG:", Qt::CaseInsensitive) && !path.contains(u"connect_timeout"))
            return path.toUtf8() + " connect_timeout=10";
        return path.toUtf8();
    }

    /// Tries the drivers that the file's extension (or the connection's prefix) stands for, so that no other driver
    /// claims what is theirs: a table of three numeric columns passes for a grid elsewhere.
    bool openByExtension()
    {
        const QString key = TxStoragePath::isConnection(m_path) ? QString() : m_extension;
        if (key.isEmpty() || QFileInfo(m_path).isDir())
            return false;
        for (const CTxDataSourceStorage::Entry &row : CTxDataSourceStorage::table()) {
            if (row.drivers.isEmpty() || !row.extensions.contains(key))
                continue;
            for (const QString &driver : row.drivers) {
                if (openWith(driver))
                    return true;
                if (isLocked())
                    return false;
            }
        }
        return false;
    }

    bool openAnyhow()
    {
        TxGdal::initialize();
        // Among those that answer to the prefix of a database server the driver of its rasters would come first.
        if (TxStoragePath::isConnection(m_path) &&
            (m_path.startsWith(u"PG:", Qt::CaseInsensitive) || m_path.startsWith(u"postgresql:", Qt::CaseInsensitive)))
            return openWith(QStringLiteral("PostgreSQL"));
        GDALDriverH driver =
            GDALIdentifyDriverEx(m_name.constData(), GDAL_OF_VECTOR | GDAL_OF_RASTER, nullptr, nullptr);
        if (driver && openWith(QString::fromUtf8(GDALGetDriverShortName(driver))))
            return true;
        return take(TxGdal::open(m_name, GDAL_OF_VECTOR | GDAL_OF_RASTER), {}, false);
    }

    bool openWith(const QString &driver)
    {
        const DriverRow *row = findDriver(driver);
        QStringList options;
        if (row && row->openOption)
            options.append(QString::fromLatin1(row->openOption));
        const Changes changes = mayWrite() && row ? row->changes : Changes::None;
        if (changes == Changes::InPlace &&
            take(TxGdal::open(m_name, GDAL_OF_VECTOR | GDAL_OF_UPDATE, options, {driver}), options, true))
            return true;
        if (isLocked())
            return false;
        return take(TxGdal::open(m_name, GDAL_OF_VECTOR | GDAL_OF_RASTER, options, {driver}), options,
                    changes == Changes::ByACopy && isReplaceable());
    }

    bool mayWrite() const
    {
        return (m_d.options & CTxDataSource::OpenReadOnly) == 0 &&
               (TxStoragePath::isConnection(m_path) || QFileInfo(m_path).isWritable());
    }

    /// True for a file beside which others can be made.
    bool isReplaceable() const
    {
        const QFileInfo file(QFileInfo(m_path).canonicalFilePath());
        return file.isFile() && QFileInfo(file.path()).isWritable();
    }

    /// Makes @p gdal the datasource's, if it was opened at all. Drivers do not say reliably whether it can be written.
    bool take(TxGdal::DatasetPtr gdal, const QStringList &options, bool isUpdatable)
    {
        if (!gdal)
            return false;
        m_d.gdal = std::move(gdal);
        m_d.gdalName = m_name;
        m_d.gdalOptions = options;
        ++m_d.generation;
        if (!isUpdatable)
            m_d.options |= CTxDataSource::OpenReadOnly;
        return true;
    }

    /// SQLite's words; whoever tries again would wait again.
    bool isLocked() const { return m_errors.text().contains(u"database is locked"); }

    QString reasonOfFailure() const
    {
        if (isLocked())
            return QStringLiteral("is locked by another program");
        QStringList said = m_errors.messages();
        said.removeIf([](const QString &message) { return message.contains(u"not recognized as a supported file"); });
        return said.isEmpty() ? QStringLiteral("is of no known kind")
                              : QStringLiteral("cannot be opened: ") + said.join(QStringLiteral("; "));
    }

    TxDataSourcePrivate &m_d;
    const QString m_path;
    const QByteArray m_name;
    const QString m_extension;
    TxGdal::ErrorCollector m_errors;
};

/// True for kinds of storage that may be empty, since datasets can be made in them.
bool mayBeEmpty(const TxDataSourcePrivate &d)
{
    return !d.isReadOnly() && d.gdal->TestCapability(ODsCCreateLayer) &&
           (d.isGeoPackage() || d.engineType == CTxDataSourceStorage::PostgreSQL);
}

} // namespace

std::unique_ptr<CTxDataSource> TxDataSourcePrivate::open(const QString &path, const QString &alias, quint32 options)
{
    const auto refuse = [&path](const QString &reason) {
        TxGdal::fail(QStringLiteral("“%1” %2").arg(TxStoragePath::displayed(path), reason));
        return nullptr;
    };
    if (path.trimmed().isEmpty()) {
        TxGdal::fail(QStringLiteral("No path of a datasource was given"));
        return nullptr;
    }
    std::unique_ptr<CTxDataSource> result(new CTxDataSource);
    TxDataSourcePrivate &d = *result->d;
    d.path = path;
    d.alias = alias;
    d.options = options;
    if ((options & CTxDataSource::Internal) == 0)
        d.options |= CTxDataSource::Normal;

    if (const QString reason = Opener(d, path).open(); !reason.isEmpty())
        return refuse(reason);
    const TxGdal::ErrorCollector errors;
    if (!d.refresh() || errors.hasFailure())
        return refuse(QStringLiteral("is damaged: ") + errors.text());
    if (const QString reason = TxRasterCheck::damage(*d.gdal, path); !reason.isEmpty())
        return refuse(reason);
    if (d.datasets().empty() && !mayBeEmpty(d))
        return refuse(QStringLiteral("holds no datasets"));
    return result;
}

bool TxDataSourcePrivate::refresh()
{
    if (!m_datasets.empty() && !reopen())
        return false;
    const std::vector<TxDatasetEntry> entries = TxDatasetListing::list(*this);
    QHash<QString, const TxDatasetEntry *> byName;
    for (const TxDatasetEntry &entry : entries)
        byName.insert(entry.name, &entry);
    std::vector<CTxDataset *> dead;
    for (const auto &dataset : m_datasets) {
        const TxDatasetEntry *entry = byName.value(dataset->GetName());
        if (!entry || entry->type != dataset->GetType())
            dead.push_back(dataset.get());
    }
    for (CTxDataset *dataset : dead)
        removeDataset(dataset);
    for (const TxDatasetEntry &entry : entries)
        addDataset(entry); // nothing where the name is there already
    for (const TxDatasetEntry &entry : entries) {
        if (!entry.parent.isEmpty() && entry.parent != entry.name)
            attachChild(findExact(entry.parent), findExact(entry.name));
    }
    return true;
}
