#include "app/NotificationPoster.h"
#include "fakes/FakePlatform.h"
#include "platform/UserDefaults.h"
#include "support/ScratchFolder.h"

#include <QElapsedTimer>
#include <QTest>
#include <QUuid>

#include <thread>

class NotificationPosterTest : public QObject {
    Q_OBJECT

private slots:
    void postsASecondLaterFromAnyThread()
    {
        NotificationPoster poster(defaults_, service_);
        poster.postNotification(u"Sonvika"_qs, u"before it is switched on"_qs);
        defaults_.setBool(DefaultsKey::showNotifications, true);
        QElapsedTimer timer;
        timer.start();
        poster.postNotification(u"Sonvika"_qs, u"0"_qs);
        std::thread([&] { poster.postNotification(u"Sonvika"_qs, u"1"_qs); }).join();
        QTRY_COMPARE(service_.notices.size(), 2);
        // Coarse timers may be early by a twentieth.
        QVERIFY(timer.elapsed() >= 950 && timer.elapsed() < 4000);
        QCOMPARE(service_.notices[0].title + service_.notices[0].body + service_.notices[1].body, u"Sonvika01"_qs);
        QVERIFY(service_.notices[0].identifier != service_.notices[1].identifier);
        const QString identifier = service_.notices[0].identifier;
        QCOMPARE(QUuid::fromString(identifier).toString(QUuid::WithoutBraces), identifier);
    }

    void deliversWhatWaitsAtItsEnd()
    {
        service_.notices.clear();
        service_.refuses = true;
        QTest::ignoreMessage(QtWarningMsg, "Sonvika Local Notification failed to send");
        auto poster = std::make_unique<NotificationPoster>(defaults_, service_);
        poster->postNotification(u"Sonvika"_qs, u"waiting"_qs);
        defaults_.setBool(DefaultsKey::showNotifications, false);
        poster->postNotification(u"Sonvika"_qs, u"off"_qs);
        QCoreApplication::processEvents();
        QCOMPARE(service_.notices.size(), 0);
        poster.reset();
        QCOMPARE(service_.notices.size(), 1);
    }

    void aRefusedAuthorisationTurnsTheKeyOff()
    {
        NotificationPoster poster(defaults_, service_);
        defaults_.setBool(DefaultsKey::showNotifications, true);
        for (const bool granted : {true, false, true}) {
            service_.granted = granted;
            const bool before = defaults_.boolForKey(DefaultsKey::showNotifications);
            poster.requestAuthorization();
            QCOMPARE(defaults_.boolForKey(DefaultsKey::showNotifications), before && granted);
        }
    }

private:
    const ScratchFolder folder_;
    UserDefaults defaults_{folder_.path(u"settings.ini"_qs)};
    FakeNotificationService service_;
};

QTEST_GUILESS_MAIN(NotificationPosterTest)
#include "NotificationPosterTest.moc"
