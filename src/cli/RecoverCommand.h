#pragma once

#include "cli/CommandLine.h"

class ErrorLines;
class StandardOutput;

/// The interrupted changes that can't be taken back, and the ways out.
namespace RecoverCommand {

/// Takes back what can be taken back first. Waits for every disk.
/// @return false when a change is left that no way out was asked for.
bool run(const CommandLine& line, StandardOutput& output, ErrorLines& errors);

} // namespace RecoverCommand
