#pragma once

#include "basic/TdBasicExport.h"

#include <QByteArray>
#include <QList>
#include <QString>

class QMimeData;

/// What a workspace item, or a set of them, stands for: the record behind the tree's items, drag and drop, and the host
/// messages. It names engine objects and never points to them, so it can outlive them.
class TDBASIC_API CTdOleDataNode
{
public:
    /// The kind of window a node comes from. Do not change the values.
    enum ItemWndType : qint32 { WndNone = 0, WndWorkspaceTree = 10 };

    /// The kind of item a node or an entry stands for. Do not change the values.
    enum ItemType : qint32 {
        ItemWorkspace = 0,
        ItemDataSources = 10,
        ItemDataSource = 20,
        ItemDataset = 30,
        ItemSubDataset = 40,
        ItemMaps = 50,
        ItemMap = 60,
        ItemLayouts = 70,
        ItemLayout = 80,
        ItemResources = 90,
        ItemSymbolLibrary = 100,
        ItemLineLibrary = 110,
        ItemFillLibrary = 120,
        ItemScenes = 130,
        ItemScene = 140,
        ItemTile = 150
    };

    /// Dataset type of entries that stand for no dataset, or for one whose type is not known.
    static constexpr qint32 noDatasetType = -1;

    /// One item of a node.
    struct CTdOleData
    {
        QString alias;    ///< alias of the datasource the item belongs to; empty where it belongs to none
        QString itemName; ///< the item's name
        qint32 itemType = ItemWorkspace;    ///< an ItemType
        qint32 datasetType = noDatasetType; ///< the dataset's type, of datasets

        bool operator==(const CTdOleData &other) const = default;
    };

    /// A node without entries.
    CTdOleDataNode() = default;
    /// A node with exactly one entry.
    /// @param flags a word for the host's use
    /// @param number a number that goes with the item (the record identifier of a tile)
    CTdOleDataNode(ItemWndType wndType, ItemType itemType, const QString &itemName, const QString &alias, quint32 flags,
                   qint32 number);
    virtual ~CTdOleDataNode();
    CTdOleDataNode(const CTdOleDataNode &) = default;
    CTdOleDataNode &operator=(const CTdOleDataNode &) = default;

    qint32 wndType = WndNone;        ///< an ItemWndType
    qint32 itemType = ItemWorkspace; ///< an ItemType
    QString name;                    ///< the item's name
    QString alias;                   ///< alias of the datasource it belongs to
    quint32 flags = 0;               ///< a word for the host's use
    qint32 number = 0;               ///< a number that goes with the item
    QList<CTdOleData> entries;       ///< what the node stands for

    /// The MIME type of an encoded node.
    static QString mimeType();
    /// The node as bytes (little-endian, versioned).
    QByteArray encode() const;
    /// Reads what encode() wrote. Safe on any bytes: nothing is read beyond them, and no more is allocated than they
    /// can hold. @return false, and @p node is left as it was, when they are not a whole node.
    static bool decode(const QByteArray &bytes, CTdOleDataNode &node);
    /// Puts the node into @p mime: encoded, and the names as plain text, one a line.
    void toMime(QMimeData &mime) const;
    /// Reads a node from dragged or pasted data. @return false when there is none.
    static bool fromMime(const QMimeData &mime, CTdOleDataNode &node);

    bool operator==(const CTdOleDataNode &other) const = default;
};
