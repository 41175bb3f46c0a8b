#include "platform/FeedFetcherOnDemand.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

QByteArray reply(const QByteArray& status, const QByteArray& body)
{
    return "HTTP/1.1 " + status + "\r\nSet-Cookie: a=b\r\nContent-Length: " + QByteArray::number(body.size())
           + "\r\n\r\n" + body;
}

QByteArray movedTo(const QUrl& address)
{
    return reply("302 Found\r\nLocation: " + address.toEncoded(), {});
}

} // namespace

/// A web server that knows some tricks.
class HttpsFeedFetcherTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QProcess openssl;
        openssl.setWorkingDirectory(folder_.path(u"."_qs));
        openssl.start(u"openssl"_qs,
                      u"req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=localhost -addext "
                      "subjectAltName=DNS:localhost -out certificate.pem -keyout key.pem"_qs.split(u' '));
        QVERIFY(openssl.waitForFinished() && openssl.exitCode() == 0);
        const QSslCertificate certificate(ScratchFolder::contents(folder_.path(u"certificate.pem"_qs)));
        QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        trusting.addCaCertificate(certificate);
        QSslConfiguration::setDefaultConfiguration(trusting);
        trusting.setLocalCertificate(certificate);
        trusting.setPrivateKey(QSslKey(ScratchFolder::contents(folder_.path(u"key.pem"_qs)), QSsl::Rsa));
        server_.setSslConfiguration(trusting);
        QVERIFY(server_.listen(QHostAddress::LocalHost) && plainServer_.listen(QHostAddress::LocalHost));
        connect(&server_, &QTcpServer::pendingConnectionAvailable, this, [this] { serve(server_); });
        connect(&plainServer_, &QTcpServer::pendingConnectionAvailable, this, [this] { serve(plainServer_); });
        replies_ = {{"ok", reply("200 OK", "feed")},
                    {"largest", reply("200 OK", QByteArray(65536, 'x'))},
                    {"large", reply("200 OK", QByteArray(65537, 'x'))},
                    {"missing", reply("404 Not Found", "feed")},
                    {"login", reply("401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"a\"", "feed")},
                    {"moved", movedTo(address(u"ok"_qs))},
                    {"circle", movedTo(address(u"circle"_qs))},
                    {"insecure", movedTo(plainAddress())},
                    {"cut", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nfeed"},
                    {"endless", "HTTP/1.1 200 OK\r\n\r\nfeed"},
                    {"slow", "HTTP/1.1 200 OK\r\n\r\nfeed"}};
    }
    void init() { requests_.clear(); }

    // the page | what comes of it; nothing for a failure
    void fetches_data()
    {
        addRows({"ok | feed", "moved | feed", "largest | 65536 bytes", "large", "endless", "insecure", "circle",
                 "missing", "login", "silent", "slow", "cut"});
    }
    void fetches()
    {
        const auto [page, expected] = row<2>();
        QElapsedTimer timer;
        timer.start();
        const auto fetched = fetch(address(page));
        QVERIFY(timer.elapsed() < 4000);
        if (expected.isEmpty())
            QVERIFY(!fetched);
        else
            QCOMPARE(fetched, expected == u"feed" ? "feed" : QByteArray(65536, 'x'));
        QVERIFY(!requests_.join().contains("plain"));
    }

    void keepsNoCookies()
    {
        FeedFetcherOnDemand fetcher;
        for (int i = 0; i < 2; ++i)
            QCOMPARE(fetch(address(u"ok"_qs), fetcher), QByteArray("feed"));
        QCOMPARE(requests_.size(), 2);
        QVERIFY(!requests_.join().toLower().contains("cookie:"));
    }

    void asksOverNothingButHttps()
    {
        QVERIFY(!fetch(plainAddress()));
        QVERIFY(!fetch(QUrl::fromLocalFile(QStringLiteral(TEST_DATA_DIR "/cover.png"))));
        QVERIFY(requests_.isEmpty());
    }

    void believesNoUnknownCertificate()
    {
        const QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        QSslConfiguration doubting = trusting;
        doubting.setCaCertificates({});
        QSslConfiguration::setDefaultConfiguration(doubting);
        QVERIFY(!fetch(address(u"ok"_qs)));
        QVERIFY(requests_.isEmpty());
        QSslConfiguration::setDefaultConfiguration(trusting);
    }

    void mayEndWhileItWaits()
    {
        bool answered = false;
        {
            FeedFetcherOnDemand fetcher;
            fetcher.fetch(address(u"silent"_qs), [&](const auto& feed) {
                QVERIFY(!feed);
                answered = true;
            });
            QTRY_COMPARE(requests_.size(), 1);
            QVERIFY(!answered);
        }
        QCoreApplication::processEvents();
    }

private:
    using Fetched = std::optional<QByteArray>;

    QUrl address(const QString& page) const
    {
        return QUrl(u"https://localhost:%1/%2"_qs.arg(server_.serverPort()).arg(page));
    }
    QUrl plainAddress() const { return QUrl(u"http://localhost:%1/ok"_qs.arg(plainServer_.serverPort())); }

    static Fetched fetch(const QUrl& from, FeedFetcher& fetcher)
    {
        std::optional<Fetched> answer;
        fetcher.fetch(from, [&](const Fetched& feed) { answer = feed; });
        if (!QTest::qWaitFor([&] { return answer.has_value(); }))
            qFatal("No answer");
        return *answer;
    }
    static Fetched fetch(const QUrl& from)
    {
        FeedFetcherOnDemand fetcher(700ms);
        return fetch(from, fetcher);
    }

    void serve(QTcpServer& server)
    {
        auto* socket = server.nextPendingConnection();
        connect(socket, &QIODevice::readyRead, this, [this, socket, plain = &server == &plainServer_] {
            const QByteArray request = socket->readAll();
            requests_.append((plain ? "plain " : "") + request);
            const QByteArray page = request.split(' ').value(1).mid(1);
            socket->write(replies_.value(page));
            if (page == "cut")
                socket->disconnectFromHost();
            if (page != "slow" && page != "endless")
                return;
            auto* timer = new QTimer(socket);
            timer->callOnTimeout(socket, [=] { socket->write(QByteArray(page == "slow" ? 1 : 20000, 'x')); });
            timer->start(20ms);
        });
    }

    const ScratchFolder folder_;
    QSslServer server_;
    QTcpServer plainServer_;
    QHash<QByteArray, QByteArray> replies_;
    QByteArrayList requests_;
};

QTEST_GUILESS_MAIN(HttpsFeedFetcherTest)
#include "HttpsFeedFetcherTest.moc"
