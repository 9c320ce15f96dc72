#include "ControlTable.h"

#include "colour/HsbPicker.h"
#include "colour/RgbCubePicker.h"
#include "colour/TdColorListBox.h"
#include "controls/HListBox.h"
#include "controls/ListCtrlEx.h"
#include "controls/TdAutoWidthComboBox.h"
#include "controls/TdColorButton.h"
#include "controls/TdDMSMakEdit.h"
#include "controls/TdDragListCtrl.h"
#include "controls/TdEditSlider.h"
#include "controls/TdImageComboBox.h"
#include "controls/TdLabelButton.h"
#include "controls/TdNumEdit.h"
#include "controls/TdSliderCtrl.h"
#include "controls/TdStyleButton.h"
#include "controls/TdTriangleButton.h"
#include "engine/ui/TxComboBoxGradientColors.h"
#include "workspace/WorkspaceBarTree.h"
#include "workspace/WorkspaceTreeFilterBox.h"

namespace {

/// As the code of a form makes it.
template<class Control>
QWidget *make(QWidget *parent)
{
    return new Control(parent);
}

QWidget *makeGradients(QWidget *parent)
{
    auto *box = new CTxComboBoxGradientColors(parent);
    box->InitContent();
    return box;
}

constexpr char angleStart[] = "<property name=\"mask\" stdset=\"0\"><string>####:##:##.####</string></property>";
constexpr char sliderStart[] = "<property name=\"windowEnabled\" stdset=\"0\"><bool>true</bool></property>";

constexpr ControlRow table[] = {
    {"CTdDMSMakEdit", "controls/TdDMSMakEdit.h", "angle",
     QT_TRANSLATE_NOOP("ControlTable", "An edit for an angle in degrees, minutes and seconds"), "angleEdit", angleStart,
     make<CTdDMSMakEdit>},
    {"CTdNumEdit", "controls/TdNumEdit.h", "number",
     QT_TRANSLATE_NOOP("ControlTable", "An edit that takes the characters of a number, in a range"), "numberEdit", "",
     make<CTdNumEdit>},
    {"CTdEditSlider", "controls/TdEditSlider.h", "slider",
     QT_TRANSLATE_NOOP("ControlTable", "An edit for a whole number with a slider that drops down"), "editSlider",
     sliderStart, make<CTdEditSlider>},
    {"CTdSliderCtrl", "controls/TdSliderCtrl.h", "slider",
     QT_TRANSLATE_NOOP("ControlTable", "An upright slider that tells when a value was chosen"), "slider", "",
     make<CTdSliderCtrl>},
    {"CTdTriangleButton", "controls/TdTriangleButton.h", "button",
     QT_TRANSLATE_NOOP("ControlTable", "A small flat button with a triangle"), "triangleButton", "",
     make<CTdTriangleButton>},
    {"CHListBox", "controls/HListBox.h", "list",
     QT_TRANSLATE_NOOP("ControlTable", "A list in which several entries are chosen, all of them or the others"),
     "listBox", "", make<CHListBox>},
    {"CListCtrlEx", "controls/ListCtrlEx.h", "report",
     QT_TRANSLATE_NOOP("ControlTable",
                       "A report list whose cells are edited in place: as text, by choice or check box"),
     "reportList", "", make<CListCtrlEx>},
    {"CTdDragListCtrl", "controls/TdDragListCtrl.h", "rows",
     QT_TRANSLATE_NOOP("ControlTable", "A report list whose rows are put into another order"), "dragList", "",
     make<CTdDragListCtrl>},
    {"CTdAutoWidthComboBox", "controls/TdAutoWidthComboBox.h", "choice",
     QT_TRANSLATE_NOOP("ControlTable", "A combo box whose list is as wide as its longest entry"), "autoWidthCombo", "",
     make<CTdAutoWidthComboBox>},
    {"CTdImageComboBox", "controls/TdImageComboBox.h", "images",
     QT_TRANSLATE_NOOP("ControlTable", "A combo box whose entries have icons and indents"), "imageCombo", "",
     make<CTdImageComboBox>},
    {"CTdColorButton", "controls/TdColorButton.h", "colorbutton",
     QT_TRANSLATE_NOOP("ControlTable", "A button that shows a colour and lets the user choose another"), "colorButton",
     "", make<CTdColorButton>},
    {"CTdLabelButton", "controls/TdLabelButton.h", "labelbutton",
     QT_TRANSLATE_NOOP("ControlTable", "A button that shows the font of labels and lets the user choose another"),
     "labelButton", "", make<CTdLabelButton>},
    {"CTdStyleButton", "controls/TdStyleButton.h", "stylebutton",
     QT_TRANSLATE_NOOP("ControlTable",
                       "A button that shows a line, a fill or a point symbol and lets the user choose another"),
     "styleButton", "", make<CTdStyleButton>},
    {"CTdColorListBox", "colour/TdColorListBox.h", "colours",
     QT_TRANSLATE_NOOP("ControlTable", "A list of colours like the legend of heights"), "colorList", "",
     make<CTdColorListBox>},
    {"HsbPicker", "colour/HsbPicker.h", "colours",
     QT_TRANSLATE_NOOP("ControlTable", "Picks a colour by hue, saturation and brightness"), "hsbPicker", "",
     make<HsbPicker>},
    {"RgbCubePicker", "colour/RgbCubePicker.h", "colours",
     QT_TRANSLATE_NOOP("ControlTable", "Picks a colour on the cube of red, green and blue"), "rgbCubePicker", "",
     make<RgbCubePicker>},
    {"CTxComboBoxGradientColors", "engine/ui/TxComboBoxGradientColors.h", "choice",
     QT_TRANSLATE_NOOP("ControlTable", "A list of the stock colour ramps"), "gradientCombo", "", makeGradients},
    {"CWorkspaceBarTree", "workspace/WorkspaceBarTree.h", "list",
     QT_TRANSLATE_NOOP("ControlTable", "The tree of a workspace"), "workspaceTree", "", make<CWorkspaceBarTree>},
    {"CWorkspaceTreeFilterBox", "workspace/WorkspaceTreeFilterBox.h", "number",
     QT_TRANSLATE_NOOP("ControlTable", "A line that filters a workspace tree"), "filterBox", "",
     make<CWorkspaceTreeFilterBox>},
};

} // namespace

std::span<const ControlRow> controlTable()
{
    return table;
}
