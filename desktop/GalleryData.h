#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

class MainWindow;

/// The data that the gallery shows.
class GalleryData
{
public:
    /// Data from @p files; from the sample workspace when there are none; from small files made on the spot when the
    /// sample workspace is not there.
    explicit GalleryData(const QStringList &files);

    /// What to open in the main window.
    const QStringList &files() const { return m_files; }
    /// A workspace file whose datasources are missing.
    QString workspaceWithMissing() const;
    /// Shows a map and something of the rest in @p window, which has the files open.
    static void populate(MainWindow &window);

    /// The sample workspace, empty when it is not installed.
    static QString sampleWorkspace();

private:
    QString write(const QString &name, const QByteArray &content) const;

    QTemporaryDir m_folder;
    QStringList m_files;
};
