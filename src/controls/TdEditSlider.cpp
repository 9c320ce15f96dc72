#include "controls/TdEditSlider.h"

#include "basic/TdHostMessage.h"
#include "common/TdModule.h"
#include "common/TdSendMessage.h"
#include "controls/TdNumEdit.h"
#include "controls/TdSliderCtrl.h"
#include "controls/TdSliderFrame.h"
#include "controls/TdTriangleButton.h"
#include "res/StringId.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLabel>

namespace {

constexpr int buttonSize = 22;      // pixels, of the button and of the edit's narrow side
constexpr QSize popUpSize(45, 125); // pixels
constexpr int usualRange = 100;     // from -usualRange to usualRange

} // namespace

CTdEditSlider::CTdEditSlider(int commandId, QWidget *parent) : QWidget(parent), m_commandId(commandId)
{
    // In the order of Tab. The pop-up comes last: Qt takes what is made behind a window out of the order of Tab.
    m_edit = new CTdNumEdit(this);
    m_button = new CTdTriangleButton(this);
    m_frame = new CTdSliderFrame(this);
    m_edit->SetEditMode(NumberInput::Whole);
    setFocusProxy(m_edit);
    m_button->setProperty("controlId", 1);
    m_button->setAccessibleName(CTdModule::LoadString(TdStringId::OpenSlider));
    m_edit->setProperty("controlId", 2);
    connect(m_button, &QAbstractButton::clicked, this, &CTdEditSlider::popUp);
    connect(m_edit, &QLineEdit::textEdited, this, &CTdEditSlider::followEdit);
    connect(m_edit, &QLineEdit::textChanged, this, [this] { m_frame->SetPos(m_edit->GetValueL()); });
    connect(m_frame, &CTdSliderFrame::scrolled, this, &CTdEditSlider::followSlider);
    connect(m_frame, &CTdSliderFrame::chosen, this, &CTdEditSlider::tellCommand);
    connect(m_frame, &CTdSliderFrame::cancelled, this, &CTdEditSlider::giveUp);
    SetRange(-usualRange, usualRange);
    SetPos(0);
    EnableWindowX(0);
}

CTdEditSlider::CTdEditSlider(QWidget *parent) : CTdEditSlider(-1, parent) {}

CTdEditSlider::~CTdEditSlider() = default;

void CTdEditSlider::SetRange(int minimum, int maximum)
{
    m_frame->SetRange(minimum, maximum);
    updateGeometry();
}

int CTdEditSlider::GetMin() const
{
    return m_frame->GetSlider()->minimum();
}

int CTdEditSlider::GetMax() const
{
    return m_frame->GetSlider()->maximum();
}

void CTdEditSlider::SetMin(int minimum)
{
    SetRange(minimum, qMax(minimum, GetMax()));
}

void CTdEditSlider::SetMax(int maximum)
{
    SetRange(qMin(GetMin(), maximum), maximum);
}

void CTdEditSlider::SetPos(int position)
{
    m_frame->SetPos(position);
    m_edit->SetValue(m_frame->GetPos());
}

int CTdEditSlider::GetPos() const
{
    return m_frame->GetPos();
}

void CTdEditSlider::EnableWindowX(int enable)
{
    m_enabled = enable != 0;
    m_edit->setReadOnly(!m_enabled);
    m_button->setEnabled(m_enabled);
    if (!m_enabled)
        m_frame->ShowWindow(false);
    // A read-only edit looks like any other: the palette tells that it is off.
    QPalette look = palette();
    if (!m_enabled) {
        for (const QPalette::ColorRole role : {QPalette::Base, QPalette::Text})
            look.setColor(role, palette().color(QPalette::Disabled, role));
    }
    m_edit->setPalette(look);
}

void CTdEditSlider::SetFontX(const QFont &font, bool redraw)
{
    setFont(font);
    m_edit->setFont(font);
    m_button->setFont(font);
    placeChildren();
    if (redraw)
        update();
}

void CTdEditSlider::GetEditBorder(QRect &border) const
{
    border = m_edit->rect();
}

int CTdEditSlider::narrowSide() const
{
    return qMax(buttonSize, m_edit->fontMetrics().height() + 6); // large fonts need more
}

