#pragma once

#include "platform/Notifier.h"

#include <functional>

/// The standard error: one line for every failure, `path: reason`.
class ErrorLines : public Notifier {
public:
    /// Nothing is posted; failures are told by noteFailure.
    void postNotification(const QString&, const QString&) override {}
    /// Prints the reason or, where there is none, the message.
    void noteFailure(const Failure& failure) override;
    void report(const QString& path, const QString& reason);

    int count() const { return count_; }

    /// Called before each line.
    std::function<void()> beforeLine;

private:
    int count_ = 0;
};
