#include "controls/DIB.h"

#include "common/TdModule.h"
#include "controls/PaletteReduction.h"
#include "res/StringId.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QSaveFile>

#include <algorithm>
#include <array>
#include <cerrno>

namespace {

/// The pixel format of a depth.
struct DepthRow
{
    int bitCount;
    QImage::Format format;
    int colorCount; ///< indices into the palette; 0 for no palette
};
constexpr std::array depths = {
    DepthRow{1, QImage::Format_Mono, 2},       DepthRow{4, QImage::Format_Indexed8, 16},
    DepthRow{8, QImage::Format_Indexed8, 256}, DepthRow{24, QImage::Format_BGR888, 0},
    DepthRow{32, QImage::Format_ARGB32, 0},
};

const DepthRow *findDepth(int bitCount)
{
    const auto *row = std::find_if(depths.begin(), depths.end(),
                                   [bitCount](const DepthRow &depth) { return depth.bitCount == bitCount; });
    return row == depths.end() ? nullptr : row;
}

bool isPossible(const QSize &size)
{
    return size.width() > 0 && size.height() > 0 && size.width() <= CDIB::greatestSide &&
           size.height() <= CDIB::greatestSide && qint64(size.width()) * size.height() <= CDIB::greatestArea;
}

bool refuse(QString *error, const QString &text)
{
    if (error)
        *error = text;
    return false;
}

/// What is wrong with a path at which there is something else than a file; empty for none. Reading from a pipe would
/// wait for who writes into it, and saving would put a file in the place of a device.
QString noFileError(const QString &path)
{
    const QFileInfo info(path);
    return !info.exists() || info.isFile() ? QString() : qt_error_string(info.isDir() ? EISDIR : EINVAL);
}

/// The depth that keeps everything of @p image.
int depthOf(const QImage &image)
{
    if (image.depth() == 1)
        return 1;
    if (image.format() == QImage::Format_Grayscale8)
        return 8;
    if (image.format() == QImage::Format_Indexed8 && !image.hasAlphaChannel())
        return image.colorCount() <= 16 ? 4 : 8;
    return image.hasAlphaChannel() ? 32 : 24;
}

/// The image with a color for every index that its pixels have: Qt reads beyond a palette that is too short.
QImage withWholePalette(const QImage &image)
{
    const bool isByte = image.format() == QImage::Format_Indexed8;
    const int wanted = isByte ? 256 : image.depth() == 1 ? 2 : 0;
    const int given = image.colorCount();
    if (given >= wanted)
        return image;
    bool isShort = !isByte || given == 0;
    for (int y = 0; y < image.height() && !isShort; ++y) {
        const uchar *line = image.constScanLine(y);
        isShort = *std::max_element(line, line + image.width()) >= given;
    }
    if (!isShort)
        return image;
    QList<QRgb> colors = image.colorTable();
    colors.resize(wanted, qRgb(0, 0, 0));
    if (given == 0) { // grey levels, as Qt draws it
        for (int i = 0; i < wanted; ++i)
            colors[i] = qRgb(i * 255 / (wanted - 1), i * 255 / (wanted - 1), i * 255 / (wanted - 1));
    }
    QImage whole = image;
    whole.setColorTable(colors);
    return whole;
}

/// Lets Qt read images as large as a bitmap may be, for as long as it exists; its own limit is half of that.
class LargeImages
{
public:
    LargeImages()
    {
        if (m_usual > 0 && m_usual < wanted)
            QImageReader::setAllocationLimit(wanted);
    }
    ~LargeImages() { QImageReader::setAllocationLimit(m_usual); }
    Q_DISABLE_COPY(LargeImages)

private:
    static constexpr int wanted = static_cast<int>((CDIB::greatestArea * 4 >> 20) + 1); // megabytes
    const int m_usual = QImageReader::allocationLimit();
};

/// What is transparent, on white.
QImage opaque(const QImage &image)
{
    if (!image.hasAlphaChannel())
        return image;
    QImage result(image.size(), QImage::Format_RGB32);
    result.fill(Qt::white);
    QPainter(&result).drawImage(0, 0, image);
    return result;
}

/// The image in the depth @p depth, with pixels and palette laid out as that wants.
QImage converted(const QImage &image, const DepthRow &depth, bool dither)
{
    if (depth.bitCount == 32)
        return image.convertToFormat(depth.format);
    const QImage source = opaque(image);
    if (depth.colorCount == 0)
        return source.convertToFormat(depth.format);
    if (depth.bitCount == 1 && source.depth() == 1)
        return source.convertToFormat(depth.format); // the palette stays
    if (source.format() == depth.format && source.colorCount() <= depth.colorCount)
        return source;
    if (depth.bitCount == 1)
        return source.convertToFormat(depth.format, dither ? Qt::DiffuseDither : Qt::ThresholdDither);
    return PaletteReduction::indexed(source, PaletteReduction::palette(source, depth.colorCount), dither);
}

} // namespace

