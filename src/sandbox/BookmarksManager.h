#pragma once

#include "sandbox/BookmarksManagerProtocol.h"

#include <QMap>
#include <QSet>

class UserDefaults;

/// Keeps bookmarks in the user defaults, as one map from path to bookmark bytes that is read and written whole.
///
/// Has no lock: changes must come one at a time.
class BookmarksManager : public BookmarksManagerProtocol {
public:
    explicit BookmarksManager(UserDefaults& userDefaults);

    /// The stored map; empty when it is absent, no map, or holds a value that is no bytes.
    QMap<QString, QByteArray> bookmarks() const;
    /// The paths that have a bookmark.
    QSet<QString> bookmarkedURLs() const;

    void clearBookmarks() override;
    QByteArray bookmarkData(const QString& path) const override;
    QByteArray securityScopedBookmarkData(const QString& path) const override;
    std::optional<QString> resolveBookmark(const QByteArray& data) const override;
    std::optional<QString> resolvedURL(const QString& path) const override;
    std::optional<QByteArray> storedBookmarkData(const QString& path) const override;
    void ensureBookmark(const QString& path) override;
    void storeBookmark(const QByteArray& data) override;
    void removeBookmark(const QString& path) override;

private:
    void write(const QMap<QString, QByteArray>& bookmarks);

    UserDefaults& userDefaults_;
};
