#include "common/TdFileChooser.h"

#include "common/FolderDialog.h"

#include <QPointer>

namespace {

CTdFileChooser *replacement = nullptr; // not owned

} // namespace

CTdFileChooser::~CTdFileChooser() = default;

std::optional<QString> CTdFileChooser::ChooseFolder(QWidget *owner, const QString &initial, const QString &title)
{
    // On the heap: the owner may go while the dialog is open, and takes it along.
    const QPointer<FolderDialog> dialog = new FolderDialog(owner, initial, title);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    const QString folder = accepted && dialog ? dialog->selectedFiles().value(0) : QString();
    delete dialog;
    return folder.isEmpty() ? std::nullopt : std::optional(folder);
}

CTdFileChooser &CTdFileChooser::GetCurrent()
{
    static CTdFileChooser own;
    return replacement ? *replacement : own;
}

void CTdFileChooser::SetCurrent(CTdFileChooser *chooser)
{
    replacement = chooser;
}
