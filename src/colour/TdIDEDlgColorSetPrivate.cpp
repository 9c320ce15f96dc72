#include "colour/TdIDEDlgColorSetPrivate.h"

#include "colour/ColorsetFile.h"
#include "colour/TdDlgRibbon.h"
#include "colour/TdIDEDlgColorSet.h"
#include "common/TdModule.h"
#include "engine/base/TxNumberText.h"
#include "engine/base/TxToolkit.h"
#include "engine/symbol/TxColorFolder.h"
#include "res/StringId.h"

#include <QAction>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QPointer>
#include <QShortcut>

#include <algorithm>
#include <cmath>

namespace {

Q_LOGGING_CATEGORY(lcColorset, "terravox.colour.colorset", QtInfoMsg)

// By how much the dialog grows for the automatic filling, at least, in logical pixels.
constexpr int panelRoom = 110;

// The highest and the lowest place of the land, in metres, as the range is given them.
constexpr QLatin1String globalMaximum("8844.43");
constexpr QLatin1String globalMinimum("-11034");

// The range that a ramp is drawn over while the dialog has none.
constexpr double ribbonMinimum = 0.0;
constexpr double ribbonMaximum = 1000.0;

} // namespace

TdIDEDlgColorSetPrivate::TdIDEDlgColorSetPrivate(CTdIDEDlgColorSet *dialog, COLORREF initial)
    : color(initial), q(dialog), m_old(initial)
{
    ui.setupUi(q);
    m_parts = {ui.red, ui.green, ui.blue, ui.hue, ui.saturation, ui.brightness};
    ui.panel->hide();
    ui.autoPanelButton->setText(CTdModule::LoadString(TdStringId::ColorsetShowPanel));
    ui.stock->InitContent();
    ui.newSwatch->setAttribute(Qt::WA_TransparentForMouseEvents);
    ui.oldSwatch->setColor(m_old);
    connectPicker();
    connectList();
    connectRange();
    connectPanel();
    connect(ui.buttons, &QDialogButtonBox::accepted, q, &CTdIDEDlgColorSet::accept);
    connect(ui.buttons, &QDialogButtonBox::rejected, q, &CTdIDEDlgColorSet::reject);
    // Wide enough for the automatic filling, so that opening it makes the window higher alone.
    const QMargins margins = q->layout()->contentsMargins();
    const int width = ui.panel->sizeHint().width() + margins.left() + margins.right();
    q->resize(q->sizeHint().expandedTo({width, 0}));
}

void TdIDEDlgColorSetPrivate::showAll()
{
    ui.colors->InitColor();
    showColor();
    showRange();
    showList();
    ui.startColor->setValue(0);
    showEnd();
}

bool TdIDEDlgColorSetPrivate::takeResult()
{
    readRange();
    if (refuseRange())
        return false;
    result = model.colorset();
    return true;
}

void TdIDEDlgColorSetPrivate::connectPicker()
{
    for (int i = 0; i < CurrentColor::partCount; ++i) {
        const auto part = static_cast<CurrentColor::Part>(i);
        NumberSpinBox *const field = m_parts[part];
        connect(field, &NumberSpinBox::valueEdited, this, [this, part](int value) {
            color.setPart(part, value);
            showColor();
        });
        connect(field, &NumberSpinBox::editingFinished, this,
                [this, part, field] { field->setValue(color.part(part)); });
    }
    connect(ui.hsbPicker, &HsbPicker::colorPicked, this, [this](const HSVType &hsv) {
        color.setHsv(hsv);
        showColor();
    });
    connect(ui.rgbPicker, &RgbCubePicker::colorPicked, this, [this](const RGBType &rgb) {
        color.setRgb(rgb);
        showColor();
    });
    connect(ui.oldSwatch, &QAbstractButton::clicked, this, [this] {
        color.setRgb(RGBType(m_old));
        showColor();
    });
}

