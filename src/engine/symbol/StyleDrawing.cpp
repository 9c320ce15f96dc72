#include "engine/symbol/StyleDrawing.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <optional>

namespace {

/// Reads letters and numbers, with blanks between them.
class Reader
{
public:
    explicit Reader(const char *text) : m_at(text), m_end(text + std::strlen(text)) {}

    bool isAtNumber()
    {
        skipBlanks();
        return m_at < m_end && (*m_at == '-' || *m_at == '.' || (*m_at >= '0' && *m_at <= '9'));
    }

    /// 0 at the end.
    char letter()
    {
        skipBlanks();
        return m_at < m_end ? *m_at++ : '\0';
    }

    template<size_t count>
    std::optional<std::array<double, count>> numbers()
    {
        std::array<double, count> values{};
        for (double &value : values) {
            skipBlanks();
            const auto [next, error] = std::from_chars(m_at, m_end, value);
            if (error != std::errc())
                return std::nullopt;
            m_at = next;
        }
        return values;
    }

private:
    void skipBlanks()
    {
        while (m_at < m_end && *m_at == ' ')
            ++m_at;
    }

    const char *m_at;
    const char *m_end;
};

/// Adds what one command with its numbers means. @return false when it is none.
bool addCommand(QPainterPath &path, char command, Reader &reader)
{
    switch (command) {
    case 'M':
    case 'L':
        if (const auto n = reader.numbers<2>()) {
            command == 'M' ? path.moveTo((*n)[0], (*n)[1]) : path.lineTo((*n)[0], (*n)[1]);
            return true;
        }
        return false;
    case 'Q':
        if (const auto n = reader.numbers<4>()) {
            path.quadTo((*n)[0], (*n)[1], (*n)[2], (*n)[3]);
            return true;
        }
        return false;
    case 'C':
        if (const auto n = reader.numbers<6>()) {
            path.cubicTo((*n)[0], (*n)[1], (*n)[2], (*n)[3], (*n)[4], (*n)[5]);
            return true;
        }
        return false;
    case 'O':
        if (const auto n = reader.numbers<3>()) {
            path.addEllipse(QPointF((*n)[0], (*n)[1]), (*n)[2], (*n)[2]);
            return true;
        }
        return false;
    case 'R':
        if (const auto n = reader.numbers<4>()) {
            path.addRect((*n)[0], (*n)[1], (*n)[2], (*n)[3]);
            return true;
        }
        return false;
    case 'Z':
        path.closeSubpath();
        return true;
    default:
        return false;
    }
}

} // namespace

QPainterPath StyleDrawing::parsed(const char *text)
{
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    Reader reader(text);
    while (const char command = reader.letter()) {
        do {
            if (!addCommand(path, command, reader))
                return path;
        } while (reader.isAtNumber());
    }
    return path;
}

StyleDrawing::StyleDrawing(std::span<const StyleShape> shapes)
{
    for (const StyleShape &shape : shapes)
        m_pieces.push_back({parsed(shape.path), shape.pen});
}

StyleDrawing StyleDrawing::repeated(const QSizeF &tile) const
{
    StyleDrawing all;
    for (const Piece &piece : m_pieces) {
        QPainterPath copies;
        copies.setFillRule(piece.path.fillRule());
        // A pen may be drawn wider than it is, at most as wide as a quarter of the tile.
        const double reach = std::max(piece.pen, tile.width() / 4);
        const QRectF seen(QPointF(), tile);
        for (const int down : {-1, 0, 1}) {
            for (const int right : {-1, 0, 1}) {
                const QPainterPath copy = piece.path.translated(right * tile.width(), down * tile.height());
                if (copy.controlPointRect().adjusted(-reach, -reach, reach, reach).intersects(seen))
                    copies.addPath(copy);
            }
        }
        all.m_pieces.push_back({copies, piece.pen});
    }
    return all;
}

void StyleDrawing::paint(QPainter &painter, const QColor &color, double thinnest) const
{
    for (const Piece &piece : m_pieces) {
        if (piece.pen > 0)
            painter.strokePath(piece.path,
                               QPen(color, std::max(piece.pen, thinnest), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        else
            painter.fillPath(piece.path, color);
    }
}

void StyleDrawing::paintOutline(QPainter &painter, const QColor &color, double width, double thinnest) const
{
    for (const Piece &piece : m_pieces) {
        const double pen = piece.pen > 0 ? std::max(piece.pen, thinnest) : 0;
        painter.strokePath(piece.path, QPen(color, pen + 2 * width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
}
