#pragma once

#include <future>

namespace FontConfiguration {

/// Begins to read the desktop's font configuration in a thread of its own. Qt would begin with the first text, after it
/// has waited for the display; where fonts are found in another way, nothing happens. The result waits for the end.
std::future<void> readAhead();

} // namespace FontConfiguration
