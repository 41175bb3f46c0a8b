#include "tagengine/FailureReason.h"
#include "tagengine/FileCommit.h"
#include "tagengine/PosixFile.h"
#include "tagengine/UndoRecord.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

using Range = UndoRecord::Range;

constexpr std::int64_t blockSize = 1 << 20;

/// The ranges whose bytes differ from the file's, where every byte of the original stays in its place.
/// @return false when the file can't be read.
bool collectPatches(const FileChange& change, std::vector<Range>& patches)
{
    bool readable = true;
    change.content.visit(0, change.content.length(), [&](std::int64_t position, const PieceTable::Piece& piece) {
        if (piece.isOriginal() || !readable)
            return;
        std::vector<char> old(static_cast<std::size_t>(piece.length));
        readable = PosixFile::readAt(change.descriptor, position, old.data(), old.size()) == piece.length;
        const char* begin = piece.data();
        const char* end = begin + piece.length;
        const char* first = std::mismatch(begin, end, old.begin()).first;
        if (!readable || first == end)
            return;
        const auto equalAtEnd =
            std::mismatch(std::make_reverse_iterator(end), std::make_reverse_iterator(first), old.rbegin()).first;
        const std::int64_t length = equalAtEnd.base() - first;
        patches.push_back({position + (first - begin), length, length});
    });
    return readable;
}

bool writePiece(const FileChange& change, const UndoRecord& record, std::int64_t position,
                const PieceTable::Piece& piece)
{
    if (!piece.isOriginal())
        return PosixFile::writeAt(change.descriptor, position, piece.data(), static_cast<std::size_t>(piece.length));
    // The file itself may be overwritten there already; the record has what it held.
    std::vector<char> block(static_cast<std::size_t>(std::min(piece.length, blockSize)));
    for (std::int64_t done = 0; done < piece.length;) {
        const auto count = static_cast<std::size_t>(std::min(piece.length - done, blockSize));
        if (!record.readOld(piece.offset + done, block.data(), count)
            || !PosixFile::writeAt(change.descriptor, position + done, block.data(), count))
            return false;
        done += static_cast<std::int64_t>(count);
    }
    return true;
}

bool writeRange(const FileChange& change, const UndoRecord& record, const Range& range)
{
    bool written = true;
    change.content.visit(range.offset, range.newLength, [&](std::int64_t position, const PieceTable::Piece& piece) {
        written = written && writePiece(change, record, position, piece);
    });
    return written;
}

/// Makes sure that the disk has room for the new length before anything is overwritten.
bool reserve(const FileChange& change)
{
    const std::int64_t growth = change.content.length() - change.content.originalLength();
    if (growth <= 0 || ::fallocate(change.descriptor, 0, change.content.originalLength(), growth) == 0)
        return true;
    return errno == EOPNOTSUPP || errno == ENOSYS || errno == EINVAL;
}

/// On the disk, and taken by file systems that hand it on only when the file is closed.
bool settle(const FileChange& change)
{
    const bool isSynced = change.content.length() == change.content.originalLength()
                              ? ::fdatasync(change.descriptor) == 0
                              : ::fsync(change.descriptor) == 0;
    return isSynced && PosixFile::flush(change.descriptor);
}

bool writeAll(const FileChange& change, const UndoRecord& record, const std::vector<Range>& ranges)
{
    return reserve(change)
           && std::all_of(ranges.begin(), ranges.end(),
                          [&](const Range& range) { return writeRange(change, record, range); })
           && (change.content.length() >= change.content.originalLength()
               || ::ftruncate(change.descriptor, change.content.length()) == 0)
           && settle(change);
}

CommitResult backOut(const FileChange& change, UndoRecord& record)
{
    FailureReason::note(errno);
    if (record.rollBack(change.descriptor))
        record.slot().clear();
    return CommitResult::Failed;
}

/// The parts of the file that change. @return none when it can't be read.
std::optional<std::vector<Range>> rangesOf(const FileChange& change)
{
    const auto& content = change.content;
    if (!content.keepsPlaces()) {
        const std::int64_t first = content.unchangedPrefix();
        return std::vector<Range>{{first, content.originalLength() - first, content.length() - first}};
    }
    std::vector<Range> patches;
    return collectPatches(change, patches) ? std::optional(std::move(patches)) : std::nullopt;
}

} // namespace

CommitResult FileCommit::overwrite(const FileChange& change)
{
    const auto ranges = rangesOf(change);
    if (!ranges) {
        FailureReason::note(errno);
        return CommitResult::Failed;
    }
    if (ranges->empty())
        return change.isCurrent() ? CommitResult::Done : CommitResult::Stale;
    auto record = UndoRecord::create(change, *ranges);
    if (!record) {
        FailureReason::note(errno);
        return CommitResult::Impossible;
    }
    if (!change.isCurrent()) {
        record->slot().clear();
        return CommitResult::Stale;
    }
    if (!writeAll(change, *record, *ranges))
        return backOut(change, *record);
    // Somebody may have written at the same time, or put another file in this one's place.
    const bool isOurs = record->compare(change.descriptor) == UndoRecord::Finding::New
                        && change.identity.isSameFile(FileIdentity::ofPath(change.path.constData()));
    if (!record->slot().clear())
        return backOut(change, *record);
    return isOurs ? CommitResult::Done : CommitResult::Stale;
}
