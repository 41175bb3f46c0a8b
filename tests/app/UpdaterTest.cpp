#include "app/Updater.h"
#include "fakes/FakeFeedFetcher.h"
#include "platform/UserDefaults.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QDateTime>
#include <QSignalSpy>

class UpdaterTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        folder_ = std::make_unique<ScratchFolder>();
        defaults_ = std::make_unique<UserDefaults>(folder_->path(u"settings.ini"_qs));
        fetcher_ = FakeFeedFetcher();
        updater_ = std::make_unique<Updater>(*defaults_, fetcher_, feedAddress_);
        QCoreApplication::setApplicationVersion(u"1.2.0"_qs);
    }
    void cleanup()
    {
        updater_.reset();
        // Writes what is left to be written.
        defaults_.reset();
    }

    // the feed, with ' for " and P for a page that will do | the version that is told | its own unless 1.2.0
    void readsFeeds_data()
    {
        addRows({"{'version': '1.2.1', P} | 1.2.1",
                 "{'version': '1.10', P} | 1.10",
                 "{P, 'version': '3', 'x': [1]} | 3",
                 "{'version': '1.2', P}",
                 "{'version': '1.2.0.0', P}",
                 "{'version': '1.1.9', P}",
                 "{'version': '2', P} |  | unknown",
                 "{'version': '1.3<b>', P}",
                 "{'version': '99999999999999999999', P}",
                 "{'version': '9ENDLESS', P}",
                 "{'version': 2, P}",
                 "{P}",
                 "{'version': '2'}",
                 "{'version': '2', 'page': ['https://example.org']}",
                 "{'version': '2', 'page': 'http://example.org/'}",
                 "{'version': '2', 'page': 'javascript:alert'}",
                 "{'version': '2', 'page': 'https:///new'}",
                 "{'version': '2', 'page': 'https://sonvika.org@example.org/'}",
                 "[{'version': '2', P}]",
                 "{'version': '2', P",
                 "NESTED",
                 "HUGE{'version': '2', P}",
                 "NOTHING"});
    }
    void readsFeeds()
    {
        auto [feed, told, own] = row<3>();
        if (!own.isEmpty())
            QCoreApplication::setApplicationVersion(own);
        feed.replace(u'\'', u'"').replace(u"P"_qs, u"\"page\": \"https://example.org/new\""_qs);
        feed.replace(u"ENDLESS"_qs, u".1"_qs.repeated(500)).replace(u"NESTED"_qs, QString(60000, u'['));
        feed.replace(u"HUGE"_qs, QString(70000, u' ')).remove(u"NOTHING"_qs);
        fetcher_.feed = feed.toUtf8();
        QSignalSpy spy(updater_.get(), &Updater::updateAvailable);
        updater_->setAutomaticallyChecksForUpdates(true);
        // It is told once, however often it is found.
        checkedAgo(2 * Updater::daily);
        updater_->checkIfDue();
        QCOMPARE(fetcher_.asked, QList<QUrl>(2, feedAddress_));
        QCOMPARE(spy.size(), told.isEmpty() ? 0 : 1);
        if (!told.isEmpty())
            QCOMPARE(spy[0], QVariantList({told, QUrl(u"https://example.org/new"_qs)}));
    }

    // whether checks are on | the interval, in seconds | the time since the last check, or what stands there | checks
    void checksWhenTheIntervalIsOver_data()
    {
        addRows({"on | 0 | never | 1", "off | 0 | never | 0", "on | 0 | 86000 | 0", "on | 0 | 86500 | 1",
                 "on | 2592000 | 2591900 | 0", "on | 2592000 | 2592100 | 1", "off | 86400 | 999999 | 0",
                 "on | 1 | 60 | 0", "on | 1 | 3700 | 1", "on | -5 | 3700 | 0", "on | junk | 86500 | 1",
                 "on | 86400 | junk | 1", "on | 86400 | -5000 | 1"});
    }
    void checksWhenTheIntervalIsOver()
    {
        const auto [on, interval, ago, checks] = row<4>();
        defaults_->setBool(DefaultsKey::automaticallyChecksForUpdates, on == u"on");
        defaults_->setObject(DefaultsKey::updateCheckInterval, interval);
        if (ago == u"junk")
            defaults_->setObject(DefaultsKey::lastUpdateCheck, ago);
        else if (ago != u"never")
            checkedAgo(ago.toLongLong());
        fetcher_.feed = "{}";
        for (int i = 0; i < 2; ++i) {
            updater_->checkIfDue();
            QCOMPARE(fetcher_.asked.size(), checks.toInt());
        }
    }

    void asksAnUnreachableFeedAgain()
    {
        updater_->setAutomaticallyChecksForUpdates(true);
        fetcher_.answersAtOnce = false;
        for (int i = 0; i < 2; ++i) {
            updater_->checkIfDue();
            QCOMPARE(fetcher_.asked.size(), 2);
        }
        fetcher_.waiting[0](std::nullopt);
        updater_->checkIfDue();
        QCOMPARE(fetcher_.asked.size(), 3);
        // The answer may come too late.
        updater_.reset();
        fetcher_.waiting[1]("{}");
        QVERIFY(!defaults_->objectForKey(DefaultsKey::lastUpdateCheck).isValid());
    }

    void looksSomeSecondsAfterTheStart()
    {
        defaults_->setBool(DefaultsKey::automaticallyChecksForUpdates, true);
        updater_->start();
        QCoreApplication::processEvents();
        QCOMPARE(fetcher_.asked.size(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(fetcher_.asked.size(), 1, 20000);
    }

    // what the file holds | the address that counts
    void theInstallationNamesTheFeed_data()
    {
        addRows({"  https://example.org/feed?a=1 \\nsecond line | https://example.org/feed?a=1", "missing", "",
                 "\\nhttps://example.org/feed", "http://example.org/feed", "file:///etc/passwd", "https://",
                 "https://a b/", "https://example.org/LONG"});
    }
    void theInstallationNamesTheFeed()
    {
        auto [text, address] = row<2>();
        text.replace(u"\\n"_qs, u"\n"_qs).replace(u"LONG"_qs, QString(3000, u'x'));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder_->path(u"home"_qs)));
        qputenv("XDG_CONFIG_DIRS", QFile::encodeName(folder_->path({})));
        QVERIFY(QDir(folder_->path({})).mkdir(u"sonvika"_qs));
        if (text != u"missing")
            ScratchFolder::write(folder_->path(u"sonvika/update-feed"_qs), text.toUtf8());
        QCOMPARE(Updater::configuredFeed(), QUrl(address));
        Updater updater(*defaults_, fetcher_);
        updater.setAutomaticallyChecksForUpdates(true);
        QCOMPARE(fetcher_.asked.size(), address.isEmpty() ? 0 : 1);
    }

private:
    void checkedAgo(qint64 seconds)
    {
        defaults_->setObject(DefaultsKey::lastUpdateCheck, QDateTime::currentSecsSinceEpoch() - seconds);
    }

    const QUrl feedAddress_{u"https://example.org/feed"_qs};
    std::unique_ptr<ScratchFolder> folder_;
    std::unique_ptr<UserDefaults> defaults_;
    FakeFeedFetcher fetcher_;
    std::unique_ptr<Updater> updater_;
};

QTEST_GUILESS_MAIN(UpdaterTest)
#include "UpdaterTest.moc"
