#pragma once

#include <taglib/id3v2frame.h>
#include <taglib/id3v2header.h>
#include <taglib/tbytevector.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

/// An ID3v2 tag (2.2, 2.3 or 2.4) taken apart by the headers of its frames: what is not changed keeps its bytes, and its
/// place among the others.
class Id3v2Bytes {
public:
    static constexpr unsigned int headerLength = 10; ///< of a tag, in bytes

    struct Frame {
        TagLib::ByteVector id;    ///< as stored: three letters in ID3v2.2
        TagLib::ByteVector bytes; ///< header and body, without the unsynchronisation of a whole tag
        /// False behind the first frame that is empty: most readers stop there.
        bool isRead = true;
    };

    /// An empty tag of ID3v2.4.
    Id3v2Bytes();

    /// @param tag from its header to its end, footer included.
    /// @return none for a tag that can't be changed without making something in it untrue: a checksum, restrictions, an
    /// unsynchronisation that was announced and not done, the compression of ID3v2.2.
    static std::optional<Id3v2Bytes> parse(const TagLib::ByteVector& tag);

    /// The length of a tag in bytes, told from the ten bytes of its header. @return 0 when they are none.
    static std::uint32_t lengthOf(const TagLib::ByteVector& header);

    /// 2, 3 or 4.
    unsigned int version() const { return header_->majorVersion(); }
    bool hasFooter() const { return header_->footerPresent(); }
    std::vector<Frame>& frames() { return frames_; }
    const std::vector<Frame>& frames() const { return frames_; }

    /// TagLib's reading of a frame; null when it is none to TagLib, and for those that hold frames, which could do so
    /// without end. Compressed ones stay as they are: they could become as large as they like.
    std::unique_ptr<TagLib::ID3v2::Frame> read(const Frame& frame) const;

    /// A frame's content, without unsynchronisation.
    TagLib::ByteVector bodyOf(const Frame& frame) const;
    /// The frames inside the content of another one.
    std::vector<Frame> embeddedFrames(const TagLib::ByteVector& bytes) const;

    /// @param status the first byte of the frame's flags.
    /// @return none when the body is too long for this version.
    std::optional<Frame> makeFrame(const TagLib::ByteVector& id, const TagLib::ByteVector& body,
                                   char status = 0) const;
    /// The same for a frame inside another one.
    TagLib::ByteVector makeEmbeddedFrame(const TagLib::ByteVector& id, const TagLib::ByteVector& body) const;
    /// Whether nothing is in the tag.
    bool isEmpty() const { return frames_.empty() && rest_.isEmpty(); }
    /// Whether what stands behind the frames is more than padding.
    bool hasRest() const { return !rest_.isEmpty(); }
    /// Puts a frame where readers will find it.
    void add(Frame frame);

    /// The tag as it is to be stored: as long as it was, if its frames leave room for that, else with room for the next
    /// edits.
    /// @param fileLength in bytes; the padding is a small part of it.
    /// @return none when the tag would be too long for ID3v2.
    std::optional<TagLib::ByteVector> render(std::int64_t fileLength) const;

private:
    bool takeExtendedHeader(const TagLib::ByteVector& content);
    void takeFrames(const TagLib::ByteVector& content, unsigned int at);
    std::size_t paddingFor(std::size_t bodyLength, std::int64_t fileLength) const;

    TagLib::ByteVector headerBytes_;
    std::shared_ptr<const TagLib::ID3v2::Header> header_;
    TagLib::ByteVector extendedHeader_;
    std::vector<Frame> frames_;
    TagLib::ByteVector rest_; ///< what is neither frame nor padding, to the end of the tag
};
