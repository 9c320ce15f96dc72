#pragma once

#include "common/TdCommonExport.h"

#include <QIcon>
#include <QList>
#include <QWidgetAction>

class CTdEditSlider;
class QDataStream;

/// A toolbar button that is a slider edit. It can stand on several toolbars, and several buttons can have one command:
/// all of these share their range.
class TDCOMMON_API CTdEditSliderButton : public QWidgetAction
{
    Q_OBJECT

public:
    /// @param commandId what the host's main window is told when the user has chosen a value
    /// @param image index of its picture in @p images, -1 for none
    /// @param images pictures of the toolbar; not owned, null for none
    /// @param style bits that are kept for the host and come back from a stream
    /// @param width in pixels, 1 to 10,000; 0 for 60
    explicit CTdEditSliderButton(int commandId = -1, int image = -1, const QList<QIcon> *images = nullptr,
                                 quint32 style = 0, int width = 0, QObject *parent = nullptr);
    ~CTdEditSliderButton() override;

    int GetCommandId() const { return m_commandId; }
    int GetWidth() const { return m_width; }
    /// The given style, with the bits for a control that is visible and stands in a window.
    quint32 GetStyle() const { return m_style; }
    void SetStyle(quint32 style);
    int GetMin() const { return m_minimum; }
    int GetMax() const { return m_maximum; }
    int GetValue() const { return m_position; }

    /// Sets the range, here and in every other button with the same command. Reversed, it ends where it starts.
    void SetRange(int minimum, int maximum);
    /// Sets the position of this button alone; what the user sets goes to every button with the same command.
    /// @param notify tell the command to the main windows that the button stands in
    void SetValue(int position, bool notify = false);
    /// The position of the first button with the command @p commandId that shows on a toolbar; -1 when there is none.
    static int GetPos(int commandId);

    void EnableWindow(int enable) { setEnabled(enable != 0); }
    bool IsEnabled() const { return isEnabled(); }

    /// Takes over command, texts, width, style, range, position and pictures.
    void CopyFrom(const CTdEditSliderButton &other);
    /// Writes command and picture, width, style, range and position.
    void Serialize(QDataStream &stream) const;
    /// Reads what Serialize() wrote, and applies range and position without telling anybody.
    /// @return false, and nothing changes, when the stream does not hold it
    bool Deserialize(QDataStream &stream);

protected:
    QWidget *createWidget(QWidget *parent) override;

private:
    QList<CTdEditSlider *> controls() const;
    QList<CTdEditSliderButton *> withSameCommand();
    void applyRange(int minimum, int maximum);
    void applyPosition(int position, const CTdEditSlider *except = nullptr);
    void applyLook();
    void fit(CTdEditSlider *control);
    void followState();

    int m_commandId;
    int m_image;
    const QList<QIcon> *m_images; // not owned
    int m_width;
    quint32 m_style;
    int m_minimum = -100;
    int m_maximum = 100;
    int m_position = 0;
};