void TdIDEDlgColorSetPrivate::connectList()
{
    const std::pair<QPushButton *, void (TdIDEDlgColorSetPrivate::*)()> commands[] = {
        {ui.add, &TdIDEDlgColorSetPrivate::add},     {ui.insert, &TdIDEDlgColorSetPrivate::insert},
        {ui.apply, &TdIDEDlgColorSetPrivate::apply}, {ui.remove, &TdIDEDlgColorSetPrivate::remove},
        {ui.load, &TdIDEDlgColorSetPrivate::load},   {ui.removeAll, &TdIDEDlgColorSetPrivate::removeAll},
        {ui.save, &TdIDEDlgColorSetPrivate::save},
    };
    for (const auto &[button, command] : commands)
        connect(button, &QPushButton::clicked, this, [this, command = command] { (this->*command)(); });

    // The list's own keys push the buttons, so that both are there or not at the same times.
    const std::pair<Qt::Key, QPushButton *> keys[] = {{Qt::Key_Insert, ui.insert}, {Qt::Key_Delete, ui.remove}};
    for (const auto &[key, button] : keys) {
        const auto *shortcut = new QShortcut(key, ui.colors, nullptr, nullptr, Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
    }
    auto *take = new QAction(CTdModule::LoadString(TdStringId::ColorsetTakeColor), ui.colors);
    take->setShortcut(Qt::CTRL | Qt::Key_P);
    take->setShortcutContext(Qt::WidgetShortcut);
    ui.colors->addAction(take);
    ui.colors->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(take, &QAction::triggered, this, [this] { takeFromList(); });
    connect(ui.colors, &QListView::doubleClicked, this, [this] { takeFromList(); });
    connect(ui.colors, &CTdColorListBox::selectionMoved, this, [this] { updateButtons(); });
}

void TdIDEDlgColorSetPrivate::connectRange()
{
    const std::pair<QPushButton *, std::pair<QLineEdit *, QLatin1String>> globals[] = {
        {ui.globalMaximum, {ui.maximum, globalMaximum}}, {ui.globalMinimum, {ui.minimum, globalMinimum}}};
    for (const auto &[button, change] : globals)
        connect(button, &QPushButton::clicked, this,
                [edit = change.first, text = change.second] { edit->setText(text); });
}

void TdIDEDlgColorSetPrivate::connectPanel()
{
    connect(ui.autoPanelButton, &QPushButton::clicked, this, [this] { setPanelOpen(!m_panelOpen); });
    connect(ui.createRandom, &QPushButton::clicked, this, [this] { fill(&ColorSetModel::fillRandom); });
    connect(ui.createSpecific, &QPushButton::clicked, this, [this] { fill(&ColorSetModel::fillBetween); });
    connect(ui.stock, &QComboBox::activated, this, [this](int item) { fillStock(item); });
}

void TdIDEDlgColorSetPrivate::showColor()
{
    // A field whose text reads as its part stays as the user typed it ("007", nothing for 0).
    for (int i = 0; i < CurrentColor::partCount; ++i) {
        NumberSpinBox *const field = m_parts[static_cast<size_t>(i)];
        const int value = color.part(static_cast<CurrentColor::Part>(i));
        if (field->value() != value || (field->text().isEmpty() && !field->hasFocus()))
            field->setValue(value);
    }
    ui.hsbPicker->setColor(color.hsv());
    ui.rgbPicker->setColor(color.rgb());
    ui.newSwatch->setColor(color.color());
}

void TdIDEDlgColorSetPrivate::showList()
{
    ui.colors->SetColors(model.folder());
    updateButtons();
}

void TdIDEDlgColorSetPrivate::showRange()
{
    const std::pair<QLineEdit *, double> ends[] = {{ui.maximum, model.maximum}, {ui.minimum, model.minimum}};
    for (const auto &[edit, value] : ends) {
        edit->setText(TxNumberText::shortest(value)); // reads back as it was
        edit->home(false);                            // a long number shows its begin
    }
}

void TdIDEDlgColorSetPrivate::showEnd()
{
    ui.endColor->setValue(model.count() - 1);
    updateButtons();
}

void TdIDEDlgColorSetPrivate::updateButtons()
{
    const bool isAny = model.count() > 0;
    const bool isSelected = ui.colors->GetSelIndex() >= 0;
    ui.insert->setEnabled(isSelected || !isAny);
    ui.apply->setEnabled(isSelected);
    ui.remove->setEnabled(isSelected);
    ui.removeAll->setEnabled(isAny);
    ui.autoPanelButton->setEnabled(isAny);
    if (!isAny)
        setPanelOpen(false);
}

void TdIDEDlgColorSetPrivate::add()
{
    model.add(color.color());
    ui.colors->AddColor(color.color());
    ui.colors->scrollToTop(); // where the new colour is
    showEnd();
}

void TdIDEDlgColorSetPrivate::insert()
{
    const qint32 selected = ui.colors->GetSelIndex();
    if (model.count() == 0) {
        add();
    } else if (selected >= 0) {
        model.insert(selected, color.color());
        ui.colors->InsertColor(selected, color.color());
        showEnd();
    }
}

void TdIDEDlgColorSetPrivate::apply()
{
    const qint32 selected = ui.colors->GetSelIndex();
    model.replace(selected, color.color());
    ui.colors->SetColor(selected, color.color());
}

void TdIDEDlgColorSetPrivate::remove()
{
    const qint32 selected = ui.colors->GetSelIndex();
    if (selected < 0)
        return;
    model.remove(selected);
    ui.colors->RemoveColor(selected);
    showEnd();
}

void TdIDEDlgColorSetPrivate::removeAll()
{
    model.removeAll();
    showList();
}

void TdIDEDlgColorSetPrivate::takeFromList()
{
    const qint32 selected = ui.colors->GetSelIndex();
    if (selected < 0)
        return;
    color.setRgb(RGBType(model.at(selected)));
    showColor();
}

void TdIDEDlgColorSetPrivate::setPanelOpen(bool open)
{
    if (open == m_panelOpen)
        return;
    m_panelOpen = open;
    const int spacing = q->layout()->spacing();
    if (open) {
        ui.endColor->setValue(std::max(model.count() - 1, 0));
        // More room only where a large font needs it.
        ui.panel->setFixedHeight(std::max(panelRoom - spacing, ui.panel->minimumSizeHint().height()));
    }
    const int room = ui.panel->height() + spacing;
    const QSize size = q->size() + QSize(0, open ? room : -room);
    ui.autoPanelButton->setText(
        CTdModule::LoadString(open ? TdStringId::ColorsetHidePanel : TdStringId::ColorsetShowPanel));
    ui.panel->setVisible(open);
    q->layout()->activate(); // the window's least size is that of what shows now
    q->resize(size);
}

std::optional<ColorSetModel::SubRange> TdIDEDlgColorSetPrivate::subRange() const
{
    return model.subRange(ui.startColor->value(), ui.endColor->value());
}

void TdIDEDlgColorSetPrivate::fill(void (ColorSetModel::*generator)(ColorSetModel::SubRange, bool))
{
    if (const auto range = subRange()) {
        (model.*generator)(*range, ui.inverse->isChecked());
        showList();
    }
}

void TdIDEDlgColorSetPrivate::fillStock(int item)
{
    const auto range = subRange();
    if (!range)
        return;
    if (item == ui.stock->count() - 1) {
        drawRamp(*range);
        return;
    }
    model.fillStock(*range, item, ui.inverse->isChecked());
    showList();
}

void TdIDEDlgColorSetPrivate::drawRamp(ColorSetModel::SubRange range)
{
    readRange();
    const bool hasRange = model.rangeFault() == ColorSetModel::RangeFault::None;
    // On the heap: whoever owns the dialog may destroy it while the editor is open.
    const QPointer<CTdDlgRibbon> ribbon = new CTdDlgRibbon(q);
    ribbon->SetMaxValue(hasRange ? model.maximum : ribbonMaximum);
    ribbon->SetMinValue(hasRange ? model.minimum : ribbonMinimum);
    ribbon->SetStopCount(range.count);
    const bool isOk = ribbon->DoModal() == CTdDialog::IdOk;
    if (!ribbon)
        return;
    QList<COLORREF> sampled;
    ribbon->GetColor(sampled);
    delete ribbon;
    if (!isOk)
        return;
    CTxColorFolder colors;
    for (const COLORREF one : std::as_const(sampled))
        colors.Add(one);
    model.fill(range, colors, ui.inverse->isChecked());
    showList();
}

CTdFileChooser::FileRequest TdIDEDlgColorSetPrivate::fileRequest() const
{
    CTdFileChooser::FileRequest request;
    request.filter = CTdModule::LoadString(TdStringId::ColorsetFilter);
    request.defaultExtension = QStringLiteral("*.sct");
    return request;
}

void TdIDEDlgColorSetPrivate::load()
{
    const QPointer<QObject> alive(q);
    const std::optional<QString> path = CTdFileChooser::GetCurrent().ChooseFileToOpen(q, fileRequest());
    if (!path || !alive)
        return;
    ColorsetTable table;
    if (!table.load(*path)) {
        inform(TdStringId::ColorsetNotRead);
        return;
    }
    readRange();
    model.load(table);
    ui.colors->InitColor(); // nothing of the old list stays selected
    if (model.takesRangeOfFile)
        showRange();
    showList();
    showEnd();
}

void TdIDEDlgColorSetPrivate::save()
{
    readRange();
    if (refuseRange())
        return;
    if (model.rangeFault() == ColorSetModel::RangeFault::Flat)
        return inform(TdStringId::ColorsetFlatRange);
    if (model.count() == 0)
        return inform(TdStringId::ColorsetEmpty);
    const QPointer<QObject> alive(q);
    const std::optional<QString> chosen = CTdFileChooser::GetCurrent().ChooseFileToSave(q, fileRequest());
    if (!chosen || !alive)
        return;
    const QString path = ColorsetFile::withExtension(*chosen);
    // The chooser asked about the name that was chosen, not about this one.
    if (path != *chosen && CTxToolkit::IsFileExisted(path)) {
        const QString question = CTdModule::LoadString(TdStringId::ColorsetReplace).arg(QFileInfo(path).fileName());
        if (ask(question, QMessageBox::Question, QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
            return;
    }
    switch (ColorsetFile::save(path, model.table())) {
    case ColorsetFile::SaveResult::Saved:
        break;
    case ColorsetFile::SaveResult::Protected:
        // Deliberate: nothing shows. The user was asked whether to replace the file and sees that it is the old one;
        // only the log tells.
        qCDebug(lcColorset).noquote() << QStringLiteral("%1%2!\n\n%3")
                                             .arg(CTdModule::LoadString(TdStringId::ColorsetSave), path,
                                                  CTdModule::LoadString(TdStringId::Failure));
        break;
    case ColorsetFile::SaveResult::Failed:
        inform(TdStringId::ColorsetNotSaved);
        break;
    }
}

void TdIDEDlgColorSetPrivate::readRange()
{
    model.maximum = TxNumberText::atof(ui.maximum->text());
    model.minimum = TxNumberText::atof(ui.minimum->text());
}

bool TdIDEDlgColorSetPrivate::refuseRange()
{
    const ColorSetModel::RangeFault fault = model.rangeFault();
    if (fault != ColorSetModel::RangeFault::Reversed && fault != ColorSetModel::RangeFault::Endless)
        return false;
    QLineEdit *const edit = std::isfinite(model.maximum) ? ui.minimum : ui.maximum;
    edit->setFocus();
    edit->selectAll();
    return true;
}

void TdIDEDlgColorSetPrivate::inform(quint32 textId) const
{
    ask(CTdModule::LoadString(textId), QMessageBox::Information, QMessageBox::Ok);
}

QMessageBox::StandardButton TdIDEDlgColorSetPrivate::ask(const QString &text, QMessageBox::Icon icon,
                                                         QMessageBox::StandardButtons buttons) const
{
    // On the heap: its parent may go while it is open.
    const QPointer<QMessageBox> box =
        new QMessageBox(icon, QGuiApplication::applicationDisplayName(), text, buttons, q);
    box->setTextFormat(Qt::PlainText); // of a file's name, too
    const int answer = box->exec();
    delete box;
    return static_cast<QMessageBox::StandardButton>(answer);
}
