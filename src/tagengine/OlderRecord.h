#pragma once

#include "tagengine/FileIdentity.h"
#include "tagengine/RecordSlots.h"

#include <QByteArray>

#include <cstdint>
#include <vector>

/// An undo record of the version before, in a file of its own. It has the old bytes only, so that nothing tells a half-done
/// change from somebody else's but the file's identity, its size and the time.
class OlderRecord {
public:
    enum class State { Whole, NotWhole, Unreadable };
    static std::pair<OlderRecord, State> load(RecordSlots::Slot slot);

    RecordSlots::Slot& slot() { return slot_; }
    const QByteArray& path() const { return path_; }
    /// Whether all that can be told fits: it is that file, of a size that the change can have given it, and it was not
    /// changed after the change had been cut short.
    bool fits(int file) const;
    /// Gives the file its old bytes and length.
    bool writeOld(int file) const;
    std::int64_t oldSize() const { return identity_.size; }

private:
    struct Range {
        std::int64_t offset;
        std::int64_t length;
    };

    explicit OlderRecord(RecordSlots::Slot slot) : slot_(std::move(slot)) {}
    State read();
    bool parseHeader(const QByteArray& bytes);
    std::int64_t oldLength() const;

    RecordSlots::Slot slot_;
    QByteArray path_;
    FileIdentity identity_;
    std::vector<Range> ranges_;
    std::int64_t oldBytesStart_ = 0;
};
