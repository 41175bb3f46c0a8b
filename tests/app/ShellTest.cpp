#include "app/AppDelegate.h"
#include "app/NotificationPoster.h"
#include "fakes/Library.h"
#include "platform/DBusNotificationService.h"
#include "platform/SessionBus.h"
#include "support/Rows.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QSignalSpy>
#include <QTest>

#include <thread>

class ShellTest : public QObject {
    Q_OBJECT

private slots:
    void launchTurnsOffNotificationsThatAreRefused()
    {
        Library library;
        FakeNotificationService service;
        service.granted = false;
        NotificationPoster poster(library.defaults, service);
        library.defaults.setBool(DefaultsKey::showNotifications, true);
        AppDelegate(library.controller, poster, library.defaults).applicationWillFinishLaunching();
        QVERIFY(!library.defaults.boolForKey(DefaultsKey::showNotifications));
    }

    // the column that the list is sorted by
    void filesHandedOverGoRoundAnEdit_data() { addRows({"-1", "1"}); }
    void filesHandedOverGoRoundAnEdit()
    {
        Library library;
        library.openAll({u"v24.mp3"_qs, u"tagged.m4a"_qs});
        library.list.sort(row()[0].toInt());
        library.list.setFilterText(u"Blue"_qs);
        library.select(u"0"_qs);
        const auto edited = library.list.selectedObjects();
        library.controller.applyEdit(u"TITLE"_qs, u"No longer found"_qs);
        const QSignalSpy ended(&library.controller, &ViewController::editingShouldEnd);
        const QSignalSpy begun(&library.monitor, &LongWork::aboutToBegin);
        FakeNotificationService service;
        NotificationPoster poster(library.defaults, service);
        AppDelegate(library.controller, poster, library.defaults)
            .applicationOpenFiles({library.folder.copy(u"v24.mp3"_qs, u"handed.mp3"_qs)});
        QCOMPARE(library.list.content().size(), 3U);
        QCOMPARE(ended.size() + begun.size(), 0);
        QCOMPARE(library.list.selectedObjects(), edited);
    }

    void postsASecondLaterFromAnyThread()
    {
        Library library;
        FakeNotificationService service;
        NotificationPoster poster(library.defaults, service);
        poster.postNotification(u"Sonvika"_qs, u"before it is switched on"_qs);
        library.defaults.setBool(DefaultsKey::showNotifications, true);
        QElapsedTimer timer;
        timer.start();
        poster.postNotification(u"Sonvika"_qs, u"0"_qs);
        std::thread([&] { poster.postNotification(u"Sonvika"_qs, u"1"_qs); }).join();
        QTRY_COMPARE(service.notices.size(), 2);
        // Coarse timers may be early by a twentieth.
        QVERIFY(timer.elapsed() >= 950 && timer.elapsed() < 4000);
        QCOMPARE(service.notices[0].title + service.notices[0].body + service.notices[1].body, u"Sonvika01"_qs);
        QVERIFY(service.notices[0].identifier != service.notices[1].identifier);
    }

    void deliversWhatWaitsAtItsEnd()
    {
        Library library;
        FakeNotificationService service;
        service.refuses = true;
        library.defaults.setBool(DefaultsKey::showNotifications, true);
        QTest::ignoreMessage(QtWarningMsg, "Sonvika Local Notification failed to send");
        {
            NotificationPoster poster(library.defaults, service);
            poster.postNotification(u"Sonvika"_qs, u"waiting"_qs);
            QCOMPARE(service.notices.size(), 0);
        }
        QCOMPARE(service.notices.size(), 1);
    }

    void busThatNeverAnswersIsLeftAlone()
    {
        const char* variable = "DBUS_SESSION_BUS_ADDRESS";
        const QByteArray real = qgetenv(variable);
        QVERIFY(SessionBus::abandonUnlessItAnswers());
        QCOMPARE(qgetenv(variable), real);
        const QTemporaryDir folder;
        // Without an event loop it says nothing, ever.
        QLocalServer silent;
        QVERIFY(silent.listen(folder.filePath(u"bus"_qs)));
        for (const auto& name : {u"bus"_qs, u"nothing"_qs}) {
            qputenv(variable, "unix:path=" + QFile::encodeName(folder.filePath(name)));
            QElapsedTimer time;
            time.start();
            QVERIFY(!SessionBus::abandonUnlessItAnswers());
            QVERIFY(time.elapsed() < 1000);
            QCOMPARE(qgetenv(variable), "disabled:");
            // Only a bus that is there may be merely slow.
            const bool isThere = name == u"bus";
            QCOMPARE(SessionBus::wasTooSlow(), isThere);
            std::optional<bool> granted;
            DBusNotificationService().requestAuthorization([&](bool answer) { granted = answer; });
            QCOMPARE(granted, std::optional(isThere));
        }
        qputenv(variable, real);
    }
};

QTEST_GUILESS_MAIN(ShellTest)
#include "ShellTest.moc"
