#include "controls/TdEditSliderButton.h"

#include "basic/TdHostMessage.h"
#include "common/TdSendMessage.h"
#include "controls/TdEditSlider.h"
#include "controls/TdNumEdit.h"
#include "controls/ToolBarButton.h"

#include <QPointer>
#include <QToolBar>

namespace {

constexpr int usualWidth = 60;             // pixels
constexpr quint32 childStyle = 0x50000010; // stands in a window, is visible, takes part in the toolbar
constexpr quint32 uprightStyle = 0x2;      // set in an upright toolbar, cleared in a lying one

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
      m_width(width == 0 ? usualWidth : qBound(1, width, ToolBarButton::greatestWidth)), m_style(style | childStyle)
{
    allButtons().append(this);
    applyLook();
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

QList<CTdEditSliderButton *> CTdEditSliderButton::withSameCommand()
{
    if (m_commandId == -1)
        return {this};
    QList<CTdEditSliderButton *> same = allButtons();
    same.removeIf([this](const CTdEditSliderButton *button) { return button->m_commandId != m_commandId; });
    return same;
}

QWidget *CTdEditSliderButton::createWidget(QWidget *parent)
{
    auto *control = new CTdEditSlider(m_commandId, parent);
    control->setAccessibleName(text());
    control->GetEdit()->setAccessibleName(text()); // it has the focus
    control->SetImages(m_images);
    control->SetImage(m_image);
    control->SetRange(m_minimum, m_maximum);
    control->SetPos(m_position);
    control->EnableWindowX(isEnabled() ? 1 : 0);
    fit(control);
    if (auto *bar = qobject_cast<QToolBar *>(parent))
        connect(bar, &QToolBar::orientationChanged, control, [this, control] { fit(control); });
    connect(control, &CTdEditSlider::positionEdited, this, [this, control](int position) {
        for (CTdEditSliderButton *button : withSameCommand())
            button->applyPosition(position, control);
    });
    return control;
}

void CTdEditSliderButton::fit(CTdEditSlider *control)
{
    const auto *bar = qobject_cast<QToolBar *>(control->parentWidget());
    const Qt::Orientation orientation = bar ? bar->orientation() : Qt::Horizontal;
    control->SetToolBarSize(orientation, m_width);
    m_style = orientation == Qt::Horizontal ? m_style & ~uprightStyle : m_style | uprightStyle;
}

void CTdEditSliderButton::SetStyle(quint32 style)
{
    m_style = style;
}

void CTdEditSliderButton::applyRange(int minimum, int maximum)
{
    m_minimum = minimum;
    m_maximum = qMax(minimum, maximum); // as the sliders have it
    for (CTdEditSlider *control : controls())
        control->SetRange(minimum, maximum);
}

void CTdEditSliderButton::SetRange(int minimum, int maximum)
{
    for (CTdEditSliderButton *button : withSameCommand())
        button->applyRange(minimum, maximum);
}

void CTdEditSliderButton::applyPosition(int position, const CTdEditSlider *except)
{
    m_position = position;
    for (CTdEditSlider *control : controls()) {
        if (control != except) // it may show what was typed beyond the range
            control->SetPos(position);
    }
}

void CTdEditSliderButton::SetValue(int position, bool notify)
{
    applyPosition(position);
    if (!notify)
        return;
    const qint64 commandId = m_commandId; // who hears of it may delete the button
    QList<QPointer<QWidget>> windows;
    for (const CTdEditSlider *control : controls()) {
        if (QWidget *window = ToolBarButton::frameOf(*control); !windows.contains(window))
            windows.append(window);
    }
    for (const QPointer<QWidget> &window : windows) {
        CTdHostMessage command(CTdHostMessage::Command, commandId);
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
        control->GetEdit()->setAccessibleName(text());
    }
}

void CTdEditSliderButton::applyLook()
{
    for (CTdEditSlider *control : controls()) {
        control->SetCommandId(m_commandId);
        control->SetImages(m_images);
        control->SetImage(m_image);
        fit(control);
    }
    if (m_images && m_image >= 0 && m_image < m_images->size())
        setIcon(m_images->at(m_image)); // menus and lists of commands show it
}

void CTdEditSliderButton::CopyFrom(const CTdEditSliderButton &other)
{
    setText(other.text());
    setToolTip(other.toolTip());
    m_commandId = other.m_commandId;
    m_width = other.m_width;
    m_style = other.m_style;
    m_images = other.m_images;
    m_image = other.m_image;
    applyLook();
    SetRange(other.m_minimum, other.m_maximum);
    SetValue(other.m_position);
}

void CTdEditSliderButton::Serialize(QDataStream &stream) const
{
    const ToolBarButton::StreamFormat format(stream);
    stream << qint32(m_commandId) << qint32(m_image) << qint32(m_width) << m_style << qint32(m_minimum)
           << qint32(m_maximum) << qint32(m_position);
}

bool CTdEditSliderButton::Deserialize(QDataStream &stream)
{
    const ToolBarButton::StreamFormat format(stream);
    qint32 commandId = 0, image = 0, width = 0, minimum = 0, maximum = 0, position = 0;
    quint32 style = 0;
    stream >> commandId >> image >> width >> style >> minimum >> maximum >> position;
    if (stream.status() != QDataStream::Ok || width < 1 || width > ToolBarButton::greatestWidth || minimum > maximum)
        return false;
    m_commandId = commandId;
    m_image = image;
    m_width = width;
    m_style = style;
    applyLook();
    SetRange(minimum, maximum);
    SetValue(position);
    return true;
}
