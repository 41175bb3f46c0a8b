#include "app/StartRecovery.h"

#include "app/FailureLog.h"

void StartRecovery::start()
{
    search_.emplace([this] { QMetaObject::invokeMethod(this, &StartRecovery::list, Qt::QueuedConnection); });
}

void StartRecovery::list()
{
    for (const auto& change : search_->wait(std::chrono::milliseconds(0)).value_or(QList<InterruptedChange>()))
        log_.appendInterrupted(change);
}
