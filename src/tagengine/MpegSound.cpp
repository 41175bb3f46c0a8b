#include "tagengine/MpegSound.h"

#include <taglib/mpegheader.h>

#include <algorithm>

namespace {

using TagLib::offset_t;

constexpr offset_t mostLooked = 8192; // more than four frames of any kind

/// How long the frame is that begins there, if it is one and another of its kind follows; otherwise 0.
offset_t frameAt(TagLib::File& file, offset_t place)
{
    const TagLib::MPEG::Header header(&file, place, true);
    return header.isValid() ? header.frameLength() : 0;
}

/// Where the frames end that follow each other from a place on, of as many as are wanted at most.
struct Run {
    Run(TagLib::File& file, offset_t begin, int most, offset_t limit) : end(begin)
    {
        while (frames < most && end < limit) {
            const offset_t length = frameAt(file, end);
            if (length <= 0)
                break;
            end += length;
            ++frames;
        }
    }

    int frames = 0;
    offset_t end;
};

/// Whether @p isWanted is true of any place from one to another where a frame could begin.
template <class Predicate>
bool anyStart(TagLib::File& file, offset_t begin, offset_t end, Predicate isWanted)
{
    file.seek(begin);
    const TagLib::ByteVector bytes = file.readBlock(static_cast<std::size_t>(end - begin));
    for (int at = 0; at + 1 < static_cast<int>(bytes.size()); ++at) {
        if (bytes[at] == '\xff' && (bytes[at + 1] & '\xe0') == '\xe0' && isWanted(begin + at))
            return true;
    }
    return false;
}

} // namespace

bool MpegSound::runsAcross(TagLib::File& file, offset_t place, int before)
{
    return anyStart(file, std::max<offset_t>(0, place - mostLooked), place, [&](offset_t start) {
        const Run run(file, start, static_cast<int>(mostLooked), place);
        return run.end >= place && run.frames >= before && frameAt(file, run.end) > 0;
    });
}

bool MpegSound::liesWithin(TagLib::File& file, offset_t begin, offset_t end)
{
    constexpr int leastFrames = 3;
    return anyStart(file, begin, end, [&](offset_t start) {
        const Run run(file, start, leastFrames, end);
        return run.frames == leastFrames && run.end <= end;
    });
}
