#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <utility>

/// An open file descriptor, closed when it goes out of scope.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor = -1) : descriptor_(descriptor) {}
    ~FileDescriptor() { close(); }
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    int get() const { return descriptor_; }
    bool isOpen() const { return descriptor_ >= 0; }
    /// @return false when the system reports that earlier writes were lost; true when nothing was open.
    bool close();

private:
    int descriptor_;
};

/// Reads and writes that go on after interruptions and short counts.
namespace PosixFile {

/// @return the number of bytes read: fewer than @p length only at the end of the file; none (-1) after an error.
std::int64_t readAt(int descriptor, std::int64_t offset, char* into, std::size_t length);

/// @return true when every byte was written; errno tells why not.
bool writeAt(int descriptor, std::int64_t offset, const char* bytes, std::size_t length);

/// Copies bytes between files, inside the kernel where it can.
/// @return true when every byte was copied; errno tells why not.
bool copy(int from, std::int64_t fromOffset, int to, std::int64_t toOffset, std::int64_t length);

/// Puts the entries of a folder on the disk.
/// @return false when the system says that they are not; true where folders can't be synced.
bool syncFolder(const QByteArray& folder);

/// Hands what was written to file systems that take it only when a file is closed. The descriptor stays open.
/// @return false when they refuse it; errno tells why.
bool flush(int descriptor);

} // namespace PosixFile
