#include "platform/HttpsFeedFetcher.h"

#include <QObject>

class NetworkPlugin : public QObject, public FeedFetcherPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.sonvika.FeedFetcherPlugin/1")
    Q_INTERFACES(FeedFetcherPlugin)

public:
    std::unique_ptr<FeedFetcher> make(std::chrono::milliseconds timeout) override
    {
        return std::make_unique<HttpsFeedFetcher>(timeout);
    }
};

#include "NetworkPlugin.moc"
