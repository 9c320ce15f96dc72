#pragma once

#include <QIconEngine>
#include <QString>

/// Draws an icon from an SVG picture, at the asked size and screen scale, when it is first painted. Pictures that were
/// drawn once are kept in the application's pixmap cache.
class WkspIconEngine : public QIconEngine
{
public:
    /// @param path of the picture, below the root of the modules that CTdModule::FindResource() searches
    explicit WkspIconEngine(const QString &path);

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    QIconEngine *clone() const override;
    QString key() const override;
    bool isNull() override;

private:
    QPixmap picture(const QSize &size, QIcon::Mode mode) const;

    QString m_path;
};
