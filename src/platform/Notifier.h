#pragma once

#include <QString>

/// Through this, every part of the program tells the user of a failure. Callable from any thread.
class Notifier {
public:
    virtual ~Notifier() = default;

    /// Posts a notice and returns at once; nothing is posted while the user has notifications off.
    virtual void postNotification(const QString& title, const QString& body) = 0;
};
