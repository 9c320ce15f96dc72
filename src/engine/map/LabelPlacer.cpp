#include "engine/map/LabelPlacer.h"

#include <QElapsedTimer>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

void LabelPlacer::clear(const QFont &font, const QSizeF &size, const QColor &halo)
{
    m_font = font;
    m_window = QRectF(QPointF(), size);
    m_halo = halo;
    m_layers.clear();
    m_taken.clear();
    m_next = 0;
}

void LabelPlacer::nextLayer(const QColor &colour)
{
    m_layers.push_back({colour, {}});
}

bool LabelPlacer::takesMore() const
{
    return !m_layers.empty() && m_layers.back().labels.size() < static_cast<size_t>(maximumPerLayer);
}

void LabelPlacer::add(const GeometryPainter::LabelPlace &place, const QString &text)
{
    constexpr qsizetype longest = 200; // characters: a window has room for no more
    if (takesMore() && !text.trimmed().isEmpty())
        m_layers.back().labels.push_back({place, text.left(longest).simplified()});
}

void LabelPlacer::drawLabel(QPainter &painter, const Layer &layer, const Label &label)
{
    const QFontMetricsF metrics(m_font);
    const double width = metrics.horizontalAdvance(label.text);
    const double height = metrics.ascent() + metrics.descent();
    constexpr double leastRoom = 0.4; // of the label's width, that a region or a line must have
    const auto &[place, extent, isSymbol] = label.place;
    if (!isSymbol && extent < width * leastRoom)
        return;
    const QRectF box(place.x() - width / 2, place.y() - (isSymbol ? height : height / 2), width, height);
    constexpr double gap = 3.0;
    if (!m_window.contains(box) ||
        std::any_of(m_taken.begin(), m_taken.end(), [&box](const QRectF &taken) { return taken.intersects(box); }))
        return;
    m_taken.push_back(box.adjusted(-gap, -gap, gap, gap));
    QPainterPath path;
    path.addText(QPointF(box.left(), box.top() + metrics.ascent()), m_font, label.text);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(m_halo, 3.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
    painter.setPen(Qt::NoPen);
    painter.setBrush(layer.colour);
    painter.drawPath(path);
}

bool LabelPlacer::draw(QPainter &painter, const QElapsedTimer &timer, qint64 milliseconds)
{
    while (!m_layers.empty()) {
        Layer &layer = m_layers.back();
        if (m_next == 0) {
            std::stable_sort(layer.labels.begin(), layer.labels.end(),
                             [](const Label &a, const Label &b) { return a.place.extent > b.place.extent; });
        }
        while (m_next < layer.labels.size()) {
            drawLabel(painter, layer, layer.labels[m_next++]);
            if (timer.elapsed() >= milliseconds)
                return false;
        }
        m_layers.pop_back();
        m_next = 0;
    }
    return true;
}
