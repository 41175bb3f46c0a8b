#pragma once

#include "platform/NotificationService.h"

#include <QObject>

/// `org.freedesktop.Notifications` on the session bus. Where nobody serves it, a notice becomes a log line, and
/// notices count as not authorised.
class DBusNotificationService : public QObject, public NotificationService {
    Q_OBJECT

public:
    void deliver(const Notice& notice, std::function<void()> failed) override;
    void requestAuthorization(std::function<void(bool granted)> answered) override;
};
