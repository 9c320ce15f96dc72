#include "ControlPages.h"

#include "colour/HsbPicker.h"
#include "colour/RGBType.h"
#include "colour/RgbCubePicker.h"
#include "colour/TdColorListBox.h"
#include "engine/symbol/TxColorFolder.h"
#include "engine/symbol/TxStockGradient.h"
#include "engine/ui/TxComboBoxGradientColors.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr HSVType firstColor{210, 180, 200};

/// A page with one control at its top, which takes the height that it wants.
QWidget *pageWith(QWidget *control, QWidget *parent)
{
    auto *page = new QWidget(parent);
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(control);
    layout->addStretch();
    return page;
}

} // namespace

QWidget *ControlPages::makeHsbPicker(QWidget *parent, const ShowValue &show)
{
    auto *picker = new HsbPicker;
    const auto tell = [show](const HSVType &color) {
        show(text(QT_TRANSLATE_NOOP("ControlPages", "hue %1°, saturation %2, brightness %3"))
                 .arg(color.hue)
                 .arg(color.saturation)
                 .arg(color.value));
    };
    QObject::connect(picker, &HsbPicker::colorPicked, picker, tell);
    picker->setColor(firstColor);
    tell(picker->color());
    return pageWith(picker, parent);
}

QWidget *ControlPages::makeRgbCube(QWidget *parent, const ShowValue &show)
{
    auto *picker = new RgbCubePicker;
    const auto tell = [show](const RGBType &color) {
        show(text(QT_TRANSLATE_NOOP("ControlPages", "red %1, green %2, blue %3"))
                 .arg(color.red)
                 .arg(color.green)
                 .arg(color.blue));
    };
    QObject::connect(picker, &RgbCubePicker::colorPicked, picker, tell);
    picker->setColor(firstColor.toRGB());
    tell(picker->color());
    return pageWith(picker, parent);
}

QWidget *ControlPages::makeColorList(QWidget *parent, const ShowValue &show)
{
    auto *list = new CTdColorListBox(parent);
    CTxColorFolder colors;
    colors.MakeStockGradient(24, static_cast<qint32>(TxStockGradient::Hypsometric));
    list->SetColors(colors);
    const auto tell = [list, show] {
        show(text(QT_TRANSLATE_NOOP("ControlPages", "colour %1")).arg(list->GetSelIndex()));
    };
    QObject::connect(list, &CTdColorListBox::selectionMoved, list, tell);
    list->SelectIndex(list->GetColors().GetCount() - 1);
    tell();
    return list;
}

QWidget *ControlPages::makeGradients(QWidget *parent, const ShowValue &show)
{
    auto *box = new CTxComboBoxGradientColors;
    box->InitContent();
    const auto tell = [box, show] { show(u"%1 · %2"_s.arg(box->GetStockGradient()).arg(box->currentText())); };
    QObject::connect(box, &QComboBox::currentIndexChanged, box, tell);
    box->setCurrentIndex(0);
    return pageWith(box, parent);
}
