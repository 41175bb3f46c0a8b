#pragma once

#include <QSettings>
#include <QString>

#include <mutex>

/// The user's settings: a persistent map from key to value, an INI file under the XDG config home.
/// No defaults are registered: an absent key reads as false, 0 or empty. Safe to use from any thread.
class UserDefaults {
public:
    /// The settings of the user who runs the program.
    UserDefaults();
    /// The settings in a file of the caller's choice.
    explicit UserDefaults(const QString& filePath);

    bool boolForKey(const QString& key) const;
    void setBool(const QString& key, bool value);
    /// 0 also for a value that is no integer.
    int intForKey(const QString& key) const;
    void setInt(const QString& key, int value);
    QByteArray dataForKey(const QString& key) const;
    void setData(const QString& key, const QByteArray& value);

    /// Whatever is stored; invalid when nothing is.
    QVariant objectForKey(const QString& key) const;
    void setObject(const QString& key, const QVariant& value);

    /// Writes what was set to disk at once.
    void synchronize();

private:
    mutable std::mutex mutex_;
    QSettings settings_;
};

/// The keys, each in one place.
namespace DefaultsKey {
inline const QString showNotifications = QStringLiteral("showNotifications");
/// Which of the ImageFormats cover art is saved in.
inline const QString fileTypeIndex = QStringLiteral("fileTypeIndex");
/// The file-name format (see FileNameFormat).
inline const QString fileFormatTokens = QStringLiteral("fileFormatTokens");
/// The pane on which the preferences window opens.
inline const QString selectedTabIndex = QStringLiteral("selectedTabIndex");
/// What the Updater keeps: two switches, an interval in seconds, and the time of the last check in seconds since 1970.
inline const QString automaticallyChecksForUpdates = QStringLiteral("automaticallyChecksForUpdates");
inline const QString automaticallyDownloadsUpdates = QStringLiteral("automaticallyDownloadsUpdates");
inline const QString updateCheckInterval = QStringLiteral("updateCheckInterval");
inline const QString lastUpdateCheck = QStringLiteral("lastUpdateCheck");
/// A map from path to bookmark bytes (see BookmarksManager).
inline const QString bookmarks = QStringLiteral("Sandbox.BookmarksManager.Bookmarks");
inline const QString windowGeometry = QStringLiteral("MainWindow.Geometry");
inline const QString splitterState = QStringLiteral("MainWindow.Splitter");
inline const QString tableHeaderState = QStringLiteral("MainWindow.TableHeader");
} // namespace DefaultsKey
