#pragma once

#include "common/TdCommonExport.h"

#include <QImage>
#include <QString>

class QIODevice;
class QPainter;

/// A device-independent bitmap: pixels in memory, of 1, 4, 8, 24 or 32 bits, the first three with a palette.
///
/// A value type; copies share their pixels until one changes. Rows go from top to bottom and begin at multiples of four
/// bytes. Of 1 bit, the first pixel is the highest bit; of 4 and 8 bits a pixel is one byte, an index into the palette
/// (of at most 16 or 256 colours); of 24 bits it is blue, green, red; of 32 bits a QRgb with its opacity. Conversions
/// to fewer than 32 bits put what is transparent on white.
class TDCOMMON_API CDIB
{
public:
    static constexpr int greatestSide = 32767;                   ///< pixels
    static constexpr qint64 greatestArea = qint64(64) * 1000000; ///< pixels; larger pictures are for a raster dataset

    CDIB() = default;
    /// The pixels of @p image, in the depth that is nearest to it; no bitmap where it is too large.
    explicit CDIB(const QImage &image);

    /// Makes a bitmap of the given size and depth: white, with a palette of grey levels where it has one.
    /// @return false, and nothing changes, for a depth or a size that cannot be
    bool Create(int width, int height, int bitCount);

    /// Reads an image file of any format that Qt reads. A palette of up to 16 colours gives 4 bits, one of up to 2
    /// colours with one bit a pixel gives 1 bit.
    /// @param[out] error when given, why it was refused, for the user
    /// @return false, and nothing changes, when the file is missing, no image, damaged or too large; too large ones are
    /// refused before they are decoded where their format says the size in front
    bool Load(const QString &path, QString *error = nullptr);
    /// The same from an open device, which messages call @p name.
    bool Load(QIODevice &device, const QString &name, QString *error = nullptr);
    /// Writes an image file, the whole or nothing: what was there before stays until the new one is complete.
    /// @param format "png", "bmp", "jpg" …; empty for the one that the file's extension stands for
    bool Save(const QString &path, const QByteArray &format = QByteArray(), QString *error = nullptr) const;

    bool IsNull() const { return m_image.isNull(); }
    int GetWidth() const { return m_image.width(); }
    int GetHeight() const { return m_image.height(); }
    /// 1, 4, 8, 24 or 32 bits a pixel; 0 without a bitmap.
    int GetBitCount() const { return m_bitCount; }
    /// From the beginning of a row to that of the next, in bytes.
    qsizetype GetRowBytes() const { return m_image.bytesPerLine(); }
    /// The pixels, GetHeight() rows of GetRowBytes(); null without a bitmap. Valid until the bitmap changes.
    const uchar *GetBits() const { return m_image.constBits(); }
    /// The same to be written to. An index without a colour in the palette would not be drawn.
    uchar *GetBits() { return m_image.bits(); }

    /// The palette; empty for 24 and 32 bits.
    QList<QRgb> GetPalette() const { return m_image.colorTable(); }
    /// Sets the palette: missing colours become black. @return false, and nothing changes, where there is no palette
    /// or @p palette has more colours than the depth has indices
    bool SetPalette(const QList<QRgb> &palette);

    /// Converts to @p bitCount bits a pixel. To 4 and 8 bits, fewer colours than the image has are chosen to suit it, and
    /// an image that has few enough keeps them exactly; 1 bit is black and white. @param dither spreads the errors over the neighbours
    /// @return false, and nothing changes, without a bitmap or for another depth
    bool ConvertTo(int bitCount, bool dither = false);
    /// Scales to the given size, and keeps the depth. @param smooth averages neighbours (a bitmap with a palette gets
    /// a new one) @return false, and nothing changes, for a size that cannot be
    bool Scale(int width, int height, bool smooth = true);

    /// Draws the part @p source (all of it where it is empty) into @p target, scaled to fit.
    void Draw(QPainter &painter, const QRect &target, const QRect &source = QRect()) const;

    /// The pixels as an image; it shares them.
    QImage ToImage() const { return m_image; }

private:
    QImage m_image;
    int m_bitCount = 0;
};
