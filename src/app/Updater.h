#pragma once

#include <QObject>
#include <QTimer>
#include <QUrl>

#include <optional>

class FeedFetcher;
class UserDefaults;

/// Tells when there is a newer version of the program; it never downloads or installs one (see docs/updates.md).
/// Looks for it in a feed whose address the installation names; without one nothing is ever looked for.
class Updater : public QObject {
    Q_OBJECT

public:
    static constexpr int daily = 86400;
    static constexpr int weekly = 7 * daily;
    static constexpr int monthly = 30 * daily;

    struct Update {
        QString version;
        QUrl page;
    };

    /// @param feed an https address; any other counts as none.
    Updater(UserDefaults& defaults, FeedFetcher& fetcher, const QUrl& feed = configuredFeed());

    /// The address in the first line of "sonvika/update-feed" in the first configuration folder that has such a file.
    static QUrl configuredFeed();
    bool isConfigured() const { return !feed_.isEmpty(); }

    bool automaticallyChecksForUpdates() const;
    /// When switched on, a check that is due is made at once.
    void setAutomaticallyChecksForUpdates(bool on);
    bool automaticallyDownloadsUpdates() const;
    /// Kept, but without effect: nothing is ever downloaded.
    void setAutomaticallyDownloadsUpdates(bool on);
    /// In seconds; a day where none is stored.
    int updateCheckInterval() const;
    void setUpdateCheckInterval(int seconds);

    /// From now on, checks whenever the interval since the last check is over; for the first time after some seconds,
    /// out of the way of the program's start.
    void start();
    /// Checks when automatic checks are on and the interval since the last one is over.
    void checkIfDue();

    /// The newer version that was found since the program started.
    const std::optional<Update>& available() const { return available_; }

signals:
    /// Once for each newer version that is found. The page is an https address to be opened in a browser.
    void updateAvailable(const QString& version, const QUrl& page);

private:
    bool isDue() const;
    void check();
    void readFeed(const QByteArray& feed);

    UserDefaults& defaults_;
    FeedFetcher& fetcher_;
    QUrl feed_;
    QTimer timer_;
    bool checking_ = false;
    std::optional<Update> available_;
};
