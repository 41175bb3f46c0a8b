#include "tagengine/ReadGuard.h"

#include <taglib/id3v2extendedheader.h>
#include <taglib/id3v2frame.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2synchdata.h>

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>

#include <zlib.h>

namespace {

using TagLib::ByteVector;
using Nesting = ReadGuard::Nesting;
namespace SynchData = TagLib::ID3v2::SynchData;

constexpr std::size_t deepest = 64;
constexpr std::size_t largestExpansion = 64 << 20;
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

/// @return the length of what the compressed bytes hold, up to a little more than the limit.
std::size_t expandedLength(ByteVector bytes, std::size_t limit)
{
    z_stream stream{};
    stream.next_in = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_in = bytes.size();
    if (inflateInit(&stream) != Z_OK)
        return 0;
    std::vector<Bytef> buffer(1 << 16);
    int result = Z_OK;
    while (result == Z_OK && stream.total_out <= limit) {
        stream.next_out = buffer.data();
        stream.avail_out = static_cast<uInt>(buffer.size());
        result = inflate(&stream, Z_NO_FLUSH);
    }
    inflateEnd(&stream);
    return stream.total_out;
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

/// Walks over the frames of a tag as TagLib does.
bool areSafeFrames(const ByteVector& content, const TagLib::ID3v2::Header& tag)
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
    Nesting chapters;
    std::size_t expansion = 0;
    while (at + TagLib::ID3v2::Header::size() < bytes.size() && bytes[at] != 0) {
        const TagLib::ID3v2::Frame::Header header(bytes.mid(at), tag.majorVersion());
        const bool isChapter = header.frameID() == "CHAP" || header.frameID() == "CTOC";
        if (header.frameSize() == 0 || header.frameSize() > bytes.size() - at)
            break;
        if (header.compression() || isChapter) {
            ByteVector frame = bytes.mid(at + header.size());
            if (tag.majorVersion() > 3 && (tag.unsynchronisation() || header.unsynchronisation()))
                frame = SynchData::decode(frame.mid(0, header.frameSize()));
            if (header.compression() && !header.encryption())
                expansion += expandedLength(frame.mid(sizeField), largestExpansion - expansion);
            // What a compressed chapter holds can't be looked at.
            if (expansion > largestExpansion || (isChapter && header.compression())
                || (isChapter && !areFlatChapters(frame.mid(0, header.frameSize()), chapters, at)))
                return false;
        }
        at += header.frameSize() + header.size();
    }
    return true;
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
    if (bytes.size() == atomHeaderSize && hasChildren(bytes))
        return atoms_.enter(offset, endOfAtom(offset, bytes));
    if (bytes.size() == TagLib::ID3v2::Header::size() && bytes.startsWith("ID3")) {
        tagHeader_ = bytes;
        framesStart_ = offset + bytes.size();
    } else if (offset == framesStart_) {
        framesStart_ = -1;
        return areSafeFrames(bytes, TagLib::ID3v2::Header(tagHeader_));
    }
    return true;
}
