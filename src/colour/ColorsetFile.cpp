#include "colour/ColorsetFile.h"

#include "colour/ColorsetTable.h"
#include "engine/base/TxToolkit.h"

#include <QFileInfo>

namespace {

/// Whether the user may delete the file. Its permission to write counts, too: folders let people (and the superuser
/// anything) delete what is marked as read-only, and whoever marked it wants it kept.
bool isDeletable(const QString &path)
{
    const QFileInfo file(path);
    return file.permission(QFileDevice::WriteOwner) && file.isWritable() && QFileInfo(file.absolutePath()).isWritable();
}

} // namespace

QString ColorsetFile::withExtension(const QString &path)
{
    const QString extension = QStringLiteral("sct");
    if (QFileInfo(path).suffix().compare(extension, Qt::CaseInsensitive) == 0)
        return path;
    return path + u'.' + extension;
}

ColorsetFile::SaveResult ColorsetFile::save(const QString &path, const ColorsetTable &table)
{
    // A file that is there has to be deletable, as if it were deleted first. It is not: the new one takes its place
    // when it is complete on the disk, so that a full disk or a crash leaves the old one.
    if (CTxToolkit::IsFileExisted(path) && !isDeletable(path))
        return SaveResult::Protected;
    return table.save(path) ? SaveResult::Saved : SaveResult::Failed;
}
