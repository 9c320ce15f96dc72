#pragma once

#include <QAbstractSpinBox>

/// A field for a whole number with arrows. The arrows, and the keys like them, keep to a range; what is typed is free
/// text that is read as C's atol reads it, so that whoever owns the field decides what becomes of a number out of
/// range. The wheel changes nothing unless the field has the focus.
class NumberSpinBox : public QAbstractSpinBox
{
    Q_OBJECT
    /// The controlId of the field within: it is a control of its own.
    Q_PROPERTY(int editControlId READ editControlId WRITE setEditControlId)
    /// The range of the arrows is 0 to this.
    Q_PROPERTY(int maximum READ maximum WRITE setMaximum)

public:
    explicit NumberSpinBox(QWidget *parent = nullptr);

    int editControlId() const;
    void setEditControlId(int id);
    int maximum() const { return m_maximum; }
    void setMaximum(int maximum) { m_maximum = maximum; }

    /// What the text reads as; 0 for no number.
    int value() const;
    /// Shows @p value, which may be out of the range. Emits nothing.
    void setValue(int value);

    void stepBy(int steps) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user typed, or stepped, to @p value.
    void valueEdited(int value);

protected:
    StepEnabled stepEnabled() const override;

private:
    QSize withRoom(QSize size) const;

    int m_maximum = 100;
};
