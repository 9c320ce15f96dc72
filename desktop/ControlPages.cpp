#include "ControlPages.h"

#include <QCoreApplication>

using namespace ControlPages;

namespace {

constexpr ControlPage table[] = {
    {QT_TRANSLATE_NOOP("ControlPages", "Angle"), "CTdDMSMakEdit",
     QT_TRANSLATE_NOOP("ControlPages",
                       "Degrees, minutes and seconds under a mask: what is typed replaces what stands there. Without "
                       "the mask it is an edit of decimal degrees. The line below reads angles as people write them."),
     makeAngles},
    {QT_TRANSLATE_NOOP("ControlPages", "Number"), "CTdNumEdit",
     QT_TRANSLATE_NOOP("ControlPages",
                       "Takes only the characters of a number, and refuses a key that would leave the range."),
     makeNumbers},
    {QT_TRANSLATE_NOOP("ControlPages", "Slider edit"), "CTdEditSlider CTdSliderFrame",
     QT_TRANSLATE_NOOP("ControlPages", "A whole number, typed or chosen with a slider that drops down: by the button, "
                                       "F4 or Alt+Down. A value is chosen by Enter or when the mouse goes up; Escape "
                                       "closes the slider and chooses nothing."),
     makeSlider},
    {QT_TRANSLATE_NOOP("ControlPages", "Upright slider"), "CTdSliderCtrl",
     QT_TRANSLATE_NOOP("ControlPages", "Tells what was chosen when the mouse goes up, or by Enter. This is the slider "
                                       "that drops down from the slider edit."),
     makeUprightSlider},
    {QT_TRANSLATE_NOOP("ControlPages", "Slider on toolbars"), "CTdEditSliderButton",
     QT_TRANSLATE_NOOP("ControlPages", "One slider edit on a lying and on an upright toolbar: they stay in step. The "
                                       "command that it sends shows at the foot of the window."),
     makeSliderToolBars},
    {QT_TRANSLATE_NOOP("ControlPages", "Triangle button"), "CTdTriangleButton",
     QT_TRANSLATE_NOOP("ControlPages", "Opens what hangs on the control beside it."), makeTriangles},
    {QT_TRANSLATE_NOOP("ControlPages", "Multi-selection list"), "CHListBox",
     QT_TRANSLATE_NOOP("ControlPages",
                       "Several entries are chosen at once: by Ctrl or Shift with clicks and keys, all of "
                       "them, or just the others. What is in use cannot be chosen."),
     makeSelectionList},
    {QT_TRANSLATE_NOOP("ControlPages", "Report list"), "CListCtrlEx CTdListCtrl CTdHeaderCtrl",
     QT_TRANSLATE_NOOP(
         "ControlPages",
         "Rows that are edited in place: F2, Enter, a double click or typing opens a cell, Tab goes on to "
         "the next, Space checks. A column head sorts, or checks all; Tab leads to it as well."),
     makeReportList},
    {QT_TRANSLATE_NOOP("ControlPages", "Drag list"), "CTdDragListCtrl",
     QT_TRANSLATE_NOOP("ControlPages",
                       "Rows are put into another order by drag, or by Alt with Up, Down, Home and End. "
                       "Escape gives a drag up."),
     makeDragList},
    {QT_TRANSLATE_NOOP("ControlPages", "Auto-width combo box"), "CTdAutoWidthComboBox",
     QT_TRANSLATE_NOOP("ControlPages", "The list is as wide as its longest entry, however narrow the box is."),
     makeAutoWidthCombo},
    {QT_TRANSLATE_NOOP("ControlPages", "Image combo box"), "CTdImageComboBox",
     QT_TRANSLATE_NOOP("ControlPages", "Entries with an icon, each below the one that holds it."), makeImageCombo},
    {QT_TRANSLATE_NOOP("ControlPages", "Combo boxes on toolbars"), "CTdComboBoxButton",
     QT_TRANSLATE_NOOP("ControlPages", "Two combo boxes on a lying and on an upright toolbar: they stay in step. The "
                                       "scale may be typed. The command that is sent shows at the foot of the window."),
     makeComboToolBars},
    {QT_TRANSLATE_NOOP("ControlPages", "Colour button"), "CTdColorButton",
     QT_TRANSLATE_NOOP("ControlPages", "Shows a colour. A click, Space, Enter or F4 opens the default colours, all "
                                       "others, and no colour where that is allowed."),
     makeColorButtons},
    {QT_TRANSLATE_NOOP("ControlPages", "Label button"), "CTdLabelButton",
     QT_TRANSLATE_NOOP("ControlPages",
                       "Shows the font of labels, in their colour and made to fit. A click opens the dialog of fonts."),
     makeLabelButton},
    {QT_TRANSLATE_NOOP("ControlPages", "Style buttons"), "CTdStyleButton CTdStyleDialog",
     QT_TRANSLATE_NOOP("ControlPages", "Show a line, a fill and a point symbol. A click, Space, Enter or F4 opens all "
                                       "styles of the library: typing goes to a name, arrows move, Enter chooses."),
     makeStyleButtons},
    {QT_TRANSLATE_NOOP("ControlPages", "Bitmap"), "CDIB",
     QT_TRANSLATE_NOOP("ControlPages", "A picture in memory. Fewer bits are fewer colours, chosen to suit it; "
                                       "dithering spreads what is lost over the neighbours."),
     makeBitmap},
    {QT_TRANSLATE_NOOP("ControlPages", "File dialog"), "CFileDialogEx CTdFileInfo",
     QT_TRANSLATE_NOOP("ControlPages", "Opens and saves with a preview, and begins in the folder that was used last. "
                                       "Below is what the library finds out about a file before it opens it."),
     makeFiles},
    {QT_TRANSLATE_NOOP("ControlPages", "Tab order"), "CTdTabOrder",
     QT_TRANSLATE_NOOP(
         "ControlPages",
         "Tab goes through a form as the numbers say. Collating puts it in the order in which one reads."),
     makeTabOrder},
    {QT_TRANSLATE_NOOP("ControlPages", "Annotation standard"), "CTdAnnotationStandard",
     QT_TRANSLATE_NOOP(
         "ControlPages",
         "How annotations are written: kept in the profile once it is stored. What cannot be is told below."),
     makeAnnotation},
    {QT_TRANSLATE_NOOP("ControlPages", "Mouse hook"), "CTdMouseHook",
     QT_TRANSLATE_NOOP("ControlPages", "Watches the mouse in all windows: it tells when the mouse comes into the frame "
                                       "or leaves it, and what is clicked beside it."),
     makeMouseHook},
    {QT_TRANSLATE_NOOP("ControlPages", "Hue and brightness"), "HsbPicker",
     QT_TRANSLATE_NOOP("ControlPages", "Picks a colour on a disc of hues and a bar of brightness, by mouse or arrows."),
     makeHsbPicker},
    {QT_TRANSLATE_NOOP("ControlPages", "Colour cube"), "RgbCubePicker",
     QT_TRANSLATE_NOOP("ControlPages", "Picks a colour on the cube of red, green and blue, cut open at the colour."),
     makeRgbCube},
    {QT_TRANSLATE_NOOP("ControlPages", "Colour list"), "CTdColorListBox",
     QT_TRANSLATE_NOOP("ControlPages", "Colours as in the legend of heights: the first at the bottom."), makeColorList},
    {QT_TRANSLATE_NOOP("ControlPages", "Stock ramps"), "CTxComboBoxGradientColors",
     QT_TRANSLATE_NOOP("ControlPages", "The stock colour ramps by picture and name; typing goes to a name."),
     makeGradients},
    {QT_TRANSLATE_NOOP("ControlPages", "Workspace tree"), "CWorkspaceBarTree CWorkspaceTreeFilterBox",
     QT_TRANSLATE_NOOP("ControlPages", "What a workspace holds. The line above shows only what has every word that is "
                                       "typed; Down and Enter go to the tree."),
     makeWorkspaceTree},
};

} // namespace

std::span<const ControlPage> controlPages()
{
    return table;
}

QString ControlPages::text(const char *source)
{
    return QCoreApplication::translate("ControlPages", source);
}
