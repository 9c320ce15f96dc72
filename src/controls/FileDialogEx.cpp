#include "controls/FileDialogEx.h"

#include "basic/TdProfileFile.h"
#include "common/TdFileChooser.h"
#include "controls/FilePreview.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QPointer>
#include <QRegularExpression>

namespace {

// The section of the profile. Do not change: users' files hold it.
QString section()
{
    return QStringLiteral("Folders");
}

/// Calls @p act with the given profile, or else with the user's own.
template<class Act>
auto withProfile(CTdProfileFile *profile, const Act &act)
{
    if (profile)
        return act(*profile);
    CTdProfileFile own;
    return act(own);
}

/// The extensions in a filter "caption (*.png *.jpg)"; none for "*" and for patterns that are more than an extension.
QStringList extensionsOf(const QString &filter)
{
    static const QRegularExpression pattern(QStringLiteral(R"(\*\.([^\s*?\[\])]+)(?=[\s)]))"));
    QStringList extensions;
    for (const QRegularExpressionMatch &match : pattern.globalMatch(filter))
        extensions << match.captured(1);
    return extensions;
}

} // namespace

CFileDialogEx::CFileDialogEx(bool open, const QString &purpose, const QString &filter, QWidget *parent,
                             CTdProfileFile *profile)
    : QFileDialog(parent), m_purpose(purpose), m_profile(profile), m_preview(new FilePreview(this))
{
    setOption(DontUseNativeDialog); // the platform's own has no place for the preview
    setAcceptMode(open ? AcceptOpen : AcceptSave);
    setFileMode(open ? ExistingFile : AnyFile);
    if (!filter.isEmpty())
        setNameFilters(CTdFileChooser::NameFilters(filter));
    // Beside the list of files, as tall as the whole upper part of the dialog.
    if (auto *grid = qobject_cast<QGridLayout *>(layout()))
        grid->addWidget(m_preview, 1, grid->columnCount());
    connect(this, &QFileDialog::currentChanged, m_preview, &FilePreview::showFile);
    connect(this, &QFileDialog::directoryEntered, m_preview, [this] { m_preview->showFile(QString()); });
    const QString folder =
        withProfile(m_profile, [this](const CTdProfileFile &from) { return GetRememberedFolder(m_purpose, from); });
    if (!folder.isEmpty())
        setDirectory(folder);
}

CFileDialogEx::~CFileDialogEx() = default;

QString CFileDialogEx::GetRememberedFolder(const QString &purpose, const CTdProfileFile &profile)
{
    if (purpose.isEmpty())
        return QString();
    const QString folder = profile.ReadStringValue(section(), purpose);
    return !folder.isEmpty() && QFileInfo(folder).isDir() ? folder : QString();
}

int CFileDialogEx::DoModal()
{
    return exec() == QDialog::Accepted ? IdOk : IdCancel;
}

void CFileDialogEx::accept()
{
    const QString own = defaultSuffix(); // the host's
    if (acceptMode() == AcceptSave) {
        if (const QStringList extensions = extensionsOf(selectedNameFilter());
            !extensions.isEmpty() && !extensions.contains(own, Qt::CaseInsensitive))
            setDefaultSuffix(extensions.first());
    }
    const QPointer<CFileDialogEx> alive(this);
    QFileDialog::accept(); // may ask before a file is overwritten, and stay open
    if (alive && isVisible())
        setDefaultSuffix(own); // another filter may be chosen now; else selectedFiles() still needs it
}

void CFileDialogEx::done(int result)
{
    m_chosen = result == QDialog::Accepted ? selectedFiles() : QStringList();
    if (!m_chosen.isEmpty() && !m_purpose.isEmpty()) {
        const QString folder = QFileInfo(m_chosen.first()).absolutePath();
        // A folder that cannot be remembered is no reason to refuse the file.
        withProfile(m_profile, [&](CTdProfileFile &to) { return to.WriteStringValue(section(), m_purpose, folder); });
    }
    QFileDialog::done(result);
}

bool CFileDialogEx::IsPreviewShown() const
{
    return !m_preview->isHidden();
}

void CFileDialogEx::ShowPreview(bool shown)
{
    m_preview->setVisible(shown);
}
