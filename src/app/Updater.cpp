#include "app/Updater.h"

#include "platform/FeedFetcher.h"
#include "platform/UserDefaults.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QStandardPaths>
#include <QVersionNumber>

using namespace std::chrono_literals;

namespace {

constexpr auto firstLook = 5s;
/// A month does not fit into one timer, and a computer may sleep in between.
constexpr auto timeBetweenLooks = 1h;
constexpr qint64 shortestInterval = 3600;
constexpr qint64 maxAddressLength = 2048;
constexpr qint64 maxVersionLength = 40;

/// Empty unless the text is an https address with nothing odd in it.
QUrl httpsAddress(const QString& text)
{
    const QUrl url(text, QUrl::StrictMode);
    const bool plain = url.isValid() && url.scheme() == QLatin1String("https") && !url.host().isEmpty()
                       && url.userInfo().isEmpty() && text.size() <= maxAddressLength;
    return plain ? url : QUrl();
}

/// Null unless the whole text is a version. 1.2 and 1.2.0 are the same.
QVersionNumber versionIn(const QString& text)
{
    qsizetype end = 0;
    const auto version = QVersionNumber::fromString(text, &end);
    return end == text.size() && end <= maxVersionLength ? version.normalized() : QVersionNumber();
}

} // namespace

Updater::Updater(UserDefaults& defaults, FeedFetcher& fetcher, const QUrl& feed)
    : defaults_(defaults), fetcher_(fetcher), feed_(httpsAddress(feed.toString(QUrl::FullyEncoded)))
{
    timer_.setTimerType(Qt::VeryCoarseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] {
        timer_.setInterval(timeBetweenLooks);
        checkIfDue();
    });
}

QUrl Updater::configuredFeed()
{
    QFile file(QStandardPaths::locate(QStandardPaths::GenericConfigLocation, QStringLiteral("sonvika/update-feed")));
    if (file.fileName().isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    return httpsAddress(QString::fromUtf8(file.readLine(maxAddressLength + 2)).trimmed());
}

bool Updater::automaticallyChecksForUpdates() const
{
    return defaults_.boolForKey(DefaultsKey::automaticallyChecksForUpdates);
}

void Updater::setAutomaticallyChecksForUpdates(bool on)
{
    defaults_.setBool(DefaultsKey::automaticallyChecksForUpdates, on);
    defaults_.synchronize();
    checkIfDue();
}

bool Updater::automaticallyDownloadsUpdates() const
{
    return defaults_.boolForKey(DefaultsKey::automaticallyDownloadsUpdates);
}

void Updater::setAutomaticallyDownloadsUpdates(bool on)
{
    defaults_.setBool(DefaultsKey::automaticallyDownloadsUpdates, on);
    defaults_.synchronize();
}

int Updater::updateCheckInterval() const
{
    const int seconds = defaults_.intForKey(DefaultsKey::updateCheckInterval);
    return seconds > 0 ? seconds : daily;
}

void Updater::setUpdateCheckInterval(int seconds)
{
    defaults_.setInt(DefaultsKey::updateCheckInterval, seconds);
    defaults_.synchronize();
}

void Updater::start()
{
    if (isConfigured())
        timer_.start(firstLook);
}

void Updater::checkIfDue()
{
    if (isConfigured() && automaticallyChecksForUpdates() && !checking_ && isDue())
        check();
}

bool Updater::isDue() const
{
    const qint64 last = defaults_.objectForKey(DefaultsKey::lastUpdateCheck).toLongLong();
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    const bool clockWasTurnedBack = last > now;
    return clockWasTurnedBack || now - last >= qMax<qint64>(updateCheckInterval(), shortestInterval);
}

void Updater::check()
{
    checking_ = true;
    fetcher_.fetch(feed_, [self = QPointer(this)](const std::optional<QByteArray>& feed) {
        if (!self)
            return;
        self->checking_ = false;
        if (feed && feed->size() <= FeedFetcher::maxBytes)
            self->readFeed(*feed);
    });
}

void Updater::readFeed(const QByteArray& feed)
{
    defaults_.setObject(DefaultsKey::lastUpdateCheck, QDateTime::currentSecsSinceEpoch());
    const QJsonObject object = QJsonDocument::fromJson(feed).object();
    const QVersionNumber version = versionIn(object[QStringLiteral("version")].toString());
    const QUrl page = httpsAddress(object[QStringLiteral("page")].toString());
    const QVersionNumber own = versionIn(QCoreApplication::applicationVersion());
    const QVersionNumber known = available_ ? versionIn(available_->version) : own;
    if (own.isNull() || version <= known || page.isEmpty())
        return;
    available_ = Update{version.toString(), page};
    emit updateAvailable(available_->version, available_->page);
}
