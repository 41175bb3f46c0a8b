#pragma once

#include <QString>

namespace FileSystem {

/// Whether the process may write the file at @p path; false when there is none.
bool isWritableFile(const QString& path);

/// Sets the permission bits (for example 0644). @return false when they could not be set.
bool setPosixPermissions(const QString& path, unsigned int mode);

/// A text as a part of a file name: "/" becomes "_", and what is too long for file systems is cut off. An extension
/// still fits behind it.
QString asFileName(QString text);

} // namespace FileSystem
