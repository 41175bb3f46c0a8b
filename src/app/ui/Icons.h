#pragma once

#include <QIcon>
#include <QString>

/// The program's own symbols, drawn in the text colour of the moment, so they fit light, dark and disabled.
namespace Icons {

/// @param name of a picture in the program's resources, such as "open".
QIcon symbol(const QString& name);

} // namespace Icons
