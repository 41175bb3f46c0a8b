#pragma once

#include "platform/FeedFetcher.h"

#include <QList>

/// A feed that answers at once, or when the test says so.
struct FakeFeedFetcher : FeedFetcher {
    void fetch(const QUrl& address, const Fetched& fetched) override
    {
        asked.append(address);
        if (answersAtOnce)
            fetched(feed);
        else
            waiting.append(fetched);
    }
    std::optional<QByteArray> feed;
    bool answersAtOnce = true;
    QList<QUrl> asked;
    QList<Fetched> waiting;
};
