#pragma once

#include "basic/TdBasicExport.h"

#include <QString>

#include <memory>

/// The desktop's profile: user settings in sections of keys, kept in an INI file.
///
/// A file that is missing or damaged gives the defaults. Reading never writes; the first write to a damaged file keeps
/// what was there under the same name with ".damaged" added. Every write reaches the disk before it answers, replaces
/// the file only by a whole new one, and joins what other programs wrote meanwhile.
class TDBASIC_API CTdProfileFile
{
public:
    /// The branches of the workspace tree that the profile knows.
    enum TreeItem { Workspace, DataSources, Maps, Layouts, Scenes, Resources };
    static constexpr int treeItemCount = 6;

    /// The profile of the current user, at defaultPath().
    CTdProfileFile();
    /// The profile in the file @p path, which need not exist.
    explicit CTdProfileFile(const QString &path);
    ~CTdProfileFile();
    CTdProfileFile(const CTdProfileFile &) = delete;
    CTdProfileFile &operator=(const CTdProfileFile &) = delete;

    /// "terravox/terravox.ini" in the user's folder for settings.
    static QString defaultPath();
    /// The file this profile reads and writes.
    QString GetPath() const;

    /// The whole number under @p key in @p section; @p defaultValue when there is none, or something else stands there.
    int ReadIntValue(const QString &section, const QString &key, int defaultValue) const;
    /// Stores a whole number. @return false when the key is empty or the file cannot be written.
    bool WriteIntValue(const QString &section, const QString &key, int value);
    /// The text under @p key in @p section; @p defaultValue when there is none.
    QString ReadStringValue(const QString &section, const QString &key, const QString &defaultValue = QString()) const;
    /// Stores a text. @return false when the key is empty or the file cannot be written.
    bool WriteStringValue(const QString &section, const QString &key, const QString &value);

    /// True when the user may see the branch @p item of the workspace tree; so where nothing is stored.
    bool IsTreeItemDisp(TreeItem item) const;
    bool IsTreeItemDispWS() const { return IsTreeItemDisp(Workspace); }
    bool IsTreeItemDispDSs() const { return IsTreeItemDisp(DataSources); }
    bool IsTreeItemDispMAPs() const { return IsTreeItemDisp(Maps); }
    bool IsTreeItemDispLYTs() const { return IsTreeItemDisp(Layouts); }
    bool IsTreeItemDispScenes() const { return IsTreeItemDisp(Scenes); }
    bool IsTreeItemDispRESs() const { return IsTreeItemDisp(Resources); }
    /// Lets the user see the branch @p item or not. @return false when the file cannot be written.
    bool SetTreeItemDisp(TreeItem item, bool shown);

    /// The caption that the user wants for the branch @p item, empty for the usual one.
    QString LoadTreeItemAlias(TreeItem item) const;
    QString LoadTreeItemWSAlias() const { return LoadTreeItemAlias(Workspace); }
    QString LoadTreeItemDSSAlias() const { return LoadTreeItemAlias(DataSources); }
    QString LoadTreeItemMapsAlias() const { return LoadTreeItemAlias(Maps); }
    QString LoadTreeItemLytsAlias() const { return LoadTreeItemAlias(Layouts); }
    QString LoadTreeItemScenesAlias() const { return LoadTreeItemAlias(Scenes); }
    QString LoadTreeItemResAlias() const { return LoadTreeItemAlias(Resources); }
    /// Stores a caption for the branch @p item; an empty one brings the usual one back.
    /// @return false when the file cannot be written.
    bool SaveTreeItemAlias(TreeItem item, const QString &alias);

private:
    const std::unique_ptr<class TdProfileFilePrivate> d;
};