CDIB::CDIB(const QImage &image)
{
    if (!isPossible(image.size()))
        return;
    const QImage whole = withWholePalette(image);
    const int bitCount = depthOf(whole);
    m_image = converted(whole, *findDepth(bitCount), false);
    m_image.setDevicePixelRatio(1.0); // a bitmap knows pixels only
    m_bitCount = m_image.isNull() ? 0 : bitCount;
}

bool CDIB::Create(int width, int height, int bitCount)
{
    const DepthRow *depth = findDepth(bitCount);
    if (!depth || !isPossible({width, height}))
        return false;
    QImage image(width, height, depth->format);
    if (image.isNull())
        return false;
    QList<QRgb> greys;
    for (int i = 0; i < depth->colorCount; ++i) {
        const int level = i * 255 / (depth->colorCount - 1);
        greys.append(qRgb(level, level, level));
    }
    image.setColorTable(greys);
    if (depth->colorCount > 0)
        image.fill(static_cast<uint>(depth->colorCount - 1));
    else
        image.fill(Qt::white);
    m_image = image;
    m_bitCount = bitCount;
    return true;
}

bool CDIB::Load(const QString &path, QString *error)
{
    QFile file(path);
    if (const QString problem = noFileError(path); !problem.isEmpty())
        return refuse(error, CTdModule::LoadString(TdStringId::DibUnreadable).arg(path, problem));
    if (!file.open(QIODevice::ReadOnly))
        return refuse(error, CTdModule::LoadString(TdStringId::DibUnreadable).arg(path, file.errorString()));
    return Load(file, path, error);
}

bool CDIB::Load(QIODevice &device, const QString &name, QString *error)
{
    const auto tooLarge = [&](const QSize &size) {
        return refuse(error, CTdModule::LoadString(TdStringId::DibTooLarge)
                                 .arg(name, QString::number(size.width()), QString::number(size.height())));
    };
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (const QSize size = reader.size(); size.isValid() && !isPossible(size))
        return tooLarge(size);
    const LargeImages large;
    const QImage image = reader.read();
    if (image.isNull())
        return refuse(error, CTdModule::LoadString(TdStringId::DibUnreadable).arg(name, reader.errorString()));
    if (!isPossible(image.size()))
        return tooLarge(image.size());
    CDIB read(image);
    if (read.IsNull())
        return tooLarge(image.size());
    *this = std::move(read);
    return true;
}

bool CDIB::Save(const QString &path, const QByteArray &format, QString *error) const
{
    const auto fail = [&](const QString &why) {
        return refuse(error, CTdModule::LoadString(TdStringId::DibNotSaved).arg(path, why));
    };
    if (IsNull())
        return fail(CTdModule::LoadString(TdStringId::DibEmpty));
    if (const QString problem = noFileError(path); !problem.isEmpty())
        return fail(problem);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return fail(file.errorString());
    QImageWriter writer(&file, format.isEmpty() ? QFileInfo(path).suffix().toLower().toLatin1() : format);
    if (!writer.write(m_image))
        return fail(file.error() == QFileDevice::NoError
                        ? writer.errorString()
                        : file.errorString()); // the file is given up, and what was there stays
    return file.commit() || fail(file.errorString());
}

bool CDIB::SetPalette(const QList<QRgb> &palette)
{
    const DepthRow *depth = findDepth(m_bitCount);
    if (!depth || palette.isEmpty() || palette.size() > depth->colorCount)
        return false;
    QList<QRgb> whole = palette;
    for (QRgb &color : whole)
        color |= 0xFF000000U;
    // Every index that a pixel may have is given a colour.
    whole.resize(depth->colorCount, qRgb(0, 0, 0));
    m_image.setColorTable(whole);
    return true;
}

bool CDIB::ConvertTo(int bitCount, bool dither)
{
    const DepthRow *depth = findDepth(bitCount);
    if (!depth || IsNull())
        return false;
    if (bitCount == m_bitCount)
        return true;
    QImage image = converted(m_image, *depth, dither);
    if (image.isNull())
        return false;
    m_image = std::move(image);
    m_bitCount = bitCount;
    return true;
}

bool CDIB::Scale(int width, int height, bool smooth)
{
    if (IsNull() || !isPossible({width, height}))
        return false;
    QImage image = m_image.scaled(width, height, Qt::IgnoreAspectRatio,
                                  smooth ? Qt::SmoothTransformation : Qt::FastTransformation);
    image = converted(image, *findDepth(m_bitCount), false);
    if (image.isNull())
        return false;
    m_image = std::move(image);
    return true;
}

void CDIB::Draw(QPainter &painter, const QRect &target, const QRect &source) const
{
    if (IsNull() || target.isEmpty())
        return;
    painter.drawImage(target, m_image, source.isEmpty() ? m_image.rect() : source);
}
