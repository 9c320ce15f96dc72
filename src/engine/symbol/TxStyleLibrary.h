#pragma once

#include "engine/base/TxExport.h"

#include <QString>

/// What an entry of a style library is known by.
struct TxStyleKey
{
    qint32 id;        ///< kept in files: never changes
    const char *name; ///< English, in the translation context TdCommon
};

/// A list of styles that are found by number: the base of the line, fill and symbol libraries.
///
/// The entries are fixed, so libraries are cheap to make and alike. Entry 0 is the usual one, which stands in for ids
/// that do not exist.
class TX_EXPORT CTxStyleLibrary
{
public:
    /// How many styles there are.
    qint32 GetCount() const { return m_count; }
    /// The id of the style at 0-based @p index, -1 when out of range.
    qint32 GetAt(qint32 index) const;
    /// The 0-based index of the style @p id, -1 when there is none.
    qint32 FindByID(qint32 id) const;
    /// The name of the style @p id in the current language, empty when there is none.
    QString GetName(qint32 id) const;

protected:
    /// The key of the entry at an index in range.
    using KeyAt = TxStyleKey (*)(qint32 index);

    CTxStyleLibrary(qint32 count, KeyAt keyAt) : m_count(count), m_keyAt(keyAt) {}
    CTxStyleLibrary(const CTxStyleLibrary &) = default;
    CTxStyleLibrary &operator=(const CTxStyleLibrary &) = default;
    ~CTxStyleLibrary() = default;

private:
    qint32 m_count;
    KeyAt m_keyAt;
};
