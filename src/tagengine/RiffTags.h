#pragma once

#include <QString>

#include <taglib/rifffile.h>

/// The chunks of a WAV or AIFF file that hold tags. A chunk that is set stays where it is, or comes last.
class RiffTags : public TagLib::RIFF::File {
public:
    RiffTags(TagLib::IOStream* stream, bool isBigEndian);

    /// The ID3v2 tag; empty where there is none.
    TagLib::ByteVector id3v2();
    /// Empty bytes remove the chunk.
    void setId3v2(const TagLib::ByteVector& tag);

    /// Sets a field of the INFO list of a WAV file. @param key as for ID3v1; other keys change nothing.
    /// @return false for a list that does not hold what it says.
    bool setInfo(const QString& key, const QString& value);
    /// Removes the fields that the property interface knows, and the list when nothing is left.
    /// @return as above.
    bool clearInfo();

    TagLib::Tag* tag() const override { return nullptr; }
    TagLib::AudioProperties* audioProperties() const override { return nullptr; }
    bool save() override { return false; }

private:
    int findChunk(const char* name, const char* start = "");
    int id3v2Chunk();
    TagLib::ByteVector info();
    bool storeInfo(const TagLib::ByteVector& fields);
};
