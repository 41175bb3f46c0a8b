#pragma once

#include "platform/FeedFetcher.h"

#include <chrono>
#include <memory>

class QNetworkAccessManager;

/// Fetches over the network: https from the first to the last redirection, no cookies, no passwords, and an end to it
/// after the timeout however slowly the server answers.
class HttpsFeedFetcher : public FeedFetcher {
public:
    explicit HttpsFeedFetcher(std::chrono::milliseconds timeout);
    ~HttpsFeedFetcher() override;

    void fetch(const QUrl& address, const Fetched& fetched) override;

private:
    std::chrono::milliseconds timeout_;
    /// Made for the first fetch.
    std::unique_ptr<QNetworkAccessManager> network_;
};
