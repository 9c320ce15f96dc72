#pragma once

#include "engine/base/TxExport.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <gdal_priv.h>

#include <memory>

/// The one door to GDAL. A private header: nothing that a public header includes may include it.
namespace TxGdal {

/// Closes a dataset where its owner lets go of it.
struct Closer
{
    void operator()(GDALDataset *dataset) const { GDALClose(GDALDataset::ToHandle(dataset)); }
};
using DatasetPtr = std::unique_ptr<GDALDataset, Closer>;

/// Sets GDAL up at the first call: registers the drivers (about 34 ms, which the start of a program need not pay),
/// forbids network access to PROJ, and puts the engine's error handler in place of the one that prints. Every function
/// of the engine that calls GDAL comes by here first, ErrorCollector and open() do it by themselves.
TX_EXPORT void initialize();

/// Collects what GDAL, PROJ and SQLite report while it lives, on the thread that made it. Collectors nest; a message
/// goes to the innermost. Every message is logged, collected or not. A failure that no collector waits for becomes the
/// engine's last error.
class TX_EXPORT ErrorCollector
{
public:
    ErrorCollector();
    ~ErrorCollector();
    ErrorCollector(const ErrorCollector &) = delete;
    ErrorCollector &operator=(const ErrorCollector &) = delete;

    /// True when a failure (not a mere warning) was reported.
    bool hasFailure() const { return !m_failures.isEmpty(); }
    /// The distinct messages in the order in which they came, failures if there are any, else warnings.
    QStringList messages() const { return m_failures.isEmpty() ? m_warnings : m_failures; }
    /// The same, joined by semicolons.
    QString text() const;
    /// Makes "@p what: messages" the engine's last error. @return false, always, for the caller to return.
    bool fail(const QString &what) const;
    /// Forgets the messages so far.
    void clear();

private:
    friend struct ErrorCollectorAccess;
    QStringList m_failures;
    QStringList m_warnings;
    ErrorCollector *m_outer;
};

/// Makes @p message the engine's last error. @return false, always, for the caller to return.
bool fail(const QString &message);

/// Opens @p name with the GDAL_OF_… flags @p flags; null on failure, which is reported to the collectors.
DatasetPtr open(const QByteArray &name, unsigned flags, const QStringList &openOptions = {},
                const QStringList &drivers = {});

/// @p name between double quotes, as SQL wants an identifier.
QString quoteIdentifier(const QString &name);

/// @p text between single quotes, as SQL wants a text.
QString quoteText(const QString &text);

} // namespace TxGdal
