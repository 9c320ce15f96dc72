#pragma once

#include "engine/base/TxExport.h"

#include <QList>

class QPainter;

/// The painters that line styles draw on when they are given none. For the user-interface thread.
class TX_EXPORT CTxLineStyleEngine
{
public:
    /// Saves the state of @p painter, prepares it for line styles and draws on it until RestoreDC(). Calls may be
    /// nested, with the same or other painters. The painter must live, and stay active, until then.
    /// @return false, and nothing changes, when it is null or not active
    bool KeepDC(QPainter *painter);
    /// Gives the painter of the last KeepDC() its state back; the one kept before it is drawn on again.
    /// @return false when none is kept
    bool RestoreDC();

    /// The painter that is drawn on, null when none is kept.
    QPainter *GetDC() const { return m_painters.isEmpty() ? nullptr : m_painters.last(); }

private:
    QList<QPainter *> m_painters;
};

/// The one that CTxLineStyleObj draws with.
TX_EXPORT extern CTxLineStyleEngine gLineStyleEngine;
