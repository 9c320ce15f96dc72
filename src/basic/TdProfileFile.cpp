#include "basic/TdProfileFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSettings>
#include <QStandardPaths>
#include <QStringList>
#include <QVariant>

#include <array>

namespace {

Q_LOGGING_CATEGORY(lcProfile, "terravox.profile")

/// A profile is a few kilobytes; a file beyond this size is something else and is not read.
constexpr qint64 largestFile = 16 * 1024 * 1024;

/// The keys of one branch of the workspace tree in the section "WorkspaceTree". Do not change: users' files hold them.
struct TreeItemRow
{
    CTdProfileFile::TreeItem item;
    const char *shownKey;
    const char *aliasKey;
};
constexpr std::array<TreeItemRow, CTdProfileFile::treeItemCount> treeItems{{
    {CTdProfileFile::Workspace, "ShowWorkspace", "WorkspaceAlias"},
    {CTdProfileFile::DataSources, "ShowDatasources", "DatasourcesAlias"},
    {CTdProfileFile::Maps, "ShowMaps", "MapsAlias"},
    {CTdProfileFile::Layouts, "ShowLayouts", "LayoutsAlias"},
    {CTdProfileFile::Scenes, "ShowScenes", "ScenesAlias"},
    {CTdProfileFile::Resources, "ShowResources", "ResourcesAlias"},
}};
static_assert(
    [] {
        for (size_t i = 0; i < treeItems.size(); ++i)
            if (treeItems[i].item != static_cast<CTdProfileFile::TreeItem>(i))
                return false;
        return true;
    }(),
    "rows stand at the place of their branch");

QString treeSection()
{
    return QStringLiteral("WorkspaceTree");
}

/// The row of @p item, null when the number is no branch.
const TreeItemRow *rowOf(CTdProfileFile::TreeItem item)
{
    const auto place = static_cast<size_t>(item);
    return place < treeItems.size() ? &treeItems[place] : nullptr;
}

QString pathOf(const QString &section, const QString &key)
{
    return section.isEmpty() ? key : section + u'/' + key;
}

} // namespace

class TdProfileFilePrivate
{
public:
    explicit TdProfileFilePrivate(const QString &filePath) : path(filePath)
    {
        const QFileInfo file(path);
        readable = !file.exists() || (file.isFile() && file.size() <= largestFile);
        if (readable) {
            settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
            damaged = settings->status() == QSettings::FormatError;
        }
        if (damaged || !readable)
            qCWarning(lcProfile, "the profile \"%ls\" is damaged, its defaults are used", qUtf16Printable(path));
    }

    QVariant value(const QString &section, const QString &key) const
    {
        return settings && !key.isEmpty() ? settings->value(pathOf(section, key)) : QVariant();
    }

    bool write(const QString &section, const QString &key, const QVariant &newValue)
    {
        if (key.isEmpty() || !settings || !keepDamagedFile())
            return false;
        settings->setValue(pathOf(section, key), newValue);
        settings->sync();
        return settings->status() == QSettings::NoError;
    }

    const QString path;

private:
    /// Before the first write to a damaged file: copies it, so that nothing of it is lost, and starts afresh.
    bool keepDamagedFile()
    {
        if (!damaged)
            return true;
        const QString copy = path + QStringLiteral(".damaged");
        settings.reset();
        const bool moved = (!QFile::exists(copy) || QFile::remove(copy)) && QFile::rename(path, copy);
        settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
        damaged = !moved;
        return moved;
    }

    std::unique_ptr<QSettings> settings; // null when the path is no readable file
    bool readable = false;
    bool damaged = false;
};

CTdProfileFile::CTdProfileFile() : CTdProfileFile(defaultPath()) {}

CTdProfileFile::CTdProfileFile(const QString &path) : d(std::make_unique<TdProfileFilePrivate>(path)) {}

CTdProfileFile::~CTdProfileFile() = default;

QString CTdProfileFile::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/terravox/terravox.ini");
}

QString CTdProfileFile::GetPath() const
{
    return d->path;
}

int CTdProfileFile::ReadIntValue(const QString &section, const QString &key, int defaultValue) const
{
    bool ok = false;
    const int value = d->value(section, key).toString().trimmed().toInt(&ok);
    return ok ? value : defaultValue;
}

bool CTdProfileFile::WriteIntValue(const QString &section, const QString &key, int value)
{
    return d->write(section, key, value);
}

QString CTdProfileFile::ReadStringValue(const QString &section, const QString &key, const QString &defaultValue) const
{
    const QVariant value = d->value(section, key);
    // A text with a comma that somebody typed into the file without quotes comes as a list.
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList().join(QStringLiteral(", "));
    return value.isValid() ? value.toString() : defaultValue;
}

bool CTdProfileFile::WriteStringValue(const QString &section, const QString &key, const QString &value)
{
    return d->write(section, key, value);
}

bool CTdProfileFile::IsTreeItemDisp(TreeItem item) const
{
    const TreeItemRow *row = rowOf(item);
    return !row || ReadIntValue(treeSection(), QString::fromLatin1(row->shownKey), 1) != 0;
}

bool CTdProfileFile::SetTreeItemDisp(TreeItem item, bool shown)
{
    const TreeItemRow *row = rowOf(item);
    return row && WriteIntValue(treeSection(), QString::fromLatin1(row->shownKey), shown ? 1 : 0);
}

QString CTdProfileFile::LoadTreeItemAlias(TreeItem item) const
{
    const TreeItemRow *row = rowOf(item);
    return row ? ReadStringValue(treeSection(), QString::fromLatin1(row->aliasKey)) : QString();
}

bool CTdProfileFile::SaveTreeItemAlias(TreeItem item, const QString &alias)
{
    const TreeItemRow *row = rowOf(item);
    return row && WriteStringValue(treeSection(), QString::fromLatin1(row->aliasKey), alias);
}
