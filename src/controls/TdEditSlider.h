#pragma once

#include "common/TdCommonExport.h"

#include <QIcon>
#include <QList>
#include <QWidget>

class CTdNumEdit;
class CTdSliderFrame;
class CTdTriangleButton;

/// An edit for a whole number with a button that opens an upright slider under it.
///
/// At first it is disabled, its range is -100 to 100 and its position 0. Disabled, its text can still be selected and
/// copied.
class TDCOMMON_API CTdEditSlider : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int commandId READ GetCommandId WRITE SetCommandId)
    Q_PROPERTY(int minimum READ GetMin WRITE SetMin)
    Q_PROPERTY(int maximum READ GetMax WRITE SetMax)
    Q_PROPERTY(int position READ GetPos WRITE SetPos NOTIFY positionEdited)
    Q_PROPERTY(bool windowEnabled READ IsEnabledX WRITE SetEnabledX)

public:
    /// @param commandId what the host's main window is told when the user has chosen a value; -1 for nothing
    explicit CTdEditSlider(int commandId, QWidget *parent = nullptr);
    /// One without a command, as forms make it.
    explicit CTdEditSlider(QWidget *parent = nullptr);
    ~CTdEditSlider() override;

    int GetCommandId() const { return m_commandId; }
    void SetCommandId(int commandId) { m_commandId = commandId; }
    /// Sets the range of the slider; see CTdSliderFrame::SetRange() for ranges that are not symmetric about 0.
    void SetRange(int minimum, int maximum);
    int GetMin() const;
    int GetMax() const;
    /// Sets one end of the range, as forms do; the other gives way where it must.
    void SetMin(int minimum);
    void SetMax(int maximum);
    /// Moves the slider, as far as its range goes, and shows where it stands. Tells nobody.
    void SetPos(int position);
    /// Where the slider stands. The edit may show a number beyond the range, which the user typed.
    int GetPos() const;

    /// Enables (not 0) or disables the control.
    void EnableWindowX(int enable);
    bool IsEnabledX() const { return m_enabled; }
    void SetEnabledX(bool enable) { EnableWindowX(enable ? 1 : 0); }
    /// Sets the font of the control, the edit and the button, and draws them anew if @p redraw says so.
    void SetFontX(const QFont &font, bool redraw = true);
    /// Sets which of the pictures belongs to the control, -1 for none, and the pictures.
    void SetImage(int index) { m_image = index; }
    int GetImage() const { return m_image; }
    void SetImages(const QList<QIcon> *images) { m_images = images; }
    /// The inside of the edit, in its own coordinates.
    void GetEditBorder(QRect &border) const;

    CTdNumEdit *GetEdit() const { return m_edit; }
    CTdTriangleButton *GetButton() const { return m_button; }
    CTdSliderFrame *GetFrame() const { return m_frame; }

    /// Makes the control a part of a toolbar: it is @p length long (pixels), and across as large as its numbers need.
    void SetToolBarSize(Qt::Orientation orientation, int length);

    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user moved the slider or typed a number: GetPos() has changed.
    void positionEdited(int position);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int narrowSide() const;
    int widthOfNumbers() const;
    void placeChildren();
    void popUp();
    void followEdit();
    void followSlider();
    void giveUp();
    void tellCommand() const;

    int m_commandId;
    CTdSliderFrame *m_frame = nullptr;
    CTdTriangleButton *m_button = nullptr;
    int m_image = -1;
    const QList<QIcon> *m_images = nullptr; // not owned
    CTdNumEdit *m_edit = nullptr;
    bool m_enabled = false;
    QString m_before; // what the edit showed when the slider opened
    Qt::Orientation m_orientation = Qt::Horizontal;
    int m_length = 60; // pixels, along a toolbar
};
