#include "controls/TdColorButton.h"

#include "common/TdColorChooser.h"
#include "common/TdModule.h"
#include "controls/ColorPopup.h"
#include "controls/SampleButton.h"
#include "res/StringId.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>

CTdColorButton::CTdColorButton(QWidget *parent) : QPushButton(parent)
{
    setAutoDefault(false);
    describe();
    connect(this, &QPushButton::clicked, this, &CTdColorButton::open);
}

CTdColorButton::~CTdColorButton() = default;

void CTdColorButton::SetColor(std::optional<COLORREF> color)
{
    if (color)
        *color &= 0xFFFFFFU; // the high byte is no part of a colour
    m_color = color;
    describe();
    update();
}

void CTdColorButton::setFormColor(const QColor &color)
{
    SetColor(color.isValid() ? std::optional(TxColorRef::fromQColor(color)) : std::nullopt);
}

void CTdColorButton::describe()
{
    setAccessibleName(CTdModule::LoadString(TdStringId::ColorButtonName));
    setAccessibleDescription(m_color ? CTdModule::LoadString(TdStringId::PickerCubeText)
                                           .arg(TxColorRef::red(*m_color))
                                           .arg(TxColorRef::green(*m_color))
                                           .arg(TxColorRef::blue(*m_color))
                                     : CTdModule::LoadString(TdStringId::ColorButtonNone).remove(u'&'));
    setToolTip(accessibleDescription());
}

QSize CTdColorButton::sizeHint() const
{
    return SampleButton::sizeFor(*this, {fontMetrics().height() * 3, fontMetrics().height()});
}

QSize CTdColorButton::minimumSizeHint() const
{
    return SampleButton::sizeFor(*this, {fontMetrics().height(), fontMetrics().height()});
}

void CTdColorButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect place = SampleButton::paintFrame(*this, painter);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Mid));
    painter.setBrush(m_color ? QBrush(TxColorRef::toQColor(*m_color)) : QBrush(Qt::NoBrush));
    if (!isEnabled())
        painter.setOpacity(0.4);
    painter.drawRect(place.adjusted(0, 0, -1, -1));
    if (!m_color) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.drawLine(place.bottomLeft(), place.topRight());
    }
}

void CTdColorButton::keyPressEvent(QKeyEvent *event)
{
    if (SampleButton::isOpeningKey(event->key()))
        click();
    else
        QPushButton::keyPressEvent(event);
}

void CTdColorButton::changeEvent(QEvent *event)
{
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        delete m_popup; // it is made anew, in the new language
        m_popup = nullptr;
        describe();
    }
}

void CTdColorButton::open()
{
    if (!m_popup) {
        m_popup = new ColorPopup(this);
        connect(m_popup, &ColorPopup::chosen, this, &CTdColorButton::take);
        connect(m_popup, &ColorPopup::moreWanted, this, &CTdColorButton::chooseAmongAll);
    }
    m_popup->open(this, m_color, m_mayBeNone);
}

void CTdColorButton::chooseAmongAll()
{
    const QPointer<CTdColorButton> alive(this);
    const std::optional<COLORREF> color =
        CTdColorChooser::GetCurrent().ChooseColor(window(), m_color.value_or(0), QString());
    if (alive && color)
        take(color);
}

void CTdColorButton::take(std::optional<COLORREF> color)
{
    if (color == m_color)
        return;
    SetColor(color);
    Q_EMIT colorChosen(color);
}
