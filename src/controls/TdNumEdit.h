#pragma once

#include "common/TdCommonExport.h"
#include "controls/NumberInput.h"

#include <QLineEdit>

#include <limits>

/// An edit that takes only the characters of a number, and may keep its value in a range at every key.
///
/// Deliberate: every text on the way must lie in the range, so with a range of 5 to 10 nobody can type 10: hosts set
/// ranges that hold the numbers' beginnings. Text that is set by the program, or pasted from the context menu, is not
/// filtered. Numbers have a point, whatever the locale.
class TDCOMMON_API CTdNumEdit : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(EditMode editMode READ GetEditMode WRITE SetEditMode)
    Q_PROPERTY(double minimum READ GetMinimum WRITE SetMinimum)
    Q_PROPERTY(double maximum READ GetMaximum WRITE SetMaximum)

public:
    /// The kinds of numbers, as SetEditMode() takes them.
    enum EditMode { WholeNumbers = NumberInput::Whole, RealNumbers = NumberInput::Real };
    Q_ENUM(EditMode)

    explicit CTdNumEdit(QWidget *parent = nullptr);
    ~CTdNumEdit() override;

    /// 20 for real numbers (as at first), 10 for whole ones; with any other mode no character can be typed.
    void SetEditMode(int mode) { m_mode = mode; }
    EditMode GetEditMode() const { return static_cast<EditMode>(m_mode); }
    /// Sets the range for whole numbers, and keeps the value in the range of the mode from now on. A reversed range
    /// refuses every key.
    void SetRange(qint32 minimum, qint32 maximum);
    /// Sets the range for real numbers; else as above.
    void SetRange(double minimum, double maximum);
    /// The ends of the range in the mode; far away while none is set.
    double GetMinimum() const;
    double GetMaximum() const;
    /// Sets one end of the range, for both modes, as forms do. The other stays.
    void SetMinimum(double minimum);
    void SetMaximum(double maximum);

    /// Shows a whole number.
    void SetValue(qint32 value);
    /// Shows a real number with six decimals; one that is not finite empties the edit.
    void SetValue(double value);
    /// The whole number at the beginning of the text, kept within 32 bits; 0 when there is none.
    qint32 GetValueL() const;
    /// The real number at the beginning of the text; 0 when there is none.
    double GetValueD() const;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;

private:
    class RangeKeeper;

    qsizetype beginningOfSelection() const;
    QString accepted(const QString &typed, qsizetype from, qsizetype length) const;
    bool isInRange(const QString &text) const;
    void checkNextChange();
    void keepInRange(QString &changed, int &caret);

    template<class Number>
    struct Range
    {
        Number minimum = std::numeric_limits<Number>::lowest();
        Number maximum = std::numeric_limits<Number>::max();
    };

    int m_mode = NumberInput::Real;
    bool m_hasRange = false;
    bool m_checksNext = false; // the next change comes from a key or an input method, so it must lie in the range
    QString m_before;          // what stands again when it does not
    int m_caretBefore = 0;
    Range<double> m_realRange;
    Range<qint32> m_wholeRange;
};
