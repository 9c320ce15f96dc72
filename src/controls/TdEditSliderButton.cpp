#include "controls/TdEditSliderButton.h"

#include "basic/TdHostMessage.h"
#include "common/TdSendMessage.h"
#include "controls/TdEditSlider.h"

#include <QDataStream>
#include <QPointer>
#include <QToolBar>

#include <algorithm>

namespace {

constexpr int usualWidth = 60;             // pixels
constexpr int greatestWidth = 10000;       // pixels; more is no width but garbage
constexpr quint32 childStyle = 0x50000010; // stands in a window, is visible, takes part in the toolbar
constexpr quint32 lyingStyle = 0x2;        // set in an upright toolbar, cleared in a lying one

/// Every button there is, in the order they were made. User-interface thread only.
QList<CTdEditSliderButton *> &allButtons()
{
    static QList<CTdEditSliderButton *> buttons;
    return buttons;
}

} // namespace

CTdEditSliderButton::CTdEditSliderButton(int commandId, int image, const QList<QIcon> *images, quint32 style, int width,
                                         QObject *parent)
    : QWidgetAction(parent), m_commandId(commandId), m_image(image), m_images(images),
      m_width(width == 0 ? usualWidth : width), m_style(style | childStyle)
{
    allButtons().append(this);
    connect(this, &QAction::changed, this, &CTdEditSliderButton::followState);
}

CTdEditSliderButton::~CTdEditSliderButton()
{
    allButtons().removeOne(this);
}

QList<CTdEditSlider *> CTdEditSliderButton::controls() const
{
    QList<CTdEditSlider *> list;
    for (QWidget *widget : createdWidgets()) {
        if (auto *control = qobject_cast<CTdEditSlider *>(widget))
            list.append(control);
    }
    return list;
}

QWidget *CTdEditSliderButton::createWidget(QWidget *parent)
{
    auto *control = new CTdEditSlider(m_commandId, parent);
    control->setAccessibleName(text());
    control->SetImages(m_images);
    control->SetImage(m_image);
    control->SetRange(m_minimum, m_maximum);
    control->SetPos(m_position);
    control->EnableWindowX(isEnabled() ? 1 : 0);
    const auto fit = [this, control](Qt::Orientation orientation) {
        const QSize lying(m_width, control->sizeHint().height());
        control->setFixedSize(orientation == Qt::Horizontal ? lying : lying.transposed());
        m_style = orientation == Qt::Horizontal ? m_style & ~lyingStyle : m_style | lyingStyle;
    };
    if (auto *bar = qobject_cast<QToolBar *>(parent)) {
        fit(bar->orientation());
        connect(bar, &QToolBar::orientationChanged, control, fit);
    } else {
        fit(Qt::Horizontal);
    }
    connect(control, &CTdEditSlider::positionEdited, this, [this, control](int position) {
        m_position = position;
        for (CTdEditSlider *other : controls()) {
            if (other != control)
                other->SetPos(position);
        }
    });
    return control;
}

void CTdEditSliderButton::SetStyle(quint32 style)
{
    m_style = style;
}

void CTdEditSliderButton::applyRange(int minimum, int maximum)
{
    m_minimum = minimum;
    m_maximum = maximum;
    for (CTdEditSlider *control : controls())
        control->SetRange(minimum, maximum);
}

void CTdEditSliderButton::SetRange(int minimum, int maximum)
{
    for (CTdEditSliderButton *button : allButtons()) {
        if (button == this || button->m_commandId == m_commandId)
            button->applyRange(minimum, maximum);
    }
}

void CTdEditSliderButton::SetValue(int position, bool notify)
{
    m_position = position;
    QList<QPointer<QWidget>> windows;
    for (CTdEditSlider *control : controls()) {
        control->SetPos(position);
        if (!windows.contains(control->window()))
            windows.append(control->window());
    }
    if (!notify)
        return;
    for (const QPointer<QWidget> &window : windows) {
        CTdHostMessage command(CTdHostMessage::Command, static_cast<qint64>(m_commandId));
        TdSendMessage(window, command);
    }
}

int CTdEditSliderButton::GetPos(int commandId)
{
    for (const CTdEditSliderButton *button : allButtons()) {
        if (button->m_commandId != commandId)
            continue;
        if (const QList<CTdEditSlider *> controls = button->controls(); !controls.isEmpty())
            return controls.first()->GetPos();
    }
    return -1;
}

void CTdEditSliderButton::followState()
{
    for (CTdEditSlider *control : controls()) {
        control->EnableWindowX(isEnabled() ? 1 : 0);
        control->setAccessibleName(text());
    }
}

void CTdEditSliderButton::CopyFrom(const CTdEditSliderButton &other)
{
    m_width = other.m_width;
    m_style = other.m_style;
    m_images = other.m_images;
    m_image = other.m_image;
    applyRange(other.m_minimum, other.m_maximum);
    SetValue(other.m_position);
}

void CTdEditSliderButton::Serialize(QDataStream &stream) const
{
    const QDataStream::ByteOrder order = stream.byteOrder();
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << qint32(m_commandId) << qint32(m_image) << qint32(m_width) << m_style << qint32(m_minimum)
           << qint32(m_maximum) << qint32(m_position);
    stream.setByteOrder(order); // the stream is the host's
}

bool CTdEditSliderButton::Deserialize(QDataStream &stream)
{
    const QDataStream::ByteOrder order = stream.byteOrder();
    stream.setByteOrder(QDataStream::LittleEndian);
    qint32 commandId = 0, image = 0, width = 0, minimum = 0, maximum = 0, position = 0;
    quint32 style = 0;
    stream >> commandId >> image >> width >> style >> minimum >> maximum >> position;
    stream.setByteOrder(order);
    if (stream.status() != QDataStream::Ok || width < 1 || width > greatestWidth || minimum > maximum)
        return false;
    m_commandId = commandId;
    m_image = image;
    m_width = width;
    m_style = style;
    for (CTdEditSlider *control : controls())
        control->SetCommandId(commandId);
    applyRange(minimum, maximum);
    SetValue(position);
    return true;
}
