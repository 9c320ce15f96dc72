#include "engine/data/TxRasterUpdate.h"

#include "engine/base/TxSqlite.h"
#include "engine/data/TxRasterBands.h"
#include "engine/data/TxRasterPrivate.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cmath>

#include <unistd.h>

namespace {

bool refuse(const QString &reason)
{
    CPLError(CE_Failure, CPLE_AppDefined, "%s", reason.toUtf8().constData());
    return false;
}

/// Changes within a transaction of the raster's own connection.
class Transaction : public TxRasterUpdate
{
public:
    Transaction(const TxRasterPrivate &raster, const TxProgress &progress) : TxRasterUpdate(progress)
    {
        m_raster = raster.openRaster(GDAL_OF_UPDATE);
        m_isOpen = m_raster && m_raster->StartTransaction() == OGRERR_NONE;
        if (m_isOpen && !TxSqlite::lockForWriting(*m_raster))
            takeBack();
    }

    ~Transaction() override
    {
        if (m_isOpen)
            takeBack();
    }

    bool isOpen() const { return m_isOpen; }

protected:
    bool keep(const TxGdal::ErrorCollector &errors) override
    {
        m_raster->FlushCache(false); // tiles that are not full are kept back till then
        if (errors.hasFailure())
            return false; // the destructor takes it back
        m_isOpen = false;
        m_raster->CommitTransaction();
        m_raster.reset(); // the driver, which counts transactions within transactions, may commit now only
        return !errors.hasFailure();
    }

private:
    void takeBack()
    {
        const TxGdal::ErrorCollector quiet;
        m_isOpen = false;
        // Not through the driver: it counts transactions within transactions, and would commit the outermost when it
        // closes. Then it also writes the cells that it has kept back. It finds a transaction, and it may write
        // nothing.
        sqlite3 *database = TxSqlite::connection(*m_raster);
        TxSqlite::execute(database, QStringLiteral("ROLLBACK")); // fails where SQLite has done it by itself
        TxSqlite::execute(database, QStringLiteral("PRAGMA query_only = 1; BEGIN"));
        m_raster.reset();
    }

    bool m_isOpen = false;
};

/// Changes of a copy of the file, and of the files beside it that belong to it.
class Replacement : public TxRasterUpdate
{
public:
    Replacement(const TxRasterPrivate &raster, const TxProgress &progress)
        : TxRasterUpdate(progress), m_file(QFileInfo(QString::fromUtf8(raster.source)).canonicalFilePath()),
          m_folder(QFileInfo(m_file).absolutePath()), m_workshop(m_folder + QStringLiteral("/.terravox-XXXXXX"))
    {
    }

