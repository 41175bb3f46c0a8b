#pragma once

#include <taglib/tbytevector.h>
#include <taglib/tstring.h>

#include <functional>
#include <optional>
#include <vector>

/// The contents of an `ilst` atom, the tag of an MP4 file, taken apart into its items, each of which stays as it is until
/// it is replaced.
class IlstBytes {
public:
    struct Item {
        TagLib::String name; ///< as TagLib calls it: "©nam", "----:com.apple.iTunes:MOOD"; a `gnre` is a "©gen"
        TagLib::ByteVector bytes; ///< the whole atom; empty when it was removed, which keeps its place
    };

    /// @return none when the atoms don't fill the contents.
    static std::optional<IlstBytes> parse(const TagLib::ByteVector& contents);

    const std::vector<Item>& items() const { return items_; }
    /// Puts an atom in the place of the first item of that name, or behind all, and takes the others of that name out.
    void set(const TagLib::String& name, const TagLib::ByteVector& atom);
    void removeIf(const std::function<bool(const TagLib::String& name)>& isUnwanted);
    TagLib::ByteVector render() const;

    /// The two atoms that name a freeform item, as they are stored in it.
    /// @return none when it is no freeform item, or not built like one.
    static std::optional<TagLib::ByteVector> freeformName(const TagLib::ByteVector& atom);

private:
    std::vector<Item> items_;
    TagLib::ByteVector rest_; ///< behind the items
};
