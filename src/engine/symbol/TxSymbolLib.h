#pragma once

#include "engine/symbol/TxStyleLibrary.h"
#include "engine/symbol/TxSymbol.h"

#include <memory>

struct CTxGeoStyle;

/// The library of point symbols. docs/symbols.md shows them all.
class TX_EXPORT CTxSymbolLib : public CTxStyleLibrary
{
public:
    CTxSymbolLib();

    /// The symbol of @p style, ready to be drawn.
    std::unique_ptr<CTxSymbol> CreateSymbol(const CTxGeoStyle &style) const;
};
