#include "platform/DBusColourScheme.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString object = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString schemeKey = QStringLiteral("color-scheme");

DBusColourScheme::Preference preferenceOf(const QVariant& value)
{
    switch (value.toUInt()) {
    case 1:
        return DBusColourScheme::Preference::Dark;
    case 2:
        return DBusColourScheme::Preference::Light;
    default:
        return DBusColourScheme::Preference::None;
    }
}

/// The value inside any depth of variants, as the portal wraps it twice.
QVariant unwrapped(QVariant value)
{
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

DBusColourScheme::DBusColourScheme()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(service, object, interface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QDBusMessage)));
    QDBusMessage read = QDBusMessage::createMethodCall(service, object, interface, QStringLiteral("Read"));
    read.setArguments({appearanceGroup, schemeKey});
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *finished;
        if (!reply.isError())
            emit changed(preferenceOf(unwrapped(QVariant::fromValue(reply.value()))));
    });
}

void DBusColourScheme::settingChanged(const QDBusMessage& signal)
{
    const auto arguments = signal.arguments();
    if (arguments.value(0) == appearanceGroup && arguments.value(1) == schemeKey)
        emit changed(preferenceOf(unwrapped(arguments.value(2))));
}
