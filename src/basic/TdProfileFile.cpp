#include "basic/TdProfileFile.h"

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
constexpr qint64 largestFile = qint64(16) * 1024 * 1024;

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
    explicit TdProfileFilePrivate(const QString &filePath) : path(filePath), m_state(look(filePath))
    {
        if (m_state != Whole)
            qCWarning(lcProfile, "the profile \"%ls\" is damaged", qUtf16Printable(path));
        if (m_state == Whole || m_state == BadLines)
            m_settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
    }

    QVariant value(const QString &section, const QString &key) const
    {
        return m_settings && !key.isEmpty() ? m_settings->value(pathOf(section, key)) : QVariant();
    }

    bool write(const QString &section, const QString &key, const QVariant &newValue)
    {
        if (key.isEmpty() || (m_state != Whole && !mend()))
            return false;
        m_settings->setValue(pathOf(section, key), newValue);
        m_settings->sync();
        return m_settings->status() != QSettings::AccessError;
    }

    const QString path;

private:
    /// What stands in the file.
    enum State {
        Whole,    ///< sections and keys, or no file at all
        BadLines, ///< some lines are neither; the others are read
        NotText,  ///< something else: nothing is read
        NoFile    ///< a folder, a device or not for us to read: nothing is read or written
    };

    static State look(const QString &path)
    {
        const QFileInfo info(path);
        QFile file(path);
        if (!info.exists())
            return Whole;
        if (!info.isFile() || !file.open(QIODevice::ReadOnly))
            return NoFile;
        if (info.size() > largestFile)
            return NotText;
        const QByteArray content = file.readAll();
        if (content.contains('\0'))
            return NotText;
        for (const QByteArray &untrimmed : content.split('\n')) {
            const QByteArray line = untrimmed.trimmed();
            const bool isSection = line.startsWith('[') && line.endsWith(']');
            if (!line.isEmpty() && !line.startsWith(';') && !line.startsWith('#') && !isSection &&
                line.indexOf('=') < 1)
                return BadLines;
        }
        return Whole;
    }

    /// Puts the damaged file aside and begins a whole one with the values that could be read.
    bool mend()
    {
        const QString copy = path + QStringLiteral(".damaged");
        if (m_state == NoFile || (QFile::exists(copy) && !QFile::remove(copy)))
            return false;
        QVariantMap values;
        if (m_settings)
            for (const QStringList keys = m_settings->allKeys(); const QString &key : keys)
                values.insert(key, m_settings->value(key));
        m_settings.reset();
        if (!QFile::rename(path, copy))
            return false;
        m_settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
        for (auto value = values.cbegin(); value != values.cend(); ++value)
            m_settings->setValue(value.key(), value.value());
        m_state = Whole;
        return true;
    }

    State m_state;
    std::unique_ptr<QSettings> m_settings; // null while the state is NotText or NoFile
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
