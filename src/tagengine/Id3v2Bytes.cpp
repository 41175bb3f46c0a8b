#include "tagengine/Id3v2Bytes.h"

#include <taglib/id3v2footer.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2synchdata.h>

#include <algorithm>
#include <limits>

namespace {

using TagLib::ByteVector;
namespace SynchData = TagLib::ID3v2::SynchData;

constexpr unsigned int tagHeaderSize = Id3v2Bytes::headerLength;
constexpr unsigned int flagsAt = 5;
constexpr unsigned int sizeAt = 6;
constexpr unsigned int formatAt = 9;     // the second byte of a frame's flags
constexpr char isUnsynchronisedFlag = 2; // ID3v2.4
constexpr std::uint32_t largestTag = (1U << 28) - 1;
constexpr std::uint32_t largestSmallFrame = (1U << 24) - 1; // ID3v2.2

// What TagLib leaves, too.
constexpr std::int64_t leastPadding = 1024;
constexpr std::int64_t mostPadding = 1024 * 1024;
constexpr std::int64_t partOfFile = 100;
constexpr std::int64_t partOfTag = 16;

std::uint8_t byteAt(const ByteVector& bytes, unsigned int at)
{
    return static_cast<std::uint8_t>(bytes[static_cast<int>(at)]);
}

/// Whether a decoder of unsynchronised data may be let at the bytes.
bool isUnsynchronised(const ByteVector& bytes)
{
    for (unsigned int at = 0; at + 1 < bytes.size(); ++at) {
        if (byteAt(bytes, at) == 0xff && byteAt(bytes, at + 1) >= 0xe0)
            return false;
    }
    return true;
}

ByteVector unsynchronised(const ByteVector& bytes)
{
    ByteVector encoded;
    unsigned int done = 0;
    for (unsigned int at = 0; at < bytes.size(); ++at) {
        const bool isLast = at + 1 == bytes.size();
        if (byteAt(bytes, at) != 0xff || !(isLast || byteAt(bytes, at + 1) >= 0xe0 || byteAt(bytes, at + 1) == 0))
            continue;
        encoded.append(bytes.mid(done, at + 1 - done)).append('\0');
        done = at + 1;
    }
    return encoded.append(bytes.mid(done));
}

bool isFrameId(const ByteVector& id, unsigned int version)
{
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); };
    // iTunes puts the names of ID3v2.2 into ID3v2.3.
    const auto end = version == 3 && id.size() == 4 && id[3] == '\0' ? id.end() - 1 : id.end();
    return id.size() == (version == 2 ? 3U : 4U) && std::all_of(id.begin(), end, isLetter);
}

unsigned int frameHeaderSize(unsigned int version)
{
    return version == 2 ? 6 : 10;
}

/// Where the bytes end that are not 0.
unsigned int endOfContent(const ByteVector& bytes)
{
    unsigned int end = bytes.size();
    while (end > 0 && byteAt(bytes, end - 1) == 0)
        --end;
    return end;
}

/// The length of a frame's body. iTunes writes plain sizes into ID3v2.4: what follows the frame tells which it is.
std::uint32_t bodySize(const ByteVector& content, unsigned int at, unsigned int version, unsigned int contentEnd)
{
    if (version == 2)
        return content.toUInt(at + 3, 3, true);
    const std::uint32_t plain = content.toUInt(at + 4, true);
    if (version == 3)
        return plain;
    const std::uint32_t safe = SynchData::toUInt(content.mid(at + 4, 4));
    const std::uint64_t begin = std::uint64_t(at) + frameHeaderSize(version);
    const auto leadsToFrame = [&](std::uint32_t size) {
        return begin + size < content.size() && isFrameId(content.mid(static_cast<unsigned int>(begin + size), 4), 4);
    };
    const auto leadsToEnd = [&](std::uint32_t size) {
        return begin + size >= contentEnd && begin + size <= content.size();
    };
    if (safe == plain || leadsToFrame(safe))
        return safe;
    return leadsToFrame(plain) || (leadsToEnd(plain) && !leadsToEnd(safe)) ? plain : safe;
}

bool isEmptyToReaders(const ByteVector& frame, unsigned int version)
{
    const std::size_t body = frame.size() - frameHeaderSize(version);
    const bool hasLength = version == 4 && (byteAt(frame, 9) & 1) != 0;
    return body <= (hasLength ? 4U : 0U);
}

} // namespace

