#pragma once

#include <QIcon>

/// The picture of stock ramp @p style (see CTxColorFolder::MakeStockGradient), sharp in any size and at any screen
/// scale; paler when disabled. An empty frame for a style that does not exist.
QIcon txGradientIcon(qint32 style);
