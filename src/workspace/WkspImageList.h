#pragma once

#include "common/TdCommonExport.h"
#include "engine/data/ElemDatasetInfo.h"

#include <QIcon>
#include <QSize>

class CTxDataSource;
class CTxDataset;

/// The icons of workspace items, shared by the workspace tree, the list view and the dataset picker.
///
/// An icon is asked for by its index. Callers that know what an item is get the index from GetImageIndex(). The icons
/// are drawn when they are first painted, at the asked size and screen scale; lists of one size share their pictures.
/// A copy is cheap.
class TDCOMMON_API CTdWkspImageList
{
public:
    /// What an icon stands for. Do not change the values: hosts and settings know them.
    enum ImageType : qint32 {
        ImageWorkspace = 0,
        ImageDataSources = 1,
        ImageDatabase = 2, ///< a database datasource that knows no transactions
        ImageFile = 3,     ///< a file datasource that knows no transactions
        ImageMaps = 4,
        ImageMap = 5,
        ImageLayouts = 6,
        ImageLayout = 7,
        ImageScenes = 8,
        ImageScene = 9,
        ImageResources = 10,
        ImageSymbolLibrary = 11,
        ImageLineLibrary = 12,
        ImageFillLibrary = 13,
        ImageReservedFirst = 14, ///< 14 to 20 are for hosts; nothing here asks for them
        ImageReservedLast = 20,
        ImagePointOpen = 21,
        ImagePointClosed = 22,
        ImageLineOpen = 23,
        ImageLineClosed = 24,
        ImageRegionOpen = 25,
        ImageRegionClosed = 26,
        ImageTextOpen = 27,
        ImageTextClosed = 28,
        ImageCadOpen = 29,
        ImageCadClosed = 30,
        ImageNetworkOpen = 31,
        ImageNetworkClosed = 32,
        ImageRouteOpen = 33,
        ImageRouteClosed = 34,
        ImageTinOpen = 35,
        ImageTinClosed = 36,
        ImagePoint3DOpen = 37,
        ImagePoint3DClosed = 38,
        ImageLine3DOpen = 39,
        ImageLine3DClosed = 40,
        ImageRegion3DOpen = 41,
        ImageRegion3DClosed = 42,
        ImageText3DOpen = 43,
        ImageText3DClosed = 44,
        ImageTabular = 45,
        ImageImage = 46,
        ImageMrSid = 47,
        ImageGrid = 48,
        ImageDem = 49,
        ImageEcw = 50,
        ImageDatabaseTransaction = 51,   ///< a database with a transaction started
        ImageDatabaseNoTransaction = 52, ///< a database that could start one
        ImageFileTransaction = 53,
        ImageFileNoTransaction = 54,
        ImageUnknown = 100 ///< a dataset of a type that has no icon
    };

    /// How many icons there are; their indices are 0 to imageCount - 1.
    static constexpr int imageCount = 56;

    /// Makes the list: @p size 0 for 32 x 32 pixels, 1 for 16 x 16. What the list held before goes first.
    /// @return 1; 0 for every other @p size, and the list is then empty.
    int InitImageList(int size);

    /// The index of the icon that stands for @p type; 0 for a type that has none, and for every type until
    /// InitImageList() has succeeded once.
    int GetImageIndex(ImageType type) const;
    /// The icon of a datasource as it is now: database or file, transaction state. 0 for null.
    int GetImageIndex(const CTxDataSource *dataSource) const;
    /// The icon of @p dataset, shown as open when @p open is not 0. That of an unknown type for null.
    int GetImageIndex(const CTxDataset *dataset, int open) const;
    /// The icon of datasets of type @p type.
    int GetImageIndex(CElemDatasetInfo::Type type, int open) const;
    /// What stands for datasets of type @p type; types with one icon take no notice of @p open.
    ImageType Map2ImageType(CElemDatasetInfo::Type type, int open) const;

    /// How many icons the list holds: imageCount, or 0 while it is empty.
    int GetImageCount() const { return m_extent > 0 ? imageCount : 0; }
    /// The size of the icons, in device-independent pixels; empty while the list is empty.
    QSize imageSize() const { return m_extent > 0 ? QSize(m_extent, m_extent) : QSize(); }
    /// The icon at @p index; a null icon when out of range or while the list is empty. It draws itself crisply at any
    /// size that is asked for; selected it looks as it does otherwise.
    QIcon icon(int index) const;

private:
    int m_extent = 0;         // side of an icon; 0 while there is no list
    bool m_mapFilled = false; // the types are known from the first list on
};
