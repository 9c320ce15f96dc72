#include "MapStatus.h"

#include "MapWindow.h"
#include "engine/base/TxNumberText.h"
#include "engine/map/TxMapWnd.h"

#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QStatusBar>

#include <algorithm>
#include <cmath>

MapStatus::MapStatus(QStatusBar *bar)
    : QObject(bar), m_coordinates(new QLabel), m_scale(new QLabel), m_progress(new QProgressBar)
{
    const int character = bar->fontMetrics().averageCharWidth();
    m_progress->setRange(0, 100);
    m_progress->setTextVisible(false);
    m_progress->setFixedWidth(character * 18);
    m_progress->setMaximumHeight(bar->fontMetrics().height());
    m_progress->setAccessibleName(tr("Drawing progress"));
    m_progress->setToolTip(tr("The map is being drawn"));
    m_progress->hide();
    m_coordinates->setMinimumWidth(character * 30);
    m_coordinates->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_coordinates->setAccessibleName(tr("Coordinates"));
    m_coordinates->setToolTip(tr("Coordinates of the pointer: x, y"));
    m_scale->setMinimumWidth(character * 20);
    m_scale->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_scale->setAccessibleName(tr("Scale"));
    m_scale->setToolTip(tr("Scale of the map, at the middle of the view"));
    bar->addPermanentWidget(m_progress);
    bar->addPermanentWidget(m_coordinates);
    bar->addPermanentWidget(m_scale);
}

void MapStatus::setView(MapWindow *view)
{
    if (m_view)
        m_view->canvas()->disconnect(this);
    m_view = view;
    m_coordinates->clear();
    m_progress->hide();
    if (view) {
        connect(view->canvas(), &CTxMapWnd::pointerMoved, this, &MapStatus::showPointer);
        connect(view->canvas(), &CTxMapWnd::viewChanged, this, &MapStatus::showScale);
        connect(view->canvas(), &CTxMapWnd::drawingProgress, this, &MapStatus::showProgress);
    }
    showScale();
}

void MapStatus::showPointer(double x, double y)
{
    const double unitsPerPixel = m_view->canvas()->GetViewBounds().Width() / std::max(1, m_view->canvas()->width());
    m_coordinates->setText(coordinateText(x, unitsPerPixel) + QStringLiteral(", ") + coordinateText(y, unitsPerPixel));
}

void MapStatus::showScale()
{
    m_scale->setText(m_view ? scaleText(m_view->scaleDenominator()) : QString());
}

void MapStatus::showProgress(int percent)
{
    m_progress->setValue(percent);
    m_progress->setVisible(percent < 100);
    if (percent == 100)
        showScale();
}

QString MapStatus::coordinateText(double value, double unitsPerPixel)
{
    const double digits = unitsPerPixel > 0 && std::isfinite(unitsPerPixel) ? std::ceil(-std::log10(unitsPerPixel)) : 2;
    return TxNumberText::fixed(value, static_cast<int>(std::clamp(digits, 0.0, 9.0)));
}

QString MapStatus::scaleText(double denominator)
{
    if (!(denominator > 0) || denominator > 1e15)
        return {};
    const double unit = std::pow(10.0, std::max(0.0, std::floor(std::log10(denominator)) - 2));
    const auto rounded = static_cast<qint64>(std::round(denominator / unit) * unit);
    return QStringLiteral("1 : ") + QLocale().toString(std::max<qint64>(rounded, 1));
}
