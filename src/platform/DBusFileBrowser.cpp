#include "platform/DBusFileBrowser.h"

#include "platform/PathBytes.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QFileInfo>
#include <QTimer>
#include <QUrl>

void DBusFileBrowser::reveal(const QString& path)
{
    auto message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    message << QStringList{PathBytes::toUrl(path).toString(QUrl::FullyEncoded)} << QString();
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, path] {
        if (watcher->isError())
            openFolder(QFileInfo(path).path());
        watcher->deleteLater();
    });
}

void DBusFileBrowser::openFolder(const QString& folder)
{
    if (justOpened_.contains(folder))
        return;
    justOpened_.insert(folder);
    QDesktopServices::openUrl(PathBytes::toUrl(folder));
    constexpr int together = 1000;
    QTimer::singleShot(together, this, [this, folder] { justOpened_.remove(folder); });
}
