#pragma once

#include <QString>

#include <taglib/tbytevector.h>
#include <taglib/tstringlist.h>

#include <optional>
#include <vector>

/// An APE tag (APEv1 or APEv2) taken apart by its items: what is not changed keeps its bytes and its place.
class ApeBytes {
public:
    /// @param tag from its header, if it has one, to the end of its footer.
    /// @return none for a tag whose items can't be told.
    static std::optional<ApeBytes> parse(const TagLib::ByteVector& tag);
    /// @param footer the last 32 bytes of a tag. @return the length of the whole in bytes; 0 when they are no footer.
    static std::uint32_t lengthOf(const TagLib::ByteVector& footer);

    /// @param key a key of the property interface, YEAR or TRACK. No values remove the items of the field.
    void setProperty(const QString& key, const TagLib::StringList& values);
    /// Removes the items that have a key (@p withKey), or those that have none.
    void removeItems(bool withKey);
    bool isEmpty() const { return items_.empty(); }
    TagLib::ByteVector render() const;

private:
    void replace(const std::vector<bool>& isOld, const TagLib::ByteVector& item);

    TagLib::ByteVector header_; ///< empty for a tag without one
    TagLib::ByteVector footer_;
    std::vector<TagLib::ByteVector> items_;
};
