#pragma once

#include "engine/data/ElemDatasetInfo.h"

#include <QPixmap>

class GalleryData;

/// The gallery's pictures of layers and their styles.
namespace GalleryStyles {

/// The dialog for the looks of a layer of kind @p kind; @p isWrong: with a number out of range.
QPixmap drawDialog(CElemDatasetInfo::Type kind, bool isWrong);
/// A map with styled lines, regions and symbols.
QPixmap drawMap(const GalleryData &data);

} // namespace GalleryStyles
