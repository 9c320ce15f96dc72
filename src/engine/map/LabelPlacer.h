#pragma once

#include "engine/map/GeometryPainter.h"

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <vector>

class QElapsedTimer;
class QPainter;

/// Collects the labels of a picture and draws those that cover no other. Labels of upper layers come first.
class LabelPlacer
{
public:
    /// So many labels are taken of one layer; no window has room for more.
    static constexpr int maximumPerLayer = 5000;

    /// Begins a picture in a window of @p size.
    void clear(const QFont &font, const QSizeF &size, const QColor &halo);
    /// Begins the next layer, which lies above those before.
    void nextLayer(const QColor &colour);
    /// True when the layer's labels are still taken.
    bool takesMore() const;
    /// Takes a label. Within a layer those with more room come first; a region or line much narrower than its label
    /// gets none.
    void add(const GeometryPainter::LabelPlace &place, const QString &text);
    /// Draws labels until all are drawn or @p timer has run for @p milliseconds. @return true when all are drawn.
    bool draw(QPainter &painter, const QElapsedTimer &timer, qint64 milliseconds);

private:
    struct Label
    {
        GeometryPainter::LabelPlace place;
        QString text;
    };
    struct Layer
    {
        QColor colour;
        std::vector<Label> labels;
    };
    void drawLabel(QPainter &painter, const Layer &layer, const Label &label);

    QFont m_font;
    QRectF m_window;
    QColor m_halo;
    std::vector<Layer> m_layers;
    size_t m_next = 0; // label of the last layer that is to be drawn next
    std::vector<QRectF> m_taken;
};
