#include "ControlPages.h"

#include <QCoreApplication>

using namespace ControlPages;

namespace {

constexpr ControlPage table[] = {
    {QT_TRANSLATE_NOOP("ControlPages", "Angle"),
     QT_TRANSLATE_NOOP("ControlPages",
                       "Degrees, minutes and seconds under a mask: what is typed replaces what stands there. Without "
                       "the mask it is an edit of decimal degrees. The line below reads angles as people write them."),
     makeAngles},
    {QT_TRANSLATE_NOOP("ControlPages", "Number"),
     QT_TRANSLATE_NOOP("ControlPages",
                       "Takes only the characters of a number, and refuses a key that would leave the range."),
     makeNumbers},
    {QT_TRANSLATE_NOOP("ControlPages", "Slider edit"),
     QT_TRANSLATE_NOOP("ControlPages", "A whole number, typed or chosen with a slider that drops down: by the button, "
                                       "F4 or Alt+Down. A value is chosen by Enter or when the mouse goes up; Escape "
                                       "closes the slider and chooses nothing."),
     makeSlider},
    {QT_TRANSLATE_NOOP("ControlPages", "Slider on toolbars"),
     QT_TRANSLATE_NOOP("ControlPages", "One slider edit on a lying and on an upright toolbar: they stay in step. The "
                                       "command that it sends shows at the foot of the window."),
     makeSliderToolBars},
    {QT_TRANSLATE_NOOP("ControlPages", "Triangle button"),
     QT_TRANSLATE_NOOP("ControlPages", "Opens what hangs on the control beside it."), makeTriangles},
    {QT_TRANSLATE_NOOP("ControlPages", "Multi-selection list"),
     QT_TRANSLATE_NOOP("ControlPages",
                       "Several entries are chosen at once, by Ctrl and Shift with clicks or keys, all of "
                       "them, or the ones that were not. What cannot be chosen stays out."),
     makeSelectionList},
    {QT_TRANSLATE_NOOP("ControlPages", "Report list"),
     QT_TRANSLATE_NOOP(
         "ControlPages",
         "Rows that are edited in place: F2, Enter, a double click or typing opens a cell, Tab goes on to "
         "the next, Space checks. A column head sorts, or checks all; Tab leads to it as well."),
     makeReportList},
    {QT_TRANSLATE_NOOP("ControlPages", "Drag list"),
     QT_TRANSLATE_NOOP("ControlPages",
                       "Rows are put into another order by drag, or by Alt with Up, Down, Home and End. "
                       "Escape gives a drag up."),
     makeDragList},
    {QT_TRANSLATE_NOOP("ControlPages", "Auto-width combo box"),
     QT_TRANSLATE_NOOP("ControlPages", "The list is as wide as its longest entry, however narrow the box is."),
     makeAutoWidthCombo},
    {QT_TRANSLATE_NOOP("ControlPages", "Image combo box"),
     QT_TRANSLATE_NOOP("ControlPages", "Entries with an icon, each below the one that holds it."), makeImageCombo},
    {QT_TRANSLATE_NOOP("ControlPages", "Combo boxes on toolbars"),
     QT_TRANSLATE_NOOP("ControlPages", "Two combo boxes on a lying and on an upright toolbar: they stay in step. The "
                                       "scale may be typed. The command that is sent shows at the foot of the window."),
     makeComboToolBars},
    {QT_TRANSLATE_NOOP("ControlPages", "Hue and brightness"),
     QT_TRANSLATE_NOOP("ControlPages", "Picks a colour on a disc of hues and a bar of brightness, by mouse or arrows."),
     makeHsbPicker},
    {QT_TRANSLATE_NOOP("ControlPages", "Colour cube"),
     QT_TRANSLATE_NOOP("ControlPages", "Picks a colour on the cube of red, green and blue, cut open at the colour."),
     makeRgbCube},
    {QT_TRANSLATE_NOOP("ControlPages", "Colour list"),
     QT_TRANSLATE_NOOP("ControlPages", "Colours as in the legend of heights: the first at the bottom."), makeColorList},
    {QT_TRANSLATE_NOOP("ControlPages", "Stock ramps"),
     QT_TRANSLATE_NOOP("ControlPages", "The stock colour ramps by picture and name; typing goes to a name."),
     makeGradients},
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
