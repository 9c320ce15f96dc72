#include "controls/ChoiceEditor.h"

#include <QScopedValueRollback>
#include <QWheelEvent>

ChoiceEditor::ChoiceEditor(const QStringList &choices, QWidget *parent) : QComboBox(parent)
{
    addItems(choices);
    // Keys on the closed box go through the choices, which is no decision yet.
    connect(this, &QComboBox::activated, this, [this] {
        if (!m_isTyping)
            Q_EMIT picked();
    });
}

ChoiceEditor::~ChoiceEditor() = default;

void ChoiceEditor::keyPressEvent(QKeyEvent *event)
{
    const QScopedValueRollback typing(m_isTyping, true);
    QComboBox::keyPressEvent(event);
}

void ChoiceEditor::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}
