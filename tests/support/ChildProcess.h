#pragma once

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

/// Runs @p work in a forked process that prints nothing.
/// @return what it returns, or the negative number of the signal that ended it.
template <class Work>
int inChildProcess(Work work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
        ::_exit(work());
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}
