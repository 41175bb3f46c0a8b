#include "tagengine/TagSplice.h"

#include "tagengine/Mp4Splice.h"
#include "tagengine/MpegSplice.h"
#include "tagengine/RiffSplice.h"

#include <taglib/aifffile.h>
#include <taglib/wavfile.h>

std::unique_ptr<TagSplice> TagSplice::of(TagLib::File& file, TagLib::IOStream& stream)
{
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file))
        return std::make_unique<MpegSplice>(*mpeg, stream);
    if (dynamic_cast<TagLib::RIFF::WAV::File*>(&file))
        return std::make_unique<RiffSplice>(stream, RiffSplice::Kind::Wav);
    if (dynamic_cast<TagLib::RIFF::AIFF::File*>(&file))
        return std::make_unique<RiffSplice>(stream, RiffSplice::Kind::Aiff);
    if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(&file))
        return std::make_unique<Mp4Splice>(*mp4, stream);
    return nullptr;
}
