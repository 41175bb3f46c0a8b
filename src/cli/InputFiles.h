#pragma once

#include <QStringList>

class ErrorLines;

/// The files that a command is to work on.
namespace InputFiles {

/// @param operands files, folders, which stand for the audio files below them, and "-" for names on standard input.
/// @param lists files that hold more names, separated by NUL where they hold one and by line breaks otherwise; "-" is
/// the standard input.
/// @return the files in the order given, each once, spelt as they were given. What is not there, or can't be read, is
/// reported.
QStringList expand(const QStringList& operands, const QStringList& lists, ErrorLines& errors);

} // namespace InputFiles
