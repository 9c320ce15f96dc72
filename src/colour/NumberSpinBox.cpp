#include "colour/NumberSpinBox.h"

#include "engine/base/TxNumberText.h"
#include "engine/ui/TxWheelGuard.h"

#include <QLineEdit>

#include <algorithm>
#include <limits>

NumberSpinBox::NumberSpinBox(QWidget *parent) : QAbstractSpinBox(parent)
{
    TxWheelGuard::install(this);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this] { Q_EMIT valueEdited(value()); });
}

int NumberSpinBox::editControlId() const
{
    return lineEdit()->property("controlId").toInt();
}

void NumberSpinBox::setEditControlId(int id)
{
    lineEdit()->setProperty("controlId", id);
}

int NumberSpinBox::value() const
{
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<qint64>(TxNumberText::atoll(text()), Limits::min(), Limits::max()));
}

void NumberSpinBox::setValue(int value)
{
    lineEdit()->setText(TxNumberText::whole(value));
}

void NumberSpinBox::stepBy(int steps)
{
    setValue(static_cast<int>(std::clamp<qint64>(qint64(value()) + steps, 0, m_maximum)));
    selectAll();
    Q_EMIT valueEdited(value());
}

QSize NumberSpinBox::sizeHint() const
{
    return withRoom(QAbstractSpinBox::sizeHint());
}

QSize NumberSpinBox::minimumSizeHint() const
{
    return withRoom(QAbstractSpinBox::minimumSizeHint());
}

QAbstractSpinBox::StepEnabled NumberSpinBox::stepEnabled() const
{
    StepEnabled enabled = StepNone;
    enabled.setFlag(StepUpEnabled, value() < m_maximum);
    enabled.setFlag(StepDownEnabled, value() > 0);
    return enabled;
}

QSize NumberSpinBox::withRoom(QSize size) const
{
    return size + QSize(fontMetrics().horizontalAdvance(QStringLiteral("00000")), 0);
}
