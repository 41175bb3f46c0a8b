#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// Picks the audio files out of what a user hands over.
namespace FileFinder {

/// "mp3" and "m4a", compared exactly: an upper-case extension is not supported.
const QStringList& supportedExtensions();

bool hasSupportedExtension(const QString& path);

/// The file itself when its extension is supported; otherwise every regular file with a supported extension below
/// the folder, depth first in natural order of names. Hidden files and folders are skipped and links are not
/// followed. What can't be examined is printed on standard output and skipped.
/// @return absolute paths; none for a path that is neither.
QStringList audioFiles(const QString& path);

/// Told what could not be examined, and why.
using Skipped = std::function<void(const QString& path, const QString& reason)>;

/// The same, for somebody who wants to hear of what is skipped as well.
QStringList audioFiles(const QString& path, const Skipped& skipped);

/// The audio files below a folder as audioFiles finds them.
/// @return paths that begin with @p folder as it was given.
QStringList audioFilesBelow(const QString& folder, const Skipped& skipped);

} // namespace FileFinder
