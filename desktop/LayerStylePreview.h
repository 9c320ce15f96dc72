#pragma once

#include "engine/map/TxLayerStyle.h"

#include <QWidget>

/// A sample of how a layer is drawn, in its true size: regions, lines, symbols and texts as far as it has them.
class LayerStylePreview : public QWidget
{
    Q_OBJECT
public:
    /// @param parts bits of TxStyleParts
    /// @param background what the map lies on
    LayerStylePreview(quint32 parts, const QColor &background, QWidget *parent = nullptr);

    void setStyle(const TxLayerStyle &style);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const quint32 m_parts;
    const QColor m_background;
    TxLayerStyle m_style;
};
