#pragma once

#include "tagengine/ApeBytes.h"
#include "tagengine/Id3v1Bytes.h"
#include "tagengine/Id3v2Splice.h"

#include <taglib/mpegfile.h>

/// The tags of an MPEG file: ID3v2 in front of the sound, APE and ID3v1 behind it. The older ones are kept in step in the
/// field that changes, where they are.
class MpegSplice : public Id3v2Splice {
public:
    MpegSplice(TagLib::MPEG::File& file, TagLib::IOStream& stream);

    bool setProperty(const QString& key, const QString& value) override;
    bool removeUnsupported(Pictures pictures) override;
    bool removeProperties() override;
    bool store() override;

private:
    struct Range {
        TagLib::offset_t begin = 0;
        TagLib::ByteVector bytes;
        TagLib::offset_t end() const { return begin + bytes.size(); }
    };

    /// False, and noted, for an APE tag that can't be taken apart.
    bool apeIsSound() const;
    void findId3v2();
    bool id3v2ReachesIntoSound();
    Range read(TagLib::offset_t begin, std::size_t length);
    void replace(const Range& old, const TagLib::ByteVector& bytes);
    void takeOver(Id3v2Edit& edit) override;

    TagLib::MPEG::File& file_;
    Range id3v2Range_;
    Range apeRange_;
    Range id3v1Range_;
    std::optional<ApeBytes> ape_;
    std::optional<Id3v1Bytes> id3v1_;
};
