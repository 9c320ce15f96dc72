#include "controls/PaletteReduction.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <vector>

namespace {

constexpr int channels = 3;
constexpr int binBits = 5; // of each channel
constexpr int binCount = 1 << (channels * binBits);

using Channels = std::array<int, channels>;

Channels channelsOf(QRgb pixel)
{
    return {qRed(pixel), qGreen(pixel), qBlue(pixel)};
}

int binOf(const Channels &color)
{
    constexpr int dropped = 8 - binBits;
    return (color[0] >> dropped) << (2 * binBits) | (color[1] >> dropped) << binBits | color[2] >> dropped;
}

/// The pixels whose colours fall together.
struct Bin
{
    qint64 count = 0;
    std::array<qint64, channels> sum{};

    int mean(int channel) const { return static_cast<int>(sum[static_cast<size_t>(channel)] / count); }
};

/// Bins next to one another, to become one colour.
struct Box
{
    size_t begin;
    size_t end;
    int widest = 0; ///< the channel in which the bins differ most
    int spread = 0; ///< how much they do
};

Box boxOf(const std::vector<Bin> &bins, size_t begin, size_t end)
{
    Box box{begin, end};
    for (int channel = 0; channel < channels; ++channel) {
        int least = 255, most = 0;
        for (size_t i = begin; i < end; ++i) {
            least = std::min(least, bins[i].mean(channel));
            most = std::max(most, bins[i].mean(channel));
        }
        if (most - least > box.spread) {
            box.spread = most - least;
            box.widest = channel;
        }
    }
    return box;
}

QRgb colorOf(const std::vector<Bin> &bins, const Box &box)
{
    Bin all;
    for (size_t i = box.begin; i < box.end; ++i) {
        all.count += bins[i].count;
        for (size_t channel = 0; channel < channels; ++channel)
            all.sum[channel] += bins[i].sum[channel];
    }
    return qRgb(all.mean(0), all.mean(1), all.mean(2));
}

/// The different colours of @p image, in order; stops as soon as there are more than @p count.
QList<QRgb> distinctColors(const QImage &image, int count)
{
    QList<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        QRgb last = ~line[0];
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = line[x] | 0xFF000000U;
            if (pixel == last)
                continue;
            last = pixel;
            const auto at = std::lower_bound(colors.cbegin(), colors.cend(), pixel);
            if (at != colors.cend() && *at == pixel)
                continue;
            if (colors.size() == count)
                return {};
            colors.insert(at, pixel);
        }
    }
    return colors;
}

/// Finds the nearest colour of a palette; of several the first.
class NearestColor
{
public:
    explicit NearestColor(const QList<QRgb> &palette) : m_candidates(static_cast<size_t>(binCount))
    {
        for (const QRgb color : palette)
            m_colors.push_back(channelsOf(color));
    }

    int of(const Channels &color)
    {
        const int bin = binOf(color);
        std::vector<int> &candidates = m_candidates[static_cast<size_t>(bin)];
        if (candidates.empty())
            candidates = candidatesOf(bin);
        int best = 0, least = std::numeric_limits<int>::max();
        for (const int candidate : candidates) {
            const Channels &other = at(candidate);
            int distance = 0;
            for (size_t channel = 0; channel < channels; ++channel)
                distance += (color[channel] - other[channel]) * (color[channel] - other[channel]);
            if (distance < least) {
                least = distance;
                best = candidate;
            }
        }
        return best;
    }

    const Channels &at(int index) const { return m_colors[static_cast<size_t>(index)]; }

private:
    /// The colours, in order, that may be the nearest to something in a bin: a few of many. Left out is what is farther
    /// from the nearest place of the bin than another is from its farthest.
    std::vector<int> candidatesOf(int bin) const
    {
        constexpr int width = 1 << (8 - binBits);
        std::vector<int> nearest;
        int bound = std::numeric_limits<int>::max();
        for (const Channels &color : m_colors) {
            int near = 0, far = 0;
            for (size_t channel = 0; channel < channels; ++channel) {
                const int place = bin >> ((channels - 1 - static_cast<int>(channel)) * binBits) & ((1 << binBits) - 1);
                const int below = place * width - color[channel]; // from the colour to the ends of the bin
                const int above = below + width - 1;
                const int gap = below > 0 ? below : above < 0 ? -above : 0;
                const int reach = std::max(std::abs(below), std::abs(above));
                near += gap * gap;
                far += reach * reach;
            }
            nearest.push_back(near);
            bound = std::min(bound, far);
        }
        std::vector<int> candidates;
        for (size_t i = 0; i < nearest.size(); ++i) {
            if (nearest[i] <= bound)
                candidates.push_back(static_cast<int>(i));
        }
        return candidates;
    }

