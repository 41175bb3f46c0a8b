#pragma once

/// The three streams that a process is started with.
namespace StandardStreams {

/// Fills the places of streams that were closed before the start, so that no file is opened in the place of one and
/// then written to as if it were that stream. Reading and writing them fails as before. To be called first of all.
void occupy();

} // namespace StandardStreams
