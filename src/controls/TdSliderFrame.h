#pragma once

#include "common/TdCommonExport.h"

#include <QFrame>

class CTdSliderCtrl;

/// The pop-up window that holds the slider of a slider edit. A click elsewhere, Escape and a loss of the focus
/// close it.
class TDCOMMON_API CTdSliderFrame : public QFrame
{
    Q_OBJECT

public:
    explicit CTdSliderFrame(QWidget *owner);
    ~CTdSliderFrame() override;

    /// Sets the range of the slider as it is given. Deliberate: the slider stores the negated value, so that the larger
    /// one is at the top, but its range is not negated. Ranges symmetric about 0 work as meant; in a range from 0 to
    /// 100 every value above 0 becomes 0.
    void SetRange(int minimum, int maximum);
    void SetPos(int position);
    int GetPos() const;

    /// Shows the window at @p place (screen coordinates), moved to where the screen has room, or hides it.
    void ShowWindow(bool show, const QRect &place = {});

    CTdSliderCtrl *GetSlider() const { return m_slider; }

Q_SIGNALS:
    /// The user moved the slider.
    void scrolled();
    /// The user has chosen a value; the window hides.
    void chosen();
    /// The user gave up with Escape; the window hides.
    void cancelled();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    CTdSliderCtrl *m_slider;
};
