#pragma once

#include "controls/TdStyle.h"

#include <QPixmap>

#include <string_view>

/// The gallery's pictures of the library's controls.
namespace GalleryControls {

/// The window of controls with the page of @p title, as the table of pages has it.
QPixmap draw(std::string_view title);
/// The same with the list of the page's first combo box dropped.
QPixmap drawDropped(std::string_view title);

/// The dialog of line styles, fills or point symbols.
QPixmap drawStyles(TdStyle::Kind kind);

} // namespace GalleryControls
