#include "platform/DBusNotificationService.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QTest>

/// A notification server on the session bus, where the real one would be.
class NotificationServer : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QVariantList shown;
    QStringList capabilities;
    bool refuses = false;

public slots:
    uint Notify(const QString& name, uint replaces, const QString&, const QString& summary, const QString& body,
                const QStringList& actions, const QVariantMap& hints, int)
    {
        if (refuses)
            sendErrorReply(QDBusError::LimitsExceeded, QString());
        shown = {name, replaces, summary, body, actions, hints.value(QStringLiteral("urgency"))};
        return 1;
    }
    QStringList GetCapabilities() { return capabilities; }
    QString GetServerInformation() { return QStringLiteral("server"); }
};

class DBusNotificationServiceTest : public QObject {
    Q_OBJECT

private slots:
    void speaksToTheServerOnTheBus()
    {
        auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"server"_qs);
        NotificationServer server;
        QVERIFY(bus.registerObject(u"/org/freedesktop/Notifications"_qs, &server, QDBusConnection::ExportAllSlots));
        QVERIFY(bus.registerService(u"org.freedesktop.Notifications"_qs));
        const QString body = u"<b>\"x\"</b> & y"_qs;
        for (const bool markup : {false, true}) {
            server.capabilities = markup ? QStringList{u"body-markup"_qs} : QStringList();
            DBusNotificationService service;
            service.deliver({u"id"_qs, u"A & B"_qs, body, markup}, [] { QFAIL("refused"); });
            QTRY_COMPARE(server.shown, (QVariantList{u"Sonvika"_qs, 0u, u"A & B"_qs,
                                                     markup ? u"&lt;b&gt;\"x\"&lt;/b&gt; &amp; y"_qs : body,
                                                     QStringList(), QVariant::fromValue(uchar(markup ? 0 : 1))}));
        }
        DBusNotificationService service;
        QCOMPARE(isGranted(service), true);

        // Nothing of this one's has been answered yet, and it has no time left.
        DBusNotificationService().deliver({u"id"_qs, u"last"_qs, {}}, {});
        QTRY_COMPARE(server.shown.value(2).toString(), u"last"_qs);

        server.refuses = true;
        bool failed = false;
        service.deliver({{}, u"title"_qs, u"refused"_qs}, [&] { failed = true; });
        QTRY_VERIFY(failed);

        QVERIFY(bus.unregisterService(u"org.freedesktop.Notifications"_qs));
        QTest::ignoreMessage(QtInfoMsg, "title: nobody there");
        service.deliver({{}, u"title"_qs, u"nobody there"_qs}, [] { QFAIL("refused"); });
        QCOMPARE(isGranted(service), false);
    }

private:
    static std::optional<bool> isGranted(DBusNotificationService& service)
    {
        std::optional<bool> granted;
        service.requestAuthorization([&](bool answer) { granted = answer; });
        [&] { QTRY_VERIFY(granted); }();
        return granted;
    }
};

QTEST_GUILESS_MAIN(DBusNotificationServiceTest)
#include "DBusNotificationServiceTest.moc"