    bool prepare(TxRasterPrivate &raster)
    {
        if (m_file.isEmpty() || !m_workshop.isValid())
            return refuse(m_file.isEmpty() ? QStringLiteral("the file is gone") : m_workshop.errorString());
        TxGdal::DatasetPtr holder;
        GDALDataset *original = raster.raster(holder);
        const CPLStringList files(original ? original->GetFileList() : nullptr);
        for (int i = 0; i < files.size(); ++i) {
            const QFileInfo info(QString::fromUtf8(files[i]));
            if (info.canonicalPath() == QFileInfo(m_file).canonicalPath() && info.canonicalFilePath() != m_file &&
                !copy(info.canonicalFilePath(), info.fileName()))
                return false;
        }
        const QString name = QFileInfo(m_file).fileName();
        if (!copy(m_file, name))
            return false;
        // Changing such a file costs it the order of its blocks, not its cells.
        const CPLConfigOptionSetter reordered("IGNORE_COG_LAYOUT_BREAK", "YES", false);
        m_raster = TxGdal::open(m_workshop.filePath(name).toUtf8(), GDAL_OF_RASTER | GDAL_OF_UPDATE, {},
                                {QStringLiteral("GTiff")});
        return m_raster != nullptr;
    }

protected:
    bool keep(const TxGdal::ErrorCollector &errors) override
    {
        m_raster.reset(); // writes what is left
        if (errors.hasFailure())
            return false;
        const QString name = QFileInfo(m_file).fileName();
        const QStringList made = QDir(m_workshop.path()).entryList(QDir::Files | QDir::Hidden);
        if (!std::all_of(made.begin(), made.end(), [this](const QString &file) { return isOnDisk(file); }))
            return false;
        for (const QString &file : made) { // the image itself last: until then nothing has changed
            if (file != name && !moveBack(file))
                return false;
        }
        return moveBack(name);
    }

private:
    /// Copies @p path, permissions included, into the workshop.
    bool copy(const QString &path, const QString &name)
    {
        constexpr qint64 pieceSize = 4 << 20;
        QFile from(path), to(m_workshop.filePath(name));
        if (!from.open(QIODevice::ReadOnly) || !to.open(QIODevice::WriteOnly))
            return refuse(from.error() != QFile::NoError ? from.errorString() : to.errorString());
        while (!from.atEnd()) {
            if (!m_progress(0, -1))
                return refuse(QStringLiteral("it was stopped"));
            const QByteArray piece = from.read(pieceSize);
            if (piece.isEmpty() || to.write(piece) != piece.size())
                return refuse(piece.isEmpty() ? from.errorString() : to.errorString());
        }
        if (!to.flush())
            return refuse(to.errorString());
        to.setPermissions(from.permissions() | QFile::WriteOwner);
        return true;
    }

    bool isOnDisk(const QString &name) const
    {
        QFile file(m_workshop.filePath(name));
        return (file.open(QIODevice::ReadWrite) && fsync(file.handle()) == 0) || refuse(qt_error_string());
    }

    /// Puts a file of the workshop into its folder, in the place of the one that is there.
    bool moveBack(const QString &name) const
    {
        const QByteArray from = QFile::encodeName(m_workshop.filePath(name));
        const QByteArray to = QFile::encodeName(m_folder + u'/' + name);
        return ::rename(from.constData(), to.constData()) == 0 || refuse(qt_error_string());
    }

    const QString m_file;
    const QString m_folder;
    const QTemporaryDir m_workshop;
};

} // namespace

std::unique_ptr<TxRasterUpdate> TxRasterUpdate::begin(TxRasterPrivate &raster, const TxProgress &progress)
{
    if (raster.dataSource().isGeoPackage()) {
        auto transaction = std::make_unique<Transaction>(raster, progress);
        return transaction->isOpen() ? std::move(transaction) : nullptr;
    }
    auto replacement = std::make_unique<Replacement>(raster, progress);
    return replacement->prepare(raster) ? std::move(replacement) : nullptr;
}

TxRasterUpdate::~TxRasterUpdate() = default;

bool TxRasterUpdate::commit()
{
    const TxGdal::ErrorCollector errors;
    m_raster->ClearStatistics();
    m_raster->FlushCache(false);
    const bool done = !errors.hasFailure() && refreshOverviews() && keep(errors);
    for (const QString &message : errors.messages())
        CPLError(done ? CE_Warning : CE_Failure, CPLE_AppDefined, "%s", message.toUtf8().constData());
    return done;
}

bool TxRasterUpdate::refreshOverviews()
{
    GDALRasterBand &band = *m_raster->GetRasterBand(1);
    std::vector<int> factors;
    for (int i = 0; i < band.GetOverviewCount(); ++i)
        factors.push_back(static_cast<int>(std::lround(double(band.GetXSize()) / band.GetOverview(i)->GetXSize())));
    if (factors.empty())
        return true;
    const auto ask = [](double, const char *, void *progress) {
        return (*static_cast<const TxProgress *>(progress))(0, -1) ? TRUE : FALSE;
    };
    return m_raster->BuildOverviews(TxRasterBands::holdsClasses(*m_raster) ? "NEAREST" : "AVERAGE",
                                    static_cast<int>(factors.size()), factors.data(), 0, nullptr, ask,
                                    const_cast<TxProgress *>(&m_progress)) == CE_None;
}
