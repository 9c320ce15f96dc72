#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/// Files that are taken out of the way before they are deleted, so that they can be brought back: the undo of storages
/// that know no transactions. A private header.
///
/// They lie in a hidden folder beside where they were, on the same disk, and are brought back when this object goes.
class TxFilesAside
{
public:
    TxFilesAside() = default;
    ~TxFilesAside() { bringBack(); }
    TxFilesAside(const TxFilesAside &) = delete;
    TxFilesAside &operator=(const TxFilesAside &) = delete;

    /// Takes the files called @p names out of @p folder. @return why that cannot be done, all of them are then where
    /// they were; empty on success.
    QString take(const QString &folder, const QStringList &names);
    /// Puts them where they were.
    void bringBack();
    /// Deletes them for good.
    void drop();

private:
    QString m_folder;
    QStringList m_names; // of those that lie aside
    std::unique_ptr<QTemporaryDir> m_aside;
};
