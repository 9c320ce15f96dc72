#pragma once

#include <QComboBox>

/// The combo box that edits a cell with fixed choices. The wheel scrolls the list, never the value.
class ChoiceEditor : public QComboBox
{
    Q_OBJECT

public:
    explicit ChoiceEditor(const QStringList &choices, QWidget *parent);
    ~ChoiceEditor() override;

Q_SIGNALS:
    /// The user took a choice from the pop-up list, and so is done.
    void picked();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    bool m_isTyping = false;
};
