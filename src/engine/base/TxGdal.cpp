#include "engine/base/TxGdal.h"

#include "engine/base/TxErrorMsg.h"
#include "engine/base/TxLogFile.h"

#include <cpl_conv.h>
#include <cpl_error.h>
#include <sqlite3.h>

#include <QLoggingCategory>

namespace TxGdal {

namespace {

Q_LOGGING_CATEGORY(log, "terravox.engine.gdal", QtWarningMsg)

thread_local ErrorCollector *innermost = nullptr;

} // namespace

/// What the error handler does to a collector.
struct ErrorCollectorAccess
{
    static void add(ErrorCollector &collector, bool failure, const QString &message)
    {
        QStringList &messages = failure ? collector.m_failures : collector.m_warnings;
        // A corrupt file can repeat one message for every record: a few distinct ones tell as much.
        constexpr qsizetype enough = 8;
        if (messages.size() < enough && !messages.contains(message))
            messages.append(message);
    }
};

namespace {

/// @p message without its middle where it is very long: some hold the whole statement that failed, with a thousand
/// columns, and their beginning and their end tell what failed and why.
QString shortened(const QString &message)
{
    constexpr qsizetype most = 500, half = 240;
    return message.size() <= most ? message : message.left(half) + QStringLiteral(" … ") + message.right(half);
}

/// The handler of every message of GDAL, and of PROJ and SQLite through it. Must not throw, print, or call GDAL.
void CPL_STDCALL handleMessage(CPLErr grade, CPLErrorNum, const char *text)
{
    const QString message = shortened(QString::fromUtf8(text).trimmed());
    if (grade == CE_None || message.isEmpty())
        return;
    if (grade == CE_Debug) {
        qCDebug(log).noquote() << message;
        return;
    }
    const bool failure = grade >= CE_Failure;
    if (innermost) {
        ErrorCollectorAccess::add(*innermost, failure, message);
        CTxLogFile::RecordLog(CTxLogFile::Debug, message);
    } else if (failure) {
        TxGetErrorMsgObj().SetErrorMessage(message); // this logs it too
    } else {
        CTxLogFile::RecordLog(CTxLogFile::Warning, message);
    }
}

bool setUp()
{
    CPLSetErrorHandler(handleMessage);
    // Nothing that is merely opened may reach for the network.
    CPLSetConfigOption("PROJ_NETWORK", "OFF");
    // How long a database that another program has locked is waited for, in milliseconds.
    if (!CPLGetConfigOption("SQLITE_BUSY_TIMEOUT", nullptr))
        CPLSetConfigOption("SQLITE_BUSY_TIMEOUT", "1000");
    GDALAllRegister();
    return true;
}

} // namespace

void initialize()
{
    static const bool done = setUp();
    Q_UNUSED(done)
}

ErrorCollector::ErrorCollector()
{
    initialize();
    m_outer = innermost;
    innermost = this;
}

ErrorCollector::~ErrorCollector()
{
    innermost = m_outer;
}

QString ErrorCollector::text() const
{
    return messages().join(QStringLiteral("; "));
}

bool ErrorCollector::fail(const QString &what) const
{
    const QString details = text();
    return TxGdal::fail(details.isEmpty() ? what : what + QStringLiteral(": ") + details);
}

void ErrorCollector::clear()
{
    m_failures.clear();
    m_warnings.clear();
}

bool fail(const QString &message)
{
    TxGetErrorMsgObj().SetErrorMessage(message);
    return false;
}

DatasetPtr open(const QByteArray &name, unsigned flags, const QStringList &openOptions, const QStringList &drivers)
{
    initialize();
    CPLStringList optionList;
    for (const QString &option : openOptions)
        optionList.AddString(option.toUtf8().constData());
    CPLStringList driverList;
    for (const QString &driver : drivers)
        driverList.AddString(driver.toUtf8().constData());
    DatasetPtr dataset(GDALDataset::Open(name.constData(), flags | GDAL_OF_VERBOSE_ERROR,
                                         drivers.isEmpty() ? nullptr : driverList.List(), optionList.List()));
    // The driver's own five seconds would freeze a window.
    const int patience = QByteArray(CPLGetConfigOption("SQLITE_BUSY_TIMEOUT", "1000")).toInt(); // milliseconds
    const QByteArray driver = dataset && dataset->GetDriver() ? dataset->GetDriverName() : "";
    if (driver == "GPKG" || driver == "SQLite") // others answer with handles of their own, whatever is asked for
        sqlite3_busy_timeout(static_cast<sqlite3 *>(dataset->GetInternalHandle("SQLITE_HANDLE")), patience);
    return dataset;
}

QString quoteIdentifier(const QString &name)
{
    return u'"' + QString(name).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

QString quoteText(const QString &text)
{
    return u'\'' + QString(text).replace(u'\'', QStringLiteral("''")) + u'\'';
}

} // namespace TxGdal
