#pragma once

#include "engine/base/TxExport.h"
#include "engine/base/TxHandle.h"
#include "engine/geometry/Rect2D.h"
#include "engine/map/TxLayers.h"

#include <QColor>
#include <QString>

class CTxPJCoordSys;

/// A map: a name, layers and the view it was left with. Belongs to the workspace's CTxMaps.
class TX_EXPORT CTxMap
{
public:
    const QString &GetName() const { return m_name; }
    CTxLayers &GetLayers() { return m_layers; }
    const CTxLayers &GetLayers() const { return m_layers; }

    /// The rectangle that holds the content of all layers that can be read, in the map's coordinate system.
    CRect2D GetBounds() const;
    /// The same of the layer at 0-based @p index alone; void when it is missing, empty or out of range.
    CRect2D GetLayerBounds(int index) const;
    /// Copies the map's coordinate system to @p coordSys: that which the layer at the bottom states, or the lowest one
    /// above it that states one. Layers that state none lie in the map's coordinates.
    void GetProjection(CTxPJCoordSys &coordSys) const;
    /// What part of the plane was last shown; void when the map was never shown.
    const CRect2D &GetViewBounds() const { return m_viewBounds; }
    void SetViewBounds(const CRect2D &bounds) { m_viewBounds = bounds; }
    /// The paper's colour; an invalid colour stands for the window's own.
    const QColor &GetBackground() const { return m_background; }
    void SetBackground(const QColor &colour) { m_background = colour; }

private:
    friend class CTxMaps;
    template<class Object>
    friend class TxHandle;
    friend class TxWorkspaceFile;
    CTxMap() = default;

    QString m_name;
    CTxLayers m_layers;
    CRect2D m_viewBounds;
    QColor m_background;
    TxLife m_life;
    QString m_unknownXml; // what the workspace file held of it that this version does not know
};
