#pragma once

#include "common/TdCommonExport.h"
#include "controls/DegreeMask.h"

#include <QLineEdit>

#include <optional>

/// An edit for an angle. Under a mask it shows degrees, minutes and seconds, and what is typed replaces what stands
/// there; without, it is an ordinary edit that holds decimal degrees.
///
/// The mask needs four positions for degrees, a colon, two for minutes, a colon, two for seconds, a full stop and four
/// for their fraction: "####:##:##.####".
class TDCOMMON_API CTdDMSMakEdit : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(QString mask READ GetMask WRITE setFormMask)
    Q_PROPERTY(QChar prompt READ GetPrompt WRITE SetPrompt)
    Q_PROPERTY(EditType editType READ GetEditType WRITE SetEditType)
    Q_PROPERTY(double degrees READ GetDegree WRITE SetDegree)
    Q_PROPERTY(bool pastesAngles READ PastesAngles WRITE SetPastesAngles)

public:
    /// The range that CheckDataValid() checks.
    enum EditType { AnyRange = 0, Range180 = 1, Range90 = 2 };
    Q_ENUM(EditType)

    explicit CTdDMSMakEdit(QWidget *parent = nullptr);
    ~CTdDMSMakEdit() override;

    /// Sets the mask ("#" takes a digit, "?" a sign, all else is literal) and shows it empty.
    void SetMask(const QString &mask, QChar prompt);
    /// The same with the prompt as it is.
    void SetMask(const QString &mask) { SetMask(mask, GetPrompt()); }
    const QString &GetMask() const { return m_mask.mask(); }
    /// Sets what shows in positions that hold nothing, "_" at first, and shows the mask empty.
    void SetPrompt(QChar prompt) { SetMask(GetMask(), prompt); }
    QChar GetPrompt() const { return m_mask.prompt(); }
    /// Fills the mask with the characters of @p text, as GetDDMMSS() gives them, and shows it.
    void SetText(const QString &text);
    /// The text that the control set last, or that the user typed without a mask.
    const QString &GetText() const { return m_mask.text(); }
    /// The 12 characters that show @p degrees under the mask; empty for an angle that is no number.
    QString GetDDMMSS(double degrees) const;
    /// Switches between the mask and decimal degrees, and converts the text. Nothing happens when the text is in the
    /// wanted form already, that is, when it has a colon or none.
    void EnableMask(int enable);
    bool IsMaskEnabled() const { return m_maskEnabled; }
    /// Sets the range to check: Range180, Range90, or anything else for none.
    void SetEditType(int type) { m_editType = type; }
    EditType GetEditType() const { return static_cast<EditType>(m_editType); }

    /// The angle in decimal degrees; text that is no number is 0. Deliberate: "-0" degrees count as not below 0.
    double GetDegree() const;
    /// Shows an angle in decimal degrees: under the mask as GetDDMMSS() gives it, else with nine decimals. Before there
    /// is a mask the angle waits for a form to set it.
    void SetDegree(double degrees);
    /// Lets a text that is pasted or dropped set the whole angle where AngleParser can read it ("45°30′15.2″S"). Off at
    /// first: under a mask the last character of a pasted text counts as typed.
    void SetPastesAngles(bool on) { m_pastesAngles = on; }
    bool PastesAngles() const { return m_pastesAngles; }

    /// The number at the beginning of the text.
    double GetValueDirect() const;
    qint32 GetDegreeSection() const;
    qint32 GetMinuteSection() const;
    float GetSecondSecion() const;
    /// Checks that the angle is in the range of the edit type.
    /// @param showMessage not 0: tell the user when it is not
    /// @return 1 when it is, 0 when not
    int CheckDataValid(int showMessage);

    /// The same as QLineEdit's, which knows nothing of changes under a mask.
    void undo();
    void redo();
    bool isUndoAvailable() const;
    bool isRedoAvailable() const;
    void paste();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    class MaskKeeper;

    void setFormMask(const QString &mask);
    bool pasteAngle(const QString &text);
    void follow(QString &changed, int &caret);
    void showMask(int caret);
    void showEdited(int caret);

    DegreeMask m_mask;
    DegreeMask::Key m_key = DegreeMask::Key::Other;
    bool m_maskEnabled = true;
    bool m_pastesAngles = false;
    int m_editType = Range90;
    std::optional<double> m_waiting; // the angle to show once a form sets the mask
};
