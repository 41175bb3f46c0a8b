#include "tagengine/RiffLook.h"

#include "tagengine/FailureReason.h"
#include "tagengine/SafeFileStream.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <vector>

namespace {

using TagLib::ByteVector;

constexpr std::int64_t chunkHeader = 8;
constexpr std::int64_t fileHeader = 12;
constexpr std::size_t mostLooked = 4096;

struct Chunk {
    ByteVector name;
    std::int64_t begin; ///< of what it holds
    std::int64_t length;
};

struct Chunks {
    std::vector<Chunk> others; ///< those that hold no tags
    std::int64_t told = 0;     ///< where the file says that it ends
    std::int64_t end = 0;      ///< where the last chunk does
    std::int64_t length = 0;
    bool isKnown = false; ///< RF64 and RIFX are other formats
    bool hasSound = false;
    bool isFollowed = false; ///< by what may be sound

    std::int64_t rest() const { return length - end; }
};

class Walk {
public:
    explicit Walk(TagLib::IOStream& stream) : stream_(stream) {}

    Chunks all()
    {
        const ByteVector header = read(0, fileHeader);
        isBigEndian_ = header.startsWith("FORM");
        Chunks chunks;
        chunks.length = stream_.length();
        chunks.told = chunkHeader + header.toUInt(4U, isBigEndian_);
        chunks.end = fileHeader;
        if (!isBigEndian_ && !header.startsWith("RIFF"))
            return chunks;
        chunks.isKnown = true;
        while (isChunk(chunks.end)) {
            const Chunk chunk = at(chunks.end);
            chunks.end = chunk.begin + chunk.length;
            if (chunk.length % 2 != 0 && isFilled(chunks.end))
                ++chunks.end;
            chunks.hasSound = chunks.hasSound || chunk.name == "data" || chunk.name == "SSND";
            if (!isTag(chunk))
                chunks.others.push_back(chunk);
        }
        chunks.isFollowed = !isTagOrNothing(read(chunks.end, mostLooked));
        return chunks;
    }

private:
    ByteVector read(std::int64_t begin, std::size_t length)
    {
        stream_.seek(begin);
        return stream_.readBlock(length);
    }

    Chunk at(std::int64_t begin)
    {
        const ByteVector header = read(begin, chunkHeader);
        return {header.mid(0, 4), begin + chunkHeader, header.toUInt(4U, isBigEndian_)};
    }

    bool isChunk(std::int64_t begin)
    {
        if (begin + chunkHeader > stream_.length())
            return false;
        const Chunk chunk = at(begin);
        const auto isLetter = [](char c) { return c >= ' ' && c <= '~'; };
        return std::all_of(chunk.name.begin(), chunk.name.end(), isLetter)
               && chunk.length <= stream_.length() - chunk.begin;
    }

    /// Some programs leave out the byte that makes an odd length even.
    bool isFilled(std::int64_t end) { return end < stream_.length() && (isChunk(end + 1) || !isChunk(end)); }

    bool isTag(const Chunk& chunk)
    {
        return chunk.name == "ID3 " || chunk.name == "id3 "
               || (chunk.name == "LIST" && read(chunk.begin, 4) == "INFO");
    }

    static bool isTagOrNothing(const ByteVector& bytes)
    {
        constexpr std::array tags{"TAG", "ID3", "APETAGEX", "LYRICS"};
        return std::any_of(tags.begin(), tags.end(), [&](const char* tag) { return bytes.startsWith(tag); })
               || std::all_of(bytes.begin(), bytes.end(), [](char c) { return c == 0; });
    }

    TagLib::IOStream& stream_;
    bool isBigEndian_ = false;
};

/// Whether the lengths are true. Those of a recording that was cut off, never finished, or is longer than 32 bits can tell,
/// are not: any place for a tag might be amid the sound.
bool isWhole(const Chunks& chunks)
{
    const bool isTrue = chunks.end == chunks.told || chunks.end == chunks.told + 1 || chunks.rest() == 0;
    return chunks.hasSound && isTrue && !chunks.isFollowed
           && chunks.length - chunkHeader <= std::numeric_limits<std::uint32_t>::max();
}

} // namespace

const char* RiffLook::reasonAgainst(SafeFileStream& stream)
{
    if (!stream.content().isChanged())
        return nullptr;
    const PieceOrigins origins(stream.content());
    const Chunks before = stream.asItIs([&] { return Walk(stream).all(); });
    const Chunks after = Walk(stream).all();
    if (!before.isKnown)
        return FailureReason::notSound;
    if (!isWhole(before))
        return FailureReason::damaged;
    const auto isKept = [&](const Chunk& was, const Chunk& is) {
        const auto comesFrom = [&](std::int64_t place) { return origins.of(is.begin + place) == was.begin + place; };
        return was.name == is.name && was.length == is.length && comesFrom(-chunkHeader)
               && comesFrom(std::max<std::int64_t>(was.length - 1, -1));
    };
    const bool areKept =
        std::equal(before.others.begin(), before.others.end(), after.others.begin(), after.others.end(), isKept);
    const bool isTrue = after.told == after.end && std::abs(after.rest() - before.rest()) <= 1;
    return areKept && isTrue ? nullptr : FailureReason::lostPlaces;
}
