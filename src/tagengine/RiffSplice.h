#pragma once

#include "tagengine/Id3v2Splice.h"
#include "tagengine/RiffTags.h"

/// The tags of a WAV file (ID3v2, and the INFO list, which gets every field that it knows) or of an AIFF file (ID3v2).
class RiffSplice : public Id3v2Splice {
public:
    enum class Kind { Wav, Aiff };

    RiffSplice(TagLib::IOStream& stream, Kind kind);

    bool setProperty(const QString& key, const QString& value) override;
    bool removeProperties() override;
    bool store() override;

private:
    RiffTags chunks_;
    Kind kind_;
};
