#pragma once

#include "engine/base/TxExport.h"
#include "engine/base/TxHandle.h"
#include "engine/data/TxDataSources.h"
#include "engine/map/TxLytStorages.h"
#include "engine/map/TxMaps.h"
#include "engine/map/TxScenes.h"

#include <QList>
#include <QString>

#include <memory>

/// A datasource that the workspace file names but that could not be opened. It stays in the file.
struct TxMissingDataSource
{
    QString alias;
    QString path;
    quint32 options = 0; ///< flags of CTxDataSource::OpenOption
    QString reason;      ///< why it could not be opened, for people
};

/// A workspace: datasources, maps, layouts and scenes, kept in a file (".txw", see docs/workspace-format.md).
///
/// Owns everything below it. Pointers handed out are dead after Close().
class TX_EXPORT CTxWorkspace
{
public:
    /// The extension of workspace files, without the dot.
    static constexpr const char *extension = "txw";

    CTxWorkspace();
    ~CTxWorkspace();
    CTxWorkspace(const CTxWorkspace &) = delete;
    CTxWorkspace &operator=(const CTxWorkspace &) = delete;

    const QString &GetName() const;
    void SetName(const QString &name);
    /// The file it was opened from or saved to, empty when neither happened.
    const QString &GetPath() const;

    CTxDataSources &GetDataSources();
    const CTxDataSources &GetDataSources() const;
    CTxMaps &GetMaps();
    const CTxMaps &GetMaps() const;
    CTxLytStorages &GetLytStorages();
    const CTxLytStorages &GetLytStorages() const;
    CTxScenes &GetScenes();
    const CTxScenes &GetScenes() const;

    /// Reads the file @p path in place of what is there. Datasources that cannot be opened are listed as missing;
    /// everything else is opened. @return false when the file cannot be read or is no workspace file (see
    /// TxGetErrorMsgObj()); the workspace is then as it was before.
    bool Open(const QString &path);
    /// Writes the workspace to its file. @return false when it has none, or on failure; the old file is then whole.
    bool Save();
    /// Writes the workspace to @p path, which becomes its file. The old file is replaced only by a complete new one. A
    /// file that is one of the workspace's datasources is refused. Passwords in connection strings are left out, unless
    /// the file that was opened held them.
    bool SaveAs(const QString &path);
    /// Closes everything and forgets name and file. A transaction that is open is taken back.
    void Close();

    /// What IsModified() looks at.
    enum class Compared { Everything, AllButViews };
    /// True when saving would write something else than what the file holds. With AllButViews it does not count what
    /// part of the plane the maps show.
    bool IsModified(Compared compared = Compared::Everything) const;

    /// Gives a datasource another alias, in the layers of all maps too. @return false when there is none called
    /// @p alias, or the new alias is empty or taken.
    bool RenameDataSource(const QString &alias, const QString &newAlias);

    /// Datasources of the file that could not be opened. One whose alias is in use again is no longer listed: what was
    /// opened under its alias takes its place in the file.
    const QList<TxMissingDataSource> &GetMissingDataSources() const;
    /// Tries to open a missing datasource again, at @p path when that is not empty. @return false when it fails again.
    bool RetryMissingDataSource(const QString &alias, const QString &path = QString());
    /// Takes a missing datasource out of the workspace for good.
    bool RemoveMissingDataSource(const QString &alias);

private:
    friend class TxWorkspaceFile;
    template<class Object>
    friend class TxHandle;

    const std::unique_ptr<class TxWorkspacePrivate> d;
    TxLife m_life;
};
