#include "workspace/WkspIconEngine.h"

#include "common/TdModule.h"

#include <QApplication>
#include <QPainter>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>

WkspIconEngine::WkspIconEngine(const QString &path) : m_path(path) {}

void WkspIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State)
{
    const qreal scale = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
    painter->drawPixmap(rect, picture(rect.size() * scale, mode));
}

QPixmap WkspIconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State)
{
    return picture(size, mode);
}

QPixmap WkspIconEngine::scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State, qreal)
{
    return picture(size, mode); // the size is in device pixels already
}

QIconEngine *WkspIconEngine::clone() const
{
    return new WkspIconEngine(m_path);
}

QString WkspIconEngine::key() const
{
    return QStringLiteral("WkspIconEngine");
}

bool WkspIconEngine::isNull()
{
    return CTdModule::FindResource(m_path).isEmpty();
}

/// The picture in @p size device pixels. A disabled one is what the style makes of it; a selected one looks like any
/// other, since items show one image in either state.
QPixmap WkspIconEngine::picture(const QSize &size, QIcon::Mode mode) const
{
    if (size.isEmpty())
        return QPixmap();
    const QString file = CTdModule::FindResource(m_path);
    const bool disabled = mode == QIcon::Disabled;
    const QString cacheKey = QStringLiteral("%1@%2x%3%4")
                                 .arg(file, QString::number(size.width()), QString::number(size.height()),
                                      disabled ? QStringLiteral("d") : QString());
    QPixmap pixmap;
    if (QPixmapCache::find(cacheKey, &pixmap))
        return pixmap;

    QSvgRenderer renderer(file);
    if (!renderer.isValid())
        return QPixmap();
    pixmap = QPixmap(size);
    pixmap.fill(Qt::transparent);
    const int side = qMin(size.width(), size.height());
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF((size.width() - side) / 2.0, (size.height() - side) / 2.0, side, side));
    painter.end();
    if (disabled) {
        QStyleOption option;
        option.palette = QApplication::palette();
        pixmap = QApplication::style()->generatedIconPixmap(QIcon::Disabled, pixmap, &option);
    }
    QPixmapCache::insert(cacheKey, pixmap);
    return pixmap;
}
