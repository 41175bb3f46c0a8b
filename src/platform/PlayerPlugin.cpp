#include "platform/QtAudioPlayer.h"

class PlayerPlugin : public QObject, public AudioPlayerPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.sonvika.AudioPlayerPlugin/1")
    Q_INTERFACES(AudioPlayerPlugin)

public:
    std::unique_ptr<AudioPlayer> make() override { return QtAudioPlayer::make(); }
};

#include "PlayerPlugin.moc"
