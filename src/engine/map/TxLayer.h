#pragma once

#include "engine/base/TxExport.h"
#include "engine/map/TxLayerStyle.h"

#include <QMap>
#include <QString>

class CTxDataset;
class CTxDataSources;

/// A layer of a map: a dataset, how it is drawn, and what users may do with it. Belongs to its CTxLayers.
///
/// A layer names its dataset (alias and name) and looks it up each time, so a dataset or datasource that closes leaves
/// no dead pointer, and one that comes back is drawn again.
class TX_EXPORT CTxLayer
{
public:
    /// A layer over the dataset @p datasetName of the datasource @p alias in @p dataSources (not owned, may be null).
    CTxLayer(const CTxDataSources *dataSources, const QString &alias, const QString &datasetName);

    /// The layer's name: "dataset@alias" unless another was given. Unique in its map.
    QString GetName() const;
    void SetName(const QString &name) { m_name = name; }
    /// The dataset, null while it or its datasource is missing.
    CTxDataset *GetDataset() const;
    /// The datasources in which the dataset is looked up; not owned, may be null.
    const CTxDataSources *GetDataSources() const { return m_dataSources; }
    const QString &GetDataSourceAlias() const { return m_alias; }
    void SetDataSourceAlias(const QString &alias) { m_alias = alias; }
    const QString &GetDatasetName() const { return m_datasetName; }
    void SetDatasetName(const QString &name) { m_datasetName = name; }

    bool IsVisible() const { return m_visible; }
    void SetVisible(bool on) { m_visible = on; }
    bool IsSelectable() const { return m_selectable; }
    void SetSelectable(bool on) { m_selectable = on; }
    bool IsSnapable() const { return m_snapable; }
    void SetSnapable(bool on) { m_snapable = on; }
    /// True for the map's editable layer; set by CTxLayers::SetEditableLayer().
    bool IsEditable() const { return m_editable; }
    /// While locked the layer cannot become the editable one.
    bool IsEditableLock() const { return m_editableLock; }
    void SetEditableLock(bool on) { m_editableLock = on; }

    const TxLayerStyle &style() const { return m_style; }
    void setStyle(const TxLayerStyle &style) { m_style = style; }

private:
    friend class CTxLayers;
    friend class TxWorkspaceFile;

    const CTxDataSources *m_dataSources; // not owned
    QString m_alias;
    QString m_datasetName;
    QString m_name;
    QString m_unknownXml;                     // what the workspace file held of it that this version does not know
    QString m_unknownColorset;                // likewise, of its colours
    QMap<QString, QString> m_unknownGeoStyle; // likewise, of its geoStyle, by element
    TxLayerStyle m_style;
    bool m_visible = true;
    bool m_selectable = true;
    bool m_snapable = true;
    bool m_editable = false;
    bool m_editableLock = false;
};
