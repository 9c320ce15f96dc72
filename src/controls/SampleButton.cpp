#include "controls/SampleButton.h"

#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>

namespace {

QStyleOptionButton optionOf(const QPushButton &button)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    option.features = button.isFlat() ? QStyleOptionButton::Flat : QStyleOptionButton::None;
    option.state |= button.isDown() || button.isChecked() ? QStyle::State_Sunken : QStyle::State_Raised;
    return option;
}

} // namespace

QRect SampleButton::paintFrame(const QPushButton &button, QPainter &painter)
{
    QStyleOptionButton option = optionOf(button);
    button.style()->drawControl(QStyle::CE_PushButtonBevel, &option, &painter, &button);
    if (option.state & QStyle::State_HasFocus) {
        QStyleOptionFocusRect focus;
        static_cast<QStyleOption &>(focus) = option;
        focus.rect = button.style()->subElementRect(QStyle::SE_PushButtonFocusRect, &option, &button);
        button.style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, &button);
    }
    return button.style()->subElementRect(QStyle::SE_PushButtonContents, &option, &button).adjusted(3, 3, -3, -3);
}

QSize SampleButton::sizeFor(const QPushButton &button, const QSize &sample)
{
    const QStyleOptionButton option = optionOf(button);
    return button.style()->sizeFromContents(QStyle::CT_PushButton, &option, sample + QSize(6, 6), &button);
}

bool SampleButton::isOpeningKey(int key)
{
    return key == Qt::Key_F4 || key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter;
}
