#pragma once

#include "tagengine/FileIdentity.h"
#include "tagengine/PieceTable.h"

#include <QByteArray>

/// A file and the content that it is to have.
struct FileChange {
    QByteArray path; ///< absolute, links followed
    int descriptor;  ///< open for reading and writing, and locked
    FileIdentity identity;
    const PieceTable& content;

    QByteArray folder() const { return path.left(path.lastIndexOf('/') + 1); }
    /// Whether the file is still the one that was read, by the descriptor and by the path.
    bool isCurrent() const
    {
        return identity.isUntouched(FileIdentity::ofDescriptor(descriptor))
               && identity.isUntouched(FileIdentity::ofPath(path.constData()));
    }
};

enum class CommitResult {
    Done,      ///< the file has its new content, on the disk
    Stale,     ///< somebody else changed the file since it was read, and it is what they made of it
    Failed,    ///< the file is as it was, or an undo record that will bring it back is left
    Impossible ///< not in this way; the file is as it was
};

/// The ways in which a file gets its new content: wholly or not at all.
namespace FileCommit {

/// Patches, replaces or rewrites the file: the cheapest way that is safe and open.
CommitResult commit(const FileChange& change);

/// Removes the temporary files that processes which have ended left in a folder; looks into each folder once.
void removeLeftovers(const QByteArray& folder);

/// Writes a new file beside the old one and renames it over it. Owner, permissions, access-control lists and
/// extended attributes are kept; where they can't be, and where the folder takes no new file, it is Impossible.
CommitResult replace(const FileChange& change);

/// Overwrites the parts of the file that differ, under an undo record. Impossible where no record can be written.
CommitResult overwrite(const FileChange& change);

} // namespace FileCommit
