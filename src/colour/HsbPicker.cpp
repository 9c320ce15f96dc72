#include "colour/HsbPicker.h"
#include "colour/ChannelBar.h"
#include "colour/HueSaturationCircle.h"
#include "colour/RGBType.h"
#include "common/TdModule.h"
#include "engine/base/TxColorRef.h"
#include "res/StringId.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QSignalBlocker>

#include <algorithm>

HsbPicker::HsbPicker(QWidget *parent)
    : QWidget(parent), m_circle(new HueSaturationCircle(this)), m_brightness(new ChannelBar(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_circle, 1);
    layout->addWidget(m_brightness);
    setFocusProxy(m_circle);
    setTexts();
    showColor();
    connect(m_circle, &HueSaturationCircle::picked, this, &HsbPicker::pick);
    connect(m_brightness, &ChannelBar::valueChanged, this, [this](int value) {
        pick({m_color.hue, m_color.saturation, value});
    });
}

HsbPicker::~HsbPicker() = default;

void HsbPicker::setColor(const HSVType &color)
{
    m_color = {std::clamp(color.hue, 0, 359), std::clamp(color.saturation, 0, 255), std::clamp(color.value, 0, 255)};
    showColor();
}

void HsbPicker::pick(const HSVType &color)
{
    m_color = color;
    showColor();
    Q_EMIT colorPicked(color);
}

void HsbPicker::showColor()
{
    m_circle->setColor(m_color);
    const QSignalBlocker blocker(m_brightness);
    m_brightness->setValue(m_color.value);
    const HSVType brightest(m_color.hue, m_color.saturation, 255);
    m_brightness->setEnds(Qt::black, TxColorRef::toQColor(brightest.toRGB().color()));
}

void HsbPicker::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        setTexts();
}

void HsbPicker::setTexts()
{
    const QString brightness = CTdModule::LoadString(TdStringId::PickerBrightness);
    m_brightness->setAccessibleName(brightness);
    m_brightness->setToolTip(brightness);
}
