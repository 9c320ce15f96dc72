#include "ControlPages.h"

#include "controls/TdEditSlider.h"
#include "controls/TdEditSliderButton.h"
#include "controls/TdSliderCtrl.h"
#include "controls/TdTriangleButton.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QMainWindow>
#include <QToolBar>

using namespace Qt::StringLiterals;

QWidget *ControlPages::makeSlider(QWidget *parent, const ShowValue &show)
{
    auto *page = new QWidget(parent);
    auto *form = new QFormLayout(page);
    auto *slider = new CTdEditSlider(SliderCommand);
    slider->EnableWindowX(1);
    slider->setFixedSize(90, slider->sizeHint().height());
    auto *enabled = new QCheckBox(text(QT_TRANSLATE_NOOP("ControlPages", "&Enabled")));
    enabled->setChecked(true);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Percentage:")), slider);
    form->addRow(QString(), enabled);
    const auto tell = [slider, show] { show(QString::number(slider->GetPos())); };
    QObject::connect(slider, &CTdEditSlider::positionEdited, page, tell);
    QObject::connect(enabled, &QCheckBox::toggled, slider, &CTdEditSlider::SetEnabledX);
    tell();
    return page;
}

QMainWindow *ControlPages::makeToolBars(QWidget *parent, const QList<QAction *> &actions)
{
    auto *page = new QMainWindow(parent); // it has the places for toolbars
    page->setWindowFlags(Qt::Widget);
    for (QAction *action : actions)
        action->setParent(page);
    for (const Qt::ToolBarArea area : {Qt::TopToolBarArea, Qt::LeftToolBarArea}) {
        auto *bar =
            new QToolBar(area == Qt::TopToolBarArea ? text(QT_TRANSLATE_NOOP("ControlPages", "Lying toolbar"))
                                                    : text(QT_TRANSLATE_NOOP("ControlPages", "Upright toolbar")));
        page->addToolBar(area, bar);
        bar->addActions(actions);
    }
    auto *rest = new QLabel(text(QT_TRANSLATE_NOOP("ControlPages", "The toolbars can be dragged to the other sides.")));
    rest->setAlignment(Qt::AlignCenter);
    rest->setWordWrap(true);
    page->setCentralWidget(rest);
    return page;
}

QWidget *ControlPages::makeUprightSlider(QWidget *parent, const ShowValue &show)
{
    auto *page = new QWidget(parent);
    auto *form = new QFormLayout(page);
    auto *slider = new CTdSliderCtrl;
    slider->setRange(-100, 0); // negated, since its smallest position is at the top
    slider->setTickInterval(10);
    slider->setValue(-40);
    slider->setFixedHeight(180);
    slider->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed); // at the top
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Height:")), slider);
    const auto tell = [slider, show](const char *what) { show(text(what).arg(-slider->value())); };
    const char *moved = QT_TRANSLATE_NOOP("ControlPages", "at %1");
    QObject::connect(slider, &QSlider::valueChanged, page, [tell, moved] { tell(moved); });
    QObject::connect(slider, &CTdSliderCtrl::chosen, page,
                     [tell] { tell(QT_TRANSLATE_NOOP("ControlPages", "%1 chosen")); });
    tell(moved);
    return page;
}

QWidget *ControlPages::makeSliderToolBars(QWidget *parent, const ShowValue &show)
{
    auto *button = new CTdEditSliderButton(ToolBarCommand, -1, nullptr, 0, 70);
    button->setText(text(QT_TRANSLATE_NOOP("ControlPages", "Brightness")));
    QMainWindow *page = makeToolBars(parent, {button});
    const auto tell = [show] { show(QString::number(CTdEditSliderButton::GetPos(ToolBarCommand))); };
    for (QWidget *bar : page->findChildren<QToolBar *>())
        for (CTdEditSlider *slider : bar->findChildren<CTdEditSlider *>())
            QObject::connect(slider, &CTdEditSlider::positionEdited, page, tell);
    tell();
    return page;
}

QWidget *ControlPages::makeTriangles(QWidget *parent, const ShowValue &show)
{
    struct Direction
    {
        Qt::ArrowType arrow;
        const char *name;
    };
    constexpr Direction directions[] = {{Qt::DownArrow, QT_TRANSLATE_NOOP("ControlPages", "Down")},
                                        {Qt::UpArrow, QT_TRANSLATE_NOOP("ControlPages", "Up")},
                                        {Qt::LeftArrow, QT_TRANSLATE_NOOP("ControlPages", "Left")},
                                        {Qt::RightArrow, QT_TRANSLATE_NOOP("ControlPages", "Right")}};
    auto *page = new QWidget(parent);
    auto *form = new QFormLayout(page);
    for (const Direction &direction : directions) {
        const QString name = text(direction.name);
        auto *button = new CTdTriangleButton;
        button->SetDirection(direction.arrow);
        button->setFixedSize(button->sizeHint());
        button->setAccessibleName(name);
        QObject::connect(button, &QAbstractButton::clicked, page, [show, name] { show(name); });
        form->addRow(name, button);
    }
    show(text(QT_TRANSLATE_NOOP("ControlPages", "none pressed yet")));
    return page;
}
