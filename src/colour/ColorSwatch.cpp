#include "colour/ColorSwatch.h"

#include <QKeyEvent>
#include <QPainter>

ColorSwatch::ColorSwatch(QWidget *parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
}

void ColorSwatch::setColor(std::optional<COLORREF> color)
{
    if (m_color == color)
        return;
    m_color = color;
    // A reader of the screen hears what the eye sees.
    setAccessibleDescription(color ? TxColorRef::toQColor(*color).name().toUpper() : QString());
    update();
}

QSize ColorSwatch::sizeHint() const
{
    return {90, 28};
}

void ColorSwatch::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1));
    painter.setBrush(m_color ? QBrush(TxColorRef::toQColor(*m_color)) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(frame, 3, 3);
    if (!m_color)
        painter.drawLine(frame.bottomLeft(), frame.topRight());
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(frame.adjusted(-1.5, -1.5, 1.5, 1.5), 4, 4);
    }
}

void ColorSwatch::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click(); // not the dialog's OK
    else
        QAbstractButton::keyPressEvent(event);
}
