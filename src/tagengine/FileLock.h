#pragma once

/// Waits at most two seconds, or not at all, for the advisory lock on an open file, which closing the file releases.
/// @return true also where the file system has no locks.
bool lockFile(int descriptor, bool waits = true);

/// An advisory lock (flock) on an open file, which keeps two of our programs from saving it at the same moment.
class FileLock {
public:
    /// Waits for the lock for at most two seconds, or not at all. A file system without locks counts as locked.
    explicit FileLock(int descriptor, bool waits = true);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    bool isHeld() const { return held_; }

private:
    int descriptor_;
    bool held_;
};
