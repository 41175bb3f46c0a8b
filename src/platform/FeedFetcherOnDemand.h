#pragma once

#include "platform/FeedFetcher.h"

/// The fetcher of a plug-in, which is loaded for the first fetch.
class FeedFetcherOnDemand : public FeedFetcher {
public:
    explicit FeedFetcherOnDemand(std::chrono::milliseconds timeout = std::chrono::seconds(10));

    /// A plug-in that can't be loaded is a failure like any other.
    void fetch(const QUrl& address, const Fetched& fetched) override;

private:
    std::chrono::milliseconds timeout_;
    std::unique_ptr<FeedFetcher> fetcher_;
};
