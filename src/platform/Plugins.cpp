#include "platform/Plugins.h"

#include <QCoreApplication>

QString Plugins::path(const QString& name)
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/" SONVIKA_PLUGIN_FOLDER "/") + name;
}
