#include "cli/StandardOutput.h"

#include <cerrno>

#include <unistd.h>

void StandardOutput::write(const QByteArray& bytes)
{
    constexpr qsizetype pieceSize = 1 << 16;
    pending_ += bytes;
    if (pending_.size() >= pieceSize)
        flush();
}

void StandardOutput::flush()
{
    qsizetype done = 0;
    while (error_ == 0 && done < pending_.size()) {
        const ssize_t count =
            ::write(STDOUT_FILENO, pending_.constData() + done, static_cast<std::size_t>(pending_.size() - done));
        if (count >= 0)
            done += count;
        else if (errno != EINTR)
            error_ = errno;
    }
    pending_.clear();
}

bool StandardOutput::isTerminal()
{
    return ::isatty(STDOUT_FILENO) == 1;
}
