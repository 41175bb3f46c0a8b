#pragma once

#include <QString>
#include <QStringList>

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

} // namespace FileFinder
