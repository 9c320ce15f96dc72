#include "ControlPages.h"

#include "controls/TdComboBoxButton.h"
#include "controls/TdImageComboBox.h"
#include "engine/data/ElemDatasetInfo.h"
#include "workspace/WkspImageList.h"

#include <QFormLayout>
#include <QMainWindow>

using namespace Qt::StringLiterals;

namespace {

/// Coordinate systems have long names.
constexpr const char *systems[] = {"WGS 84",
                                   "WGS 84 / Pseudo-Mercator",
                                   "WGS 84 / UTM zone 33N",
                                   "ETRS89-extended / LAEA Europe",
                                   "NAD83(2011) / California zone 6 (ftUS)",
                                   "NAD83(2011) / Conus Albers",
                                   "OSGB36 / British National Grid",
                                   "CH1903+ / LV95"};

/// An entry of the box of datasources and their datasets.
struct Source
{
    const char *name;
    int indent;
    CTdWkspImageList::ImageType image;
};

constexpr Source sources[] = {
    {QT_TRANSLATE_NOOP("ControlPages", "Country"), 0, CTdWkspImageList::ImageFile},
    {QT_TRANSLATE_NOOP("ControlPages", "Districts"), 1, CTdWkspImageList::ImageRegionClosed},
    {QT_TRANSLATE_NOOP("ControlPages", "Roads"), 1, CTdWkspImageList::ImageNetworkClosed},
    {QT_TRANSLATE_NOOP("ControlPages", "Bus routes"), 2, CTdWkspImageList::ImageRouteClosed},
    {QT_TRANSLATE_NOOP("ControlPages", "Towns"), 1, CTdWkspImageList::ImagePointClosed},
    {QT_TRANSLATE_NOOP("ControlPages", "Surveys of the coast"), 0, CTdWkspImageList::ImageDatabase},
    {QT_TRANSLATE_NOOP("ControlPages", "Aerial photographs"), 1, CTdWkspImageList::ImageImage},
    {QT_TRANSLATE_NOOP("ControlPages", "Heights of the sea floor"), 1, CTdWkspImageList::ImageDem},
};

} // namespace

QWidget *ControlPages::makeAutoWidthCombo(QWidget *parent, const ShowValue &show)
{
    auto *page = new QWidget(parent);
    auto *form = new QFormLayout(page);
    auto *system = new CTdAutoWidthComboBox;
    for (const char *name : systems)
        system->addItem(QLatin1StringView(name));
    auto *sheet = new CTdAutoWidthComboBox;
    constexpr int sheetCount = 10'000;
    QStringList sheets;
    for (int i = 1; i <= sheetCount; ++i)
        sheets += text(QT_TRANSLATE_NOOP("ControlPages", "Map sheet %1 of the survey at 1:25,000")).arg(i);
    sheet->addItems(sheets);
    for (CTdAutoWidthComboBox *box : {system, sheet})
        box->setFixedWidth(120);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "Coordinate &system:")), system);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "One of &10,000 sheets:")), sheet);
    const auto tell = [system, sheet, show] { show(u"%1 · %2"_s.arg(system->currentText(), sheet->currentText())); };
    for (CTdAutoWidthComboBox *box : {system, sheet})
        QObject::connect(box, &QComboBox::currentIndexChanged, page, tell);
    tell();
    return page;
}

QWidget *ControlPages::makeImageCombo(QWidget *parent, const ShowValue &show)
{
    auto *page = new QWidget(parent);
    auto *form = new QFormLayout(page);
    auto *box = new CTdImageComboBox;
    CTdWkspImageList images;
    images.InitImageList(1);
    QList<QIcon> icons;
    for (int i = 0; i < images.GetImageCount(); ++i)
        icons += images.icon(i);
    box->SetImageList(icons);
    for (const Source &source : sources)
        box->AddItem(text(source.name), images.GetImageIndex(source.image), source.indent);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Datasource or dataset:")), box);
    const auto tell = [box, show] {
        const int index = box->currentIndex();
        // What the entry stands below of.
        QStringList path(box->currentText());
        for (int i = index - 1, indent = box->GetItemIndent(index); i >= 0 && indent > 0; --i) {
            if (box->GetItemIndent(i) < indent) {
                indent = box->GetItemIndent(i);
                path.prepend(box->itemText(i));
            }
        }
        show(path.join(u" › "_s));
    };
    QObject::connect(box, &QComboBox::currentIndexChanged, page, tell);
    box->setCurrentIndex(3);
    return page;
}

QWidget *ControlPages::makeComboToolBars(QWidget *parent, const ShowValue &show)
{
    auto *scale = new CTdComboBoxButton(ScaleCommand, 110);
    scale->setText(text(QT_TRANSLATE_NOOP("ControlPages", "Scale of the map")));
    scale->SetEditable(true);
    for (const QString &entry : {u"1:1,000"_s, u"1:5,000"_s, u"1:25,000"_s, u"1:100,000"_s, u"1:1,000,000"_s})
        scale->AddItem(entry);
    scale->SelectItem(2);
    auto *unit = new CTdComboBoxButton(UnitCommand, 110);
    unit->setText(text(QT_TRANSLATE_NOOP("ControlPages", "Unit of lengths")));
    for (const char *entry : {QT_TRANSLATE_NOOP("ControlPages", "Metres"), QT_TRANSLATE_NOOP("ControlPages", "Feet"),
                              QT_TRANSLATE_NOOP("ControlPages", "Nautical miles (1852 metres)")})
        unit->AddItem(text(entry));
    unit->SelectItem(0);
    QMainWindow *page = makeToolBars(parent, {scale, unit});
    const auto tell = [scale, unit, show] { show(u"%1 · %2"_s.arg(scale->GetText(), unit->GetText())); };
    for (CTdComboBoxButton *button : {scale, unit})
        QObject::connect(button, &CTdComboBoxButton::chosen, page, tell);
    tell();
    return page;
}
