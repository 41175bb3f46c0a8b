#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>

#include <functional>

/// Records what a process does to the files below a folder: names made, exchanged and removed, bytes, lengths, and what
/// it has the system bring to the disk. The calls are the test program's own, which come before libc's; what gets past
/// them is noticed by comparing the folder with a Disk that the calls were applied to.
namespace CallRecorder {

/// A file or folder: the inode number, or that and a count where the number was given away again.
using FileId = quint64;

struct Call {
    enum class Kind : quint8 { Name, Write, Resize, Sync, Return };
    Kind kind = Kind::Return;
    /// What the paths stand for after the call; 0 for nothing.
    QMap<QByteArray, FileId> names{};
    FileId file = 0;       ///< that was written, resized or synced (0: all), or made if the call made one
    bool isFolder = false; ///< whether it made a folder
    qint64 offset = 0;     ///< of the bytes; the new length; of Return whether the operation said true
    QByteArray bytes{};

    bool isChange() const { return kind != Kind::Sync && kind != Kind::Return; }
};

struct Recording {
    int result; ///< of the work, or the negative number of the signal that ended it
    QList<Call> calls;
};

/// Runs @p work in a forked process.
/// @param root absolute, without links.
/// @param closedFolder in which no file can be made; none when empty.
Recording record(const QByteArray& root, const std::function<int()>& work, const QByteArray& closedFolder = {});

/// Notes in the work that an operation has come to its end.
void noteReturn(bool saved);

} // namespace CallRecorder
