#pragma once

#include "cli/CommandLine.h"

class StandardOutput;

/// Writes the cover art of a file where the user wants it.
namespace ArtOutput {

/// @param path an audio file.
/// @return why it could not be done; empty when it was.
QString write(const QString& path, const CommandLine& line, StandardOutput& output);

} // namespace ArtOutput
