#pragma once

#include <QByteArray>
#include <QUrl>

#include <functional>
#include <optional>

/// Fetches the small text that tells which version of the program is the newest.
class FeedFetcher {
public:
    static constexpr qint64 maxBytes = 64 * 1024;
    using Fetched = std::function<void(const std::optional<QByteArray>& feed)>;

    virtual ~FeedFetcher() = default;

    /// @param address an https one.
    /// @param fetched gets the text in the main thread, at once or later; none after any failure, and when there are
    /// more than maxBytes.
    virtual void fetch(const QUrl& address, const Fetched& fetched) = 0;
};
