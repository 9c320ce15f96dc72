#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class QMessageBox;
class QWidget;

/// Everything the desktop asks its user in a window of its own.
///
/// The one place from which modal questions come, so that tests answer them without a dialog. This class never asks:
/// it answers every question with "cancel". DialogPrompts shows the dialogs.
class Prompts
{
public:
    /// What to do with changes that were not saved.
    enum class Unsaved { Save, Discard, Cancel };

    virtual ~Prompts();

    /// Files to open; empty when cancelled. @p filters are name filters as QFileDialog takes them.
    virtual QStringList openFiles(QWidget *parent, const QString &title, const QString &folder,
                                  const QStringList &filters);
    /// A folder to open; empty when cancelled.
    virtual QString openFolder(QWidget *parent, const QString &title);
    /// A file to write; empty when cancelled. The user has agreed to replace it when it exists.
    virtual QString saveFile(QWidget *parent, const QString &title, const QString &path, const QStringList &filters,
                             const QString &suffix);
    /// A database's connection string; empty when cancelled.
    virtual QString connection(QWidget *parent);
    /// A line of text, @p text at first; nothing when cancelled.
    virtual std::optional<QString> text(QWidget *parent, const QString &title, const QString &label,
                                        const QString &text);
    /// Whether to save the changes of @p name.
    virtual Unsaved unsaved(QWidget *parent, const QString &name);
    /// A question that @p button says yes to.
    virtual bool confirm(QWidget *parent, const QString &question, const QString &explanation, const QString &button);
    /// Tells of something that failed.
    virtual void warn(QWidget *parent, const QString &what, const QString &why);
};

/// The prompts of the running program: dialogs over the window that asks.
class DialogPrompts : public Prompts
{
public:
    QStringList openFiles(QWidget *parent, const QString &title, const QString &folder,
                          const QStringList &filters) override;
    QString openFolder(QWidget *parent, const QString &title) override;
    QString saveFile(QWidget *parent, const QString &title, const QString &path, const QStringList &filters,
                     const QString &suffix) override;
    QString connection(QWidget *parent) override;
    std::optional<QString> text(QWidget *parent, const QString &title, const QString &label,
                                const QString &text) override;
    Unsaved unsaved(QWidget *parent, const QString &name) override;
    bool confirm(QWidget *parent, const QString &question, const QString &explanation, const QString &button) override;
    void warn(QWidget *parent, const QString &what, const QString &why) override;

    /// The question of confirm(), not shown yet; its yes has the accept role.
    static std::unique_ptr<QMessageBox> confirmBox(QWidget *parent, const QString &question, const QString &explanation,
                                                   const QString &button);
    /// The question of unsaved(), not shown yet.
    static std::unique_ptr<QMessageBox> unsavedBox(QWidget *parent, const QString &name);
};
