#include "common/FolderDialog.h"

#include "common/TdModule.h"
#include "res/StringId.h"

#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>

FolderDialog::FolderDialog(QWidget *parent, const QString &initial, const QString &title)
    : QFileDialog(parent, title), m_status(new QLabel(this))
{
    setFileMode(Directory);
    setOption(ShowDirsOnly);
    setOption(DontUseNativeDialog); // the platform's own has no place for the status text
    for (const char *choiceOfType : {"fileTypeLabel", "fileTypeCombo"}) { // there is one type, folders
        if (auto *needless = findChild<QWidget *>(QLatin1String(choiceOfType)))
            needless->hide();
    }
    m_status->setObjectName(QStringLiteral("status"));
    m_status->setTextFormat(Qt::PlainText);
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // a long path must not widen the window
    if (auto *grid = qobject_cast<QGridLayout *>(layout()))
        grid->addWidget(m_status, grid->rowCount(), 0, 1, grid->columnCount());
    connect(this, &QFileDialog::currentChanged, this, &FolderDialog::showPath);
    connect(this, &QFileDialog::directoryEntered, this, &FolderDialog::showPath);
    select(initial);
}

void FolderDialog::select(const QString &folder)
{
    if (folder.isEmpty()) {
        showPath(directory().path());
        return;
    }
    QDir dir(QDir::cleanPath(QFileInfo(folder).absoluteFilePath()));
    while (!dir.exists() && !dir.isRoot())
        dir.setPath(QFileInfo(dir.path()).path());
    const QString path = dir.path();
    setDirectory(dir.isRoot() ? path : QFileInfo(path).path());
    if (!dir.isRoot())
        selectFile(path);
    showPath(path);
}

void FolderDialog::showPath(const QString &path)
{
    if (path.isEmpty()) // a place that is no folder, such as the list of drives
        return;
    m_path = QDir::toNativeSeparators(path);
    m_status->setToolTip(m_path.toHtmlEscaped());
    updateStatus();
}

void FolderDialog::updateStatus()
{
    // Two lines: the request, and the path below it, as much of it as there is room for.
    const QString shown = m_status->fontMetrics().elidedText(m_path, Qt::ElideMiddle, m_status->width());
    QString text = CTdModule::LoadString(TdStringId::SelectFolder);
    m_status->setText(text.replace(QLatin1String("%s"), shown).remove(QLatin1Char('\r')));
}

void FolderDialog::resizeEvent(QResizeEvent *event)
{
    QFileDialog::resizeEvent(event);
    updateStatus();
}