Id3v2Bytes::Id3v2Bytes() : headerBytes_("ID3\4\0\0\0\0\0\0", tagHeaderSize)
{
    header_ = std::make_shared<TagLib::ID3v2::Header>(headerBytes_);
}

std::uint32_t Id3v2Bytes::lengthOf(const ByteVector& header)
{
    return header.size() == tagHeaderSize && header.startsWith("ID3") && byteAt(header, 3) != 0xff
               ? TagLib::ID3v2::Header(header).completeTagSize()
               : 0;
}

std::optional<Id3v2Bytes> Id3v2Bytes::parse(const ByteVector& tag)
{
    constexpr int compressed = 0x40; // ID3v2.2
    Id3v2Bytes parsed;
    parsed.headerBytes_ = tag.mid(0, tagHeaderSize);
    if (tag.size() < tagHeaderSize || lengthOf(parsed.headerBytes_) > tag.size())
        return std::nullopt;
    parsed.header_ = std::make_shared<TagLib::ID3v2::Header>(parsed.headerBytes_);
    const unsigned int version = parsed.version();
    if (version < 2 || version > 4 || (version == 2 && (byteAt(tag, flagsAt) & compressed) != 0))
        return std::nullopt;
    ByteVector content = tag.mid(tagHeaderSize, parsed.header_->tagSize());
    if (version < 4 && parsed.header_->unsynchronisation()) {
        if (!isUnsynchronised(content))
            return std::nullopt;
        content = SynchData::decode(content);
    }
    if (version > 2 && parsed.header_->extendedHeader() && !parsed.takeExtendedHeader(content))
        return std::nullopt;
    parsed.takeFrames(content, parsed.extendedHeader_.size());
    return parsed;
}

bool Id3v2Bytes::takeExtendedHeader(const ByteVector& content)
{
    constexpr unsigned int shortest = 6;
    constexpr unsigned int plainSize = 10; // ID3v2.3, without a checksum
    constexpr int checksumOrRestrictions = 0x30;
    if (content.size() < plainSize)
        return false;
    const bool isThree = version() == 3;
    const std::uint32_t size = isThree ? content.toUInt(0U) + 4 : SynchData::toUInt(content.mid(0, 4));
    // The padding is told in it, which unsynchronisation may make longer.
    if (isThree && (size != plainSize || header_->unsynchronisation()))
        return false;
    if (!isThree && (size < shortest || size > content.size() || (byteAt(content, 5) & checksumOrRestrictions) != 0))
        return false;
    extendedHeader_ = content.mid(0, size);
    return true;
}

void Id3v2Bytes::takeFrames(const ByteVector& content, unsigned int at)
{
    const unsigned int headerSize = frameHeaderSize(version());
    const unsigned int end = endOfContent(content);
    bool isRead = true;
    while (at < end && at + headerSize <= content.size()) {
        const ByteVector id = content.mid(at, version() == 2 ? 3 : 4);
        const std::uint64_t size = isFrameId(id, version()) ? bodySize(content, at, version(), end) : content.size();
        if (at + headerSize + size > content.size())
            break;
        const ByteVector frame = content.mid(at, static_cast<unsigned int>(headerSize + size));
        isRead = isRead && !isEmptyToReaders(frame, version());
        frames_.push_back({id, frame, isRead});
        at += frame.size();
    }
    if (at < end)
        rest_ = content.mid(at);
}

std::unique_ptr<TagLib::ID3v2::Frame> Id3v2Bytes::read(const Frame& frame) const
{
    if (frame.id == "CHAP" || frame.id == "CTOC")
        return nullptr;
    ByteVector bytes = frame.bytes;
    const ByteVector size = SynchData::fromUInt(bytes.size() - frameHeaderSize(version()));
    // A size that only the frames around it explain.
    if (version() == 4 && bytes.mid(4, 4) != size)
        bytes = frame.id + size + bytes.mid(8);
    const int compressed = version() == 4 ? 0x08 : 0x80;
    const int encrypted = version() == 4 ? 0x04 : 0x40;
    // TagLib leaves encrypted frames as they are.
    if (version() > 2 && (byteAt(bytes, formatAt) & compressed) != 0)
        bytes[formatAt] = static_cast<char>(byteAt(bytes, formatAt) | encrypted);
    return std::unique_ptr<TagLib::ID3v2::Frame>(
        TagLib::ID3v2::FrameFactory::instance()->createFrame(bytes, header_.get()));
}

