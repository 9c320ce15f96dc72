#pragma once

#include "common/TdCommonExport.h"

#include <QSlider>

/// The upright slider of a pop-up: it tells when a value was chosen, by the mouse going up or by Enter, and when
/// the keyboard went elsewhere.
///
/// Its smallest position is at the top, so that who stores negated values has the largest there.
class TDCOMMON_API CTdSliderCtrl : public QSlider
{
    Q_OBJECT

public:
    explicit CTdSliderCtrl(QWidget *parent = nullptr);
    ~CTdSliderCtrl() override;

Q_SIGNALS:
    /// The user has chosen: the left mouse button went up on the slider, or Enter was pressed.
    void chosen();
    /// The focus went to another window or control.
    void left();

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
};
