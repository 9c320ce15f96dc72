#include "colour/RampText.h"

#include "engine/base/TxNumberText.h"

#include <algorithm>
#include <cmath>
#include <limits>

RampText::Lines::Lines(const QByteArray &bytes) : m_bytes(bytes)
{
    if (bytes.startsWith("\xEF\xBB\xBF")) // a mark of UTF-8
        m_next = 3;
}

bool RampText::Lines::next()
{
    if (m_next >= m_bytes.size())
        return false;
    qsizetype end = m_next;
    while (end < m_bytes.size() && m_bytes[end] != '\n' && m_bytes[end] != '\r')
        ++end;
    m_line = QString::fromLatin1(m_bytes.constData() + m_next, end - m_next);
    m_text = QStringView(m_line).trimmed();
    const bool isPair = end + 1 < m_bytes.size() && m_bytes[end] == '\r' && m_bytes[end + 1] == '\n';
    m_next = end + (isPair ? 2 : 1);
    ++m_number;
    return true;
}

std::vector<QStringView> RampText::words(QStringView text, size_t most)
{
    std::vector<QStringView> result;
    for (qsizetype i = 0; i < text.size() && result.size() <= most;) {
        if (text[i].isSpace()) {
            ++i;
            continue;
        }
        const qsizetype begin = i;
        while (i < text.size() && !text[i].isSpace())
            ++i;
        result.push_back(text.sliced(begin, i - begin));
    }
    return result;
}

std::vector<QStringView> RampText::parts(QStringView text, QChar separator, size_t most)
{
    std::vector<QStringView> result;
    while (result.size() < most) {
        const qsizetype end = text.indexOf(separator);
        result.push_back(text.first(end < 0 ? text.size() : end));
        if (end < 0)
            return result;
        text = text.sliced(end + 1);
    }
    result.push_back(text);
    return result;
}

bool RampText::readNumber(QStringView text, double &number)
{
    bool isNumber = false;
    number = TxNumberText::toDouble(text, &isNumber);
    return isNumber && std::isfinite(number);
}

COLORREF RampText::color(const Channels &channels)
{
    const auto level = [](double channel) { return static_cast<int>(std::lround(std::clamp(channel, 0.0, 255.0))); };
    return TxColorRef::make(level(channels[0]), level(channels[1]), level(channels[2]));
}

RampText::Channels RampText::channels(COLORREF color)
{
    return {double(TxColorRef::red(color)), double(TxColorRef::green(color)), double(TxColorRef::blue(color))};
}

RampText::Channels RampText::fromHsv(double hue, double saturation, double value)
{
    // A channel is value where the hue is within 60 degrees of its own, falls over the next 60 and stays low beyond.
    const auto channel = [&](double own) {
        const double away = std::abs(std::remainder(hue - own, 360.0));
        return 255 * value * (1 - saturation * std::clamp(away / 60 - 1, 0.0, 1.0));
    };
    return {channel(0), channel(120), channel(240)};
}

std::array<double, 3> RampText::toHsv(const Channels &channels)
{
    const auto [red, green, blue] = channels;
    const double most = std::max({red, green, blue}), span = most - std::min({red, green, blue});
    if (span <= 0)
        return {0, 0, most / 255};
    double sixth = 0;
    if (most == red)
        sixth = (green - blue) / span;
    else if (most == green)
        sixth = (blue - red) / span + 2;
    else
        sixth = (red - green) / span + 4;
    return {60 * (sixth < 0 ? sixth + 6 : sixth), span / most, most / 255};
}

bool RampText::appendWay(ColorRamp::Stops &stops, double from, double to, const std::function<Channels(double)> &at,
                         double corner)
{
    struct Piece
    {
        double begin, end;
        int depth;
    };
    constexpr int deepest = 10;
    constexpr double unseen = 0.5;
    const auto isStraight = [&](const Piece &piece) {
        const Channels first = at(piece.begin), last = at(piece.end);
        const double toCorner = (corner - piece.begin) / (piece.end - piece.begin);
        for (const double t : {0.25, 0.5, 0.75, std::clamp(toCorner, 0.0, 1.0)}) {
            const Channels real = at(piece.begin + (piece.end - piece.begin) * t);
            for (size_t i = 0; i < real.size(); ++i) {
                if (std::abs(first[i] + (last[i] - first[i]) * t - real[i]) > unseen)
                    return false;
            }
        }
        return true;
    };
    const auto append = [&](double t) {
        stops.push_back({std::clamp(from * (1 - t) + to * t, from, to), color(at(t))});
    };
    append(0);
    const size_t ends = stops.size() + 1;
    std::vector<Piece> pieces = {{0, 1, 0}};
    while (!pieces.empty()) { // depth first, so that stops come in order
        const Piece piece = pieces.back();
        pieces.pop_back();
        if (!(to > from) || piece.depth == deepest || isStraight(piece)) {
            append(piece.end);
            continue;
        }
        const bool atCorner = piece.depth == 0 && corner > 0 && corner < 1;
        const double split = atCorner ? corner : (piece.begin + piece.end) / 2;
        pieces.push_back({split, piece.end, piece.depth + 1});
        pieces.push_back({piece.begin, split, piece.depth + 1});
    }
    return stops.size() > ends;
}
