#pragma once

#include <QString>

class CTxMap;
class CTxWorkspace;

/// Builds the sample workspace: the datasources, two maps, a layout and a scene.
class WorkspaceBuilder
{
public:
    /// @p folder is samples/, in which the database stands already.
    explicit WorkspaceBuilder(const QString &folder) : m_folder(folder) {}

    /// Makes the workspace file @p path. @return false with error() set when something failed.
    bool build(const QString &path);
    /// What went wrong, for people.
    const QString &error() const { return m_error; }

private:
    bool openSources(CTxWorkspace &workspace);
    bool addMaps(CTxWorkspace &workspace);
    bool addLayout(CTxWorkspace &workspace);
    bool addScene(CTxWorkspace &workspace);
    bool fail(const QString &where);

    const QString m_folder;
    QString m_error;
};
