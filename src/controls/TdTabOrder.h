#pragma once

#include "common/TdCommonExport.h"

#include <QList>

class QWidget;

/// Puts the tab chain of a window in the order in which its controls are read: row by row from the top, in a row from
/// where the script begins.
///
/// What a frame, a group or a page holds is gone through as a whole before the next control. Controls stand in one row
/// when at least half of the lower one's height lies beside the other. For windows that are put together at run time,
/// or laid out by hand; call it when their layout is done.
class TDCOMMON_API CTdTabOrder
{
public:
    /// The controls below @p window that take the focus, in reading order. Windows of their own below it are left out.
    static QList<QWidget *> Collate(const QWidget *window);
    /// Puts the tab chain of @p window in that order. @return how many controls are in it
    static int Apply(QWidget *window);
};