int CTdEditSlider::widthOfNumbers() const
{
    const QFontMetrics metrics = m_edit->fontMetrics();
    int widest = 0;
    for (const int number : {GetMin(), GetMax()})
        widest = qMax(widest, metrics.horizontalAdvance(QString::number(number)));
    return widest + m_edit->minimumSizeHint().width() - metrics.maxWidth() + 2; // its frame, and the caret
}

void CTdEditSlider::SetToolBarSize(Qt::Orientation orientation, int length)
{
    m_orientation = orientation;
    m_length = length;
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    resize(sizeHint());
    updateGeometry();
}

QSize CTdEditSlider::sizeHint() const
{
    if (m_orientation == Qt::Horizontal)
        return {m_length, narrowSide()};
    return {qBound(narrowSide(), widthOfNumbers(), qMax(narrowSide(), m_length)), m_length};
}

void CTdEditSlider::resizeEvent(QResizeEvent *)
{
    placeChildren();
}

void CTdEditSlider::placeChildren()
{
    const int w = width();
    const int h = height();
    if (w >= h) {
        m_edit->setGeometry(0, 0, w - buttonSize, narrowSide());
        m_button->setGeometry(w - buttonSize, 0, buttonSize, narrowSide());
    } else {
        const int side = m_orientation == Qt::Vertical ? w : narrowSide(); // on a toolbar the numbers fit
        m_edit->setGeometry(0, 0, side, h - buttonSize);
        m_button->setGeometry(0, h - buttonSize, side, buttonSize);
    }
}

void CTdEditSlider::moveEvent(QMoveEvent *)
{
    m_frame->ShowWindow(false);
}

void CTdEditSlider::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    switch (event->type()) {
    case QEvent::PaletteChange:
        EnableWindowX(m_enabled ? 1 : 0);
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
        placeChildren();
        updateGeometry();
        break;
    case QEvent::EnabledChange:
        m_frame->ShowWindow(false);
        break;
    default:
        break;
    }
}

void CTdEditSlider::showEvent(QShowEvent *)
{
    // The edit has the focus, so it must bear the name of the control, or of the label beside it.
    QString name = accessibleName();
    if (name.isEmpty() && parentWidget()) {
        for (const auto *label : parentWidget()->findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (label->buddy() == this)
                name = label->text().remove(u'&');
        }
    }
    if (!name.isEmpty())
        m_edit->setAccessibleName(name);
}

void CTdEditSlider::hideEvent(QHideEvent *)
{
    m_frame->ShowWindow(false);
}

void CTdEditSlider::keyPressEvent(QKeyEvent *event)
{
    const bool opens =
        event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && event->modifiers() & Qt::AltModifier);
    const bool chooses =
        (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !m_button->hasFocus() && m_commandId != -1;
    if (opens && m_enabled) {
        popUp(); // as combo boxes open
    } else if (chooses && m_enabled) {
        event->accept(); // a dialog must not take the key for its default button too
        tellCommand();   // last: the host may delete the control
    } else {
        QWidget::keyPressEvent(event);
    }
}

bool CTdEditSlider::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Move)
        m_frame->ShowWindow(false);
    return QWidget::eventFilter(watched, event);
}

void CTdEditSlider::popUp()
{
    m_before = m_edit->text();
    // The control moves with all that it stands in. An own filter installed again is no second one.
    for (QWidget *around = this; !around->isWindow();) {
        around = around->parentWidget();
        around->installEventFilter(this);
    }
    const QPoint corner = mapToGlobal(QPoint(width(), height()));
    m_frame->ShowWindow(true, QRect(QPoint(corner.x() - popUpSize.width(), corner.y()), popUpSize));
}

void CTdEditSlider::followEdit()
{
    m_frame->SetPos(m_edit->GetValueL()); // the edit keeps what was typed, beyond the range too
    Q_EMIT positionEdited(GetPos());
}

void CTdEditSlider::followSlider()
{
    m_edit->SetValue(m_frame->GetPos());
    Q_EMIT positionEdited(GetPos());
}

void CTdEditSlider::giveUp()
{
    if (m_edit->text() == m_before)
        return;
    m_edit->setText(m_before);
    Q_EMIT positionEdited(GetPos());
}

void CTdEditSlider::tellCommand() const
{
    if (m_commandId == -1)
        return;
    CTdHostMessage command(CTdHostMessage::Command, static_cast<qint64>(m_commandId));
    TdSendMessageToMainWnd(command);
}
