#include "controls/TdTriangleButton.h"

#include <QStyleOptionToolButton>
#include <QStylePainter>

CTdTriangleButton::CTdTriangleButton(QWidget *parent) : QAbstractButton(parent)
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
}

CTdTriangleButton::~CTdTriangleButton() = default;

void CTdTriangleButton::SetDirection(Qt::ArrowType direction)
{
    m_direction = direction;
    update();
}

QSize CTdTriangleButton::sizeHint() const
{
    return {22, 22};
}

void CTdTriangleButton::paintEvent(QPaintEvent *)
{
    // The style draws it as a tool button that shows an arrow, so that it looks at home on a toolbar.
    QStyleOptionToolButton option;
    option.initFrom(this);
    option.arrowType = m_direction;
    option.features = QStyleOptionToolButton::Arrow;
    option.subControls = QStyle::SC_ToolButton;
    option.toolButtonStyle = Qt::ToolButtonIconOnly;
    option.iconSize = QSize(8, 8);
    option.state |= QStyle::State_AutoRaise;
    if (isDown() || isChecked())
        option.state |= QStyle::State_Sunken;
    else if (underMouse() && isEnabled())
        option.state |= QStyle::State_Raised;
    QStylePainter(this).drawComplexControl(QStyle::CC_ToolButton, option);
}
