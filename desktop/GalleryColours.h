#pragma once

class GalleryData;
class QPixmap;

/// The gallery's pictures of colours.
namespace GalleryColours {

/// The colour ribbon editor, with a preview of colour-vision deficiency.
QPixmap drawRibbon(const GalleryData &data);
/// The colour-set dialog, with its panel for whole ranges when @p expanded.
QPixmap drawColorSet(bool expanded);
/// The dialog of the stock ramps, or their list alone.
QPixmap drawStockRamp(bool list);
/// A map of heights with its legend: one of the workspace's, or hills made up.
QPixmap drawRelief(const GalleryData &data);

} // namespace GalleryColours
