#pragma once

#include <QByteArray>
#include <QUrl>
#include <QtPlugin>

#include <chrono>
#include <functional>
#include <memory>
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

/// What makes fetchers, in a plug-in.
class FeedFetcherPlugin {
public:
    virtual ~FeedFetcherPlugin() = default;

    /// @param timeout ends a fetch however slowly the server answers.
    virtual std::unique_ptr<FeedFetcher> make(std::chrono::milliseconds timeout) = 0;
};

Q_DECLARE_INTERFACE(FeedFetcherPlugin, "org.sonvika.FeedFetcherPlugin/1")
