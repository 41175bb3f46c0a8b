#include "platform/DBusApplication.h"

#include "platform/FileSystem.h"
#include "platform/PathBytes.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QUrl>

const QString DBusApplication::name = QStringLiteral("org.sonvika.Sonvika");

namespace {

const QString objectPath = QStringLiteral("/org/sonvika/Sonvika");
constexpr int patience = 1000;

} // namespace

DBusApplication::Role DBusApplication::claim()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return Role::Alone;
    new DBusApplicationAdaptor(*this);
    bus.registerObject(objectPath, this, QDBusConnection::ExportAdaptors);
    auto request = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    constexpr uint doNotQueue = 4;
    constexpr uint primaryOwner = 1;
    constexpr uint alreadyOwner = 4;
    request << name << doNotQueue;
    const QDBusReply<uint> reply = bus.call(request, QDBus::Block, patience);
    if (!reply.isValid())
        return Role::Alone;
    return reply.value() == primaryOwner || reply.value() == alreadyOwner ? Role::First : Role::Second;
}

bool DBusApplication::handOver(const QStringList& paths)
{
    QStringList uris;
    for (const auto& path : paths)
        uris.append(QString::fromUtf8(PathBytes::toUrl(FileSystem::absolutePath(path)).toEncoded()));
    auto message =
        QDBusMessage::createMethodCall(name, objectPath, QStringLiteral("org.freedesktop.Application"),
                                       uris.isEmpty() ? QStringLiteral("Activate") : QStringLiteral("Open"));
    if (!uris.isEmpty())
        message << uris;
    message << QVariantMap{{QStringLiteral("activation-token"), qEnvironmentVariable("XDG_ACTIVATION_TOKEN")}};
    const auto reply = QDBusConnection::sessionBus().call(message, QDBus::Block, patience);
    return reply.type() == QDBusMessage::ReplyMessage || QDBusError(reply).type() == QDBusError::NoReply;
}

DBusApplicationAdaptor::DBusApplicationAdaptor(DBusApplication& application)
    : QDBusAbstractAdaptor(&application), application_(application)
{
}

void DBusApplicationAdaptor::Activate(const QVariantMap& platformData)
{
    const QString token = platformData.value(QStringLiteral("activation-token")).toString();
    if (!token.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
    emit application_.activationWanted();
}

void DBusApplicationAdaptor::Open(const QStringList& uris, const QVariantMap& platformData)
{
    QStringList paths;
    for (const auto& uri : uris) {
        const QUrl url(uri);
        if (url.isLocalFile())
            paths.append(PathBytes::fromUrl(url));
    }
    Activate(platformData);
    emit application_.opened(paths);
}

void DBusApplicationAdaptor::ActivateAction(const QString&, const QVariantList&, const QVariantMap& platformData)
{
    // The program has no actions of its own here; being called is reason enough to come to the front.
    Activate(platformData);
}
