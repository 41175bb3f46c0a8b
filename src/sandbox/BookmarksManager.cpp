#include "sandbox/BookmarksManager.h"

#include "platform/Bookmark.h"
#include "platform/UserDefaults.h"

namespace {

const QString root = QStringLiteral("/");

QString withoutLastComponent(const QString& path)
{
    const auto slash = path.lastIndexOf(QLatin1Char('/'));
    return slash <= 0 ? root : path.first(slash);
}

} // namespace

BookmarksManager::BookmarksManager(UserDefaults& userDefaults) : userDefaults_(userDefaults) {}

QMap<QString, QByteArray> BookmarksManager::bookmarks() const
{
    QMap<QString, QByteArray> map;
    const QVariant stored = userDefaults_.objectForKey(DefaultsKey::bookmarks);
    if (stored.typeId() != QMetaType::QVariantMap)
        return map;
    const QVariantMap values = stored.toMap();
    for (auto entry = values.begin(); entry != values.end(); ++entry) {
        if (entry->typeId() != QMetaType::QByteArray)
            return {};
        map[entry.key()] = entry->toByteArray();
    }
    return map;
}

QSet<QString> BookmarksManager::bookmarkedURLs() const
{
    const QStringList paths = bookmarks().keys();
    return {paths.begin(), paths.end()};
}

void BookmarksManager::clearBookmarks()
{
    write({});
}

QByteArray BookmarksManager::bookmarkData(const QString& path) const
{
    return Bookmark::create(path, Bookmark::Options::None);
}

QByteArray BookmarksManager::securityScopedBookmarkData(const QString& path) const
{
    return Bookmark::create(path, Bookmark::Options::SecurityScope);
}

std::optional<QString> BookmarksManager::resolveBookmark(const QByteArray& data) const
{
    const Bookmark::Resolved resolved = Bookmark::resolve(data);
    return resolved.isStale ? std::nullopt : std::optional(resolved.path);
}

std::optional<QString> BookmarksManager::resolvedURL(const QString& path) const
{
    const auto data = storedBookmarkData(path);
    return data ? resolveBookmark(*data) : std::nullopt;
}

std::optional<QByteArray> BookmarksManager::storedBookmarkData(const QString& path) const
{
    const auto stored = bookmarks();
    QString current = path;
    while (!stored.contains(current)) {
        if (current == root)
            return std::nullopt;
        current = withoutLastComponent(current);
    }
    return stored[current];
}

void BookmarksManager::ensureBookmark(const QString& path)
{
    if (!resolvedURL(path))
        storeBookmark(securityScopedBookmarkData(path));
}

void BookmarksManager::storeBookmark(const QByteArray& data)
{
    const auto path = resolveBookmark(data);
    if (!path)
        return;
    auto stored = bookmarks();
    stored[*path] = data;
    write(stored);
}

void BookmarksManager::removeBookmark(const QString& path)
{
    auto stored = bookmarks();
    stored.remove(path);
    write(stored);
}

void BookmarksManager::write(const QMap<QString, QByteArray>& bookmarks)
{
    QVariantMap values;
    for (auto entry = bookmarks.begin(); entry != bookmarks.end(); ++entry)
        values[entry.key()] = entry.value();
    userDefaults_.setObject(DefaultsKey::bookmarks, values);
}
