#include "tagengine/FailureReason.h"
#include "tagengine/FileCommit.h"
#include "tagengine/PosixFile.h"
#include "tagengine/UndoRecord.h"

#include <algorithm>
#include <cstring>
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
        patches.push_back({position + (first - begin), equalAtEnd.base() - first});
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
    change.content.visit(range.offset, range.length, [&](std::int64_t position, const PieceTable::Piece& piece) {
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

CommitResult backOut(const FileChange& change, UndoRecord& record)
{
    FailureReason::note(errno);
    if (record.rollBack(change.descriptor))
        record.remove();
    return CommitResult::Failed;
}

} // namespace

CommitResult FileCommit::overwrite(const FileChange& change)
{
    const auto& content = change.content;
    const bool isPatch = content.keepsPlaces();
    std::vector<Range> newRanges;
    std::vector<Range> oldRanges;
    if (isPatch) {
        if (!collectPatches(change, newRanges))
            return CommitResult::Failed;
        if (newRanges.empty())
            return CommitResult::Done;
        oldRanges = newRanges;
    } else {
        const std::int64_t first = content.unchangedPrefix();
        newRanges = {{first, content.length() - first}};
        oldRanges = {{first, content.originalLength() - first}};
    }
    // A patch touches tags only and is over at once; a rewrite moves sound, so the disk must have the record first.
    const auto durability = isPatch ? UndoRecord::Durability::AgainstKill : UndoRecord::Durability::AgainstPowerLoss;
    auto record = UndoRecord::create(change.descriptor, change.identity, change.path, oldRanges, durability);
    if (!record) {
        FailureReason::note(errno);
        return CommitResult::Impossible;
    }
    const bool written =
        reserve(change)
        && std::all_of(newRanges.begin(), newRanges.end(),
                       [&](const Range& range) { return writeRange(change, *record, range); })
        && (content.length() >= content.originalLength() || ::ftruncate(change.descriptor, content.length()) == 0)
        && (isPatch || ::fdatasync(change.descriptor) == 0);
    if (!written || !record->remove())
        return backOut(change, *record);
    return CommitResult::Done;
}
