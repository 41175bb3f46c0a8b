#pragma once

#include "tagengine/IlstBytes.h"
#include "tagengine/Mp4Place.h"
#include "tagengine/TagSplice.h"

#include <taglib/mp4file.h>

#include <set>

/// The tag of an MP4 file. TagLib renders the item that changes.
///
/// The names of freeform items are found in any letter case, and kept. Of items whose names differ in case alone the one
/// is changed that TagLib's property interface shows; a field that is removed is removed in every case.
class Mp4Splice : public TagSplice {
public:
    Mp4Splice(TagLib::MP4::File& file, TagLib::IOStream& stream);

    bool setProperty(const QString& key, const QString& value) override;
    QString readBack(const QString& key, const QString& value) const override;
    bool removeUnsupported(Pictures pictures) override;
    bool removeProperties() override;
    bool setPicture(const QByteArray& bytes) override;
    bool setChapters(const QStringList& chapters) override;
    bool store() override;

private:
    using Names = std::set<TagLib::String>;

    bool canChange() const;
    TagLib::ByteVector firstPicture() const;
    Names namesOf(const TagLib::String& key) const;
    TagLib::String target(const TagLib::String& key, const Names& names) const;
    TagLib::ByteVector rendered(const TagLib::String& name, const TagLib::String& key,
                                const TagLib::StringList& values) const;
    bool set(const TagLib::String& key, const QString& value, const Names& names);

    const TagLib::MP4::Tag& tag_;
    Mp4Place place_;
    TagLib::ByteVector stored_;
    std::optional<IlstBytes> items_; ///< none when they can't be told from each other
};
