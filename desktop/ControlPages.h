#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <span>

class QAction;
class QMainWindow;
class QWidget;

/// Shows the value of a page's control in the line below it.
using ShowValue = std::function<void(const QString &text)>;

/// One control in the window of controls. Texts are in the translation context "ControlPages".
struct ControlPage
{
    const char *title;
    const char *classes; ///< that it shows, as code names them, with spaces between
    const char *what; ///< what the control does and how it is used
    QWidget *(*make)(QWidget *parent, const ShowValue &show);
};

/// Every control of the library that has a page, in groups.
std::span<const ControlPage> controlPages();

/// The pages' content. Each makes a widget below @p parent and calls @p show at once and at every change.
namespace ControlPages {

/// Commands that the pages' controls send, told apart from others by their numbers.
enum Command { SliderCommand = 61000, ToolBarCommand, ScaleCommand, UnitCommand, LastCommand = UnitCommand };

QString text(const char *source);

/// A page with a lying and an upright toolbar, both with @p actions, which it takes.
QMainWindow *makeToolBars(QWidget *parent, const QList<QAction *> &actions);

QWidget *makeAngles(QWidget *parent, const ShowValue &show);
QWidget *makeNumbers(QWidget *parent, const ShowValue &show);

QWidget *makeSlider(QWidget *parent, const ShowValue &show);
QWidget *makeUprightSlider(QWidget *parent, const ShowValue &show);
QWidget *makeSliderToolBars(QWidget *parent, const ShowValue &show);
QWidget *makeTriangles(QWidget *parent, const ShowValue &show);

QWidget *makeSelectionList(QWidget *parent, const ShowValue &show);
QWidget *makeReportList(QWidget *parent, const ShowValue &show);
QWidget *makeDragList(QWidget *parent, const ShowValue &show);

QWidget *makeAutoWidthCombo(QWidget *parent, const ShowValue &show);
QWidget *makeImageCombo(QWidget *parent, const ShowValue &show);
QWidget *makeComboToolBars(QWidget *parent, const ShowValue &show);

QWidget *makeColorButtons(QWidget *parent, const ShowValue &show);
QWidget *makeLabelButton(QWidget *parent, const ShowValue &show);
QWidget *makeStyleButtons(QWidget *parent, const ShowValue &show);
QWidget *makeBitmap(QWidget *parent, const ShowValue &show);
QWidget *makeFiles(QWidget *parent, const ShowValue &show);
QWidget *makeTabOrder(QWidget *parent, const ShowValue &show);
QWidget *makeAnnotation(QWidget *parent, const ShowValue &show);
QWidget *makeMouseHook(QWidget *parent, const ShowValue &show);

QWidget *makeHsbPicker(QWidget *parent, const ShowValue &show);
QWidget *makeRgbCube(QWidget *parent, const ShowValue &show);
QWidget *makeColorList(QWidget *parent, const ShowValue &show);
QWidget *makeGradients(QWidget *parent, const ShowValue &show);
QWidget *makeWorkspaceTree(QWidget *parent, const ShowValue &show);

} // namespace ControlPages
