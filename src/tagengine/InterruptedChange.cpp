#include "tagengine/InterruptedChange.h"

#include "platform/PathBytes.h"
#include "tagengine/RecordSlots.h"
#include "tagengine/Recovery.h"

#include <QCoreApplication>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

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
    std::function<void()> whenDone;
    bool isDone = false;
    std::optional<QList<InterruptedChange>> left;
};

QList<InterruptedChange> recover()
{
    return Recovery::recoverAll();
}

bool isLeft(const QString& id)
{
    const auto left = recover();
    return std::any_of(left.begin(), left.end(), [&](const InterruptedChange& change) { return change.id == id; });
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

Search::Search(std::function<void()> whenDone) : shared_(std::make_shared<Shared>())
{
    shared_->whenDone = std::move(whenDone);
    if (RecordSlots::inForce().empty() || !begin()) {
        shared_->isDone = true;
        shared_->left.emplace();
    }
}

bool Search::begin()
{
    const auto search = [shared = shared_] {
        QList<InterruptedChange> left = recover();
        const std::lock_guard guard(shared->mutex);
        shared->left = std::move(left);
        shared->isDone = true;
        shared->ended.notify_all();
        if (shared->whenDone)
            shared->whenDone();
    };
    try {
        // Nothing waits for this thread at the end: what it was doing is done at the next start.
        std::thread(search).detach();
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

Search::~Search()
{
    const std::lock_guard guard(shared_->mutex);
    shared_->whenDone = nullptr;
}

std::optional<QList<InterruptedChange>> Search::wait(std::chrono::milliseconds patience)
{
    std::unique_lock lock(shared_->mutex);
    shared_->ended.wait_for(lock, patience, [this] { return shared_->isDone; });
    return std::exchange(shared_->left, std::nullopt);
}

} // namespace InterruptedChanges