    std::vector<Channels> m_colors;
    std::vector<std::vector<int>> m_candidates; ///< by bin, made when they are needed first
};

} // namespace

QList<QRgb> PaletteReduction::palette(const QImage &image, int count)
{
    const QImage pixels = image.convertToFormat(QImage::Format_RGB32);
    if (pixels.isNull())
        return {};
    if (const QList<QRgb> all = distinctColors(pixels, count); !all.isEmpty())
        return all;
    std::vector<Bin> bins(static_cast<size_t>(binCount));
    for (int y = 0; y < pixels.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(pixels.constScanLine(y));
        for (int x = 0; x < pixels.width(); ++x) {
            const Channels color = channelsOf(line[x]);
            Bin &bin = bins[static_cast<size_t>(binOf(color))];
            ++bin.count;
            for (size_t channel = 0; channel < channels; ++channel)
                bin.sum[channel] += color[channel];
        }
    }
    std::erase_if(bins, [](const Bin &bin) { return bin.count == 0; });
    std::vector<Box> boxes{boxOf(bins, 0, bins.size())};
    while (static_cast<int>(boxes.size()) < count) {
        const auto widest = std::max_element(boxes.begin(), boxes.end(),
                                             [](const Box &a, const Box &b) { return a.spread < b.spread; });
        const Box box = *widest;
        if (box.spread == 0)
            break; // no box has two bins that differ
        const auto first = bins.begin() + static_cast<std::ptrdiff_t>(box.begin);
        const auto last = bins.begin() + static_cast<std::ptrdiff_t>(box.end);
        std::sort(first, last, [&box](const Bin &a, const Bin &b) { return a.mean(box.widest) < b.mean(box.widest); });
        qint64 total = 0;
        for (size_t i = box.begin; i < box.end; ++i)
            total += bins[i].count;
        size_t middle = box.begin;
        for (qint64 before = 0; middle + 1 < box.end && before + bins[middle].count <= total / 2; ++middle)
            before += bins[middle].count;
        middle = std::max(middle, box.begin + 1);
        *widest = boxOf(bins, box.begin, middle);
        boxes.push_back(boxOf(bins, middle, box.end));
    }
    QList<QRgb> colors;
    for (const Box &box : boxes)
        colors.append(colorOf(bins, box));
    return colors;
}

QImage PaletteReduction::indexed(const QImage &image, const QList<QRgb> &palette, bool dither)
{
    const QImage pixels = image.convertToFormat(QImage::Format_RGB32);
    QImage result(pixels.size(), QImage::Format_Indexed8);
    if (pixels.isNull() || result.isNull() || palette.isEmpty())
        return {};
    result.setColorTable(palette);
    NearestColor nearest(palette);
    // Errors in sixteenths, of this row and the next, with a pixel of room on either side.
    const size_t room = static_cast<size_t>(pixels.width()) + 2;
    std::vector<Channels> here(room), below(room);
    for (int y = 0; y < pixels.height(); ++y) {
        const auto *from = reinterpret_cast<const QRgb *>(pixels.constScanLine(y));
        uchar *to = result.scanLine(y);
        std::fill(below.begin(), below.end(), Channels{});
        for (int x = 0; x < pixels.width(); ++x) {
            Channels color = channelsOf(from[x]);
            const size_t at = static_cast<size_t>(x) + 1;
            for (size_t channel = 0; dither && channel < channels; ++channel)
                color[channel] = std::clamp(color[channel] + here[at][channel] / 16, 0, 255);
            const int index = nearest.of(color);
            to[x] = static_cast<uchar>(index);
            for (size_t channel = 0; dither && channel < channels; ++channel) {
                const int error = color[channel] - nearest.at(index)[channel];
                here[at + 1][channel] += error * 7;
                below[at - 1][channel] += error * 3;
                below[at][channel] += error * 5;
                below[at + 1][channel] += error;
            }
        }
        std::swap(here, below);
    }
    return result;
}
