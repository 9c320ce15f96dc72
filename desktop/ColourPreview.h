#pragma once

#include "engine/base/TxHandle.h"
#include "engine/map/TxLayerStyle.h"

#include <QPointer>
#include <QTimer>

class CTxLayer;
class CTxMap;
class MapWindow;

/// Shows other colours of a layer in its map for a while: as long as this lives, unless they are kept.
///
/// The map is drawn only when the colours stay the same for a moment, so that dragging stays smooth. A layer that goes
/// meanwhile is let go of.
class ColourPreview : public QObject
{
    Q_OBJECT
public:
    /// @param view shows @p layer's map; neither is owned
    ColourPreview(CTxLayer &layer, MapWindow &view);
    ~ColourPreview() override;

    /// Shows @p colors; the layer's own when there are none.
    void show(const CTxColorsetEx &colors, bool stepped);
    /// The layer with the colours that it had; null when it has gone. Nothing is shown any more after this.
    CTxLayer *end();

private:
    void draw();
    CTxLayer *layer() const;

    CTxLayer *m_layer; // followed only while it is one of the map's
    TxHandle<CTxMap> m_map;
    QPointer<MapWindow> m_view;
    const TxLayerStyle m_before;
    TxLayerStyle m_wanted;
    QTimer m_timer;
};
