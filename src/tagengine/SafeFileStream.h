#pragma once

#include "tagengine/BlockReader.h"
#include "tagengine/FileIdentity.h"
#include "tagengine/FileLock.h"
#include "tagengine/PieceTable.h"
#include "tagengine/PosixFile.h"
#include "tagengine/ReadGuard.h"

#include <QByteArray>

#include <taglib/tiostream.h>

#include <optional>
#include <utility>

/// The file under TagLib. It is read through a cache; what TagLib changes is kept in memory and reaches the disk with
/// `commit` alone, wholly or not at all.
class SafeFileStream : public TagLib::IOStream {
public:
    enum class Mode { Read, ReadWrite };
    enum class Outcome {
        Saved,
        Failed, ///< the file is as it was
        Stale   ///< the file was changed by somebody else since it was opened, and not written to
    };

    /// Opens the file after bringing it back from a change that did not come to its end, if there is one. For
    /// writing, it is locked against our other programs until the stream is gone.
    /// @param path in the file system's own encoding; links are followed. A file that can't be opened gives a stream
    /// that is not open, as does one that is no regular file; one that can't be written a stream that is read-only. For
    /// writing, the user's own file is made readable and writable for its owner, which it stays.
    SafeFileStream(QByteArray path, Mode mode);

    /// Gives the file the content that the stream has. To be called once.
    Outcome commit();

    const PieceTable& content() const { return content_; }
    /// Calls a function while the stream shows the file as it is. @return what the function does.
    template <class Function>
    auto asItIs(Function function)
    {
        PieceTable changed = std::exchange(content_, PieceTable(content_.originalLength()));
        auto result = function();
        content_ = std::move(changed);
        return result;
    }

    /// Starts again with what the path names now, as after the constructor. A file that is only read is locked as well,
    /// so that a change by another of our programs is over.
    void reopen();

    /// Whether what was read so far is what the file held at one moment, and holds.
    bool isSettled() const;

    /// Whether the content can't be read, or is such that TagLib must not be let at it, for a reason that is noted. It
    /// was shown an empty file from there on.
    bool isRefused() const { return refused_ || reader_.error() != 0; }

    TagLib::FileName name() const override { return path_.constData(); }
    TagLib::ByteVector readBlock(std::size_t length) override;
    void writeBlock(const TagLib::ByteVector& data) override;
    void insert(const TagLib::ByteVector& data, TagLib::offset_t start, std::size_t replace) override;
    void removeBlock(TagLib::offset_t start, std::size_t length) override;
    bool readOnly() const override { return !writable_; }
    bool isOpen() const override { return file_.isOpen(); }
    void seek(TagLib::offset_t offset, Position from) override;
    TagLib::offset_t tell() const override { return position_; }
    TagLib::offset_t length() override { return content_.length(); }
    void truncate(TagLib::offset_t length) override;

private:
    void start();
    bool open(int access);
    bool openForReading();
    bool openForWriting();
    bool recover();
    void waitForClock();
    void readPieces(std::size_t length, char* into);
    void replace(TagLib::offset_t start, std::size_t removed, const TagLib::ByteVector& data);

    QByteArray path_;   ///< as given: TagLib looks at its extension
    QByteArray target_; ///< absolute, links followed
    Mode mode_;
    FileDescriptor file_;
    std::optional<FileLock> lock_;
    bool writable_ = false;
    bool isAgain_ = false; ///< whether the file was opened before
    FileIdentity identity_;
    bool isFresh_ = false; ///< changed so lately that the file's time would not tell the next change
    BlockReader reader_;
    PieceTable content_;
    TagLib::offset_t position_ = 0;
    ReadGuard guard_;
    bool refused_ = false;
};
