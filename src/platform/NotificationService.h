#pragma once

#include <QString>

#include <functional>

/// One notice as it is handed to the desktop.
struct Notice {
    QString identifier; ///< a UUID in its canonical form, different for every notice
    QString title;
    QString body;
    bool quiet = false; ///< sound and notification list only, without a banner
};

/// The desktop's notification service (freedesktop Desktop Notifications).
class NotificationService {
public:
    virtual ~NotificationService() = default;

    /// Hands over one notice with the default sound. @p failed is called when the service refuses it.
    virtual void deliver(const Notice& notice, std::function<void()> failed) = 0;

    /// Asks whether notices may be shown; the answer comes by @p answered, at once or later.
    virtual void requestAuthorization(std::function<void(bool granted)> answered) = 0;
};
