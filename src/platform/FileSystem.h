#pragma once

#include <QByteArray>
#include <QString>

namespace FileSystem {

/// Whether the process may write the file at @p path; false when there is none.
bool isWritableFile(const QString& path);

/// Whether the process may read the file or folder at @p path; false when there is none.
bool isReadableFile(const QString& path);

/// Whether there is a folder, or a link to one, at @p path.
bool isFolder(const QString& path);

/// Whether there is a file, or a link to one, at @p path: neither a folder nor a device or pipe.
bool isRegularFile(const QString& path);

/// Whether anything can be reached at @p path.
bool exists(const QString& path);

/// The path from the root, with no part that is empty, "." or, where that leads to a folder, "..". As for the system,
/// ".." behind a link to a folder is the folder around the one that is linked.
QString absolutePath(const QString& path);

/// The path with every link followed, as bytes; empty, and errno tells why, when nothing can be reached there.
QByteArray realPath(const QByteArray& path);

/// Throws std::system_error, saying why, when nothing can be reached at @p path.
void checkResourceIsReachable(const QString& path);

/// Whether two paths are one entry of one folder, spelt in two ways, as on a file system that ignores case. Two hard
/// links are two entries. @param otherPath the spelling that is not the folder's own.
bool isSameEntry(const QString& path, const QString& otherPath);

/// Lets the owner read and write a file that the user owns, by the two permission bits that say so: nobody else gets a
/// right, and every other bit stays.
/// @param path links in front of its last part are followed.
/// @return whether a bit was added; false as well where the owner has both.
bool giveOwnerAccess(const QByteArray& path);

/// A text as the beginning of a file name that is shown and read as it is: "/" and a "." in front, which hides files,
/// become "_", line breaks and other controls spaces, of which none is left at the ends, and what is too long for file
/// systems is cut off. An extension still fits behind it.
QString asFileName(QString text);

} // namespace FileSystem
