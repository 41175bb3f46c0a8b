#pragma once

#include <cstdint>

#include <sys/types.h>

/// What tells whether a path still names the file that it named before, unchanged.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t birth = 0; ///< nanoseconds; 0 where the file system does not tell
    std::int64_t size = 0;
    std::int64_t modified = 0; ///< nanoseconds
    std::int64_t changed = 0;  ///< nanoseconds; the same, but nobody can set it
    std::uint64_t links = 0;
    bool isRegular = false;

    /// The same file, whatever it holds now. Its device number may have changed with a remount.
    bool isSameFile(const FileIdentity& other) const;
    /// The same file with, as far as size and time tell, the same content.
    bool isUnchanged(const FileIdentity& other) const;
    /// The same, and nothing else about it has changed either, such as its names: not to be asked after a rename.
    bool isUntouched(const FileIdentity& other) const { return isUnchanged(other) && changed == other.changed; }

    /// Whether a change from now on would show in the time of the last one: the clock that the system takes such times
    /// from moves in steps of some milliseconds.
    bool isSettled() const;

    /// A default identity, which no file has, when there is no file.
    static FileIdentity ofDescriptor(int descriptor);
    static FileIdentity ofPath(const char* path);
};
