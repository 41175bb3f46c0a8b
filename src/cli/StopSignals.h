#pragma once

/// SIGINT, SIGTERM and SIGHUP, which end the work between two files.
namespace StopSignals {

/// From now on the signals are noted; before, they end the process.
void note();

/// The signal that came; 0 for none.
int received();

} // namespace StopSignals
