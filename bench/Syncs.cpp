#include "Syncs.h"

#include <atomic>
#include <chrono>
#include <thread>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::atomic current = Syncs::Mode::Real;
std::atomic calls = 0;

int sync(long number, int file)
{
    using namespace std::chrono_literals;
    ++calls;
    if (current == Syncs::Mode::Slow)
        std::this_thread::sleep_for(15ms);
    return current == Syncs::Mode::Real ? static_cast<int>(::syscall(number, file)) : 0;
}

} // namespace

void Syncs::set(Mode mode)
{
    current = mode;
    calls = 0;
}

int Syncs::count()
{
    return calls;
}

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): libc's names are reserved.
extern "C" {

int fsync(int file)
{
    return sync(SYS_fsync, file);
}

int fdatasync(int file)
{
    return sync(SYS_fdatasync, file);
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
