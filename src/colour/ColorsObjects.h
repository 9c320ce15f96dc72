#pragma once

#include "colour/HResult.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDeadlineTimer>
#include <QHash>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>

class CTdColors;
class QDBusMessage;

/// The collections and enumerators that clients of the automation bus hold. An object belongs to the client that made
/// it and goes when the client releases it or leaves the bus. A shared object belongs to nobody: it goes when anybody
/// releases it, or when nobody has called it for a while.
class ColorsObjects : public QObject
{
    Q_OBJECT

public:
    /// The most colours of one collection. Ramps longer than the screen knows colours help nobody, and one client must
    /// not take the memory of all.
    static constexpr int maxColors = 65536;
    /// The most objects of one client, and of all shared ones.
    static constexpr int maxObjects = 256;
    /// A shared object that nobody has called for this long goes, at the latest after twice as long.
    static constexpr std::chrono::minutes sharedIdleTime{10};

    explicit ColorsObjects(const QDBusConnection &connection, QObject *parent = nullptr);
    ~ColorsObjects() override;

    const QDBusConnection &connection() const { return m_connection; }
    int count() const { return static_cast<int>(m_entries.size()); }
    /// How many objects @p client holds; an empty name stands for the shared ones.
    bool isFull(const QString &client) const { return m_perClient.value(client) >= maxObjects; }

    /// Puts an object with its adaptor on the bus. @param client its owner's name on the bus, empty for a shared one
    /// @return its path
    QString add(std::shared_ptr<QObject> object, const QString &client);
    /// The owner of the object at @p path.
    QString ownerOf(const QString &path) const { return m_entries.value(path).client; }
    /// The collection at @p path, null when there is none.
    CTdColors *collection(const QString &path) const;
    /// Lets the object at @p path go. @return S_OK, or E_ACCESSDENIED when it belongs to another client
    HResult release(const QString &path, const QString &client);
    void releaseAll();
    /// Notes that the object at @p path is in use.
    void touch(const QString &path);

    /// Tells clients, of which some keep what they have read, that a property changed.
    void tellChange(const QString &path, const QString &interface, const QString &property,
                    const QVariant &value) const;
    /// Answers a call with the error that stands for @p code.
    void refuse(const QDBusMessage &call, HResult code) const;

Q_SIGNALS:
    /// An object came or went.
    void countChanged();

private:
    struct Entry
    {
        std::shared_ptr<QObject> object;
        QString client;
        QDeadlineTimer idle;
    };

    void watch(const QString &client);
    void dropClient(const QString &client);
    void dropIdle();
    void drop(const QString &path);

    QDBusConnection m_connection;
    QDBusServiceWatcher m_watcher;
    QHash<QString, Entry> m_entries;
    QHash<QString, int> m_perClient;
    QTimer m_idleTimer;
    quint64 m_lastNumber = 0;
};
