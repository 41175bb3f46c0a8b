#pragma once

#include "tagengine/InterruptedChange.h"

#include <QObject>

#include <optional>

class FailureLog;

/// Takes back, in the background, the changes that an earlier session left half done, and lists those that can't be.
class StartRecovery : public QObject {
    Q_OBJECT

public:
    explicit StartRecovery(FailureLog& log) : log_(log) {}

    /// Returns at once. What is left is listed from the event loop.
    void start();

private:
    void list();

    FailureLog& log_;
    std::optional<InterruptedChanges::Search> search_;
};
