#include "tagengine/ReadGuard.h"

#include "tagengine/TagCost.h"

#include <taglib/id3v2extendedheader.h>
#include <taglib/id3v2frame.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2synchdata.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <string_view>
#include <utility>

namespace {

using TagLib::ByteVector;
using Budget = ReadGuard::Budget;
using Nesting = ReadGuard::Nesting;
namespace SynchData = TagLib::ID3v2::SynchData;

constexpr std::size_t deepest = 64;
constexpr unsigned int atomHeaderSize = 8;
constexpr unsigned int sizeField = 4; // in front of a compressed frame's content

/// The four letters at that place, which have to be there.
std::string_view nameAt(const ByteVector& bytes, unsigned int at)
{
    return {bytes.data() + at, 4};
}

bool hasChildren(const ByteVector& atom)
{
    constexpr std::array<std::string_view, 11> containers{"moov", "udta", "mdia", "meta", "ilst", "stbl",
                                                          "minf", "moof", "traf", "trak", "stsd"};
    return std::find(containers.begin(), containers.end(), nameAt(atom, 4)) != containers.end();
}

std::int64_t endOfAtom(std::int64_t offset, const ByteVector& header)
{
    // A shorter length stands for one that is written elsewhere, or for the rest of the file.
    const std::int64_t length = header.toUInt();
    return length < atomHeaderSize ? std::numeric_limits<std::int64_t>::max() : offset + length;
}

/// Whether the chapters that begin in these bytes lie in each other no deeper than they may.
bool areFlatChapters(const ByteVector& bytes, Nesting& nesting, std::int64_t offset)
{
    for (unsigned int at = 0; at + 8 <= bytes.size(); ++at) {
        if (const auto name = nameAt(bytes, at); name != "CHAP" && name != "CTOC")
            continue;
        // Some programs write the size in 8 bits each, which TagLib allows for.
        const std::int64_t size = std::max(bytes.toUInt(at + 4), SynchData::toUInt(bytes.mid(at + 4, 4)));
        if (!nesting.enter(offset + at, offset + at + TagLib::ID3v2::Header::size() + size))
            return false;
    }
    return true;
}

/// Walks over the frames of a tag, or of a chapter in it, as TagLib does.
class FrameWalk {
public:
    FrameWalk(const TagLib::ID3v2::Header& tag, Budget& budget) : tag_(tag), budget_(budget) {}

    bool accepts(const ByteVector& bytes, unsigned int at)
    {
        while (at + TagLib::ID3v2::Header::size() < bytes.size() && bytes[at] != 0) {
            const TagLib::ID3v2::Frame::Header header(bytes.mid(at), tag_.majorVersion());
            if (header.frameSize() == 0 || header.frameSize() > bytes.size() - at)
                break;
            if (!acceptsFrame(header, bytes, at))
                return false;
            at += header.frameSize() + header.size();
        }
        return true;
    }

private:
    using FrameHeader = TagLib::ID3v2::Frame::Header;

    /// @param at where the frame begins in the bytes.
    bool acceptsFrame(const FrameHeader& header, const ByteVector& bytes, unsigned int at)
    {
        const ByteVector id = header.frameID();
        const bool isChapter = id == "CHAP" || id == "CTOC";
        const unsigned int bodyAt = std::min(at + header.size(), bytes.size());
        const unsigned int length = std::min(header.frameSize(), bytes.size() - bodyAt);
        if (!header.compression() && !isChapter)
            return budget_.spend(TagCost::ofFrame(id, bytes.data() + bodyAt, bytes.data() + bodyAt + length));
        const ByteVector body = bytes.mid(bodyAt, length);
        const bool isEncoded = tag_.majorVersion() > 3 && (tag_.unsynchronisation() || header.unsynchronisation());
        const ByteVector frame = isEncoded ? SynchData::decode(body) : body;
        if (header.compression() && !header.encryption()
            && !budget_.spend(TagCost::ofCompressedFrame(id, frame.mid(sizeField), budget_.left())))
            return false;
        // What a compressed chapter holds can't be looked at.
        return !isChapter || (!header.compression() && acceptsChapter(frame, id == "CTOC", at));
    }

    bool acceptsChapter(const ByteVector& chapter, bool isContents, unsigned int at)
    {
        if ((depth_ == 0 && !areFlatChapters(chapter, chapters_, at)) || !budget_.spend(TagCost::object))
            return false;
        ++depth_;
        const bool isAccepted = accepts(chapter, framesIn(chapter, isContents));
        --depth_;
        return isAccepted;
    }

