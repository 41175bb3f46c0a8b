#pragma once

#include <QByteArray>
#include <QString>

#include <stdexcept>

/// What stands for a security-scoped bookmark: bytes that find a file or folder again, and tell when another one has
/// taken its place.
///
/// They hold the canonical path (links resolved), the device and the inode, as JSON. A system that confines programs
/// would put its access token here.
namespace Bookmark {

struct Error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

enum class Options { None, SecurityScope };

struct Resolved {
    QString path;
    /// Something else is at the path now.
    bool isStale = false;
};

/// Throws Error when there is nothing at @p path that can be looked at.
QByteArray create(const QString& path, Options options);

/// Throws Error when the bytes are no bookmark, or nothing is at their path any more.
Resolved resolve(const QByteArray& bookmark);

/// Starts using what a bookmark grants; answers whether it can be read now. Nothing needs to be stopped here.
bool startAccessingSecurityScopedResource(const QString& path);
void stopAccessingSecurityScopedResource(const QString& path);

} // namespace Bookmark
