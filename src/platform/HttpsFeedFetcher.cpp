#include "platform/HttpsFeedFetcher.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

namespace {

constexpr int maxRedirections = 5;
constexpr int statusOk = 200;

QNetworkRequest requestFor(const QUrl& address)
{
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(maxRedirections);
    for (const auto privacy :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute})
        request.setAttribute(privacy, QNetworkRequest::Manual);
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Sonvika"));
    // Keeps a few compressed bytes from becoming many.
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}

std::optional<QByteArray> feedIn(QNetworkReply& reply)
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (reply.error() != QNetworkReply::NoError || status != statusOk
        || reply.bytesAvailable() > FeedFetcher::maxBytes)
        return std::nullopt;
    return reply.readAll();
}

} // namespace

HttpsFeedFetcher::HttpsFeedFetcher(std::chrono::milliseconds timeout) : timeout_(timeout) {}

HttpsFeedFetcher::~HttpsFeedFetcher() = default;

void HttpsFeedFetcher::fetch(const QUrl& address, const Fetched& fetched)
{
    if (address.scheme() != QLatin1String("https")) {
        fetched(std::nullopt);
        return;
    }
    if (!network_)
        network_ = std::make_unique<QNetworkAccessManager>();
    auto* reply = network_->get(requestFor(address));
    reply->setReadBufferSize(maxBytes + 1);
    QTimer::singleShot(timeout_, reply, &QNetworkReply::abort);
    QObject::connect(reply, &QIODevice::readyRead, reply, [reply] {
        if (reply->bytesAvailable() > maxBytes)
            reply->abort();
    });
    QObject::connect(reply, &QNetworkReply::finished, reply, [reply, fetched] {
        reply->deleteLater();
        fetched(feedIn(*reply));
    });
}
