#pragma once

#include "tagengine/Id3v2Bytes.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <taglib/tpropertymap.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

/// Changes single fields of an ID3v2 tag: the frames of that field become one, in the first one's place, and keep its
/// description and language; no other frame is touched. TagLib renders the frame that changes.
///
/// Every operation returns false, and notes the reason, when the tag can't hold what it is given.
class Id3v2Edit {
public:
    explicit Id3v2Edit(Id3v2Bytes& tag) : tag_(tag) {}

    /// @param name YEAR, TRACK or a key of the property interface, where no values remove the field.
    bool setProperty(const QString& name, const TagLib::StringList& values);
    /// Replaces the first picture; empty bytes remove all. What is only a link to a picture is none.
    bool setPicture(const QByteArray& bytes);
    /// Replaces all chapters (see TaglibWrapper::setChapters).
    bool setChapters(const QStringList& chapters);
    /// Removes every frame that has no property key, but for the first picture if that is to stay.
    bool removeUnsupported(bool keepsFirstPicture);
    /// Removes every frame that has one.
    bool removeProperties();

    /// Whether TagLib reads any frame.
    bool isEmpty() const;

private:
    using Frame = Id3v2Bytes::Frame;
    using Parsed = std::unique_ptr<TagLib::ID3v2::Frame>;
    using Places = std::vector<std::size_t>;

    /// The places of the frames that a predicate of the stored and the parsed frame holds for.
    /// @param wanted the name of a property's own frame, to leave out what stands for another one; empty for all frames.
    Places find(const std::function<bool(const Frame&, TagLib::ID3v2::Frame*)>& isWanted,
                const TagLib::ByteVector& wanted = {}) const;
    Places placesOf(const TagLib::String& key) const;
    Places picturePlaces() const;
    /// Puts frames in the place of the first of others (ascending), and takes these out. A frame that could not be made
    /// is refused.
    bool replace(const Places& places, std::vector<std::optional<Frame>> frames);

    bool setPlain(const TagLib::String& key, const TagLib::StringList& values);
    bool setInvolved(const TagLib::String& key, const TagLib::StringList& values);
    bool setDate(const TagLib::String& value, Places places, bool isYear);
    bool makeTrueDate(int year, const Places& days) const;
    Parsed changed(const Frame& frame, const TagLib::ID3v2::Frame& wanted, const TagLib::String& key,
                   const TagLib::StringList& values) const;
    std::optional<Frame> rendered(const TagLib::ByteVector& id, TagLib::ID3v2::Frame& frame, char status = 0) const;
    std::optional<Frame> textFrame(const TagLib::ByteVector& id, const TagLib::String& text) const;
    std::vector<std::optional<Frame>> keptChapters(const QStringList& chapters, const Places& places) const;
    TagLib::ByteVector chapterBody(const QString& text, const QByteArray& identifier) const;
    TagLib::ByteVector textBody(const TagLib::String& text) const;
    std::optional<Frame> smallPicture(const Frame* old, const QByteArray& bytes) const;
    /// The frame's name in the tag's version; empty where it has none.
    TagLib::ByteVector storedId(const TagLib::ByteVector& id) const;

    Id3v2Bytes& tag_;
};
