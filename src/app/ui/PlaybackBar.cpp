#include "app/ui/PlaybackBar.h"

#include "app/ui/Icons.h"
#include "app/ui/PositionSlider.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QStackedLayout>
#include <QToolButton>

#include <algorithm>
#include <limits>
#include <utility>

namespace {

/// Whoever closes the preview at once does not have to wait for the player.
constexpr int loadDelay = 100;
constexpr QSize iconSize(20, 20);
constexpr int controlsPage = 0;
constexpr int problemPage = 1;

QLabel* makeTimeLabel(Qt::Alignment alignment)
{
    auto* label = new QLabel;
    label->setAlignment(alignment | Qt::AlignVCenter);
    // The slider does not move about as the digits change.
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QStringLiteral("00:00")));
    return label;
}

} // namespace

PlaybackBar::PlaybackBar(AudioPlayerFactory makePlayer, QWidget* parent)
    : QWidget(parent), factory_(std::move(makePlayer))
{
    buildControls();
    connectSlider();
    connect(button_, &QToolButton::clicked, this, &PlaybackBar::togglePlayback);
    loading_.setSingleShot(true);
    loading_.setInterval(loadDelay);
    connect(&loading_, &QTimer::timeout, this, &PlaybackBar::load);
    reset();
}

PlaybackBar::~PlaybackBar()
{
    if (player_)
        player_->disconnect(this);
}

void PlaybackBar::open(const QString& path)
{
    close();
    path_ = path;
    unpainted_ = true;
    button_->setEnabled(true);
    update();
}

void PlaybackBar::close()
{
    loading_.stop();
    path_.clear();
    unpainted_ = false;
    if (player_)
        player_->stop();
    reset();
}

void PlaybackBar::focusButton()
{
    button_->setFocus(Qt::OtherFocusReason);
}

void PlaybackBar::togglePlayback()
{
    load();
    if (!player_ || !button_->isEnabled())
        return;
    if (player_->state() == AudioPlayer::State::Playing)
        player_->pause();
    else
        player_->play();
}

void PlaybackBar::seekBy(qint64 step)
{
    if (player_ && slider_->isEnabled())
        player_->seek(std::clamp<qint64>(player_->position() + step, 0, player_->duration()));
}

void PlaybackBar::showTime(qint64 position)
{
    const QString time = PositionSlider::timeText(position);
    if (time == elapsed_->text())
        return;
    elapsed_->setText(time);
    elapsed_->setAccessibleName(tr("Elapsed time: %1").arg(time));
    describePosition();
}

void PlaybackBar::describePosition()
{
    slider_->setAccessibleDescription(
        tr("%1 of %2").arg(elapsed_->text(), PositionSlider::timeText(slider_->maximum())));
}

void PlaybackBar::paintEvent(QPaintEvent* event)
{
    QWidget::paintEvent(event);
    if (std::exchange(unpainted_, false))
        loading_.start();
}

void PlaybackBar::buildControls()
{
    button_ = new QToolButton;
    button_->setObjectName(QStringLiteral("playButton"));
    button_->setAutoRaise(true);
    button_->setIconSize(iconSize);
    button_->setFocusPolicy(Qt::TabFocus);
    elapsed_ = makeTimeLabel(Qt::AlignRight);
    total_ = makeTimeLabel(Qt::AlignLeft);
    elapsed_->setObjectName(QStringLiteral("elapsedTime"));
    total_->setObjectName(QStringLiteral("totalTime"));
    slider_ = new PositionSlider;
    slider_->setObjectName(QStringLiteral("position"));
    slider_->setAccessibleName(tr("Position"));
    slider_->setFocusPolicy(Qt::TabFocus);
    problem_ = new QLabel;
    problem_->setObjectName(QStringLiteral("problem"));
    problem_->setTextFormat(Qt::PlainText);

    auto* controls = new QWidget;
    auto* line = new QHBoxLayout(controls);
    line->setContentsMargins({});
    line->addWidget(elapsed_);
    line->addWidget(slider_, 1);
    auto* all = new QHBoxLayout(this);
    all->setContentsMargins({});
    all->addWidget(button_);
    middle_ = new QStackedLayout;
    middle_->addWidget(controls);
    middle_->addWidget(problem_);
    all->addLayout(middle_, 1);
    all->addWidget(total_);
}

