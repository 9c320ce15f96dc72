#pragma once

#include "engine/base/TxExport.h"

#include <QtGlobal>

/// The stock colour ramps, for CTxColorFolder::MakeStockGradient. The values are kept in files and used by scripts:
/// never change one, add new ramps at the end. docs/color-ramps.md shows them all.
enum class TxStockGradient : qint32 {
    Grey = 0,
    GreyReversed = 1,
    Viridis = 2,
    Magma = 3,
    Plasma = 4,
    Inferno = 5,
    BlueYellow = 6,
    Cubehelix = 7,
    Blues = 8,
    Greens = 9,
    YellowGreenBlue = 10,
    YellowOrangeRed = 11,
    Heat = 12,
    BlackBody = 13,
    BlueRed = 14,
    BrownTeal = 15,
    PurpleOrange = 16,
    PurpleGreen = 17,
    BlueOrangeEven = 18,
    RedYellowGreen = 19,
    HueCircle = 20,
    Aspect = 21,
    Phase = 22,
    Elevation = 23,
    Hypsometric = 24,
    HypsometricSoft = 25,
    AridElevation = 26,
    Bathymetry = 27,
    Slope = 28,
    Temperature = 29,
    Precipitation = 30,
    Vegetation = 31,
    Spectral = 32,
    Rainbow = 33,
};

/// What a stock ramp is for, and what it promises.
struct TxStockGradientTraits
{
    enum Kind {
        Sequential, ///< from little to much
        Diverging,  ///< to both sides of a middle
        Cyclic,     ///< of directions and phases: the ends are the same colour
        Relief,     ///< heights of land, depths of the sea
        Theme       ///< known colours of a subject
    };

    Kind kind = Sequential;
    bool isUniform = false;        ///< equal steps of value look about equally large
    bool isColorBlindSafe = false; ///< its order can be told with a deficiency of red, green or blue vision
    /// The middle is a break, the level of the sea: the lower half of the colours (the lesser one of an odd count) is
    /// water, the other half is land, and the two meet without colours between.
    bool hasSeaLevel = false;
};

/// The traits of a stock ramp; those of a plain sequential ramp for one that does not exist.
TX_EXPORT TxStockGradientTraits TxGetStockGradientTraits(qint32 style);
