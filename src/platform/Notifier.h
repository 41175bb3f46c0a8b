#pragma once

#include <QString>

/// What went wrong with one file, for somebody who wants to mend it.
struct Failure {
    /// Empty when no file is concerned.
    QString path;
    /// What the notice says.
    QString message;
    /// Why, where that is known beyond the message.
    QString reason;
};

/// Through this, every part of the program tells the user of a failure. Callable from any thread.
class Notifier {
public:
    virtual ~Notifier() = default;

    /// Posts a notice and returns at once; nothing is posted while the user has notifications off.
    virtual void postNotification(const QString& title, const QString& body) = 0;

    /// Notes a failure, whether it is posted or not.
    virtual void noteFailure(const Failure&) {}
};
