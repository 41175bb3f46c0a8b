#include "app/AppDelegate.h"

#include "app/NotificationPoster.h"
#include "app/ViewController.h"
#include "platform/UserDefaults.h"

AppDelegate::AppDelegate(ViewController& viewController, NotificationPoster& notifier, UserDefaults& defaults)
    : viewController_(viewController), notifier_(notifier), defaults_(defaults)
{
}

void AppDelegate::applicationWillFinishLaunching()
{
    if (!defaults_.boolForKey(DefaultsKey::showNotifications))
        return;
    notifier_.presentQuietlyInFront();
    notifier_.requestAuthorization();
}

bool AppDelegate::applicationOpenFile(const QString& path)
{
    return viewController_.openPath(path);
}

void AppDelegate::applicationOpenFiles(const QStringList& paths)
{
    viewController_.openPaths(paths);
}

void AppDelegate::applicationWillTerminate()
{
    viewController_.endEditing();
}
