#include "colour/RampCheck.h"
#include "colour/TdDlgRibbonPrivate.h"
#include "common/TdModule.h"
#include "engine/base/TxNumberText.h"
#include "res/StringId.h"

#include <QKeyEvent>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>
#include <utility>

// What the ribbon editor shows in its controls, and what the user types there.

namespace {

/// Numbers of the range are shown so.
QString text(double value)
{
    return TxNumberText::fixed(value, 2);
}

void setText(QLineEdit *edit, const QString &text, const QLineEdit *typed)
{
    const QSignalBlocker blocker(edit); // only what the user types is taken over
    if (edit != typed && edit->text() != text)
        edit->setText(text);
}

} // namespace

void TdDlgRibbonPrivate::connectEdits()
{
    for (QLineEdit *edit : edits) {
        edit->installEventFilter(q);
        connect(edit, &QLineEdit::textChanged, this, [this, edit] {
            if (edit->hasFocus()) // else it is not the user who writes
                take(edit);
        });
    }
}

void TdDlgRibbonPrivate::show(const QLineEdit *typed)
{
    ui.ribbon->refresh();
    const RibbonStop *stop = ribbon.selectedStop();
    setText(ui.minimumEdit, text(ribbon.minimum()), typed);
    setText(ui.maximumEdit, text(ribbon.maximum()), typed);
    setText(ui.valueEdit, stop ? text(stop->value) : QString(), typed);
    for (const Channel &channel : channels) {
        const int value = ribbon.channel(channel.target);
        setText(channel.edit, stop ? TxNumberText::whole(value) : QString(), typed);
        const QSignalBlocker blocker(channel.slider);
        channel.slider->setValue(value);
    }
    ui.swatch->setColor(stop ? std::optional(stop->color) : std::nullopt);
    ui.stopGroup->setEnabled(stop != nullptr);
    ui.deleteButton->setEnabled(ribbon.canRemoveSelected());
    ui.distributeButton->setEnabled(ribbon.count() > 2);
    ui.undoButton->setEnabled(ribbon.canUndo());
    ui.redoButton->setEnabled(ribbon.canRedo());
    if (!typed) {
        refused.clear();
        showMessage();
    }
    warnLater.start();
}

void TdDlgRibbonPrivate::focusChanged(QObject *control, bool hasFocus)
{
    if (std::ranges::find(edits, control) != edits.end()) {
        if (std::exchange(isTyping, hasFocus) != hasFocus)
            hasFocus ? ribbon.beginEdit() : ribbon.endEdit();
        refused.clear();
        showMessage();
        return;
    }
    if (!hasFocus) {
        endStepping();
        return;
    }
    // The keyboard moves what has the focus.
    if (ribbon.selected() < 0)
        return;
    const auto channel = std::ranges::find(channels, control, &Channel::slider);
    ribbon.setDragTarget(channel == channels.end() ? RibbonStops::Target::Stop : channel->target);
}

void TdDlgRibbonPrivate::beginStep()
{
    if (isTyping) {
        ribbon.endEdit();
        ribbon.beginEdit();
    }
}

bool TdDlgRibbonPrivate::isChannelEdit(const QLineEdit *edit) const
{
    return std::ranges::find(channels, edit, &Channel::edit) != channels.end();
}

void TdDlgRibbonPrivate::take(QLineEdit *edit)
{
    bool isNumber = false;
    const double number = TxNumberText::toDouble(edit->text(), &isNumber);
    const bool isTaken = isNumber && takeNumber(edit, number);
    refused = isTaken ? QString() : refusal(edit);
    showMessage();
    if (isTaken)
        changed(edit); // last: the host may close the dialog
}

bool TdDlgRibbonPrivate::keepTyping(const QKeyEvent &event)
{
    auto *edit = qobject_cast<QLineEdit *>(q->focusWidget());
    if (refused.isEmpty() || !edit || (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter))
        return false;
    edit->selectAll();
    return true;
}

