#include "platform/FeedFetcherOnDemand.h"

#include "platform/Plugins.h"

#include <QPluginLoader>

FeedFetcherOnDemand::FeedFetcherOnDemand(std::chrono::milliseconds timeout) : timeout_(timeout) {}

void FeedFetcherOnDemand::fetch(const QUrl& address, const Fetched& fetched)
{
    if (!fetcher_) {
        QPluginLoader loader(Plugins::path(QStringLiteral("sonvika-network")));
        if (auto* plugin = qobject_cast<FeedFetcherPlugin*>(loader.instance()))
            fetcher_ = plugin->make(timeout_);
        else
            qWarning("%s", qUtf8Printable(loader.errorString()));
    }
    if (fetcher_)
        fetcher_->fetch(address, fetched);
    else
        fetched(std::nullopt);
}
