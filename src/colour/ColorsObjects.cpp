#include "colour/ColorsObjects.h"

#include "colour/TdColors.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <algorithm>
#include <iterator>

namespace {

struct ErrorRow
{
    HResult code;
    const char *codeName;
    const char *error;
    const char *text;
};

/// What the bus calls each code. Clients compare the names: do not change them.
constexpr ErrorRow errors[] = {
    {HResult::DISP_E_MEMBERNOTFOUND, "DISP_E_MEMBERNOTFOUND", "org.freedesktop.DBus.Error.UnknownMethod",
     "no member has this number and kind"},
    {HResult::DISP_E_UNKNOWNNAME, "DISP_E_UNKNOWNNAME", "Terravox.Error.UnknownName", "no member has this name"},
    {HResult::DISP_E_TYPEMISMATCH, "DISP_E_TYPEMISMATCH", "org.freedesktop.DBus.Error.InvalidArgs",
     "an argument is of a type that does not fit"},
    {HResult::DISP_E_BADPARAMCOUNT, "DISP_E_BADPARAMCOUNT", "org.freedesktop.DBus.Error.InvalidArgs",
     "too few or too many arguments"},
    {HResult::E_UNEXPECTED, "E_UNEXPECTED", "Terravox.Error.Unexpected", "the collection is gone"},
    {HResult::E_ACCESSDENIED, "E_ACCESSDENIED", "org.freedesktop.DBus.Error.AccessDenied",
     "the object belongs to another client"},
    {HResult::E_OUTOFMEMORY, "E_OUTOFMEMORY", "org.freedesktop.DBus.Error.LimitsExceeded",
     "a collection holds at most 65536 colours, a client at most 256 objects"},
    {HResult::E_INVALIDARG, "E_INVALIDARG", "org.freedesktop.DBus.Error.InvalidArgs", "a count is negative"},
    {HResult::CTL_E_SETNOTSUPPORTED, "CTL_E_SETNOTSUPPORTED", "org.freedesktop.DBus.Error.PropertyReadOnly",
     "the property cannot be written"},
};
static_assert(ColorsObjects::maxColors == 65536 && ColorsObjects::maxObjects == 256, "the text above tells them");

} // namespace

ColorsObjects::ColorsObjects(const QDBusConnection &connection, QObject *parent)
    : QObject(parent), m_connection(connection)
{
    m_watcher.setConnection(m_connection);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, &ColorsObjects::dropClient);
    connect(&m_idleTimer, &QTimer::timeout, this, &ColorsObjects::dropIdle);
}

ColorsObjects::~ColorsObjects() = default;

QString ColorsObjects::add(std::shared_ptr<QObject> object, const QString &client)
{
    const QString path = QStringLiteral("/Terravox/TdColors/%1").arg(++m_lastNumber);
    m_connection.registerObject(path, object.get(), QDBusConnection::ExportAdaptors);
    m_entries.insert(path, {std::move(object), client, QDeadlineTimer(QDeadlineTimer::Forever)});
    if (++m_perClient[client] == 1 && !client.isEmpty())
        watch(client);
    touch(path);
    Q_EMIT countChanged();
    return path;
}

CTdColors *ColorsObjects::collection(const QString &path) const
{
    return qobject_cast<CTdColors *>(m_entries.value(path).object.get());
}

HResult ColorsObjects::release(const QString &path, const QString &client)
{
    const QString owner = ownerOf(path);
    if (!owner.isEmpty() && owner != client)
        return HResult::E_ACCESSDENIED;
    drop(path);
    return HResult::S_OK;
}

void ColorsObjects::releaseAll()
{
    for (const QString &path : m_entries.keys())
        drop(path);
}

void ColorsObjects::touch(const QString &path)
{
    const auto entry = m_entries.find(path);
    if (entry == m_entries.end() || !entry->client.isEmpty())
        return;
    entry->idle.setRemainingTime(sharedIdleTime);
    if (!m_idleTimer.isActive())
        m_idleTimer.start(sharedIdleTime);
}

void ColorsObjects::tellChange(const QString &path, const QString &interface, const QString &property,
                               const QVariant &value) const
{
    QDBusMessage signal = QDBusMessage::createSignal(path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                     QStringLiteral("PropertiesChanged"));
    signal << interface << QVariantMap{{property, value}} << QStringList();
    m_connection.send(signal);
}

void ColorsObjects::refuse(const QDBusMessage &call, HResult code) const
{
    call.setDelayedReply(true); // what the called function returns is no answer
    const auto *row =
        std::find_if(std::begin(errors), std::end(errors), [code](const ErrorRow &each) { return each.code == code; });
    Q_ASSERT(row != std::end(errors));
    m_connection.send(
        call.createErrorReply(QLatin1String(row->error), QStringLiteral("%1 (0x%2): %3")
                                                             .arg(QLatin1String(row->codeName))
                                                             .arg(static_cast<quint32>(code), 8, 16, QLatin1Char('0'))
                                                             .arg(QLatin1String(row->text))));
}

void ColorsObjects::watch(const QString &client)
{
    m_watcher.addWatchedService(client);
    // It may have left before the watch began. The bus answers in order: who is there now will be seen to leave.
    auto *reply =
        new QDBusPendingCallWatcher(m_connection.interface()->asyncCall(QStringLiteral("NameHasOwner"), client), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this, client, reply] {
        const QDBusPendingReply<bool> isThere = *reply;
        if (isThere.isValid() && !isThere.value())
            dropClient(client);
        reply->deleteLater();
    });
}

void ColorsObjects::dropClient(const QString &client)
{
    for (const QString &path : m_entries.keys()) {
        if (m_entries.value(path).client == client)
            drop(path);
    }
}

void ColorsObjects::dropIdle()
{
    for (const QString &path : m_entries.keys()) {
        if (m_entries.value(path).idle.hasExpired())
            drop(path);
    }
    if (m_perClient.value(QString()) == 0)
        m_idleTimer.stop();
}

void ColorsObjects::drop(const QString &path)
{
    Entry entry = m_entries.take(path);
    if (!entry.object)
        return;
    m_connection.unregisterObject(path);
    if (--m_perClient[entry.client] == 0) {
        m_perClient.remove(entry.client);
        m_watcher.removeWatchedService(entry.client);
    }
    // A call to the object itself may be running: it goes when the call is over.
    QMetaObject::invokeMethod(
        this, [object = std::move(entry.object)] {}, Qt::QueuedConnection);
    Q_EMIT countChanged();
}