ByteVector Id3v2Bytes::bodyOf(const Frame& frame) const
{
    const ByteVector body = frame.bytes.mid(frameHeaderSize(version()));
    const bool isEncoded =
        version() == 4
        && (header_->unsynchronisation() || (byteAt(frame.bytes, formatAt) & isUnsynchronisedFlag) != 0);
    return isEncoded ? SynchData::decode(body) : body;
}

std::vector<Id3v2Bytes::Frame> Id3v2Bytes::embeddedFrames(const ByteVector& bytes) const
{
    Id3v2Bytes inner;
    inner.header_ = header_;
    inner.takeFrames(bytes, 0);
    return inner.frames_;
}

std::optional<Id3v2Bytes::Frame> Id3v2Bytes::makeFrame(const ByteVector& id, const ByteVector& body,
                                                       char status) const
{
    if (body.size() > (version() == 2 ? largestSmallFrame : largestTag))
        return std::nullopt;
    const bool encodes = version() == 4 && header_->unsynchronisation();
    Frame frame{id, makeEmbeddedFrame(id, encodes ? unsynchronised(body) : body), true};
    if (version() > 2)
        frame.bytes[8] = status;
    if (encodes)
        frame.bytes[formatAt] = isUnsynchronisedFlag;
    return frame;
}

ByteVector Id3v2Bytes::makeEmbeddedFrame(const ByteVector& id, const ByteVector& body) const
{
    const ByteVector plain = ByteVector::fromUInt(body.size());
    if (version() == 2)
        return id + plain.mid(1) + body;
    return id + (version() == 3 ? plain : SynchData::fromUInt(body.size())) + ByteVector(2, '\0') + body;
}

void Id3v2Bytes::add(Frame frame)
{
    const auto firstUnread =
        std::find_if(frames_.begin(), frames_.end(), [](const Frame& other) { return !other.isRead; });
    // What stands behind the frames may be the end of the last one, if its size is not true; and a short frame in front of
    // a footer is not seen by TagLib.
    const bool goesLast = rest_.isEmpty() && !hasFooter();
    frames_.insert(goesLast ? firstUnread : frames_.begin(), std::move(frame));
}

std::size_t Id3v2Bytes::paddingFor(std::size_t bodyLength, std::int64_t fileLength) const
{
    const auto length = static_cast<std::int64_t>(bodyLength);
    const std::int64_t left = std::int64_t(header_->tagSize()) - length;
    const bool takesPadding = rest_.isEmpty() && !hasFooter();
    if (left == 0 || !takesPadding)
        return 0;
    const std::int64_t most = std::clamp(fileLength / partOfFile, leastPadding, mostPadding);
    if (left > 0 && left <= std::max(most, length / partOfTag))
        return static_cast<std::size_t>(left);
    return static_cast<std::size_t>(std::clamp(length / partOfTag, leastPadding, mostPadding));
}

std::optional<ByteVector> Id3v2Bytes::render(std::int64_t fileLength) const
{
    constexpr unsigned int paddingAt = 6; // in an extended header of ID3v2.3
    ByteVector body = extendedHeader_;
    for (const auto& frame : frames_)
        body.append(frame.bytes);
    body.append(rest_);
    if (version() < 4 && header_->unsynchronisation())
        body = unsynchronised(body);
    const std::size_t padding = paddingFor(body.size(), fileLength);
    if (body.size() + padding > largestTag)
        return std::nullopt;
    if (version() == 3 && !extendedHeader_.isEmpty()) {
        const ByteVector told = ByteVector::fromUInt(static_cast<unsigned int>(padding));
        std::copy(told.begin(), told.end(), body.begin() + paddingAt);
    }
    body.resize(static_cast<unsigned int>(body.size() + padding), '\0');
    const ByteVector header = headerBytes_.mid(0, sizeAt) + SynchData::fromUInt(body.size());
    const ByteVector footer = hasFooter() ? ByteVector("3DI") + header.mid(3) : ByteVector();
    return header + body + footer;
}
