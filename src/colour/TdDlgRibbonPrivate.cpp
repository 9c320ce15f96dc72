#include "colour/TdDlgRibbonPrivate.h"

#include "colour/RibbonFile.h"
#include "colour/RibbonGeometry.h"
#include "common/TdColorChooser.h"
#include "common/TdFileChooser.h"
#include "common/TdModule.h"
#include "res/StringId.h"

#include <QKeyEvent>
#include <QLayout>
#include <QPointer>
#include <QShortcut>

#include <utility>

TdDlgRibbonPrivate::TdDlgRibbonPrivate(CTdDlgRibbon *dialog) : q(dialog)
{
    ui.setupUi(q);
    channels = {{{RibbonStops::Target::Red, ui.redSlider, ui.redEdit},
                 {RibbonStops::Target::Green, ui.greenSlider, ui.greenEdit},
                 {RibbonStops::Target::Blue, ui.blueSlider, ui.blueEdit}}};
    edits = {ui.minimumEdit, ui.maximumEdit, ui.valueEdit, ui.redEdit, ui.greenEdit, ui.blueEdit};
    const std::pair<QAbstractButton *, QString> icons[] = {
        {ui.addButton, QStringLiteral("actions/stop-add")},
        {ui.deleteButton, QStringLiteral("actions/stop-delete")},
        {ui.distributeButton, QStringLiteral("actions/stops-distribute")},
        {ui.reverseButton, QStringLiteral("actions/stops-reverse")},
        {ui.undoButton, QStringLiteral("actions/undo")},
        {ui.redoButton, QStringLiteral("actions/redo")},
        {ui.importButton, QStringLiteral("actions/open")},
        {ui.exportButton, QStringLiteral("actions/save")},
    };
    for (const auto &[button, name] : icons)
        button->setIcon(CTdModule::LoadIcon(name));
    ui.ribbon->setRibbon(&ribbon);
    ui.preview->setColumns(&ui.ribbon->columns());
    ui.preview->hide();
    // Two lines are kept free, so that a warning does not move the controls.
    ui.messageLabel->setMinimumHeight(2 * q->fontMetrics().lineSpacing());
    for (QWidget *control : keyTargets())
        control->installEventFilter(q);
    warnLater.setSingleShot(true);
    warnLater.setInterval(150);
    connectEdits();
    connectCommands();
}

TdDlgRibbonPrivate::~TdDlgRibbonPrivate()
{
    ui.ribbon->setRibbon(nullptr);
}

std::array<QWidget *, 4> TdDlgRibbonPrivate::keyTargets() const
{
    return {ui.ribbon, ui.redSlider, ui.greenSlider, ui.blueSlider};
}

