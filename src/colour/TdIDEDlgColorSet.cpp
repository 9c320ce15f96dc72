#include "colour/TdIDEDlgColorSet.h"

#include "colour/TdIDEDlgColorSetPrivate.h"

CTdIDEDlgColorSet::CTdIDEDlgColorSet(COLORREF color, QWidget *parent)
    : CTdDialog(templateId, parent), d(std::make_unique<TdIDEDlgColorSetPrivate>(this, color))
{
}

CTdIDEDlgColorSet::~CTdIDEDlgColorSet() = default;

void CTdIDEDlgColorSet::InitColorset(const CTxColorsetEx &colorset)
{
    d->model.setColorset(colorset);
}

void CTdIDEDlgColorSet::SetElevationMode(bool on)
{
    d->model.takesRangeOfFile = on;
}

qint32 CTdIDEDlgColorSet::GetIntervalCount() const
{
    return d->model.intervalCount;
}

const CTxColorsetEx &CTdIDEDlgColorSet::GetColorset() const
{
    return d->result;
}

COLORREF CTdIDEDlgColorSet::GetColor() const
{
    return d->color.color();
}

bool CTdIDEDlgColorSet::OnInitDialog()
{
    CTdDialog::OnInitDialog();
    d->showAll();
    return true;
}

void CTdIDEDlgColorSet::OnOK()
{
    if (d->takeResult())
        CTdDialog::OnOK();
}
