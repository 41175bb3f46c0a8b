#include "platform/StandardStreams.h"

#include <cerrno>
#include <initializer_list>

#include <fcntl.h>
#include <unistd.h>

void StandardStreams::occupy()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const bool isClosed = ::fcntl(stream, F_GETFD) < 0 && errno == EBADF;
        const int wrongWay = stream == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        if (isClosed && ::open("/dev/null", wrongWay) != stream)
            return;
    }
}
