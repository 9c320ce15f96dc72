#pragma once

#include "engine/base/TxExport.h"

#include <QList>
#include <QString>

/// One image format that the engine reads.
struct CTxImagePluginDef
{
    QString extension; ///< file extension with its leading dot, ".TIF"
    QString driver;    ///< the short name of the driver that reads it
    QString caption;   ///< what users call the format
};

/// The registered image formats, one entry for an extension.
class TX_EXPORT CTxImagePluginManager
{
public:
    /// How many entries there are. The list is made at the first call.
    static int GetImagePluginCount();
    /// The entry at 0-based @p index, null when out of range. It lives as long as the program.
    static const CTxImagePluginDef *GetPluginAt(int index);
};
