#include "common/TdColorChooser.h"

#include <QColorDialog>
#include <QPointer>

namespace {

CTdColorChooser *replacement = nullptr; // not owned

} // namespace

CTdColorChooser::~CTdColorChooser() = default;

std::optional<COLORREF> CTdColorChooser::ChooseColor(QWidget *owner, COLORREF initial, const QString &title)
{
    // On the heap: the owner may go while the dialog is open, and takes it along.
    const QPointer<QColorDialog> dialog = new QColorDialog(TxColorRef::toQColor(initial), owner);
    if (!title.isEmpty())
        dialog->setWindowTitle(title);
    std::optional<COLORREF> chosen;
    if (dialog->exec() == QDialog::Accepted && dialog)
        chosen = TxColorRef::fromQColor(dialog->selectedColor());
    delete dialog;
    return chosen;
}

CTdColorChooser &CTdColorChooser::GetCurrent()
{
    static CTdColorChooser own;
    return replacement ? *replacement : own;
}

void CTdColorChooser::SetCurrent(CTdColorChooser *chooser)
{
    replacement = chooser;
}
