#pragma once

#include <QList>
#include <QSet>
#include <QString>

#include <utility>

class CTxDataset;
class CTxDataSources;
class CTxLayer;
class CTxMap;

/// The datasets that were closed when a map was to be drawn and were opened for it, to be closed again.
///
/// It keeps pointers to compare them, and follows one only after looking the dataset up anew: a map's datasources live
/// as long as the map does.
class OpenedDatasets
{
public:
    /// Opens @p dataset, shown by @p layer, unless it is open. @return false when it cannot be opened.
    bool open(CTxDataset &dataset, const CTxLayer &layer);
    /// Closes @p dataset if it was opened here, is still there and nobody holds a recordset of it.
    void close(const CTxMap *map, const CTxDataset *dataset);
    /// Closes all of them but those in @p kept.
    void closeOthers(const CTxMap *map, const QSet<const CTxDataset *> &kept);
    /// True when a dataset was opened since the last call.
    bool takeChange() { return std::exchange(m_isChanged, false); }

private:
    struct Entry
    {
        const CTxDataSources *dataSources;
        QString alias;
        QString name;
        const CTxDataset *dataset;
    };
    static void closeEntry(const Entry &entry);

    QList<Entry> m_entries;
    bool m_isChanged = false;
};
