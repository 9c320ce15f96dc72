#include "controls/TdFileInfo.h"

#include "common/TdModule.h"
#include "engine/base/TxErrorMsg.h"
#include "engine/data/TxDataSources.h"
#include "engine/data/TxDataset.h"
#include "engine/projection/TxPJCoordSys.h"
#include "res/StringId.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <array>

namespace {

constexpr int patience = 700; // milliseconds for the extents of the datasets

// Kinds of storage whose drivers read a file from its beginning to its end before they answer anything.
constexpr std::array wholeTexts = {CTxDataSourceStorage::GeoJSON, CTxDataSourceStorage::KML, CTxDataSourceStorage::GML,
                                   CTxDataSourceStorage::DXF,     CTxDataSourceStorage::CSV, CTxDataSourceStorage::E00,
                                   CTxDataSourceStorage::MapInfo, CTxDataSourceStorage::DGN};

/// The kind of storage that the extension stands for; Unknown for none in the table.
CTxDataSourceStorage::Type storageOf(const QString &extension)
{
    for (const CTxDataSourceStorage::Entry &row : CTxDataSourceStorage::table()) {
        if (row.extensions.contains(extension))
            return row.type;
    }
    return CTxDataSourceStorage::Unknown;
}

bool isWholeText(const QFileInfo &file)
{
    const QString extension = file.suffix().toLower();
    if (file.isDir() || file.size() <= CTdFileInfo::greatestText || extension == u"tab")
        return false; // a table stands in files of its own beside it
    const CTxDataSourceStorage::Type type = storageOf(extension);
    return type == CTxDataSourceStorage::Unknown || // any driver may try itself on it
           std::find(wholeTexts.begin(), wholeTexts.end(), type) != wholeTexts.end();
}

void readExtent(CTdFileInfo &info, const CTxDataSource &source)
{
    const QDeadlineTimer end(patience);
    CTxPJCoordSys common;
    for (qint32 i = 0; i < source.GetDatasetCount(); ++i) {
        if (end.hasExpired())
            return;
        const CTxDataset *dataset = source.GetDatasetAt(i);
        const CRect2D bounds = dataset->GetBounds();
        if (bounds.IsVoid())
            continue; // it lies nowhere, whatever its system is
        CTxPJCoordSys own;
        dataset->GetProjection(own);
        if (info.extent.IsVoid()) {
            common = own;
        } else if (!(own == common)) { // degrees and metres make no rectangle
            info.extent = CRect2D();
            info.hasSeveralSystems = true;
            return;
        }
        info.extent.Union(bounds);
    }
    info.isWholeExtent = true;
    info.coordSysName = common.GetName();
}

} // namespace

CTdFileInfo CTdFileInfo::Read(const QString &path)
{
    CTdFileInfo info;
    info.path = path;
    const QFileInfo file(path);
    if (path.isEmpty() || !file.exists())
        return info;
    info.size = file.isDir() ? 0 : file.size();
    info.created = file.birthTime();
    info.modified = file.lastModified();
    if (!file.isFile() && !file.isDir()) { // opening a pipe would wait for who writes into it
        info.state = NoFile;
        return info;
    }
    if (!file.isReadable()) {
        info.state = Unreadable;
        return info;
    }
    if (!file.isDir())
        info.imageSize = QImageReader(path).size(); // reads the head of the file
    if (isWholeText(file)) {
        info.storage = storageOf(file.suffix().toLower());
        if (const CTxDataSourceStorage::Entry *row = CTxDataSourceStorage::find(info.storage))
            info.kind = row->caption;
        info.state = TooLarge;
        return info;
    }
    CTxDataSources sources; // its own: the workspace knows nothing of it
    const CTxDataSource *source = sources.Open(file.absoluteFilePath(), QStringLiteral("file"),
                                               CTxDataSource::OpenReadOnly | CTxDataSource::Internal);
    if (!source) {
        info.state = file.isDir() ? Folder : Refused;
        info.message = TxGetErrorMsgObj().GetErrorMessage();
        return info;
    }
    info.state = Known;
    info.storage = source->GetEngineType();
    if (const CTxDataSourceStorage::Entry *row = CTxDataSourceStorage::find(info.storage))
        info.kind = row->caption;
    info.driver = source->GetDriverName();
    info.datasetCount = source->GetDatasetCount();
    readExtent(info, *source);
    return info;
}

QString CTdFileInfo::GetProblem() const
{
    static constexpr struct
    {
        State state;
        quint32 text;
    } rows[] = {
        {Missing, TdStringId::FileInfoMissing},   {Unreadable, TdStringId::FileInfoUnreadable},
        {NoFile, TdStringId::FileInfoNoFile},     {Folder, TdStringId::FileInfoFolder},
        {TooLarge, TdStringId::FileInfoTooLarge},
    };
    for (const auto &row : rows) {
        if (row.state == state)
            return CTdModule::LoadString(row.text);
    }
    return message;
}
