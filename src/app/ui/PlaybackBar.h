#pragma once

#include "platform/AudioPlayer.h"

#include <QTimer>
#include <QWidget>

class PositionSlider;
class QLabel;
class QStackedLayout;
class QToolButton;

/// Plays one file: a button, the position, elapsed and total time; or a line that says why it cannot.
///
/// The player is made and given the file only after the bar was painted with it, since either may take a while.
class PlaybackBar : public QWidget {
    Q_OBJECT

public:
    explicit PlaybackBar(AudioPlayerFactory makePlayer, QWidget* parent = nullptr);
    ~PlaybackBar() override;

    void open(const QString& path);
    /// Ends the sound and lets go of the file.
    void close();

    /// Gives the keyboard focus to the button.
    void focusButton();
    void togglePlayback();
    /// Moves the position, in milliseconds, no further than to the ends.
    void seekBy(qint64 step);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void buildControls();
    void connectSlider();
    void makePlayer();
    /// Loads now what waits to be loaded.
    void load();
    void reset();
    void seekToSlider();
    void showState(AudioPlayer::State state);
    void showPosition(qint64 position);
    void showTime(qint64 position);
    void describePosition();
    void showDuration(qint64 duration);
    void showProblem(AudioPlayer::Problem problem);

    AudioPlayerFactory factory_;
    std::unique_ptr<AudioPlayer> player_;
    QString path_;
    /// Not painted with the file yet.
    bool unpainted_ = false;
    QTimer loading_;
    QToolButton* button_ = nullptr;
    QLabel* elapsed_ = nullptr;
    PositionSlider* slider_ = nullptr;
    QLabel* problem_ = nullptr;
    QLabel* total_ = nullptr;
    QStackedLayout* middle_ = nullptr;
};