void PlaybackBar::connectSlider()
{
    connect(slider_, &QSlider::sliderMoved, this, &PlaybackBar::showTime);
    connect(slider_, &QSlider::sliderReleased, this, &PlaybackBar::seekToSlider);
    connect(slider_, &QSlider::valueChanged, this, [this] {
        if (!slider_->isSliderDown())
            seekToSlider();
    });
}

void PlaybackBar::makePlayer()
{
    player_ = factory_();
    if (!player_)
        return;
    connect(player_.get(), &AudioPlayer::stateChanged, this, &PlaybackBar::showState);
    connect(player_.get(), &AudioPlayer::positionChanged, this, &PlaybackBar::showPosition);
    connect(player_.get(), &AudioPlayer::durationChanged, this, &PlaybackBar::showDuration);
    connect(player_.get(), &AudioPlayer::failed, this, &PlaybackBar::showProblem);
}

void PlaybackBar::load()
{
    loading_.stop();
    unpainted_ = false;
    const QString path = std::exchange(path_, {});
    if (path.isEmpty())
        return;
    if (!player_)
        makePlayer();
    if (player_)
        player_->load(path);
    else
        showProblem(AudioPlayer::Problem::NoDecoder);
}

void PlaybackBar::reset()
{
    showState(AudioPlayer::State::Stopped);
    showDuration(0);
    showPosition(0);
    button_->setEnabled(false);
    middle_->setCurrentIndex(controlsPage);
}

void PlaybackBar::seekToSlider()
{
    if (player_)
        player_->seek(slider_->value());
}

void PlaybackBar::showState(AudioPlayer::State state)
{
    const bool playing = state == AudioPlayer::State::Playing;
    button_->setIcon(Icons::symbol(playing ? QStringLiteral("pause") : QStringLiteral("play")));
    button_->setAccessibleName(playing ? tr("Pause") : tr("Play"));
    button_->setToolTip(playing ? tr("Pause (P)") : tr("Play (P)"));
    if (playing)
        middle_->setCurrentIndex(controlsPage);
}

void PlaybackBar::showPosition(qint64 position)
{
    if (slider_->isSliderDown())
        return;
    const QSignalBlocker quiet(slider_);
    slider_->setValue(static_cast<int>(std::min<qint64>(position, slider_->maximum())));
    showTime(position);
}

void PlaybackBar::showDuration(qint64 duration)
{
    const QSignalBlocker quiet(slider_);
    slider_->setRange(0, static_cast<int>(std::clamp<qint64>(duration, 0, std::numeric_limits<int>::max())));
    slider_->setSingleStep(std::max(slider_->maximum() / 100, 1));
    slider_->setPageStep(std::max(slider_->maximum() / 10, 1));
    slider_->setEnabled(duration > 0);
    total_->setText(duration > 0 ? PositionSlider::timeText(duration) : QString());
    total_->setAccessibleName(duration > 0 ? tr("Total time: %1").arg(total_->text()) : QString());
    describePosition();
}

void PlaybackBar::showProblem(AudioPlayer::Problem problem)
{
    using enum AudioPlayer::Problem;
    switch (problem) {
    case NoFile:
        problem_->setText(tr("The file is no longer there."));
        break;
    case NoDecoder:
        problem_->setText(tr("This file cannot be played."));
        break;
    case NoDevice:
        problem_->setText(tr("There is no sound device to play on."));
        break;
    }
    button_->setEnabled(problem == NoDevice);
    middle_->setCurrentIndex(problemPage);
}
