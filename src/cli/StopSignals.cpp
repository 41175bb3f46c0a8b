#include "cli/StopSignals.h"

#include <csignal>
#include <initializer_list>

namespace {

volatile std::sig_atomic_t number = 0;

void take(int signal)
{
    number = signal;
}

} // namespace

void StopSignals::note()
{
    struct sigaction action {};
    action.sa_handler = take;
    action.sa_flags = SA_RESTART | SA_RESETHAND;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction current {};
        // What the caller wants ignored, as nohup does, stays so.
        if (::sigaction(signal, nullptr, &current) == 0 && current.sa_handler != SIG_IGN)
            ::sigaction(signal, &action, nullptr);
    }
}

int StopSignals::received()
{
    return number;
}
