#include "engine/ui/GradientIcon.h"

#include "engine/symbol/TxColorFolder.h"

#include <QIconEngine>
#include <QImage>
#include <QPainter>

namespace {

class GradientIconEngine : public QIconEngine
{
public:
    explicit GradientIconEngine(qint32 style) : m_style(style) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const QImage &strip = stripOf(qRound(rect.width() * painter->device()->devicePixelRatioF()));
        painter->save();
        if (mode == QIcon::Disabled)
            painter->setOpacity(painter->opacity() * 0.35);
        if (!strip.isNull())
            painter->drawImage(rect, strip);
        // A frame that shows on light and on dark grounds, so that white ends have an end.
        painter->setPen(QPen(QColor(128, 128, 128, 170), 1, strip.isNull() ? Qt::DashLine : Qt::SolidLine));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5));
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    QIconEngine *clone() const override { return new GradientIconEngine(m_style); }

private:
    /// The ramp, one pixel high; null when there is none.
    const QImage &stripOf(int width)
    {
        CTxColorFolder ramp;
        if (m_strip.width() != width && ramp.MakeStockGradient(width, m_style) > 0) {
            m_strip = QImage(width, 1, QImage::Format_RGB32);
            auto *pixel = reinterpret_cast<QRgb *>(m_strip.scanLine(0));
            for (const COLORREF color : ramp.GetColors())
                *pixel++ = TxColorRef::toRgb(color);
        }
        return m_strip;
    }

    qint32 m_style;
    QImage m_strip;
};

} // namespace

QIcon txGradientIcon(qint32 style)
{
    return QIcon(new GradientIconEngine(style));
}
