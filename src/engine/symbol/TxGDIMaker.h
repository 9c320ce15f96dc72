#pragma once

#include "engine/base/TxExport.h"

#include <QtGlobal>

#include <memory>

class CTxFillStyle;
class CTxLineStyleLib;
class CTxLineStyleObj;
class CTxSymbol;
class CTxSymbolLib;
class QPainter;
class QPainterPath;
struct CTxGeoStyle;

/// Prepares a painter for a style, and makes what the style is drawn with.
///
/// Between PrepareGDIs() and ReleaseGDIs() the painter has the pen and the brush of the style in their simplest form
/// (a plain line, the fill's pattern); the objects draw all of it. The painter must live until then.
class TX_EXPORT CTxGDIMaker
{
public:
    /// Which parts of a style are prepared, as bits.
    enum Part : quint32 { Line = 0x1, Fill = 0x2, Symbol = 0x4, All = 0x7 };

    CTxGDIMaker();
    /// Releases what is prepared.
    ~CTxGDIMaker();
    CTxGDIMaker(const CTxGDIMaker &) = delete;
    CTxGDIMaker &operator=(const CTxGDIMaker &) = delete;

    /// Saves the state of @p painter and prepares it for the @p parts of @p style; what was prepared before is
    /// released.
    /// @return false, and nothing is prepared, when the painter is null or not active
    bool PrepareGDIs(QPainter *painter, const CTxLineStyleLib &lines, const CTxSymbolLib &symbols,
                     const CTxGeoStyle &style, quint32 parts = All);
    /// Gives the painter its state back and drops the objects. Does nothing when nothing is prepared.
    void ReleaseGDIs();

    /// The line, null when it is not prepared. It is the maker's, and dies with ReleaseGDIs().
    CTxLineStyleObj *GetLineStyleObject() const;
    /// The fill, null when it is not prepared or a gradient. Owned as the line is.
    CTxFillStyle *GetFillStyleObject() const;
    /// The symbol, null when it is not prepared. Owned as the line is.
    CTxSymbol *GetSymbolObject() const;

    /// Fills @p path with the style: its pattern, or its gradient over the bounds of the path.
    /// @return false, and nothing is drawn, when the fill is not prepared or the painter has ended
    bool FillPath(const QPainterPath &path) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
