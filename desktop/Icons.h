#pragma once

#include <QIcon>
#include <QString>

/// The desktop's icons.
namespace Icons {

/// The icon of a command, "open" for example; it takes the palette's text colour where it is drawn in one colour. Null
/// when there is none of that name.
QIcon action(const QString &name);

/// The program's icon.
QIcon application();

} // namespace Icons
