#include "Prompts.h"

#include "ConnectionDialog.h"
#include "common/TdCommMethods.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QGuiApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Prompts", text);
}

} // namespace

Prompts::~Prompts() = default;

QStringList Prompts::openFiles(QWidget *, const QString &, const QString &, const QStringList &)
{
    return {};
}

QString Prompts::openFolder(QWidget *, const QString &)
{
    return {};
}

QString Prompts::saveFile(QWidget *, const QString &, const QString &, const QStringList &, const QString &)
{
    return {};
}

QString Prompts::connection(QWidget *)
{
    return {};
}

std::optional<QString> Prompts::text(QWidget *, const QString &, const QString &, const QString &)
{
    return {};
}

Prompts::Unsaved Prompts::unsaved(QWidget *, const QString &)
{
    return Unsaved::Cancel;
}

bool Prompts::confirm(QWidget *, const QString &, const QString &, const QString &)
{
    return false;
}

void Prompts::warn(QWidget *, const QString &, const QString &) {}

QStringList DialogPrompts::openFiles(QWidget *parent, const QString &title, const QString &folder,
                                     const QStringList &filters)
{
    return QFileDialog::getOpenFileNames(parent, title, folder, filters.join(QStringLiteral(";;")));
}

QString DialogPrompts::openFolder(QWidget *parent, const QString &title)
{
    return CTdCommMethods::GetFolder(parent, QString(), title); // empty where cancel gives back what it began with
}

QString DialogPrompts::saveFile(QWidget *parent, const QString &title, const QString &path, const QStringList &filters,
                                const QString &suffix)
{
    QFileDialog dialog(parent, title, path);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(filters);
    dialog.setDefaultSuffix(suffix);
    // A name without an end gets that of the kind that is chosen.
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog, suffix](const QString &filter) {
        const QString end = filter.section(QStringLiteral("(*."), 1).section(u' ', 0, 0).remove(u')');
        dialog.setDefaultSuffix(end.isEmpty() ? suffix : end);
    });
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QString DialogPrompts::connection(QWidget *parent)
{
    ConnectionDialog dialog(parent);
    return dialog.exec() == QDialog::Accepted ? dialog.connection() : QString();
}

std::optional<QString> DialogPrompts::text(QWidget *parent, const QString &title, const QString &label,
                                           const QString &text)
{
    bool ok = false;
    const QString answer = QInputDialog::getText(parent, title, label, QLineEdit::Normal, text, &ok);
    return ok ? std::optional(answer) : std::nullopt;
}

std::unique_ptr<QMessageBox> DialogPrompts::unsavedBox(QWidget *parent, const QString &name)
{
    auto box = std::make_unique<QMessageBox>(QMessageBox::Question, tr("Unsaved Changes"),
                                             tr("Save the changes to “%1”?").arg(name),
                                             QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, parent);
    box->setInformativeText(tr("They are lost if you do not save them."));
    box->setDefaultButton(QMessageBox::Save);
    return box;
}

Prompts::Unsaved DialogPrompts::unsaved(QWidget *parent, const QString &name)
{
    switch (unsavedBox(parent, name)->exec()) {
    case QMessageBox::Save:
        return Unsaved::Save;
    case QMessageBox::Discard:
        return Unsaved::Discard;
    default:
        return Unsaved::Cancel;
    }
}

std::unique_ptr<QMessageBox> DialogPrompts::confirmBox(QWidget *parent, const QString &question,
                                                       const QString &explanation, const QString &button)
{
    auto box = std::make_unique<QMessageBox>(QMessageBox::Warning, QGuiApplication::applicationDisplayName(), question,
                                             QMessageBox::Cancel, parent);
    box->setTextFormat(Qt::PlainText); // whatever a name looks like
    box->setInformativeText(explanation);
    box->addButton(button, QMessageBox::AcceptRole);
    box->setDefaultButton(QMessageBox::Cancel);
    return box;
}

bool DialogPrompts::confirm(QWidget *parent, const QString &question, const QString &explanation, const QString &button)
{
    const std::unique_ptr<QMessageBox> box = confirmBox(parent, question, explanation, button);
    box->exec();
    return box->buttonRole(box->clickedButton()) == QMessageBox::AcceptRole;
}

void DialogPrompts::warn(QWidget *parent, const QString &what, const QString &why)
{
    QMessageBox box(QMessageBox::Warning, QGuiApplication::applicationDisplayName(), what, QMessageBox::Ok, parent);
    box.setInformativeText(why);
    box.exec();
}
