#include "workspace/WkspImageList.h"

#include "engine/data/TxDataSource.h"
#include "engine/data/TxDataset.h"
#include "workspace/WkspIconEngine.h"
#include "workspace/WkspImageTable.h"

namespace {

constexpr bool rowsStandAtTheirIndex()
{
    for (size_t row = 0; row < wkspImageTable.size(); ++row) {
        if (wkspImageTable[row].index != int(row))
            return false;
        for (size_t other = 0; other < row; ++other) {
            if (wkspImageTable[other].type == wkspImageTable[row].type)
                return false;
        }
    }
    return true;
}
static_assert(rowsStandAtTheirIndex(), "an icon stands at its index, and for one thing only");

/// Side of the icons by the size that InitImageList() is asked for.
constexpr int extents[] = {32, 16};

/// Index by type, -1 where there is none; as long as the largest type needs.
constexpr auto indexByType = [] {
    std::array<qint8, CTdWkspImageList::ImageUnknown + 1> indices{};
    indices.fill(-1);
    for (const WkspImageRow &row : wkspImageTable)
        indices[size_t(row.type)] = qint8(row.index);
    return indices;
}();

} // namespace

int CTdWkspImageList::InitImageList(int size)
{
    m_extent = 0;
    if (size < 0 || size >= int(std::size(extents)))
        return 0;
    m_extent = extents[size];
    m_mapFilled = true;
    return 1;
}

int CTdWkspImageList::GetImageIndex(ImageType type) const
{
    const auto place = static_cast<quint32>(type);
    if (!m_mapFilled || place >= indexByType.size() || indexByType[place] < 0)
        return 0;
    return indexByType[place];
}

int CTdWkspImageList::GetImageIndex(const CTxDataSource *dataSource) const
{
    if (!dataSource)
        return 0;
    const bool database = dataSource->IsDatabaseType();
    if (!dataSource->HasCapability(CTxDataSource::CanTransact))
        return GetImageIndex(database ? ImageDatabase : ImageFile);
    if (dataSource->IsTransStarted())
        return GetImageIndex(database ? ImageDatabaseTransaction : ImageFileTransaction);
    return GetImageIndex(database ? ImageDatabaseNoTransaction : ImageFileNoTransaction);
}

int CTdWkspImageList::GetImageIndex(const CTxDataset *dataset, int open) const
{
    return dataset ? GetImageIndex(dataset->GetType(), open) : GetImageIndex(ImageUnknown);
}

int CTdWkspImageList::GetImageIndex(CElemDatasetInfo::Type type, int open) const
{
    return GetImageIndex(Map2ImageType(type, open));
}

CTdWkspImageList::ImageType CTdWkspImageList::Map2ImageType(CElemDatasetInfo::Type type, int open) const
{
    for (const WkspDatasetImageRow &row : wkspDatasetImageTable) {
        if (row.datasetType == type)
            return open ? row.open : row.closed;
    }
    return ImageUnknown;
}

QIcon CTdWkspImageList::icon(int index) const
{
    if (index < 0 || index >= GetImageCount())
        return QIcon();
    static const auto icons = [] { // shared by all lists; each draws itself when it is first painted
        std::array<QIcon, imageCount> made;
        for (const WkspImageRow &row : wkspImageTable)
            made[size_t(row.index)] =
                QIcon(new WkspIconEngine(QLatin1String(wkspImageFolder) + QLatin1String(row.file)));
        return made;
    }();
    return icons[size_t(index)];
}
