#include "engine/symbol/TxGDIMaker.h"

#include "engine/symbol/TxEspecialFill.h"
#include "engine/symbol/TxFillStyleLib.h"
#include "engine/symbol/TxLineStyleLib.h"
#include "engine/symbol/TxSymbolLib.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>

struct CTxGDIMaker::Private
{
    QPainter *painter = nullptr;
    CTxGeoStyle style;
    bool hasFill = false;
    std::unique_ptr<CTxLineStyleObj> line;
    std::unique_ptr<CTxFillStyle> fill;
    std::unique_ptr<CTxSymbol> symbol;
};

CTxGDIMaker::CTxGDIMaker() : d(std::make_unique<Private>()) {}

CTxGDIMaker::~CTxGDIMaker()
{
    ReleaseGDIs();
}

bool CTxGDIMaker::PrepareGDIs(QPainter *painter, const CTxLineStyleLib &lines, const CTxSymbolLib &symbols,
                              const CTxGeoStyle &style, quint32 parts)
{
    ReleaseGDIs();
    if (!painter || !painter->isActive())
        return false;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    d->painter = painter;
    d->style = style.inRange();
    if (parts & Line) {
        d->line = lines.CreateLineStyle(d->style);
        painter->setPen(QPen(d->style.lineColor, d->style.lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
    if (parts & Fill) {
        d->hasFill = true;
        if (d->style.fillGradient == TxGradientKind::None) {
            d->fill = CTxFillStyleLib().CreateFillStyle(painter, d->style.fillStyle, d->style.fillColor,
                                                        d->style.fillBackColor, d->style.fillSize, d->style.fillAngle);
            painter->setBrush(d->fill->GetBrush(*painter));
        } else {
            painter->setBrush(d->style.fillColor); // the gradient's colours depend on the area
        }
    }
    if (parts & Symbol)
        d->symbol = symbols.CreateSymbol(d->style);
    return true;
}

void CTxGDIMaker::ReleaseGDIs()
{
    if (d->painter && d->painter->isActive())
        d->painter->restore();
    *d = Private();
}

CTxLineStyleObj *CTxGDIMaker::GetLineStyleObject() const
{
    return d->line.get();
}

CTxFillStyle *CTxGDIMaker::GetFillStyleObject() const
{
    return d->fill.get();
}

CTxSymbol *CTxGDIMaker::GetSymbolObject() const
{
    return d->symbol.get();
}

bool CTxGDIMaker::FillPath(const QPainterPath &path) const
{
    if (!d->hasFill || !d->painter->isActive())
        return false;
    if (d->fill)
        return d->fill->FillPath(d->painter, path);
    CTxEspecialFill::FillPath(*d->painter, path, CTxEspecialFill::GradientBrush(path.boundingRect(), d->style));
    return true;
}
