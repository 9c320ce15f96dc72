#include "colour/RgbCubePicker.h"
#include "colour/ChannelBar.h"
#include "colour/RgbCubeView.h"
#include "common/TdModule.h"
#include "res/StringId.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>

#include <algorithm>

namespace {

/// A bar: the part of the colour that it changes, its name and the letter below it.
struct Channel
{
    qint32 RGBType::*part;
    quint32 name;
    QChar letter;
};
constexpr Channel channels[] = {{&RGBType::red, TdStringId::PickerRed, u'R'},
                                {&RGBType::green, TdStringId::PickerGreen, u'G'},
                                {&RGBType::blue, TdStringId::PickerBlue, u'B'}};

QColor withPart(RGBType color, const Channel &channel, int value)
{
    color.*channel.part = value;
    return {color.red, color.green, color.blue};
}

} // namespace

RgbCubePicker::RgbCubePicker(QWidget *parent) : QWidget(parent), m_cube(new RgbCubeView(this)), m_bars{}
{
    auto *layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_cube, 0, 0, 2, 1);
    layout->setColumnStretch(0, 1);
    layout->setRowStretch(0, 1);
    for (std::size_t i = 0; i < m_bars.size(); ++i) {
        m_bars[i] = new ChannelBar(this);
        auto *letter = new QLabel(channels[i].letter, this);
        const int column = static_cast<int>(i) + 1;
        layout->addWidget(m_bars[i], 0, column);
        layout->addWidget(letter, 1, column, Qt::AlignHCenter);
        connect(m_bars[i], &ChannelBar::valueChanged, this, [this, part = channels[i].part](int value) {
            RGBType color = m_color;
            color.*part = value;
            pick(color);
        });
    }
    connect(m_cube, &RgbCubeView::picked, this, &RgbCubePicker::pick);
    setFocusProxy(m_cube);
    setTexts();
    showColor();
}

RgbCubePicker::~RgbCubePicker() = default;

void RgbCubePicker::setColor(const RGBType &color)
{
    m_color = {std::clamp(color.red, 0, 255), std::clamp(color.green, 0, 255), std::clamp(color.blue, 0, 255)};
    showColor();
}

void RgbCubePicker::pick(const RGBType &color)
{
    m_color = color;
    showColor();
    Q_EMIT colorPicked(color);
}

void RgbCubePicker::showColor()
{
    m_cube->setColor(m_color);
    for (std::size_t i = 0; i < m_bars.size(); ++i) {
        const QSignalBlocker blocker(m_bars[i]);
        m_bars[i]->setValue(m_color.*channels[i].part);
        m_bars[i]->setEnds(withPart(m_color, channels[i], 0), withPart(m_color, channels[i], 255));
    }
}

void RgbCubePicker::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        setTexts();
}

void RgbCubePicker::setTexts()
{
    for (std::size_t i = 0; i < m_bars.size(); ++i) {
        const QString name = CTdModule::LoadString(channels[i].name);
        m_bars[i]->setAccessibleName(name);
        m_bars[i]->setToolTip(name);
    }
}
