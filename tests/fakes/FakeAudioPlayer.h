#pragma once

#include "platform/AudioPlayer.h"

#include <QStringList>

#include <optional>

/// A player without sound, whose time stands still.
class FakeAudioPlayer : public AudioPlayer {
    Q_OBJECT

public:
    void load(const QString& path) override
    {
        loaded.append(path);
        if (problem)
            emit failed(*problem);
        setDuration(length);
    }
    void play() override
    {
        if (problem)
            emit failed(*problem);
        else
            setState(State::Playing);
    }
    void pause() override { setState(State::Paused); }
    void stop() override
    {
        setState(State::Stopped);
        seek(0);
        setDuration(0);
    }
    void seek(qint64 position) override { emit positionChanged(position_ = position); }

    State state() const override { return state_; }
    qint64 position() const override { return position_; }
    qint64 duration() const override { return duration_; }

    QStringList loaded;
    std::optional<Problem> problem;
    qint64 length = 187'000;

private:
    void setState(State state) { emit stateChanged(state_ = state); }
    void setDuration(qint64 duration) { emit durationChanged(duration_ = duration); }

    State state_ = State::Stopped;
    qint64 position_ = 0;
    qint64 duration_ = 0;
};
