#pragma once

#include <QObject>

#include <memory>

class NotificationPoster;
class PreferencesTabViewController;
class Updater;
class UserDefaults;

/// Shows the preferences window, which is made on first use and kept.
class PreferencesOpener : public QObject {
    Q_OBJECT

public:
    PreferencesOpener(UserDefaults& defaults, NotificationPoster& notifier, Updater& updater);
    ~PreferencesOpener() override;

    void showPreferences();
    /// Shows the window on its About pane.
    void openAbout();

private:
    UserDefaults& defaults_;
    NotificationPoster& notifier_;
    Updater& updater_;
    std::unique_ptr<PreferencesTabViewController> preferenceController_;
};
