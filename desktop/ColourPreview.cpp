#include "ColourPreview.h"

#include "MapWindow.h"
#include "engine/map/TxMap.h"

ColourPreview::ColourPreview(CTxLayer &layer, MapWindow &view)
    : m_layer(&layer), m_map(view.map()), m_view(&view), m_before(layer.style()), m_wanted(m_before)
{
    constexpr int pause = 40; // milliseconds
    m_timer.setSingleShot(true);
    m_timer.setInterval(pause);
    connect(&m_timer, &QTimer::timeout, this, &ColourPreview::draw);
}

ColourPreview::~ColourPreview()
{
    end();
}

CTxLayer *ColourPreview::layer() const
{
    const CTxMap *map = m_map.get();
    return m_layer && map && map->GetLayers().FindLayer(m_layer) >= 0 ? m_layer : nullptr;
}

void ColourPreview::show(const CTxColorsetEx &colors, bool stepped)
{
    m_wanted = m_before;
    if (colors.GetSize() > 0) {
        m_wanted.colors = colors;
        m_wanted.stepped = stepped;
    }
    m_timer.start();
}

void ColourPreview::draw()
{
    CTxLayer *shown = layer();
    if (!shown || shown->style() == m_wanted)
        return;
    shown->setStyle(m_wanted);
    if (m_view)
        m_view->refresh();
}

CTxLayer *ColourPreview::end()
{
    m_timer.stop();
    m_wanted = m_before;
    draw();
    CTxLayer *shown = layer();
    m_layer = nullptr; // what comes now stays
    return shown;
}