bool TdDlgRibbonPrivate::takeNumber(const QLineEdit *edit, double number)
{
    if (edit == ui.maximumEdit)
        return ribbon.editMaximum(number);
    if (edit == ui.minimumEdit)
        return ribbon.editMinimum(number);
    if (edit == ui.valueEdit)
        return ribbon.editSelectedValue(number);
    const auto channel = std::ranges::find(channels, edit, &Channel::edit);
    return number >= 0 && number <= 255 && number == std::trunc(number) &&
           ribbon.setChannel(channel->target, static_cast<qint32>(number));
}

QString TdDlgRibbonPrivate::refusal(const QLineEdit *edit) const
{
    const RibbonStops::Stops &stops = ribbon.stops();
    if (isChannelEdit(edit))
        return CTdModule::LoadString(TdStringId::RibbonChannelWanted);
    if (edit == ui.maximumEdit) {
        const double limit = stops.size() < 2 ? ribbon.minimum() : std::max(ribbon.minimum(), stops.end()[-2].value);
        return CTdModule::LoadString(TdStringId::RibbonMaximumWanted).arg(text(limit));
    }
    if (edit == ui.minimumEdit) {
        const double limit = stops.size() < 2 ? ribbon.maximum() : std::min(ribbon.maximum(), stops[1].value);
        return CTdModule::LoadString(TdStringId::RibbonMinimumWanted).arg(text(limit));
    }
    const auto index = static_cast<size_t>(std::max(ribbon.selected(), 0));
    if (index == 0 || index + 1 >= stops.size())
        return CTdModule::LoadString(TdStringId::RibbonEndStop);
    return CTdModule::LoadString(TdStringId::RibbonValueWanted)
        .arg(text(stops[index - 1].value), text(stops[index + 1].value));
}

void TdDlgRibbonPrivate::warn()
{
    warning.clear();
    constexpr qint32 mostStops = 4096; // of a ramp beyond nobody reads one stop from the next
    if (ribbon.count() <= mostStops) {
        std::vector<COLORREF> colors;
        std::ranges::transform(ribbon.stops(), std::back_inserter(colors), &RibbonStop::color);
        const auto chosen = ui.preview->deficiency();
        const std::vector<RampCheck::Finding> findings = RampCheck::check(colors);
        const auto find = [&findings](auto isWanted) -> const RampCheck::Finding * {
            const auto found = std::ranges::find_if(findings, isWanted);
            return found == findings.end() ? nullptr : &*found;
        };
        QStringList sentences;
        const auto *alike = find([chosen](const RampCheck::Finding &finding) {
            return finding.kind == RampCheck::Kind::NeighboursAlike &&
                   (chosen == ColorVision::Deficiency::None || chosen == finding.deficiency);
        });
        if (alike) {
            sentences << CTdModule::LoadString(TdStringId::RibbonAlike)
                             .arg(QString::number(alike->stop + 1), QString::number(alike->stop + 2),
                                  ui.visionCombo->itemText(static_cast<int>(alike->deficiency)));
        }
        const auto *turn = find(
            [](const RampCheck::Finding &finding) { return finding.kind == RampCheck::Kind::LightnessNotMonotone; });
        if (turn)
            sentences << CTdModule::LoadString(TdStringId::RibbonLightness).arg(turn->stop + 1);
        warning = sentences.join(u' ');
    }
    showMessage();
}

void TdDlgRibbonPrivate::showMessage()
{
    QString message = refused.isEmpty() ? warning : refused;
    if (message.isEmpty() && ribbon.selected() < 0)
        message = CTdModule::LoadString(TdStringId::RibbonHint);
    ui.messageLabel->setText(message);
    // Readers of the screen tell what is said of the control that has the focus.
    for (QLineEdit *edit : edits)
        edit->setAccessibleDescription(edit->hasFocus() ? refused : QString());
    ui.ribbon->setAccessibleDescription(message);
}
