#pragma once

#include "platform/NotificationService.h"
#include "platform/Notifier.h"

#include <QObject>
#include <QQueue>

class UserDefaults;

/// Posts notices while "showNotifications" is on, each about one second after the call.
/// Lives in the main thread; postNotification may be called from any thread and never waits.
class NotificationPoster : public QObject, public Notifier {
    Q_OBJECT

public:
    static constexpr int delayMilliseconds = 1000;

    NotificationPoster(UserDefaults& defaults, NotificationService& service);
    /// Hands over the notices that still wait for their second to pass.
    ~NotificationPoster() override;

    void postNotification(const QString& title, const QString& body) override;
    void noteFailure(const Failure& failure) override { emit failureNoted(failure); }

    /// Asks the desktop whether notices may be shown. A refusal turns "showNotifications" off.
    void requestAuthorization();

    /// From now on, notices that come while the program is in front make a sound and go to the notification list,
    /// without a banner.
    void presentQuietlyInFront() { quietInFront_ = true; }

signals:
    /// Emitted on the thread on which the failure is noted.
    void failureNoted(const Failure& failure);

private:
    void schedule(const QString& title, const QString& body);
    void deliverNext();

    UserDefaults& defaults_;
    NotificationService& service_;
    QQueue<Notice> waiting_;
    bool quietInFront_ = false;
};
