#include "controls/TdSliderCtrl.h"

#include "engine/ui/TxWheelGuard.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>

CTdSliderCtrl::CTdSliderCtrl(QWidget *parent) : QSlider(Qt::Vertical, parent)
{
    setInvertedAppearance(true);
    setInvertedControls(true); // what goes up on the screen goes up by key and wheel
    setTickPosition(TicksBothSides);
    TxWheelGuard::install(this);
}

CTdSliderCtrl::~CTdSliderCtrl() = default;

void CTdSliderCtrl::mouseReleaseEvent(QMouseEvent *event)
{
    QSlider::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton)
        Q_EMIT chosen();
}

void CTdSliderCtrl::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT chosen();
    else
        QSlider::keyPressEvent(event);
}

void CTdSliderCtrl::focusOutEvent(QFocusEvent *event)
{
    QSlider::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) // a window over this one comes back
        Q_EMIT left();
}
