#include "controls/TdSliderFrame.h"

#include "controls/TdSliderCtrl.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <limits>

CTdSliderFrame::CTdSliderFrame(QWidget *owner) : QFrame(owner, Qt::Popup), m_slider(new CTdSliderCtrl(this))
{
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_slider);
    setFocusProxy(m_slider);
    m_slider->setProperty("controlId", 1);
    connect(m_slider, &QSlider::valueChanged, this, &CTdSliderFrame::scrolled);
    connect(m_slider, &CTdSliderCtrl::chosen, this, [this] {
        // Hidden first: who hears of it may open a window of its own.
        ShowWindow(false);
        Q_EMIT chosen();
    });
    connect(m_slider, &CTdSliderCtrl::left, this, &QWidget::hide);
}

CTdSliderFrame::~CTdSliderFrame() = default;

void CTdSliderFrame::SetRange(int minimum, int maximum)
{
    const QSignalBlocker silent(m_slider);
    m_slider->setRange(minimum, maximum);
    const qint64 span = qint64(m_slider->maximum()) - m_slider->minimum();
    m_slider->setPageStep(static_cast<int>(qMax<qint64>(1, span / 10)));
    m_slider->setTickInterval(m_slider->pageStep()); // ticks for every step would run into one another
}

void CTdSliderFrame::SetPos(int position)
{
    const QSignalBlocker silent(m_slider);
    m_slider->setValue(position == std::numeric_limits<int>::min() ? std::numeric_limits<int>::max() : -position);
}

int CTdSliderFrame::GetPos() const
{
    const int position = m_slider->value();
    return position == std::numeric_limits<int>::min() ? std::numeric_limits<int>::max() : -position;
}

void CTdSliderFrame::ShowWindow(bool show, const QRect &place)
{
    if (!show) {
        hide();
        return;
    }
    QRect where = place;
    const QScreen *screen = QGuiApplication::screenAt(place.topRight());
    if (!screen)
        screen = parentWidget()->screen();
    const QRect room = screen->availableGeometry();
    if (where.bottom() > room.bottom())
        where.moveBottom(qMin(room.bottom(), place.top() - parentWidget()->height() - 1)); // above the edit
    where.moveLeft(qBound(room.left(), where.left(), qMax(room.left(), room.right() - where.width() + 1)));
    where.moveTop(qMax(room.top(), where.top()));
    setGeometry(where);
    QFrame::show();
    m_slider->setFocus(Qt::PopupFocusReason);
}

void CTdSliderFrame::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Cancel)) {
        hide();
        Q_EMIT cancelled();
    } else if (event->key() == Qt::Key_F4) {
        hide(); // the key that opened it
    } else {
        QFrame::keyPressEvent(event);
    }
}

void CTdSliderFrame::hideEvent(QHideEvent *)
{
    m_slider->setSliderDown(false); // hidden in the middle of a drag, it never hears of the mouse going up
}
