#pragma once

/// The session bus (D-Bus).
namespace SessionBus {

/// Tries whether the bus answers at all, for half a second at most. One that does not would hold up this program,
/// and the libraries it uses, with every call; it is then left alone for the rest of the run, as if there were none.
/// To be called before anything else uses the bus, and before threads are started.
/// @return false when there is none to use.
bool abandonUnlessItAnswers();

/// Whether it was left alone although it is there.
bool wasTooSlow();

} // namespace SessionBus
