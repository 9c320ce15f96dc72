#pragma once

#include "colour/HResult.h"
#include "common/TdCommonExport.h"

#include <QEventLoopLocker>
#include <QObject>
#include <QPointer>

#include <memory>

class CTdColors;
class CTxVariant;

/// Walks through the colours of a CTdColors, as scripts do in a "for each".
///
/// It may outlive the collection; then every operation answers E_UNEXPECTED. It stands at a place, not at a colour:
/// when colours are inserted or removed before that place while it walks, some come twice or are passed over, as many
/// as there were; behind the last colour it stays at the end, and goes on when colours are added there.
///
/// Like the collection it keeps the application running, and needs a QCoreApplication.
class TDCOMMON_API TdColorsEnum : public QObject
{
    Q_OBJECT

public:
    /// Stands before the first colour of @p colors.
    explicit TdColorsEnum(const CTdColors &colors);
    ~TdColorsEnum() override;

    /// Takes the next @p count colours. All @p count variants become empty first; those that get a colour become
    /// of type Long.
    /// @param variants room for that many; may be null for none
    /// @param fetched becomes the number of colours taken; may be null when @p count is 0 or 1
    /// @return S_OK when there were @p count colours, S_FALSE when there were fewer, E_INVALIDARG when a pointer is
    /// missing
    HResult Next(quint32 count, CTxVariant *variants, quint32 *fetched = nullptr);
    /// Stands before the first colour again. @return S_OK
    HResult Reset();
    /// Passes over @p count colours. @return S_OK, or S_FALSE when there were fewer
    HResult Skip(quint32 count);
    /// Makes another enumerator on the same collection that stands at the same place.
    /// @return S_OK, or E_OUTOFMEMORY with @p copy null
    HResult Clone(std::unique_ptr<TdColorsEnum> &copy) const;

    /// How many colours are still to come, 0 when the collection is gone.
    quint32 remaining() const;

private:
    QPointer<const CTdColors> m_colors; // not owned
    quint32 m_passed = 0;               // colours that the walk has passed; may exceed what is left in the collection
    QEventLoopLocker m_applicationLock;
};
