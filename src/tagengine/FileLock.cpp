#include "tagengine/FileLock.h"

#include <cerrno>
#include <chrono>
#include <thread>

#include <sys/file.h>

namespace {

using namespace std::chrono_literals;
constexpr auto patience = 2s;
constexpr auto interval = 10ms;

} // namespace

bool lockFile(int descriptor, bool waits)
{
    const auto deadline = std::chrono::steady_clock::now() + (waits ? patience : 0s);
    while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno == EINTR)
            continue;
        if (errno != EWOULDBLOCK)
            return true;
        if (std::chrono::steady_clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(interval);
    }
    return true;
}

FileLock::FileLock(int descriptor, bool waits) : descriptor_(descriptor), held_(lockFile(descriptor, waits)) {}

FileLock::~FileLock()
{
    if (held_)
        ::flock(descriptor_, LOCK_UN);
}
