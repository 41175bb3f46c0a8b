#include "tagengine/SafeFileStream.h"

#include "platform/FileSystem.h"
#include "tagengine/FailureReason.h"
#include "tagengine/FileCommit.h"
#include "tagengine/RecordSlots.h"
#include "tagengine/Recovery.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>
#include <utility>

#include <fcntl.h>

namespace {

/// The path with every link followed; the path itself where there is no such file.
QByteArray resolved(const QByteArray& path)
{
    const QByteArray real = FileSystem::realPath(path);
    return real.isEmpty() ? path : real;
}

/// Opens a file; for writing, by new permissions if it takes these and the user may give them.
FileDescriptor openWith(int access, const QByteArray& path)
{
    const auto open = [&] { return FileDescriptor(::open(path.constData(), access | O_CLOEXEC | O_NONBLOCK)); };
    FileDescriptor file = open();
    if (file.isOpen() || errno != EACCES || access == O_RDONLY)
        return file;
    const bool isMended = FileSystem::giveOwnerAccess(path);
    errno = EACCES;
    return isMended ? open() : std::move(file);
}

} // namespace

SafeFileStream::SafeFileStream(QByteArray path, Mode mode)
    : path_(std::move(path)), target_(mode == Mode::ReadWrite ? resolved(path_) : path_), mode_(mode), reader_(-1, 0),
      content_(0)
{
    start();
}

void SafeFileStream::start()
{
    FailureReason::clear();
    writable_ = mode_ == Mode::ReadWrite && openForWriting();
    if (!writable_ && !openForReading())
        return;
    if (!identity_.isRegular) {
        if (identity_.inode == 0)
            FailureReason::note(errno);
        FailureReason::note(FailureReason::noFile);
        lock_.reset();
        file_.close();
        return;
    }
    reader_ = BlockReader(file_.get(), identity_.size);
    content_ = PieceTable(identity_.size);
}

bool SafeFileStream::open(int access)
{
    file_ = openWith(access, target_);
    if (!file_.isOpen()) {
        FailureReason::note(errno);
        return false;
    }
    identity_ = FileIdentity::ofDescriptor(file_.get());
    isFresh_ = !identity_.isSettled();
    return true;
}

/// Brings the file back from a change that was cut short, if a record speaks of one.
bool SafeFileStream::recover()
{
    const auto outcome = Recovery::recover(resolved(target_), identity_);
    if (outcome == Recovery::Outcome::Failed)
        FailureReason::note(
            QT_TRANSLATE_NOOP("FailureReason", "An interrupted change of the file could not be taken back"));
    if (outcome == Recovery::Outcome::Busy)
        FailureReason::note(FailureReason::inUse);
    return outcome <= Recovery::Outcome::Kept;
}

bool SafeFileStream::openForReading()
{
    if (!open(O_RDONLY))
        return false;
    if (RecordSlots::isSpokenOf(target_, identity_)) {
        file_.close();
        if (!recover() || !open(O_RDONLY))
            return false;
    }
    if (isAgain_)
        lock_.emplace(file_.get());
    return true;
}

void SafeFileStream::reopen()
{
    lock_.reset();
    file_.close();
    position_ = 0;
    guard_ = ReadGuard();
    refused_ = false;
    reader_ = BlockReader(-1, 0);
    content_ = PieceTable(0);
    isAgain_ = true;
    start();
}

bool SafeFileStream::isSettled() const
{
    // What can't be opened, or not for writing, fails whatever it holds.
    if (!isOpen() || (mode_ == Mode::ReadWrite && !writable_))
        return true;
    const bool isHeldStill = lock_ && lock_->isHeld();
    return identity_.isUntouched(FileIdentity::ofDescriptor(file_.get())) && (isHeldStill || !isFresh_);
}

