#pragma once

#include "engine/symbol/TxLineStyleObj.h"
#include "engine/symbol/TxStyleLibrary.h"

#include <memory>

struct CTxGeoStyle;

/// The library of line styles. docs/symbols.md shows them all.
class TX_EXPORT CTxLineStyleLib : public CTxStyleLibrary
{
public:
    CTxLineStyleLib();

    /// The line of @p style, ready to be drawn.
    std::unique_ptr<CTxLineStyleObj> CreateLineStyle(const CTxGeoStyle &style) const;
};
