#pragma once

#include "tagengine/Id3v2Edit.h"
#include "tagengine/TagSplice.h"

#include <functional>

/// The ID3v2 tag of a file, wherever the container keeps it. A file without one gets ID3v2.4.
class Id3v2Splice : public TagSplice {
public:
    bool removeUnsupported(Pictures pictures) override;
    bool removeProperties() override;
    bool setPicture(const QByteArray& bytes) override;
    bool setChapters(const QStringList& chapters) override;

protected:
    explicit Id3v2Splice(TagLib::IOStream& stream) : stream_(stream) {}

    TagLib::IOStream& stream() { return stream_; }
    /// Takes the tag apart; empty bytes stand for a file without one. One that can't be changed refuses every change, and
    /// so does one that is shorter than the bytes, where these are not all 0.
    void takeId3v2(const TagLib::ByteVector& tag);
    bool setId3v2Property(const QString& key, const QString& value);
    bool id3v2Changed() const { return isChanged_; }
    /// Whether something stands behind the frames that is not padding. It stays.
    bool keepsRest() const { return tag_ && tag_->hasRest(); }
    /// The tag as it is to be stored; empty bytes for none.
    /// @return none when it would be too long, which is noted.
    std::optional<TagLib::ByteVector> renderId3v2() const;
    /// Before the first frame comes into the tag, which hides the older tags from readers: takes over what these hold.
    virtual void takeOver(Id3v2Edit& edit) { Q_UNUSED(edit) }

private:
    bool change(bool adds, const std::function<bool(Id3v2Edit& edit)>& change);

    TagLib::IOStream& stream_;
    std::optional<Id3v2Bytes> tag_;
    bool isUnknown_ = false;
    bool isChanged_ = false;
    bool dropsEmpty_ = false;
};