bool SafeFileStream::openForWriting()
{
    // While the lock is waited for, another program of ours may put a new file in place of this one, or be killed in the
    // middle of a change.
    constexpr int attempts = 5;
    bool isRecovered = false;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        lock_.reset();
        if (!open(O_RDWR))
            return false;
        if (!isRecovered && RecordSlots::isSpokenOf(target_, identity_)) {
            file_.close();
            if (!recover())
                return false;
            isRecovered = true;
            continue;
        }
        lock_.emplace(file_.get());
        if (!lock_->isHeld()) {
            lock_.reset();
            FailureReason::note(FailureReason::locked);
            return false;
        }
        if (isRecovered || !RecordSlots::isSpokenOf(target_, identity_)) {
            waitForClock();
            if (identity_.isSameFile(FileIdentity::ofPath(target_.constData())))
                return true;
        }
    }
    lock_.reset();
    FailureReason::note(FailureReason::inUse);
    return false;
}

/// A file that was changed a moment ago may be changed once more at what its time says is the same moment.
void SafeFileStream::waitForClock()
{
    using namespace std::chrono_literals;
    constexpr int longest = 20;
    identity_ = FileIdentity::ofDescriptor(file_.get());
    for (int tries = 0; tries < longest && !identity_.isSettled(); ++tries)
        std::this_thread::sleep_for(1ms);
    identity_ = FileIdentity::ofDescriptor(file_.get());
}

SafeFileStream::Outcome SafeFileStream::commit()
{
    if (!writable_ || isRefused())
        return Outcome::Failed;
    const FileChange change{target_, file_.get(), identity_, content_};
    if (!change.isCurrent())
        return Outcome::Stale;
    switch (FileCommit::commit(change)) {
    case CommitResult::Done:
        return Outcome::Saved;
    case CommitResult::Stale:
        return Outcome::Stale;
    case CommitResult::Failed:
    case CommitResult::Impossible:
        break;
    }
    return Outcome::Failed;
}

TagLib::ByteVector SafeFileStream::readBlock(std::size_t length)
{
    if (!isOpen() || isRefused() || position_ < 0 || position_ >= content_.length())
        return {};
    if (guard_.endsSearch(position_, length))
        return {};
    length = std::min(length, static_cast<std::size_t>(content_.length() - position_));
    TagLib::ByteVector bytes(static_cast<unsigned int>(length));
    readPieces(length, bytes.data());
    if (reader_.error() != 0) {
        FailureReason::note(reader_.error());
        return {};
    }
    refused_ = !guard_.accepts(position_, bytes);
    if (refused_) {
        FailureReason::note(FailureReason::tooCostly);
        return {};
    }
    position_ += static_cast<TagLib::offset_t>(length);
    return bytes;
}

void SafeFileStream::readPieces(std::size_t length, char* into)
{
    const auto readPiece = [&](std::int64_t position, const PieceTable::Piece& piece) {
        char* begin = into + (position - position_);
        const auto size = static_cast<std::size_t>(piece.length);
        if (piece.isOriginal())
            reader_.read(piece.offset, begin, size);
        else
            std::memcpy(begin, piece.data(), size);
    };
    content_.visit(position_, static_cast<std::int64_t>(length), readPiece);
}

void SafeFileStream::writeBlock(const TagLib::ByteVector& data)
{
    replace(position_, data.size(), data);
}

void SafeFileStream::insert(const TagLib::ByteVector& data, TagLib::offset_t start, std::size_t replaced)
{
    replace(start, replaced, data);
}

void SafeFileStream::removeBlock(TagLib::offset_t start, std::size_t length)
{
    replace(start, length, {});
}

void SafeFileStream::truncate(TagLib::offset_t length)
{
    const TagLib::offset_t position = position_;
    if (length < content_.length())
        replace(length, static_cast<std::size_t>(content_.length() - length), {});
    else
        replace(length, 0, {});
    position_ = position;
}

void SafeFileStream::replace(TagLib::offset_t start, std::size_t removed, const TagLib::ByteVector& data)
{
    if (!writable_ || start < 0)
        return;
    content_.replace(start, static_cast<std::int64_t>(removed), data.data(), data.size());
    position_ = start + static_cast<TagLib::offset_t>(data.size());
}

void SafeFileStream::seek(TagLib::offset_t offset, Position from)
{
    switch (from) {
    case Beginning:
        position_ = offset;
        break;
    case Current:
        position_ += offset;
        break;
    case End:
        position_ = content_.length() + offset;
        break;
    }
}
