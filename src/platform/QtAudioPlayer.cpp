#include "platform/QtAudioPlayer.h"

#include "platform/FileSystem.h"
#include "platform/PathBytes.h"

#include <QAudioDevice>
#include <QDir>
#include <QLibraryInfo>
#include <QMediaDevices>
#include <QUrl>

#include <algorithm>
#include <utility>

#include <fcntl.h>

namespace {

/// Qt up to 6.4 prefers GStreamer, and crashes where GStreamer's plug-ins are not installed; FFmpeg needs none.
void preferFfmpeg()
{
    const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/multimedia"));
    if (!qEnvironmentVariableIsSet("QT_MEDIA_BACKEND") && plugins.exists(QStringLiteral("libffmpegmediaplugin.so")))
        qputenv("QT_MEDIA_BACKEND", "ffmpeg");
}

} // namespace

std::unique_ptr<AudioPlayer> QtAudioPlayer::make()
{
    preferFfmpeg();
    return std::unique_ptr<AudioPlayer>(new QtAudioPlayer);
}

QtAudioPlayer::QtAudioPlayer()
{
    player_.setAudioOutput(&output_);
    connect(&player_, &QMediaPlayer::playbackStateChanged, this, [this] { emit stateChanged(state()); });
    connect(&player_, &QMediaPlayer::positionChanged, this, [this] { emit positionChanged(position()); });
    connect(&player_, &QMediaPlayer::durationChanged, this, &QtAudioPlayer::durationChanged);
    connect(&player_, &QMediaPlayer::mediaStatusChanged, this, &QtAudioPlayer::checkStatus);
    connect(&player_, &QMediaPlayer::errorOccurred, this, [this] { emit failed(Problem::NoDecoder); });
}

void QtAudioPlayer::load(const QString& path)
{
    stop();
    // Anything else that bears the name, such as a pipe, could keep the program waiting.
    if (!FileSystem::isRegularFile(path)) {
        emit failed(Problem::NoFile);
        return;
    }
    if (!player_.isAvailable() || !open(path)) {
        emit failed(Problem::NoDecoder);
        return;
    }
    if (!findDevice())
        emit failed(Problem::NoDevice);
    player_.setSourceDevice(&file_, PathBytes::toUrl(path));
}

bool QtAudioPlayer::open(const QString& path)
{
    const int descriptor = ::open(PathBytes::encode(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool isOpen = file_.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    if (!isOpen)
        ::close(descriptor);
    return isOpen;
}

void QtAudioPlayer::play()
{
    if (!findDevice()) {
        emit failed(Problem::NoDevice);
        return;
    }
    player_.play();
    if (const qint64 start = std::exchange(start_, 0); start > 0)
        player_.setPosition(start);
}

void QtAudioPlayer::pause()
{
    player_.pause();
}

void QtAudioPlayer::stop()
{
    player_.stop();
    player_.setSource({});
    file_.close();
    setStart(0);
}

void QtAudioPlayer::seek(qint64 position)
{
    const qint64 wanted = std::clamp(position, qint64(0), duration());
    if (state() == State::Stopped)
        setStart(wanted);
    else
        player_.setPosition(wanted);
}

void QtAudioPlayer::setStart(qint64 position)
{
    start_ = position;
    emit positionChanged(start_);
}

AudioPlayer::State QtAudioPlayer::state() const
{
    switch (player_.playbackState()) {
    case QMediaPlayer::PlayingState:
        return State::Playing;
    case QMediaPlayer::PausedState:
        return State::Paused;
    default:
        return State::Stopped;
    }
}

qint64 QtAudioPlayer::position() const
{
    return state() == State::Stopped ? start_ : player_.position();
}

qint64 QtAudioPlayer::duration() const
{
    return player_.duration();
}

void QtAudioPlayer::checkStatus(QMediaPlayer::MediaStatus status)
{
    if (status == QMediaPlayer::LoadedMedia && !player_.hasAudio())
        emit failed(Problem::NoDecoder);
}

bool QtAudioPlayer::findDevice()
{
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (output_.device() != device)
        output_.setDevice(device);
    return !device.isNull();
}
