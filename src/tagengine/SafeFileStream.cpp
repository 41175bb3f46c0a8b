#include "tagengine/SafeFileStream.h"

#include "platform/FileSystem.h"
#include "tagengine/FailureReason.h"
#include "tagengine/FileCommit.h"
#include "tagengine/UndoRecord.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>

namespace {

/// The path with every link followed; the path itself where there is no such file.
QByteArray resolved(const QByteArray& path)
{
    const QByteArray real = FileSystem::realPath(path);
    return real.isEmpty() ? path : real;
}

} // namespace

SafeFileStream::SafeFileStream(QByteArray path, Mode mode)
    : path_(std::move(path)), target_(mode == Mode::ReadWrite ? resolved(path_) : path_), reader_(-1, 0), content_(0)
{
    FailureReason::clear();
    if (!UndoRecord::recover(target_)) {
        FailureReason::note(
            QT_TRANSLATE_NOOP("FailureReason", "An interrupted change of the file could not be taken back"));
        return;
    }
    open(mode);
    if (!file_.isOpen())
        return;
    identity_ = FileIdentity::ofDescriptor(file_.get());
    if (!identity_.isRegular) {
        FailureReason::note(FailureReason::noFile);
        lock_.reset();
        file_.close();
        return;
    }
    reader_ = BlockReader(file_.get(), identity_.size);
    content_ = PieceTable(identity_.size);
}

void SafeFileStream::open(Mode mode)
{
    if (mode == Mode::ReadWrite && openForWriting())
        return;
    file_ = FileDescriptor(::open(target_.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file_.isOpen())
        FailureReason::note(errno);
}

bool SafeFileStream::openForWriting()
{
    // While the lock is waited for, another program of ours may put a new file in place of this one.
    constexpr int attempts = 5;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        lock_.reset();
        file_ = FileDescriptor(::open(target_.constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
        if (!file_.isOpen()) {
            FailureReason::note(errno);
            return false;
        }
        lock_.emplace(file_.get());
        const FileIdentity current = FileIdentity::ofPath(target_.constData());
        // That program may also have been killed in the middle of its change.
        if (lock_->isHeld() && UndoRecord::exists(current)) {
            lock_.reset();
            if (!UndoRecord::recover(target_))
                return false;
            continue;
        }
        if (lock_->isHeld() && current.isSameFile(FileIdentity::ofDescriptor(file_.get()))) {
            writable_ = true;
            return true;
        }
        if (!lock_->isHeld())
            break;
    }
    lock_.reset();
    FailureReason::note(FailureReason::inUse);
    return false;
}

SafeFileStream::Outcome SafeFileStream::commit()
{
    if (!writable_ || refused_ || reader_.failed())
        return Outcome::Failed;
    const bool isCurrent = identity_.isUnchanged(FileIdentity::ofDescriptor(file_.get()))
                           && identity_.isUnchanged(FileIdentity::ofPath(target_.constData()));
    if (!isCurrent)
        return Outcome::Stale;
    const CommitResult result = FileCommit::commit({target_, file_.get(), identity_, content_});
    return result == CommitResult::Done ? Outcome::Saved : Outcome::Failed;
}

TagLib::ByteVector SafeFileStream::readBlock(std::size_t length)
{
    if (!isOpen() || refused_ || position_ < 0 || position_ >= content_.length())
        return {};
    length = std::min(length, static_cast<std::size_t>(content_.length() - position_));
    TagLib::ByteVector bytes(static_cast<unsigned int>(length));
    std::size_t done = 0;
    content_.visit(position_, static_cast<std::int64_t>(length), [&](std::int64_t, const PieceTable::Piece& piece) {
        const auto size = static_cast<std::size_t>(piece.length);
        char* into = bytes.data() + done;
        if (piece.isOriginal())
            reader_.read(piece.offset, into, size);
        else
            std::memcpy(into, piece.data(), size);
        done += size;
    });
    refused_ = !guard_.accepts(position_, bytes);
    if (refused_)
        return {};
    position_ += static_cast<TagLib::offset_t>(length);
    return bytes;
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
