#include "colour/ColorsServer.h"

#include "colour/ColorsAdaptors.h"
#include "colour/ColorsObjects.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusError>
#include <QEventLoopLocker>
#include <QLoggingCategory>
#include <QTimer>

Q_LOGGING_CATEGORY(automationLog, "terravox.automation")

const char *const ColorsServer::serviceName = "Terravox.TdColors";
const char *const ColorsServer::factoryPath = "/Terravox/TdColors";

class ColorsServer::Private : public QObject
{
    Q_OBJECT

public:
    Private()
    {
        new ColorsFactoryAdaptor(&m_factory, m_objects);
        m_timer.setSingleShot(true);
        connect(&m_timer, &QTimer::timeout, this, &Private::leave);
        connect(&m_objects, &ColorsObjects::countChanged, this, &Private::waitOrStay);
    }

    ~Private() override
    {
        if (m_serves)
            m_connection.unregisterService(QLatin1String(serviceName));
        m_connection.unregisterObject(QLatin1String(factoryPath));
        m_objects.releaseAll();
    }

    bool start()
    {
        if (!m_connection.isConnected()) {
            qCInfo(automationLog, "no session bus, so no automation: %ls",
                   qUtf16Printable(m_connection.lastError().message()));
            return false;
        }
        m_connection.registerObject(QLatin1String(factoryPath), &m_factory, QDBusConnection::ExportAdaptors);
        m_serves = m_connection.registerService(QLatin1String(serviceName));
        if (!m_serves) {
            qCInfo(automationLog, "another program serves %s", serviceName);
            return false;
        }
        m_connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                             QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                             SLOT(loseBus()));
        return true;
    }

    void linger(std::chrono::milliseconds time)
    {
        m_lock = std::make_unique<QEventLoopLocker>();
        m_timer.setInterval(time);
        waitOrStay();
    }

private Q_SLOTS:
    /// The bus is gone, and the clients with it.
    void loseBus()
    {
        m_serves = false;
        m_objects.releaseAll();
        m_lock.reset();
    }

private:
    void waitOrStay()
    {
        if (!m_lock)
            return;
        if (m_objects.count() > 0)
            m_timer.stop();
        else
            m_timer.start();
    }

    /// Gives the name back first, so that the bus starts another process for whoever comes from now on. Who came before
    /// that is in the queue of events, in front of what is put there now.
    void leave()
    {
        m_connection.unregisterService(QLatin1String(serviceName));
        m_serves = false;
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (m_objects.count() > 0)
                    m_serves = m_connection.registerService(QLatin1String(serviceName));
                else
                    m_lock.reset(); // ends the application if nothing else keeps it
            },
            Qt::QueuedConnection);
    }

    QDBusConnection m_connection = QDBusConnection::sessionBus();
    ColorsObjects m_objects{m_connection};
    QObject m_factory;
    QTimer m_timer;
    std::unique_ptr<QEventLoopLocker> m_lock;
    bool m_serves = false;
};

ColorsServer::ColorsServer(QObject *parent) : QObject(parent), d(std::make_unique<Private>()) {}

ColorsServer::~ColorsServer() = default;

bool ColorsServer::start()
{
    return d->start();
}

void ColorsServer::linger(std::chrono::milliseconds time)
{
    d->linger(time);
}

#include "ColorsServer.moc"
