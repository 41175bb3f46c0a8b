#include "platform/FeedFetcherOnDemand.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QTcpServer>
#include <QTimer>

using namespace std::chrono_literals;

/// A web server that knows some tricks.
class HttpsFeedFetcherTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(QSslSocket::supportsSsl());
        makeCertificate();
        QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        trusting.addCaCertificate(certificate_);
        QSslConfiguration::setDefaultConfiguration(trusting);
        QSslConfiguration own = QSslConfiguration::defaultConfiguration();
        own.setLocalCertificate(certificate_);
        own.setPrivateKey(key_);
        server_.setSslConfiguration(own);
        QVERIFY(server_.listen(QHostAddress::LocalHost) && plainServer_.listen(QHostAddress::LocalHost));
        connect(&server_, &QTcpServer::pendingConnectionAvailable, this, [this] { serve(server_); });
        connect(&plainServer_, &QTcpServer::pendingConnectionAvailable, this, [this] { serve(plainServer_); });
    }
    void init() { requests_.clear(); }

    // the page | what comes of it; nothing for a failure
    void fetches_data()
    {
        addRows({"ok | feed", "moved | feed", "largest | 65536 bytes", "large", "endless", "moved to http", "circle",
                 "missing", "login", "empty", "silent", "slow", "cut off"});
    }
    void fetches()
    {
        const auto [page, expected] = row<2>();
        FeedFetcherOnDemand fetcher(700ms);
        QElapsedTimer timer;
        timer.start();
        const auto fetched = fetch(fetcher, address(u"https"_qs, page, server_));
        QVERIFY(timer.elapsed() < 4000);
        if (expected.isEmpty())
            QVERIFY(!fetched || fetched->isEmpty());
        else
            QCOMPARE(fetched, expected == u"feed" ? "feed" : QByteArray(65536, 'x'));
        QVERIFY(!requests_.join().contains("plain"));
    }

    void keepsNoCookies()
    {
        FeedFetcherOnDemand fetcher;
        for (int i = 0; i < 2; ++i)
            QCOMPARE(fetch(fetcher, address(u"https"_qs, u"cookie"_qs, server_)), QByteArray("feed"));
        QCOMPARE(requests_.size(), 2);
        QVERIFY(!requests_.join().toLower().contains("cookie:"));
    }

    void asksOverNothingButHttps()
    {
        FeedFetcherOnDemand fetcher;
        QVERIFY(!fetch(fetcher, address(u"http"_qs, u"ok"_qs, plainServer_)));
        QVERIFY(!fetch(fetcher, QUrl::fromLocalFile(QStringLiteral(TEST_DATA_DIR "/cover.png"))));
        QVERIFY(requests_.isEmpty());
    }

    void believesNoUnknownCertificate()
    {
        const QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        QSslConfiguration doubting = trusting;
        doubting.setCaCertificates({});
        QSslConfiguration::setDefaultConfiguration(doubting);
        FeedFetcherOnDemand fetcher;
        QVERIFY(!fetch(fetcher, address(u"https"_qs, u"ok"_qs, server_)));
        QVERIFY(requests_.isEmpty());
        QSslConfiguration::setDefaultConfiguration(trusting);
    }

    void mayEndWhileItWaits()
    {
        bool answered = false;
        {
            FeedFetcherOnDemand fetcher;
            fetcher.fetch(address(u"https"_qs, u"silent"_qs, server_), [&](const auto& feed) {
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

    void makeCertificate()
    {
        const QString certificate = folder_.path(u"certificate.pem"_qs);
        const QString key = folder_.path(u"key.pem"_qs);
        QProcess openssl;
        openssl.start(u"openssl"_qs,
                      {u"req"_qs, u"-x509"_qs, u"-newkey"_qs, u"rsa:2048"_qs, u"-nodes"_qs, u"-days"_qs, u"2"_qs,
                       u"-subj"_qs, u"/CN=localhost"_qs, u"-addext"_qs, u"subjectAltName=DNS:localhost"_qs,
                       u"-out"_qs, certificate, u"-keyout"_qs, key});
        QVERIFY(openssl.waitForFinished() && openssl.exitCode() == 0);
        certificate_ = QSslCertificate(ScratchFolder::contents(certificate));
        key_ = QSslKey(ScratchFolder::contents(key), QSsl::Rsa);
        QVERIFY(!certificate_.isNull() && !key_.isNull());
    }

    static QUrl address(const QString& scheme, QString page, const QTcpServer& server)
    {
        return QUrl(QStringLiteral("%1://localhost:%2/%3")
                        .arg(scheme)
                        .arg(server.serverPort())
                        .arg(page.replace(u' ', u'-')));
    }

    static Fetched fetch(FeedFetcher& fetcher, const QUrl& from)
    {
        std::optional<Fetched> answer;
        fetcher.fetch(from, [&](const Fetched& feed) { answer = feed; });
        const bool answered = QTest::qWaitFor([&] { return answer.has_value(); }, 5000);
        if (!answered)
            qFatal("No answer");
        return *answer;
    }

    void serve(QTcpServer& server)
    {
        auto* socket = server.nextPendingConnection();
        const bool plain = &server == &plainServer_;
        connect(socket, &QIODevice::readyRead, this, [this, socket, plain] {
            const QByteArray request = socket->readAll();
            requests_.append((plain ? "plain " : "") + request);
            answer(*socket, request.split(' ').value(1).mid(1));
        });
    }

    void answer(QTcpSocket& socket, const QByteArray& page)
    {
        const auto moved = [&](const QUrl& to) {
            socket.write("HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " + to.toEncoded() + "\r\n\r\n");
        };
        const auto text = [&](const QByteArray& status, const QByteArray& body) {
            socket.write("HTTP/1.1 " + status + "\r\nSet-Cookie: a=b\r\nContent-Length: "
                         + QByteArray::number(body.size()) + "\r\n\r\n" + body);
        };
        if (page == "ok" || page == "cookie")
            text("200 OK", "feed");
        else if (page == "largest" || page == "large")
            text("200 OK", QByteArray(page == "large" ? 65537 : 65536, 'x'));
        else if (page == "empty")
            text("204 No Content", {});
        else if (page == "missing")
            text("404 Not Found", "feed");
        else if (page == "login")
            text("401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"a\"", "feed");
        else if (page == "moved")
            moved(address(u"https"_qs, u"ok"_qs, server_));
        else if (page == "circle")
            moved(address(u"https"_qs, u"circle"_qs, server_));
        else if (page == "moved-to-http")
            moved(address(u"http"_qs, u"ok"_qs, plainServer_));
        else if (page != "silent")
            trickle(socket, page);
    }

    /// A body without an announced end.
    void trickle(QTcpSocket& socket, const QByteArray& page)
    {
        socket.write("HTTP/1.1 200 OK\r\n" + QByteArray(page == "cut-off" ? "Content-Length: 100\r\n" : "")
                     + "\r\nfeed");
        if (page == "cut-off") {
            socket.disconnectFromHost();
            return;
        }
        auto* timer = new QTimer(&socket);
        connect(timer, &QTimer::timeout, &socket,
                [&socket, size = page == "slow" ? 1 : 20000] { socket.write(QByteArray(size, 'x')); });
        timer->start(20ms);
    }

    const ScratchFolder folder_;
    QSslCertificate certificate_;
    QSslKey key_;
    QSslServer server_;
    QTcpServer plainServer_;
    QByteArrayList requests_;
};

QTEST_GUILESS_MAIN(HttpsFeedFetcherTest)
#include "HttpsFeedFetcherTest.moc"
