#pragma once

/// SIGINT, SIGTERM and SIGHUP, which end the work between two files.
namespace StopSignals {

/// From now on the first signal of each kind is noted. Before, and when it comes again, it ends the process.
void note();

/// The signal that came; 0 for none.
int received();

} // namespace StopSignals
