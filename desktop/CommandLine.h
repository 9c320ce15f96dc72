#pragma once

#include <QString>
#include <QStringList>

/// What the program was asked to do.
struct CommandLine
{
    enum class Action { Run, Gallery, PrintTree, ShowHelp, ShowVersion, Fail };

    Action action = Action::Run;
    QStringList files;     ///< workspaces and datasources to open
    QString galleryFolder; ///< where the pictures go
    QString message;       ///< the help, the version, or what is wrong

    /// Reads the arguments, the program's name first.
    static CommandLine parse(const QStringList &arguments);
};
