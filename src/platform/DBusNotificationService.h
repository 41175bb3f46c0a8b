#pragma once

#include "platform/NotificationService.h"

#include <QList>
#include <QObject>

#include <optional>

class QDBusMessage;

/// `org.freedesktop.Notifications` on the session bus. Where nobody serves it, a notice becomes a log line, and
/// notices count as not authorised.
class DBusNotificationService : public QObject, public NotificationService {
    Q_OBJECT

public:
    DBusNotificationService() = default;
    /// Sends the notices that still wait to be sent.
    ~DBusNotificationService() override;

    void deliver(const Notice& notice, std::function<void()> failed) override;
    void requestAuthorization(std::function<void(bool granted)> answered) override;

private:
    struct Waiting {
        Notice notice;
        std::function<void()> failed;
    };

    void takeCapabilities(const QDBusMessage& reply);
    void notify(const Notice& notice, const std::function<void()>& failed);

    /// Whether the service reads markup in a notice's body; none before it was asked.
    std::optional<bool> readsMarkup_;
    /// For the service to tell that.
    QList<Waiting> waiting_;
};
