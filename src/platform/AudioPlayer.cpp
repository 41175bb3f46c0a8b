#include "platform/AudioPlayer.h"

#include "platform/Plugins.h"

#include <QPluginLoader>

std::unique_ptr<AudioPlayer> AudioPlayerPlugin::makePlayer()
{
    QPluginLoader loader(Plugins::path(QStringLiteral("sonvika-player")));
    auto* plugin = qobject_cast<AudioPlayerPlugin*>(loader.instance());
    if (!plugin)
        qWarning("%s", qUtf8Printable(loader.errorString()));
    return plugin ? plugin->make() : nullptr;
}
