#include "colour/TdDlgRibbon.h"

#include "colour/RibbonTempFile.h"
#include "colour/TdDlgRibbonPrivate.h"

#include <QKeyEvent>
#include <QLayout>

#include <algorithm>

CTdDlgRibbon::CTdDlgRibbon(QWidget *parent)
    : CTdDialog(templateId, parent), d(std::make_unique<TdDlgRibbonPrivate>(this))
{
    setSizeGripEnabled(true);
}

CTdDlgRibbon::~CTdDlgRibbon() = default;

void CTdDlgRibbon::SetMaxValue(double value)
{
    d->ribbon.SetMaxValue(value);
    d->fitToRibbon();
}

void CTdDlgRibbon::SetMinValue(double value)
{
    d->ribbon.SetMinValue(value);
    d->fitToRibbon();
}

void CTdDlgRibbon::SetStopCount(int count)
{
    d->stopCount = count;
}

void CTdDlgRibbon::GetColor(QList<COLORREF> &colors) const
{
    colors = d->outColors;
}

void CTdDlgRibbon::SetStops(const QList<CStopInfo> &stops)
{
    d->hasOwnStops = stops.size() >= 2;
    if (!d->hasOwnStops)
        return;
    d->ribbon.replaceAll({stops.begin(), stops.end()}, stops.front().value, stops.back().value);
    d->ribbon.clearHistory();
    d->fitToRibbon();
}

QList<CTdDlgRibbon::CStopInfo> CTdDlgRibbon::GetStops() const
{
    const RibbonStops::Stops &stops = d->ribbon.stops();
    return {stops.begin(), stops.end()};
}

QList<COLORREF> CTdDlgRibbon::SampleColors(int count) const
{
    return d->ui.ribbon->columns().MakeOutColor(count);
}

bool CTdDlgRibbon::OnInitDialog()
{
    CTdDialog::OnInitDialog();
    ensurePolished();
    layout()->activate(); // the ribbon's width is asked for below
    if (!d->hasOwnStops)
        RibbonTempFile::read(d->ribbon);
    d->fitToRibbon();
    if (d->ribbon.replaceEmptyRange())
        d->fitToRibbon();
    d->ribbon.select(-1);
    d->ribbon.clearHistory();
    d->show();
    return true;
}

void CTdDlgRibbon::OnOK()
{
    d->outColors = SampleColors(d->stopCount);
    RibbonTempFile::write(d->ribbon); // nobody waits for the ramp to come back: silent when it cannot be kept
    CTdDialog::OnOK();
}

bool CTdDlgRibbon::eventFilter(QObject *watched, QEvent *event)
{
    const auto targets = d->keyTargets();
    const bool isKeyTarget = std::ranges::find(targets, watched) != targets.end();
    switch (event->type()) {
    case QEvent::KeyPress: {
        const auto &key = *static_cast<QKeyEvent *>(event);
        return isKeyTarget ? d->takeKey(key) : d->keepTyping(key);
    }
    case QEvent::KeyRelease:
        if (!static_cast<QKeyEvent *>(event)->isAutoRepeat())
            d->endStepping();
        break;
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        d->focusChanged(watched, event->type() == QEvent::FocusIn);
        break;
    default:
        break;
    }
    return CTdDialog::eventFilter(watched, event);
}

void CTdDlgRibbon::mousePressEvent(QMouseEvent *event)
{
    // A click beside everything.
    if (event->button() == Qt::LeftButton)
        d->ui.ribbon->select(-1);
    CTdDialog::mousePressEvent(event);
}

void CTdDlgRibbon::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        d->translate();
    CTdDialog::changeEvent(event);
}
