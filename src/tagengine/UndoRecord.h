#pragma once

#include "tagengine/FileCommit.h"
#include "tagengine/RecordSlots.h"

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

/// What a change in place is about to overwrite, and what with: written, and on the disk, before the first byte of the
/// file changes, and in force until the last one has and is on the disk, too.
///
/// A record that is found in force belongs to a change that may not have come to its end. Each byte of the file is then
/// compared with what it was and what it was to become, so that the file is only brought back when it is that half-done
/// change and nothing else. A record that is not whole belongs to a change that had not begun.
class UndoRecord {
public:
    /// A part of the file. Both lengths are the same but at the end of a file that grows or shrinks.
    struct Range {
        std::int64_t offset;
        std::int64_t oldLength;
        std::int64_t newLength;
    };

    /// Writes a record of the given ranges, ascending, of a change, and syncs it. The caller holds the file's lock.
    /// @return none when it could not be written; nothing is in force then.
    static std::optional<UndoRecord> create(const FileChange& change, std::vector<Range> ranges);

    enum class State { Whole, NotWhole, Unreadable };
    /// A record as it is found; of its parts only slot() may be used where it is not whole.
    static std::pair<UndoRecord, State> load(RecordSlots::Slot slot);

    RecordSlots::Slot& slot() { return slot_; }
    /// The file's, absolute, when the change was made.
    const QByteArray& path() const { return path_; }
    /// See VolumeId.
    const QByteArray& volume() const { return volume_; }

    enum class Finding {
        Old,       ///< the file is what it was before the change
        New,       ///< the file is what the change was to make of it
        HalfDone,  ///< each byte is an old or a new one
        Different, ///< something else has changed the file, or it is another one
        Unreadable
    };
    /// What a file is. One that holds the same counts as the same.
    Finding compare(int file) const;

    /// Reads bytes that the file had before; they must lie in one of the ranges.
    bool readOld(std::int64_t offset, char* into, std::size_t length) const;
    /// Gives the file its old bytes and length, on the disk.
    bool rollBack(int file) const;
    /// The same without the disk.
    bool writeOld(int file) const;
    /// The length of the file before the change, in bytes.
    std::int64_t oldSize() const { return oldSize_; }

private:
    /// A part of the new content: old bytes of the file, or bytes that stand in the record.
    struct Part {
        std::int64_t position; ///< in the new content
        std::int64_t length;
        bool isOld;
        std::int64_t offset; ///< in the old content, or in the record's new bytes
    };

    explicit UndoRecord(RecordSlots::Slot slot) : slot_(std::move(slot)) {}
    bool describe(const FileChange& change, std::vector<Range> ranges);
    bool addParts(const PieceTable& content, const Range& range);
    bool write(const FileChange& change);
    QByteArray header() const;
    bool parseHeader(const QByteArray& bytes);
    State read();
    void placeBytes(std::int64_t headerLength);
    bool readNew(std::int64_t position, char* into, std::int64_t length) const;
    /// What the file may still be, of all that was looked at.
    struct Tally {
        bool isOld;
        bool isNew;
    };
    Finding compareBlock(int file, const Range& range, std::int64_t offset, std::int64_t length, Tally& tally) const;
    std::optional<std::uint64_t> surroundings(int file) const;

    RecordSlots::Slot slot_;
    QByteArray path_;
    QByteArray volume_;
    std::int64_t oldSize_ = 0;
    std::int64_t newSize_ = 0;
    std::uint64_t surroundings_ = 0;
    std::vector<Range> ranges_;
    std::vector<Part> parts_; ///< of all ranges, one after another
    std::int64_t oldBytesStart_ = 0;
    std::int64_t newBytesStart_ = 0;
    std::int64_t newLength_ = 0; ///< of the bytes that are not the file's
};
