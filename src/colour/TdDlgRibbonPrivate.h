#pragma once

#include "colour/RibbonStops.h"
#include "colour/TdDlgRibbon.h"

#include "ui_TdDlgRibbon.h"

#include <QObject>
#include <QTimer>

#include <array>

/// The controls of the ribbon editor and what connects them with the ramp.
///
/// An object of its own, so that its connections end with it: the controls outlive it, and tell of their own end.
class TdDlgRibbonPrivate : public QObject
{
public:
    explicit TdDlgRibbonPrivate(CTdDlgRibbon *dialog);
    ~TdDlgRibbonPrivate() override;

    /// Fits the ramp to the ribbon's size, which the layout must know.
    void fitToRibbon();
    /// Shows the ramp and the selection in all controls but the edit @p typed, where the user types.
    void show(const QLineEdit *typed = nullptr);
    /// Shows that the ramp changed, and tells the host.
    void changed(const QLineEdit *typed = nullptr);
    /// What depends on the language beyond the form.
    void translate();

    void importRamp();
    void exportRamp();

    /// A key on the ribbon or a slider. @return false when it means nothing here
    bool takeKey(const QKeyEvent &event);
    void endStepping();
    /// Enter where the number that was typed is not taken selects it, in place of closing with another one than shows.
    /// @return false when it may close
    bool keepTyping(const QKeyEvent &event);
    void focusChanged(QObject *control, bool hasFocus);
    /// The controls that takeKey() answers for.
    std::array<QWidget *, 4> keyTargets() const;

    CTdDlgRibbon *const q;
    Ui::CTdDlgRibbon ui;
    RibbonStops ribbon;
    int stopCount = 0;
    bool hasOwnStops = false; ///< the host gave the stops to begin with
    QList<COLORREF> outColors;

private:
    /// Slider and edit of one of the three parts of a colour.
    struct Channel
    {
        RibbonStops::Target target;
        ChannelSliderWidget *slider;
        QLineEdit *edit;
    };

    /// What follows is an undo step of its own, also while an edit has the focus.
    void beginStep();
    void connectEdits();
    void connectCommands();
    void showPreview(bool isShown);
    void insertStop(int x);
    void addStop();
    void editColor();
    /// Takes the text of an edit over into the ramp, or shows why not.
    void take(QLineEdit *edit);
    bool takeNumber(const QLineEdit *edit, double number);
    QString refusal(const QLineEdit *edit) const;
    bool isChannelEdit(const QLineEdit *edit) const;
    void warn();
    void showMessage();

    std::array<Channel, 3> channels;
    std::array<QLineEdit *, 6> edits;
    QString refused;         ///< why what the user types is not taken; empty when it is
    QString warning;         ///< what readers of the ramp may not see; empty when all is well
    QTimer warnLater;        ///< a drag asks for many checks, and needs one
    bool isTyping = false;   ///< an edit has the focus: what is typed there is one undo step
    bool isStepping = false; ///< an arrow key is held: one undo step
};
