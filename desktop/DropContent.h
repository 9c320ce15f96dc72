#pragma once

#include "basic/TdOleDataNode.h"

#include <QStringList>

class QMimeData;

/// What a drag brings that the desktop can use.
struct DropContent
{
    CTdOleDataNode datasets; ///< the datasets among the dragged workspace items
    QStringList files;       ///< local files and folders

    explicit DropContent(const QMimeData &mime);
};
