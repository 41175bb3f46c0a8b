#include "platform/DBusNotificationService.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {

constexpr uchar lowUrgency = 0;
constexpr uchar normalUrgency = 1;
constexpr int expiryByServer = -1;

const QString service = QStringLiteral("org.freedesktop.Notifications");

QDBusMessage call(const QString& method)
{
    return QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/Notifications"), service, method);
}

bool nobodyServes(const QDBusError& error)
{
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
    case QDBusError::NoReply:
        return true;
    default:
        return error.name().startsWith(QLatin1String("org.freedesktop.DBus.Error.Spawn"));
    }
}

/// Calls @p done with the reply, also where there is no bus at all.
template <class Done>
void send(const QDBusMessage& message, QObject* context, Done done)
{
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [done](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        done(*finished);
    });
}

} // namespace

void DBusNotificationService::deliver(const Notice& notice, std::function<void()> failed)
{
    const QVariantMap hints{
        {QStringLiteral("urgency"), QVariant::fromValue(notice.quiet ? lowUrgency : normalUrgency)},
        {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")},
        {QStringLiteral("desktop-entry"), QStringLiteral("org.sonvika.Sonvika")},
        {QStringLiteral("x-sonvika-identifier"), notice.identifier},
    };
    QDBusMessage message = call(QStringLiteral("Notify"));
    message.setArguments({QStringLiteral("Sonvika"), 0u, QString(), notice.title, notice.body.toHtmlEscaped(),
                          QStringList(), hints, expiryByServer});
    send(message, this, [notice, failed](const QDBusPendingCall& reply) {
        if (!reply.isError())
            return;
        if (nobodyServes(reply.error()))
            qInfo("%s: %s", qUtf8Printable(notice.title), qUtf8Printable(notice.body));
        else
            failed();
    });
}

void DBusNotificationService::requestAuthorization(std::function<void(bool granted)> answered)
{
    send(call(QStringLiteral("GetServerInformation")), this,
         [answered](const QDBusPendingCall& reply) { answered(!reply.isError()); });
}
