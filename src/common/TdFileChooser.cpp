#include "common/TdFileChooser.h"

#include "common/FolderDialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>

namespace {

CTdFileChooser *replacement = nullptr; // not owned

std::optional<QString> chooseFile(QWidget *owner, const CTdFileChooser::FileRequest &request, bool saving)
{
    // On the heap: the owner may go while the dialog is open, and takes it along.
    const QPointer<QFileDialog> dialog = new QFileDialog(owner, request.title);
    dialog->setAcceptMode(saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog->setFileMode(!saving && request.mustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog->setOption(QFileDialog::DontConfirmOverwrite, saving && !request.askOverwrite);
    dialog->setNameFilters(CTdFileChooser::NameFilters(request.filter));
    dialog->setDefaultSuffix(request.defaultExtension.section(u'.', -1));
    if (const QFileInfo initial(request.initial); initial.isDir()) {
        dialog->setDirectory(initial.absoluteFilePath());
    } else if (!request.initial.isEmpty()) {
        dialog->setDirectory(initial.absolutePath());
        dialog->selectFile(initial.fileName());
    }
    const bool accepted = dialog->exec() == QDialog::Accepted;
    const QString path = accepted && dialog ? dialog->selectedFiles().value(0) : QString();
    delete dialog;
    return path.isEmpty() ? std::nullopt : std::optional(path);
}

} // namespace

CTdFileChooser::~CTdFileChooser() = default;

QStringList CTdFileChooser::NameFilters(const QString &filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size() && !parts[i].isEmpty(); i += 2) {
        const QString caption = parts[i].section(QStringLiteral(" ("), 0, 0);
        filters << QStringLiteral("%1 (%2)").arg(caption, QString(parts[i + 1]).replace(u';', u' '));
    }
    return filters;
}

std::optional<QString> CTdFileChooser::ChooseFolder(QWidget *owner, const QString &initial, const QString &title)
{
    // On the heap: the owner may go while the dialog is open, and takes it along.
    const QPointer<FolderDialog> dialog = new FolderDialog(owner, initial, title);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    const QString folder = accepted && dialog ? dialog->selectedFiles().value(0) : QString();
    delete dialog;
    return folder.isEmpty() ? std::nullopt : std::optional(folder);
}

std::optional<QString> CTdFileChooser::ChooseFileToOpen(QWidget *owner, const FileRequest &request)
{
    return chooseFile(owner, request, false);
}

std::optional<QString> CTdFileChooser::ChooseFileToSave(QWidget *owner, const FileRequest &request)
{
    return chooseFile(owner, request, true);
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
