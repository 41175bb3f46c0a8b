#pragma once

#include <QObject>
#include <QStringList>

class NotificationPoster;
class UserDefaults;
class ViewController;

/// What the program does when the desktop starts it, ends it, and hands it files.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    AppDelegate(ViewController& viewController, NotificationPoster& notifier, UserDefaults& defaults);

    /// Before the window is shown. Asks whether notifications may be shown, while the user wants them.
    void applicationWillFinishLaunching();
    /// Adds a file, or every audio file below a folder. @return true when every file found was added.
    bool applicationOpenFile(const QString& path);
    /// The same for several, handed over together.
    void applicationOpenFiles(const QStringList& paths);
    /// Writes an edit in progress. Nothing else needs to be saved at the end.
    void applicationWillTerminate();

private:
    ViewController& viewController_;
    NotificationPoster& notifier_;
    UserDefaults& defaults_;
};
