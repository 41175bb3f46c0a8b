#pragma once

#include "platform/AudioPlayer.h"

#include <QAudioOutput>
#include <QFile>
#include <QMediaPlayer>

/// Plays by Qt Multimedia. The first one that is made loads its backend, which takes a while.
class QtAudioPlayer : public AudioPlayer {
    Q_OBJECT

public:
    static std::unique_ptr<AudioPlayer> make();

    void load(const QString& path) override;
    void play() override;
    void pause() override;
    void stop() override;
    void seek(qint64 position) override;

    State state() const override;
    qint64 position() const override;
    qint64 duration() const override;

private:
    QtAudioPlayer();

    bool open(const QString& path);
    void checkStatus(QMediaPlayer::MediaStatus status);
    /// Directs the sound to the desktop's present default device. @return false where there is none.
    bool findDevice();
    void setStart(qint64 position);

    /// Read by the player, which by itself finds no files in Qt 6.4 whose names go beyond Latin-1.
    QFile file_;
    QMediaPlayer player_;
    QAudioOutput output_;
    /// Where to begin: the backend takes no position while it is stopped.
    qint64 start_ = 0;
};
