#include "RecentFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QRegularExpression>
#include <QSettings>

namespace {

QString settingsKey()
{
    return QStringLiteral("recentFiles");
}

/// @p file as it is kept: paths absolute, connection strings without a password.
QString normalized(const QString &file)
{
    if (!RecentFiles::isConnection(file))
        return QDir::cleanPath(QFileInfo(file).absoluteFilePath());
    static const QRegularExpression password(QStringLiteral("\\s*\\bpassword\\s*=\\s*('(?:\\\\.|[^'\\\\])*'|\\S*)"),
                                             QRegularExpression::CaseInsensitiveOption);
    return QString(file).remove(password);
}

/// A menu text for entry @p index: a mnemonic digit, the path with the home folder cut short.
QString menuText(int index, const QString &file)
{
    QString shown = file;
    const QString home = QDir::homePath();
    if (shown.startsWith(home + QLatin1Char('/')))
        shown.replace(0, home.size(), QLatin1String("~"));
    if (shown.size() > 70)
        shown = shown.left(25) + QStringLiteral("…") + shown.right(44);
    shown.replace(QLatin1Char('&'), QLatin1String("&&"));
    return QStringLiteral("&%1  %2").arg((index + 1) % 10).arg(shown);
}

} // namespace

RecentFiles::RecentFiles(QObject *parent) : QObject(parent) {}

bool RecentFiles::isConnection(const QString &file)
{
    return file.startsWith(QLatin1String("PG:"), Qt::CaseInsensitive);
}

QStringList RecentFiles::files() const
{
    return QSettings().value(settingsKey()).toStringList().mid(0, maximum);
}

void RecentFiles::add(const QString &file)
{
    const QString entry = normalized(file);
    QStringList list = files();
    list.removeAll(entry);
    list.prepend(entry);
    store(list.mid(0, maximum));
}

void RecentFiles::remove(const QString &file)
{
    QStringList list = files();
    list.removeAll(normalized(file));
    store(list);
}

void RecentFiles::clear()
{
    store({});
}

void RecentFiles::attach(QMenu *menu)
{
    m_menu = menu;
    menu->setEnabled(!files().isEmpty());
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { fill(menu); });
}

void RecentFiles::store(const QStringList &files)
{
    QSettings().setValue(settingsKey(), files);
    if (m_menu)
        m_menu->setEnabled(!files.isEmpty());
}

void RecentFiles::fill(QMenu *menu)
{
    menu->clear();
    const QStringList list = files();
    for (int i = 0; i < list.size(); ++i) {
        const QString file = list[i];
        QAction *action = menu->addAction(menuText(i, file));
        action->setToolTip(file);
        action->setStatusTip(file);
        connect(action, &QAction::triggered, this, [this, file] { Q_EMIT chosen(file); });
    }
    menu->addSeparator();
    connect(menu->addAction(tr("&Clear List")), &QAction::triggered, this, &RecentFiles::clear);
}
