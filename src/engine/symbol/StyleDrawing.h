#pragma once

#include "engine/base/TxExport.h"

#include <QPainterPath>

#include <span>
#include <vector>

class QColor;
class QPainter;

/// One piece of a drawing in a table of styles.
struct StyleShape
{
    /// Commands, each a letter and its numbers, all places absolute, y downwards: M x y (move), L x y … (lines),
    /// Q x1 y1 x y, C x1 y1 x2 y2 x y (curves), Z (close), O x y radius (circle), R x y width height (rectangle).
    const char *path;
    /// The width of its pen; 0 for a shape that is filled, by the odd-even rule.
    double pen = 0;
};

/// A drawing made of shapes, in one colour. A value type.
class TX_EXPORT StyleDrawing
{
public:
    StyleDrawing() = default;
    explicit StyleDrawing(std::span<const StyleShape> shapes);

    /// The drawing with all of its neighbours that reach into the tile from (0, 0) to @p tile, when it is repeated over
    /// and over. As each shape is one path, no seam shows where a shape goes on in the next tile.
    StyleDrawing repeated(const QSizeF &tile) const;

    /// Paints it around the painter's origin. No pen is thinner than @p thinnest, in the drawing's own units.
    void paint(QPainter &painter, const QColor &color, double thinnest = 0) const;
    /// Paints what reaches @p width around every shape.
    void paintOutline(QPainter &painter, const QColor &color, double width, double thinnest = 0) const;

    /// The path that a text of commands describes; what is not understood ends it.
    static QPainterPath parsed(const char *path);

private:
    struct Piece
    {
        QPainterPath path;
        double pen;
    };
    std::vector<Piece> m_pieces;
};
