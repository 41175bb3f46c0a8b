#pragma once

#include <QString>

#include <functional>
#include <mutex>

class BookmarksManagerProtocol;
class OpenPanelManagerProtocol;

/// Runs operations that need a file or folder which the process may not read yet: by a stored bookmark, or after
/// asking the user. What an operation throws is passed on unchanged.
class PermissionManager {
public:
    using Operation = std::function<void()>;

    PermissionManager(OpenPanelManagerProtocol& openPanelManager, BookmarksManagerProtocol& bookmarksManager);

    /// Whether grants are kept, so that the user is asked once for each folder.
    bool persistBookmarks() const { return persistBookmarks_; }
    void setPersistBookmarks(bool persist) { persistBookmarks_ = persist; }

    /// True when the item exists and can't be read. Throws std::system_error when it can't be reached.
    bool needsPermission(const QString& path) const;

    /// @return the item itself when it can be read, otherwise what the user chose. Throws std::system_error when it
    /// can't be reached, and OpenPanelError.
    QString requestPermission(const QString& path);

    /// Runs the operation with access to the item started, and stops the access. @return whether it could be started.
    static bool accessScoped(const QString& path, const Operation& perform);

    /// Runs the operation with access to the item: at once when it can be read, otherwise by the bookmark that covers
    /// it or by what the user grants. Main thread only. Not to be called by the operation itself.
    /// @return false when access could not be started; the operation has run all the same.
    /// Throws std::system_error when the item can't be reached, Bookmark::Error and OpenPanelError; the operation has
    /// not run then.
    bool performWithAccess(const QString& path, const Operation& perform);

private:
    QString grantedAccess(const QString& path);

    OpenPanelManagerProtocol& openPanelManager_;
    BookmarksManagerProtocol& bookmarksManager_;
    bool persistBookmarks_ = true;
    std::mutex lock_;
};
