#pragma once

#include "tagengine/Mp4Atoms.h"

#include <optional>
#include <vector>

/// Where an MP4 file keeps the items of its tag: in moov/udta/meta/ilst.
class Mp4Place {
public:
    explicit Mp4Place(TagLib::IOStream& stream);

    bool hasItems() const { return ilst_.has_value(); }
    /// What the `ilst` holds; nothing when there is none.
    TagLib::ByteVector items();
    /// Gives the `ilst` other contents, and makes the atoms that are missing. Nothing else moves as long as there is room.
    /// @return false when the file can't hold it; some of it is changed then.
    bool store(const TagLib::ByteVector& items);

private:
    struct Range {
        std::int64_t begin;
        std::int64_t end;
        std::int64_t length() const { return end - begin; }
    };
    using Atoms = std::vector<Mp4Atom>;

    Atoms children(const Mp4Atom& parent);
    bool isForItems(const Mp4Atom& meta);
    /// The free atoms that end there, and that place.
    static Range freeBefore(const Atoms& siblings, std::int64_t end);
    bool storeExisting(const TagLib::ByteVector& items);
    bool storeNew(const TagLib::ByteVector& items);
    TagLib::ByteVector read(const Range& range);
    /// Puts bytes in the place of others within the innermost parent.
    bool replace(const Range& range, const TagLib::ByteVector& bytes);

    TagLib::IOStream& stream_;
    Atoms parents_; ///< moov, udta, meta, as far as there are
    std::optional<Mp4Atom> ilst_;
};
