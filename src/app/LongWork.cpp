#include "app/LongWork.h"

#include <utility>

LongWork::LongWork()
    : events_([this](const QWindow& window, const QPoint& place) { return mayUse_ && mayUse_(window, place); })
{
    connect(&events_, &HeldEvents::escapePressed, this, &LongWork::cancel);
}

void LongWork::filesWillChange()
{
    if (!isWorking())
        emit aboutToBegin();
}

void LongWork::workBegins(qsizetype count)
{
    // What began in the middle of other work, as a timer may, is over before that goes on.
    if (++depth_ > 1)
        return;
    count_ = count;
    begun_ = 0;
    canceled_ = false;
    isShown_ = false;
    sinceStart_.start();
}

bool LongWork::fileBegins(const QString& path)
{
    if (depth_ > 1)
        return true;
    const bool isDue =
        isShown_ ? sinceShown_.hasExpired(intervalMilliseconds) : sinceStart_.hasExpired(patienceMilliseconds);
    if (isDue) {
        isShown_ = true;
        emit advanced(begun_, count_, path);
        events_.processEvents();
        sinceShown_.start();
    }
    if (canceled_)
        return false;
    ++begun_;
    return true;
}

void LongWork::workEnds()
{
    if (--depth_ > 0)
        return;
    if (isShown_)
        emit ended();
    if (canceled_)
        emit stopped(begun_, count_);
    // The caller has not finished yet.
    if (events_.isHolding() || !waiting_.empty())
        QMetaObject::invokeMethod(this, &LongWork::runWaiting, Qt::QueuedConnection);
}

void LongWork::abandon()
{
    cancel();
    events_.forget();
}

void LongWork::whenIdle(std::function<void()> action)
{
    if (isWorking())
        waiting_.push_back(std::move(action));
    else
        action();
}

void LongWork::runWaiting()
{
    if (isWorking())
        return;
    events_.release();
    for (const auto& action : std::exchange(waiting_, {}))
        action();
}
