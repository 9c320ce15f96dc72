#include "engine/ui/TxWheelGuard.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QScrollBar>
#include <QWheelEvent>

namespace {

bool holdsValue(const QWidget *control)
{
    return qobject_cast<const QComboBox *>(control) || qobject_cast<const QAbstractSpinBox *>(control) ||
           (qobject_cast<const QAbstractSlider *>(control) && !qobject_cast<const QScrollBar *>(control));
}

bool isFocused(const QWidget *control)
{
    // The edit of a combo box is a child that has the focus itself.
    const QWidget *focus = QApplication::focusWidget();
    return control->hasFocus() || (focus && control->isAncestorOf(focus));
}

/// Else the wheel would give the focus first, and then change the value.
void takeFromWheel(QWidget *control)
{
    if (control->focusPolicy() == Qt::WheelFocus)
        control->setFocusPolicy(Qt::StrongFocus);
}

} // namespace

TxWheelGuard &TxWheelGuard::one()
{
    static TxWheelGuard guard(false);
    return guard;
}

TxWheelGuard &TxWheelGuard::everywhere()
{
    static TxWheelGuard guard(true);
    return guard;
}

void TxWheelGuard::install(QWidget *control)
{
    takeFromWheel(control);
    control->installEventFilter(&one());
}

void TxWheelGuard::installBelow(const QWidget *window)
{
    for (QWidget *control : window->findChildren<QWidget *>()) {
        if (holdsValue(control))
            install(control);
    }
}

void TxWheelGuard::installEverywhere()
{
    for (QWidget *control : QApplication::allWidgets()) {
        if (holdsValue(control))
            takeFromWheel(control);
    }
    qApp->installEventFilter(&everywhere());
}

bool TxWheelGuard::eventFilter(QObject *watched, QEvent *event)
{
    if ((event->type() != QEvent::Wheel && event->type() != QEvent::Polish) || !watched->isWidgetType())
        return false;
    auto *control = static_cast<QWidget *>(watched);
    if (m_isChoosy && !holdsValue(control))
        return false;
    if (event->type() == QEvent::Polish) {
        takeFromWheel(control);
        return false;
    }
    if (isFocused(control))
        return false;
    event->ignore(); // what the control stands in scrolls
    return true;
}
