#pragma once

#include <QString>

/// The program's own plug-ins: what few runs need, and what would make every start wait for its libraries.
namespace Plugins {

/// Where the plug-in of this name is, for QPluginLoader.
QString path(const QString& name);

} // namespace Plugins
