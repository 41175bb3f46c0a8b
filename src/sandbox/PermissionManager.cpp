#include "sandbox/PermissionManager.h"

#include "platform/Bookmark.h"
#include "platform/FileSystem.h"
#include "sandbox/BookmarksManagerProtocol.h"
#include "sandbox/OpenPanelManager.h"

#include <QScopeGuard>

PermissionManager::PermissionManager(OpenPanelManagerProtocol& openPanelManager,
                                     BookmarksManagerProtocol& bookmarksManager)
    : openPanelManager_(openPanelManager), bookmarksManager_(bookmarksManager)
{
}

bool PermissionManager::needsPermission(const QString& path) const
{
    if (FileSystem::isReadableFile(path))
        return false;
    FileSystem::checkResourceIsReachable(path);
    return true;
}

QString PermissionManager::requestPermission(const QString& path)
{
    return needsPermission(path) ? openPanelManager_.requestAccess(path) : path;
}

bool PermissionManager::accessScoped(const QString& path, const Operation& perform)
{
    const bool started = Bookmark::startAccessingSecurityScopedResource(path);
    const auto stop = qScopeGuard([&] { Bookmark::stopAccessingSecurityScopedResource(path); });
    perform();
    return started;
}

bool PermissionManager::performWithAccess(const QString& path, const Operation& perform)
{
    if (!needsPermission(path)) {
        perform();
        return true;
    }
    const std::lock_guard lock(lock_);
    return accessScoped(grantedAccess(path), perform);
}

QString PermissionManager::grantedAccess(const QString& path)
{
    const auto resolved = bookmarksManager_.resolvedURL(path);
    const QString granted = resolved ? *resolved : requestPermission(path);
    if (persistBookmarks_)
        bookmarksManager_.ensureBookmark(granted);
    return granted;
}
