#pragma once

#include "engine/base/TxExport.h"

#include <QObject>

class QWidget;

/// Keeps the wheel from changing what has not the focus: who scrolls a dialog must not change the values that come
/// under the mouse. The wheel goes on to what the control stands in, and gives no control the focus.
///
/// User-interface thread only.
class TX_EXPORT TxWheelGuard : public QObject
{
    Q_OBJECT

public:
    /// Guards @p control, of any kind.
    static void install(QWidget *control);
    /// Guards the combo boxes, spin boxes and sliders below @p window that are there now. Scroll bars are no values.
    static void installBelow(const QWidget *window);
    /// Guards those of the whole program, present and future, for hosts that want this everywhere.
    static void installEverywhere();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit TxWheelGuard(bool isChoosy) : m_isChoosy(isChoosy) {}
    static TxWheelGuard &one();
    static TxWheelGuard &everywhere();

    const bool m_isChoosy; ///< sees all objects, and guards only the controls among them that hold a value
};
