#pragma once

#include "tagengine/FileIdentity.h"
#include "tagengine/PosixFile.h"

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <vector>

/// What a change in place is about to overwrite, kept in the XDG state folder (`sonvika/undo`) from before the first
/// byte of the file changes until after the last one has.
///
/// A record that is found later belongs to a change that did not come to its end, and brings the file back, if the
/// record is whole and the file is still that file. A record that is not whole belongs to a change that had not begun.
class UndoRecord {
public:
    struct Range {
        std::int64_t offset;
        std::int64_t length;
    };
    enum class Durability {
        AgainstKill, ///< the program may end at any moment
        AgainstPowerLoss
    };

    /// Writes a record of the given ranges of the file. The caller holds the file's lock.
    /// @param path of the file, absolute.
    /// @return none when it could not be written; nothing is left of it then.
    static std::optional<UndoRecord> create(int file, const FileIdentity& identity, const QByteArray& path,
                                            std::vector<Range> ranges, Durability durability);

    /// Brings the file back by the record that is left of it, if there is one. Waits for a change that another
    /// process is making at this moment.
    /// @return false when there is a record and the file could not be brought back.
    static bool recover(const QByteArray& path);
    /// Whether a record of that file is there.
    static bool exists(const FileIdentity& identity);
    /// Brings back the file of every record in the folder.
    static void recoverAll();

    /// Reads bytes that the file had before; they must lie in one of the ranges.
    bool readOld(std::int64_t offset, char* into, std::size_t length) const;
    /// Gives the file its old bytes and length.
    bool rollBack(int file) const;
    /// Ends the record. @return false when it is still in force.
    bool remove();

private:
    UndoRecord() = default;
    bool write(int file) const;
    enum class State { Whole, NotWhole, Unreadable };
    State load();
    State check(std::int64_t contentLength) const;
    bool recoverFile(const QByteArray& path);
    static bool recoverBy(const QByteArray& recordPath, const QByteArray& path = {});
    QByteArray header() const;
    bool parseHeader(const QByteArray& bytes);
    std::int64_t oldLength() const;

    QByteArray recordPath_;
    FileDescriptor record_;
    QByteArray path_;
    FileIdentity identity_;
    std::vector<Range> ranges_;
    std::int64_t oldBytesStart_ = 0;
};
