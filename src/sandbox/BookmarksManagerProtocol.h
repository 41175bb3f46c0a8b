#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The store of bookmarks as the permission manager uses it. Paths are absolute. Errors of making and resolving
/// bookmarks are Bookmark::Error, passed on unchanged.
class BookmarksManagerProtocol {
public:
    virtual ~BookmarksManagerProtocol() = default;

    virtual void clearBookmarks() = 0;
    /// A new bookmark, not stored. Throws Bookmark::Error.
    virtual QByteArray bookmarkData(const QString& path) const = 0;
    /// The same with the security-scope option. Throws Bookmark::Error.
    virtual QByteArray securityScopedBookmarkData(const QString& path) const = 0;
    /// @return the path that a bookmark leads to; none when it is stale. Throws Bookmark::Error.
    virtual std::optional<QString> resolveBookmark(const QByteArray& data) const = 0;
    /// @return where the stored bookmark that covers the path leads; none when there is none or it is stale. Throws
    /// Bookmark::Error.
    virtual std::optional<QString> resolvedURL(const QString& path) const = 0;
    /// @return the stored bookmark of the path itself or, without one, of the nearest enclosing folder that has one.
    virtual std::optional<QByteArray> storedBookmarkData(const QString& path) const = 0;
    /// Makes and stores a bookmark of the path unless a fresh one covers it. Throws Bookmark::Error, and stores
    /// nothing then.
    virtual void ensureBookmark(const QString& path) = 0;
    /// Stores a bookmark under the path that it leads to, replacing an older one. A stale one is not stored. Throws
    /// Bookmark::Error.
    virtual void storeBookmark(const QByteArray& data) = 0;
    /// Removes the bookmark stored for exactly this path.
    virtual void removeBookmark(const QString& path) = 0;
};
