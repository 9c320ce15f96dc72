#pragma once

#include <QString>
#include <QStringList>

#include <chrono>

/// What the program was asked to do.
struct CommandLine
{
    enum class Action { Run, Automation, Gallery, PrintTree, ShowHelp, ShowVersion, Fail };

    Action action = Action::Run;
    QStringList files;               ///< workspaces and datasources to open
    QString galleryFolder;           ///< where the pictures go
    std::chrono::seconds linger{10}; ///< how long automation stays when nobody holds an object
    QString message;                 ///< the help, the version, or what is wrong

    /// Reads the arguments, the program's name first.
    static CommandLine parse(const QStringList &arguments);
};
