#include "app/NotificationPoster.h"

#include "platform/UserDefaults.h"

#include <QGuiApplication>
#include <QTimer>
#include <QUuid>

NotificationPoster::NotificationPoster(UserDefaults& defaults, NotificationService& service)
    : defaults_(defaults), service_(service)
{
}

NotificationPoster::~NotificationPoster()
{
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    while (!waiting_.isEmpty())
        deliverNext();
}

void NotificationPoster::postNotification(const QString& title, const QString& body)
{
    if (!defaults_.boolForKey(DefaultsKey::showNotifications))
        return;
    QMetaObject::invokeMethod(
        this, [this, title, body] { schedule(title, body); }, Qt::QueuedConnection);
}

void NotificationPoster::requestAuthorization()
{
    service_.requestAuthorization([this](bool granted) {
        if (!granted)
            defaults_.setBool(DefaultsKey::showNotifications, false);
    });
}

void NotificationPoster::schedule(const QString& title, const QString& body)
{
    waiting_.enqueue({QUuid::createUuid().toString(QUuid::WithoutBraces), title, body});
    QTimer::singleShot(delayMilliseconds, this, &NotificationPoster::deliverNext);
}

void NotificationPoster::deliverNext()
{
    if (waiting_.isEmpty())
        return;
    Notice notice = waiting_.dequeue();
    notice.quiet = quietInFront_ && QGuiApplication::applicationState() == Qt::ApplicationActive;
    service_.deliver(notice, [] { qWarning("Sonvika Local Notification failed to send"); });
}
