#pragma once

#include <QObject>
#include <QString>
#include <QtPlugin>

#include <functional>
#include <memory>

/// Plays one audio file. Times are in milliseconds.
class AudioPlayer : public QObject {
    Q_OBJECT

public:
    enum class State { Stopped, Playing, Paused };
    enum class Problem {
        NoFile,    ///< there is no such file any more
        NoDecoder, ///< the system cannot play this file: it lacks what is needed, or the file is damaged
        NoDevice,  ///< nothing to play the sound on; playing may be tried again
    };

    /// Takes the file at @p path in the place of the one before; nothing is heard yet.
    virtual void load(const QString& path) = 0;
    /// Plays on from the position; after the end, from the start.
    virtual void play() = 0;
    virtual void pause() = 0;
    /// Ends playing and lets go of the file.
    virtual void stop() = 0;
    virtual void seek(qint64 position) = 0;

    virtual State state() const = 0;
    virtual qint64 position() const = 0;
    /// 0 while it is not known.
    virtual qint64 duration() const = 0;

signals:
    void stateChanged(AudioPlayer::State state);
    void positionChanged(qint64 position);
    void durationChanged(qint64 duration);
    void failed(AudioPlayer::Problem problem);
};

/// Gives nothing where no player can be had.
using AudioPlayerFactory = std::function<std::unique_ptr<AudioPlayer>()>;

/// What makes players, in a plug-in.
class AudioPlayerPlugin {
public:
    virtual ~AudioPlayerPlugin() = default;

    virtual std::unique_ptr<AudioPlayer> make() = 0;

    /// An AudioPlayerFactory; loads the plug-in.
    static std::unique_ptr<AudioPlayer> makePlayer();
};

Q_DECLARE_INTERFACE(AudioPlayerPlugin, "org.sonvika.AudioPlayerPlugin/1")
