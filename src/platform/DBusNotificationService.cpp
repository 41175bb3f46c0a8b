#include "platform/DBusNotificationService.h"

#include "platform/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include <utility>

namespace {

constexpr uchar lowUrgency = 0;
constexpr uchar normalUrgency = 1;
constexpr int expiryByServer = -1;
constexpr int patienceAtEnd = 500;

const QString service = QStringLiteral("org.freedesktop.Notifications");

QDBusMessage call(const QString& method)
{
    return QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/Notifications"), service, method);
}

QDBusMessage capabilitiesCall()
{
    return call(QStringLiteral("GetCapabilities"));
}

bool nobodyServes(const QDBusError& error)
{
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
        return true;
    default:
        return error.name().startsWith(QLatin1String("org.freedesktop.DBus.Error.Spawn"));
    }
}

/// Calls @p done with the reply, or with an error that says so where there is no bus.
template <class Done>
void send(const QDBusMessage& message, QObject* context, Done done)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        done(QDBusMessage::createError(QDBusError::Disconnected, QString()));
        return;
    }
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [done](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        done(finished->reply());
    });
}

bool isError(const QDBusMessage& reply)
{
    return reply.type() == QDBusMessage::ErrorMessage;
}

/// The body as a service shows it that reads markup: only what would be taken for markup is escaped.
QString escaped(QString body)
{
    return body.replace(QLatin1Char('&'), QLatin1String("&amp;"))
        .replace(QLatin1Char('<'), QLatin1String("&lt;"))
        .replace(QLatin1Char('>'), QLatin1String("&gt;"));
}

} // namespace

DBusNotificationService::~DBusNotificationService()
{
    if (!waiting_.isEmpty())
        takeCapabilities(QDBusConnection::sessionBus().call(capabilitiesCall(), QDBus::Block, patienceAtEnd));
}

void DBusNotificationService::deliver(const Notice& notice, std::function<void()> failed)
{
    if (readsMarkup_) {
        notify(notice, failed);
        return;
    }
    waiting_.append({notice, std::move(failed)});
    if (waiting_.size() == 1)
        send(capabilitiesCall(), this, [this](const QDBusMessage& reply) { takeCapabilities(reply); });
}

void DBusNotificationService::takeCapabilities(const QDBusMessage& reply)
{
    if (!isError(reply))
        readsMarkup_ = reply.arguments().value(0).toStringList().contains(QLatin1String("body-markup"));
    for (const auto& [notice, failed] : std::exchange(waiting_, {}))
        notify(notice, failed);
}

void DBusNotificationService::notify(const Notice& notice, const std::function<void()>& failed)
{
    const QVariantMap hints{
        {QStringLiteral("urgency"), QVariant::fromValue(notice.quiet ? lowUrgency : normalUrgency)},
        {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")},
        {QStringLiteral("desktop-entry"), QStringLiteral("org.sonvika.Sonvika")},
        {QStringLiteral("x-sonvika-identifier"), notice.identifier},
    };
    const QString body = readsMarkup_.value_or(false) ? escaped(notice.body) : notice.body;
    QDBusMessage message = call(QStringLiteral("Notify"));
    message.setArguments(
        {QStringLiteral("Sonvika"), 0u, QString(), notice.title, body, QStringList(), hints, expiryByServer});
    send(message, this, [notice, failed](const QDBusMessage& reply) {
        if (!isError(reply))
            return;
        if (nobodyServes(QDBusError(reply)))
            qInfo("%s: %s", qUtf8Printable(notice.title), qUtf8Printable(notice.body));
        else
            failed();
    });
}

void DBusNotificationService::requestAuthorization(std::function<void(bool granted)> answered)
{
    // A service, or a bus, that is slow to answer has refused nothing.
    send(call(QStringLiteral("GetServerInformation")), this, [answered](const QDBusMessage& reply) {
        const bool isSlow = QDBusError(reply).type() == QDBusError::NoReply || SessionBus::wasTooSlow();
        answered(!isError(reply) || isSlow);
    });
}
