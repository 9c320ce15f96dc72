#pragma once

#include <QObject>
#include <QPointer>

class MapWindow;
class QLabel;
class QProgressBar;
class QStatusBar;

/// The map's part of the status bar: where the pointer is, the scale, and how far drawing has come.
class MapStatus : public QObject
{
    Q_OBJECT
public:
    /// Adds the fields to @p bar.
    explicit MapStatus(QStatusBar *bar);

    /// Shows the values of @p view, of none when it is null.
    void setView(MapWindow *view);

    /// A coordinate as the status bar writes it: as many decimals as a pixel of @p unitsPerPixel can tell apart.
    static QString coordinateText(double value, double unitsPerPixel);
    /// A scale rounded to three significant digits: "1 : 12,300,000"; empty for 0.
    static QString scaleText(double denominator);

private:
    void showPointer(double x, double y);
    void showScale();
    void showProgress(int percent);

    QPointer<MapWindow> m_view;
    QLabel *m_coordinates;
    QLabel *m_scale;
    QProgressBar *m_progress;
};
