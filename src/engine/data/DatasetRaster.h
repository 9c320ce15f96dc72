#pragma once

#include "engine/base/TxProgress.h"
#include "engine/data/TxDataset.h"

#include <QImage>
#include <QSize>

#include <functional>
#include <optional>

class TxHeightColors;

/// An image or grid dataset.
class TX_EXPORT CDatasetRaster : public CTxDataset
{
public:
    /// Kinds of image files that Append() takes. Do not change the values.
    enum FileType : qint32 {
        AutoDetect = 0, ///< by content
        TIFF = 1,
        PNG = 2,
        JPEG = 3,
        BMP = 4,
        AsciiGrid = 5
    };

    ~CDatasetRaster() override;

    bool IsVector() const override { return false; }
    bool IsOpen() const override;
    bool Open() override;
    bool Close() override;
    CRect2D GetBounds() const override;
    void GetProjection(CTxPJCoordSys &coordSys) const override;

    /// Width and height in cells; empty when it cannot be told. Opens the file for a moment when it is closed.
    QSize GetSize() const;
    /// How many bands there are, 0 when it cannot be told.
    int GetBandCount() const;
    /// The pixel format's text as GDAL names it ("Byte", "Float32", …), empty when it cannot be told.
    QString GetPixelFormat() const;
    /// The value of the cell that holds the point (@p x, @p y), of the 1-based @p band. Nothing where there is no cell,
    /// where the cell has no data, and while the dataset is closed.
    std::optional<double> GetValue(double x, double y, int band = 1) const;
    /// Smallest and largest value of a band, quickly estimated. Nothing when there are none.
    std::optional<std::pair<double, double>> GetValueRange(int band = 1) const;

    /// Paints the part of the dataset that lies in @p bounds (in its coordinate system) into an image of @p size.
    ///
    /// Cells without data and places beyond the dataset stay transparent. Images show their colours; grids show
    /// their value range through @p ramp (256 colours, low to high; grey when empty). Overviews are used where the file
    /// has them. The dataset must be open; a null image tells a failure.
    QImage Render(const CRect2D &bounds, const QSize &size, const QList<QRgb> &ramp = {}) const;

    /// The same, but the first band of a grid shows its values through @p colors (as above when there are none),
    /// whatever range of values it has.
    QImage Render(const CRect2D &bounds, const QSize &size, const TxHeightColors &colors) const;

    /// Mosaics @p source into this dataset: its cells that hold data replace what was there; with @p flag false only
    /// cells without data are filled.
    ///
    /// Where the two have the same cells (size, place and coordinate system agree to a hundredth of a cell) they are
    /// copied bit by bit. Else every cell of this dataset whose middle lies in a cell of the source with data gets a
    /// value: between the nearest four where the values are continuous, their average where the source is more than
    /// twice as fine, the nearest one where they may be classes. Continuous are images, elevation models and floating
    /// point grids; classes are cells with a palette or categories, and grids of whole numbers. Cells without data take
    /// no part. A source without a coordinate system is taken to be in that of this dataset; else it is reprojected
    /// (to an eighth of a cell). Whole numbers are rounded to; a value beyond the pixel format's range makes the whole
    /// fail, as do bands that do not match. Grey becomes all three colours, a palette its colours, a missing alpha
    /// band opaque.
    ///
    /// All or nothing: an append that fails or is stopped leaves the dataset as it was. Of an image file, a copy in a
    /// hidden folder beside it is worked on and takes its place in the end, so there must be room for it.
    /// @param[in] progress counts cells of this dataset; the answer false stops the work. Asked too while the file is
    /// copied, when the total is not known yet, and while overviews are made, when all is done.
    /// @return false when either is closed, this is read-only, the two do not overlap, the source has no georeference
    /// while this has one, or nothing of it that holds data lies here. A dataset laid into itself changes nothing.
    bool Append(CDatasetRaster *source, bool flag = true, const TxProgress &progress = {});
    /// Mosaics an image file into this dataset, otherwise as above.
    ///
    /// @p bounds, in this dataset's coordinate system, is where the outer edges of the image are laid, whatever the
    /// file itself says; the default rectangle CRect2D() leaves it to the file's own georeference, without which the
    /// image is refused. @p type names the only format that is accepted.
    bool Append(const QString &path, const CRect2D &bounds, FileType type = AutoDetect, bool flag = true,
                const TxProgress &progress = {});

private:
    friend class TxDataSourcePrivate;
    friend class TxRasterPrivate;
    CDatasetRaster(CTxDataSource *dataSource, const QString &name, CElemDatasetInfo::Type type);

    const std::unique_ptr<class TxRasterPrivate> d;
};
