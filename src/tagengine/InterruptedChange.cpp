#include "tagengine/InterruptedChange.h"

#include "platform/PathBytes.h"
#include "tagengine/RecordSlots.h"
#include "tagengine/Recovery.h"

#include <QCoreApplication>

#include <condition_variable>
#include <mutex>
#include <thread>

QString InterruptedChange::reasonText() const
{
    switch (reason) {
    case Reason::Missing:
        return QCoreApplication::translate("InterruptedChange", "The file is not there");
    case Reason::OtherVolume:
        return QCoreApplication::translate("InterruptedChange", "The file lies on a different volume now");
    case Reason::Different:
        return QCoreApplication::translate("InterruptedChange", "The file has been changed since");
    case Reason::Unreadable:
        return QCoreApplication::translate("InterruptedChange", "The file could not be read and written");
    case Reason::InUse:
        return QCoreApplication::translate("InterruptedChange", "Another program has locked the file");
    }
    return {};
}

namespace InterruptedChanges {

struct Search::Shared {
    std::mutex mutex;
    std::condition_variable ended;
    bool isDone = false;
    std::optional<QList<InterruptedChange>> left;
};

QList<InterruptedChange> recover()
{
    return Recovery::recoverAll();
}

std::optional<QString> restoreCopy(const QString& id)
{
    const auto path = Recovery::restoreCopy(id);
    return path ? std::optional(PathBytes::decode(*path)) : std::nullopt;
}

bool forget(const QString& id)
{
    return Recovery::forget(id);
}

Search::Search() : shared_(std::make_shared<Shared>())
{
    if (RecordSlots::inForce().empty()) {
        shared_->isDone = true;
        shared_->left.emplace();
        return;
    }
    // Nothing waits for this thread at the end: what it was doing is done at the next start.
    std::thread([shared = shared_] {
        QList<InterruptedChange> left = recover();
        const std::lock_guard guard(shared->mutex);
        shared->left = std::move(left);
        shared->isDone = true;
        shared->ended.notify_all();
    }).detach();
}

std::optional<QList<InterruptedChange>> Search::wait(std::chrono::milliseconds patience)
{
    std::unique_lock lock(shared_->mutex);
    shared_->ended.wait_for(lock, patience, [this] { return shared_->isDone; });
    return std::exchange(shared_->left, std::nullopt);
}

bool Search::isDone() const
{
    const std::lock_guard guard(shared_->mutex);
    return shared_->isDone;
}

} // namespace InterruptedChanges