    /// Where a chapter's own frames begin: behind an identifier and four numbers or, in a table of contents, behind
    /// flags, a count and so many identifiers.
    static unsigned int framesIn(const ByteVector& chapter, bool isContents)
    {
        constexpr unsigned int numbers = 16;
        const ByteVector zero(1, '\0');
        const auto behindText = [&](unsigned int at) {
            const int end = chapter.find(zero, at);
            return end < 0 ? chapter.size() : static_cast<unsigned int>(end) + 1;
        };
        unsigned int at = behindText(0);
        if (!isContents)
            return at + numbers;
        const unsigned int count = at + 1 < chapter.size() ? static_cast<unsigned char>(chapter[at + 1]) : 0;
        at += 2;
        for (unsigned int child = 0; child < count; ++child)
            at = behindText(at);
        return at;
    }

    const TagLib::ID3v2::Header& tag_;
    Budget& budget_;
    Nesting chapters_;
    int depth_ = 0; ///< in chapters
};

bool areSafeFrames(const ByteVector& content, const TagLib::ID3v2::Header& tag, Budget& budget)
{
    const bool isEncoded = tag.unsynchronisation() && tag.majorVersion() <= 3;
    // Any look at bytes that are not constant would copy all of them.
    const ByteVector bytes = isEncoded ? SynchData::decode(content) : content;
    unsigned int at = 0;
    if (tag.extendedHeader()) {
        TagLib::ID3v2::ExtendedHeader extension;
        extension.setData(bytes);
        at = extension.size() <= bytes.size() ? extension.size() : 0;
    }
    return FrameWalk(tag, budget).accepts(bytes, at);
}

} // namespace

bool ReadGuard::Nesting::enter(std::int64_t begin, std::int64_t end)
{
    while (!parts_.empty() && (parts_.back().end <= begin || parts_.back().begin >= begin))
        parts_.pop_back();
    parts_.push_back({begin, end});
    return parts_.size() <= deepest;
}

bool ReadGuard::accepts(std::int64_t offset, const ByteVector& bytes)
{
    constexpr unsigned int longestHeader = 10;
    if (offset == 0) {
        parts_ = {};
        tags_ = {};
    }
    return bytes.size() <= longestHeader ? acceptsPart(offset, bytes) : acceptsTag(offset, bytes);
}

/// Short reads tell where one of the file's parts begins, or look for sound.
bool ReadGuard::acceptsPart(std::int64_t offset, const ByteVector& bytes)
{
    constexpr std::size_t costOfPart = 100;
    constexpr std::size_t costOfAtom = 300;
    constexpr unsigned int usualAtom = 1024; // a large one is no reason for many others
    if (bytes.size() == TagLib::ID3v2::Header::size() && bytes.startsWith("ID3")) {
        tagHeader_ = bytes;
        framesStart_ = offset + bytes.size();
    }
    if (bytes.size() != atomHeaderSize)
        return parts_.spend(costOfPart);
    if (nameAt(bytes, 4) == "covr")
        pictureStart_ = offset + atomHeaderSize;
    if (hasChildren(bytes) && !atoms_.enter(offset, endOfAtom(offset, bytes)))
        return false;
    parts_.grow(std::min(bytes.toUInt(), usualAtom));
    return parts_.spend(costOfAtom);
}

bool ReadGuard::acceptsTag(std::int64_t offset, const ByteVector& bytes)
{
    const auto start = nameAt(bytes, 0);
    const bool isApe = std::exchange(apeFollows_, start == "APET");
    const bool isFrames = offset == framesStart_;
    constexpr unsigned int nameInAtom = 4;
    tags_.grow(bytes.size());
    if (isFrames) {
        framesStart_ = -1;
        return areSafeFrames(bytes, TagLib::ID3v2::Header(tagHeader_), tags_);
    }
    if (isApe)
        return tags_.spend(TagCost::ofApe(bytes));
    if (start == "INFO")
        return tags_.spend(TagCost::ofInfo(bytes));
    if (const auto name = nameAt(bytes, nameInAtom); name == "data" || name == "mean")
        return tags_.spend(TagCost::ofMp4Item(bytes, offset == pictureStart_));
    return true;
}

bool ReadGuard::endsSearch(std::int64_t offset, std::size_t length)
{
    constexpr std::int64_t blockSize = 1024; // TagLib's
    constexpr int mostBlocks = 1024;
    if (length != blockSize)
        return false;
    const bool goesOn = std::abs(offset - searchedAt_) == blockSize;
    searchedAt_ = offset;
    blocksSearched_ = goesOn ? blocksSearched_ + 1 : 0;
    return blocksSearched_ > mostBlocks;
}