void TdDlgRibbonPrivate::connectCommands()
{
    connect(&warnLater, &QTimer::timeout, this, [this] { warn(); });
    connect(ui.ribbon, &RibbonWidget::selectionChanged, this, [this] { show(); });
    connect(ui.ribbon, &RibbonWidget::stopMoved, this, [this] { changed(); });
    connect(ui.ribbon, &RibbonWidget::insertRequested, this, [this](int x) { insertStop(x); });
    connect(ui.ribbon, &RibbonWidget::colorRequested, this, [this] { editColor(); });
    connect(ui.ribbon, &RibbonWidget::columnsChanged, ui.preview, qOverload<>(&QWidget::update));
    for (const Channel &channel : channels) {
        channel.slider->setChannel(channel.target);
        connect(channel.slider, &QAbstractSlider::sliderPressed, this, [this] { ribbon.beginEdit(); });
        connect(channel.slider, &QAbstractSlider::sliderReleased, this, [this] { ribbon.endEdit(); });
        connect(channel.slider, &QAbstractSlider::valueChanged, this, [this, target = channel.target](int value) {
            if (ribbon.setChannel(target, value))
                changed();
        });
    }
    const auto command = [this](QAbstractButton *button, auto action, const QKeySequence &keys = {}) {
        const auto run = [this, action] {
            beginStep();
            if (action())
                changed();
        };
        connect(button, &QAbstractButton::clicked, this, run);
        // Not a shortcut of the button, which would show itself being pushed before it acts.
        if (!keys.isEmpty())
            connect(new QShortcut(keys, q), &QShortcut::activated, this, run);
    };
    command(ui.deleteButton, [this] { return ribbon.removeSelected(); });
    command(ui.distributeButton, [this] { return ribbon.distributeEvenly(); });
    command(ui.reverseButton, [this] { return ribbon.reverse(); });
    command(
        ui.undoButton, [this] { return ribbon.undo(); }, Qt::CTRL | Qt::Key_Z);
    command(
        ui.redoButton, [this] { return ribbon.redo(); }, Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    connect(ui.addButton, &QAbstractButton::clicked, this, [this] { addStop(); });
    connect(ui.swatch, &QAbstractButton::clicked, this, [this] { editColor(); });
    connect(ui.visionCombo, &QComboBox::currentIndexChanged, this, [this](int index) {
        ui.preview->setDeficiency(static_cast<ColorVision::Deficiency>(index)); // the form lists them in this order
        showPreview(index > 0);
        warn();
    });
    connect(ui.importButton, &QAbstractButton::clicked, this, [this] { importRamp(); });
    connect(ui.exportButton, &QAbstractButton::clicked, this, [this] { exportRamp(); });
    connect(ui.buttons, &QDialogButtonBox::accepted, q, &CTdDlgRibbon::accept);
    connect(ui.buttons, &QDialogButtonBox::rejected, q, &CTdDlgRibbon::reject);
}

void TdDlgRibbonPrivate::fitToRibbon()
{
    const RibbonGeometry geometry = ui.ribbon->ribbonGeometry();
    ribbon.setBand(geometry.usableLeft(), geometry.usableWidth());
    show();
}

void TdDlgRibbonPrivate::changed(const QLineEdit *typed)
{
    if (!typed)
        beginStep(); // what the user types next is not part of this change
    show(typed);
    Q_EMIT q->rampChanged();
}

void TdDlgRibbonPrivate::translate()
{
    ui.retranslateUi(q);
    warn();
}

void TdDlgRibbonPrivate::showPreview(bool isShown)
{
    if (isShown != ui.preview->isHidden())
        return;
    // The window makes the room, not the ribbon.
    const int room = ui.preview->sizeHint().height() + q->layout()->spacing();
    ui.preview->setVisible(isShown);
    q->resize(q->width(), q->height() + (isShown ? room : -room));
}

void TdDlgRibbonPrivate::insertStop(int x)
{
    const QPointer<CTdDlgRibbon> alive = q;
    const std::optional<COLORREF> color = CTdColorChooser::GetCurrent().ChooseColor(
        q, ui.ribbon->columns().colorAt(x), CTdModule::LoadString(TdStringId::RibbonNewColor));
    if (!alive || !color)
        return;
    ribbon.select(ribbon.insertStop(x, *color));
    changed();
}

void TdDlgRibbonPrivate::addStop()
{
    // In the middle of the segment behind the selected stop, of the last one behind the last stop, and of the widest
    // when none is selected.
    const RibbonStops::Stops &stops = ribbon.stops();
    const auto widthBehind = [&stops](qint32 i) {
        return qint64(stops[static_cast<size_t>(i) + 1].position) - stops[static_cast<size_t>(i)].position;
    };
    qint32 segment = std::min(ribbon.selected(), ribbon.count() - 2);
    if (segment < 0) {
        segment = 0;
        for (qint32 i = 1; i + 1 < ribbon.count(); ++i) {
            if (widthBehind(i) > widthBehind(segment))
                segment = i;
        }
    }
    if (ribbon.count() < 2 || widthBehind(segment) < 2)
        return; // no pixel between the two
    beginStep();
    const auto x = static_cast<qint32>(stops[static_cast<size_t>(segment)].position + widthBehind(segment) / 2);
    ribbon.select(ribbon.insertStop(x, ui.ribbon->columns().colorAt(x)));
    changed();
}

void TdDlgRibbonPrivate::editColor()
{
    const RibbonStop *stop = ribbon.selectedStop();
    if (!stop)
        return;
    const QPointer<CTdDlgRibbon> alive = q;
    const std::optional<COLORREF> color =
        CTdColorChooser::GetCurrent().ChooseColor(q, stop->color, CTdModule::LoadString(TdStringId::RibbonStopColor));
    if (alive && color && ribbon.setSelectedColor(*color))
        changed();
}

void TdDlgRibbonPrivate::importRamp()
{
    const QPointer<CTdDlgRibbon> alive = q;
    const std::optional<QString> path =
        CTdFileChooser::GetCurrent().ChooseFileToOpen(q, {.title = CTdModule::LoadString(TdStringId::RibbonImport),
                                                          .initial = QStringLiteral(".SCT"),
                                                          .filter = CTdModule::LoadString(TdStringId::ColorsetFilter),
                                                          .defaultExtension = QStringLiteral("SCT")});
    if (alive && path && RibbonFile::LoadRibbon(ribbon, *path))
        changed();
}

void TdDlgRibbonPrivate::exportRamp()
{
    const QPointer<CTdDlgRibbon> alive = q;
    // Deliberate: this, too, asks as for a file to open, so a file that exists is replaced without a question. Hosts
    // that put a chooser of their own in place answer both here.
    const std::optional<QString> path =
        CTdFileChooser::GetCurrent().ChooseFileToOpen(q, {.title = CTdModule::LoadString(TdStringId::RibbonExport),
                                                          .initial = QStringLiteral(".SCT"),
                                                          .filter = CTdModule::LoadString(TdStringId::ColorsetFilter),
                                                          .defaultExtension = QStringLiteral("SCT"),
                                                          .mustExist = false});
    if (alive && path)
        RibbonFile::SaveRibbon(ribbon, *path);
}

bool TdDlgRibbonPrivate::takeKey(const QKeyEvent &event)
{
    if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return false;
    constexpr std::pair<int, RibbonStops::Go> ways[] = {{Qt::Key_PageUp, RibbonStops::Go::Previous},
                                                        {Qt::Key_PageDown, RibbonStops::Go::Next},
                                                        {Qt::Key_Home, RibbonStops::Go::First},
                                                        {Qt::Key_End, RibbonStops::Go::Last}};
    constexpr std::pair<int, int> steps[] = {
        {Qt::Key_Left, -1}, {Qt::Key_Down, -1}, {Qt::Key_Right, 1}, {Qt::Key_Up, 1}};
    for (const auto &[key, way] : ways) {
        if (event.key() == key) {
            // Without a selection each of these begins one, so that the keyboard alone is enough.
            if (!ribbon.selectByKey(way))
                ribbon.select(way == RibbonStops::Go::Last ? ribbon.count() - 1 : 0);
            show();
            return true;
        }
    }
    for (const auto &[key, by] : steps) {
        if (event.key() == key) {
            if (!event.isAutoRepeat()) {
                endStepping();
                isStepping = true;
                ribbon.beginEdit();
            }
            if (ribbon.selected() < 0) {
                ribbon.select(0);
                show();
            } else if (ribbon.step(by)) {
                changed();
            }
            return true;
        }
    }
    switch (event.key()) {
    case Qt::Key_Delete:
        if (ribbon.removeSelected())
            changed();
        return true;
    case Qt::Key_Insert:
        addStop();
        return true;
    case Qt::Key_Space:
        editColor();
        return true;
    default:
        return false;
    }
}

void TdDlgRibbonPrivate::endStepping()
{
    if (std::exchange(isStepping, false))
        ribbon.endEdit();
}
