#pragma once

#include <QString>

class Corpus;

/// The parts of the benchmark; each prints its own table. None loads more than @p largest files.
namespace Parts {

/// Reading files into the list, without a window, against the bare loop.
void loading(const Corpus& corpus, int largest);

/// What a record costs, and loading with the views attached.
void memory(const Corpus& corpus, int largest);
/// One line of it, in a process of its own.
void memoryChild(const QString& folder);

/// Selecting all rows, and typing in the search field.
void list(const Corpus& corpus, int largest);

/// Reading, and writing to files below a folder, against a bare TagLib loop.
void saving(const QString& root);

/// Setting cover art on files below a folder against the engine's own loop, and showing it.
void artwork(const Corpus& corpus, const QString& root);

/// Renaming files against a bare loop, and planning it.
void renaming(const Corpus& corpus, int largest);

/// Editing many files with the bar that shows it, and without.
void work(const Corpus& corpus, int largest);

/// The start of the program against that of an empty window.
void start();
/// One such start; ends the process.
[[noreturn]] void startChild(int argc, char* argv[]);

} // namespace Parts
