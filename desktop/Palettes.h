#pragma once

#include <QPalette>

/// Fixed palettes, for pictures that look the same everywhere.
namespace Palettes {

QPalette light();
QPalette dark();

} // namespace Palettes
