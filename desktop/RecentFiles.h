#pragma once

#include <QObject>
#include <QStringList>

class QMenu;

/// The list of what was opened last, kept in the user's settings, and the menu that shows it.
class RecentFiles : public QObject
{
    Q_OBJECT
public:
    /// How many entries are kept.
    static constexpr int maximum = 10;

    explicit RecentFiles(QObject *parent = nullptr);

    /// The entries, the latest first.
    QStringList files() const;
    /// Puts @p file (a path or a connection string) to the front. Passwords are not kept.
    void add(const QString &file);
    void remove(const QString &file);
    void clear();
    /// True for a connection string, which is no path.
    static bool isConnection(const QString &file);

    /// Fills @p menu with the entries each time it opens. The menu's enabled state follows the list.
    void attach(QMenu *menu);

Q_SIGNALS:
    /// The user chose @p file.
    void chosen(const QString &file);

private:
    void store(const QStringList &files);
    void fill(QMenu *menu);

    QMenu *m_menu = nullptr; // not owned
};
