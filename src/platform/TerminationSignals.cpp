#include "platform/TerminationSignals.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int handled[]{SIGTERM, SIGINT, SIGHUP};
volatile std::sig_atomic_t writeEnd = -1;

void note(int)
{
    const int error = errno;
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(writeEnd, &byte, 1);
    errno = error;
}

} // namespace

TerminationSignals::TerminationSignals()
{
    if (::pipe2(pipe_, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    writeEnd = pipe_[1];
    notifier_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        while (::read(pipe_[0], &byte, 1) == 1) {
        }
        emit endWanted();
    });
    for (const int number : handled)
        std::signal(number, note);
}

TerminationSignals::~TerminationSignals()
{
    for (const int number : handled)
        std::signal(number, SIG_DFL);
    notifier_.reset();
    for (const int end : pipe_) {
        if (end >= 0)
            ::close(end);
    }
}
