#include "ControlPages.h"

#include "controls/TdMouseHook.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QVBoxLayout>

namespace {

/// What users call @p widget: its caption, or what a screen reader says.
QString nameOf(const QWidget *widget)
{
    if (!widget)
        return QString();
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget); button && !button->text().isEmpty())
        return button->text().remove(u'&');
    return widget->accessibleName();
}

} // namespace

QWidget *ControlPages::makeMouseHook(QWidget *parent, const ShowValue &show)
{
    auto *page = new QWidget(parent);
    auto *frame = new QLabel(page);
    frame->setAccessibleName(text(QT_TRANSLATE_NOOP("ControlPages", "Watched frame")));
    frame->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    frame->setAlignment(Qt::AlignCenter);
    frame->setMinimumHeight(110);
    frame->setForegroundRole(QPalette::ButtonText);
    frame->setAutoFillBackground(true);
    auto *watch = new QCheckBox(text(QT_TRANSLATE_NOOP("ControlPages", "&Watch")), page);
    watch->setChecked(true);
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(frame);
    layout->addWidget(watch);
    layout->addStretch();

    const auto showInside = [frame](bool inside) {
        frame->setBackgroundRole(inside ? QPalette::Midlight : QPalette::Button);
        frame->setText(inside ? text(QT_TRANSLATE_NOOP("ControlPages", "The mouse is here."))
                              : text(QT_TRANSLATE_NOOP("ControlPages", "The mouse is elsewhere.")));
    };
    auto *hook = new CTdMouseHook(page);
    hook->SetInside({frame});
    QObject::connect(hook, &CTdMouseHook::crossed, frame, showInside);
    QObject::connect(hook, &CTdMouseHook::pressed, frame, [show](QWidget *under, const QPoint &place) {
        const QString where = QStringLiteral("%1, %2").arg(place.x()).arg(place.y());
        const QString name = nameOf(under);
        show(name.isEmpty() ? text(QT_TRANSLATE_NOOP("ControlPages", "clicked at %1")).arg(where)
                            : text(QT_TRANSLATE_NOOP("ControlPages", "clicked at %1: %2")).arg(where, name));
    });
    QObject::connect(watch, &QCheckBox::toggled, hook, &CTdMouseHook::SetActive);
    showInside(false);
    show(text(QT_TRANSLATE_NOOP("ControlPages", "no click beside the frame yet")));
    return page;
}
