#pragma once

#include "tagengine/FileIdentity.h"
#include "tagengine/PosixFile.h"

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <vector>

/// The files that hold undo records, in the XDG state folder (`sonvika/undo`). A slot is made once and used again and
/// again, one change at a time: a record that is written into it needs no new entry in a folder, which would have to reach
/// the disk as well.
///
/// A slot is locked (flock) from before its record is written until the record has ended, so that whoever finds a record
/// knows whether its writer is alive.
namespace RecordSlots {

/// The beginning of every slot.
struct Head {
    std::uint32_t mark = 0;    ///< 0 where there is no record in force
    std::uint32_t settled = 0; ///< 1 when the slot's entry in its folder is known to be on the disk
    std::uint64_t pathHash = 0;
    std::uint64_t device = 0; ///< of the file, a hint only: it may be another one after the next mount
    std::uint64_t inode = 0;  ///< of the file, a hint only
    std::uint64_t length = 0; ///< of what follows, in bytes
    std::uint64_t checksum = 0;

    bool isInForce() const { return mark != 0; }
};

/// A slot that is locked by this object.
class Slot {
public:
    Slot(QByteArray path, FileDescriptor file, bool isSettled)
        : path_(std::move(path)), file_(std::move(file)), isSettled_(isSettled)
    {
    }
    Slot(Slot&&) = default;
    Slot& operator=(Slot&&) = default;
    Slot(const Slot&) = delete;
    Slot& operator=(const Slot&) = delete;
    ~Slot();

    const QByteArray& path() const { return path_; }
    int descriptor() const { return file_.get(); }
    /// Makes sure that what was written into the slot will be found after the power has failed.
    bool sync();
    /// Ends the record. @return false when it is still in force.
    bool clear();

private:
    QByteArray path_;
    FileDescriptor file_;
    bool isSettled_;
};

/// A free slot. @return none when there can be none.
std::optional<Slot> take();

/// Locks a slot or an older version's record for whoever wants to bring its file back. Waits only if @p waits.
/// @return none while another process uses it, and when it can't be opened.
std::optional<Slot> lock(const QByteArray& path, bool waits);

/// The paths of all slots with a record in force, and of all records of the older version.
std::vector<QByteArray> inForce();

/// Those of them that may be about a file, told from what the heads say.
/// @param path absolute; need not be the one that the record was made for. @param identity of that file.
std::vector<QByteArray> inForceFor(const QByteArray& path, const FileIdentity& identity);

bool isSpokenOf(const QByteArray& path, const FileIdentity& identity);

std::uint64_t hashOf(const QByteArray& path);

/// What a locked slot says, a record of the older version too.
Head headOf(const Slot& slot);

/// Whether the name is that of a record of the older version, which had a file for each.
bool isOlderRecord(const QByteArray& slotPath);

} // namespace RecordSlots
