#include "tagengine/ReadGuard.h"

#include <taglib/id3v2extendedheader.h>
#include <taglib/id3v2frame.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2synchdata.h>

#include <algorithm>
#include <array>
#include <limits>

#include <zlib.h>

namespace {

using TagLib::ByteVector;
using Nesting = ReadGuard::Nesting;
namespace SynchData = TagLib::ID3v2::SynchData;

constexpr std::size_t deepest = 64;
constexpr std::size_t largestExpansion = 64 << 20;
constexpr unsigned int atomHeaderSize = 8;
constexpr unsigned int sizeField = 4; // in front of a compressed frame's content

bool hasChildren(const ByteVector& atom)
{
    constexpr std::array containers{"moov", "udta", "mdia", "meta", "ilst", "stbl",
                                    "minf", "moof", "traf", "trak", "stsd"};
    return std::any_of(containers.begin(), containers.end(),
                       [&](const char* name) { return atom.containsAt(name, 4); });
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
        if (bytes[at] != 'C' || !(bytes.containsAt("CHAP", at) || bytes.containsAt("CTOC", at)))
            continue;
        // Some programs write the size in 8 bits each, which TagLib allows for.
        const std::int64_t size = std::max(bytes.toUInt(at + 4), SynchData::toUInt(bytes.mid(at + 4, 4)));
        if (!nesting.enter(offset + at, offset + at + TagLib::ID3v2::Header::size() + size))
            return false;
    }
    return true;
}

/// Walks over the frames of a tag as TagLib does.
bool areSafeFrames(ByteVector bytes, const TagLib::ID3v2::Header& tag)
{
    if (tag.unsynchronisation() && tag.majorVersion() <= 3)
        bytes = SynchData::decode(bytes);
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
            ByteVector content = bytes.mid(at + header.size());
            if (tag.majorVersion() > 3 && (tag.unsynchronisation() || header.unsynchronisation()))
                content = SynchData::decode(content.mid(0, header.frameSize()));
            if (header.compression() && !header.encryption())
                expansion += expandedLength(content.mid(sizeField), largestExpansion - expansion);
            // What a compressed chapter holds can't be looked at.
            if (expansion > largestExpansion || (isChapter && header.compression())
                || (isChapter && !areFlatChapters(content.mid(0, header.frameSize()), chapters, at)))
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
