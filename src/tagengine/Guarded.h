#pragma once

#include "tagengine/FailureReason.h"

#include <cerrno>
#include <exception>
#include <new>

/// Does the work of one engine operation. An exception, as when memory runs out, fails it with a reason: a file that is
/// too much for this machine must not end the work on the others.
/// @return what @p work returns; a default value, which stands for failure, after an exception.
template <class Work>
auto guarded(Work work) -> decltype(work())
{
    try {
        return work();
    } catch (const std::bad_alloc&) {
        FailureReason::note(ENOMEM);
    } catch (const std::exception&) {
        FailureReason::note(FailureReason::damaged);
    }
    return {};
}
