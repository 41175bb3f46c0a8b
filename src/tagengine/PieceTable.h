#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

/// The content that a file is to have, as a list of pieces: ranges of the file as it is, and new bytes.
class PieceTable {
public:
    using Bytes = std::vector<char>;

    struct Piece {
        std::shared_ptr<Bytes> bytes; ///< null for a range of the original
        std::int64_t offset;          ///< in the original, or in the bytes
        std::int64_t length;

        bool isOriginal() const { return !bytes; }
        const char* data() const { return bytes->data() + offset; }
    };

    explicit PieceTable(std::int64_t originalLength);

    std::int64_t length() const { return length_; }
    std::int64_t originalLength() const { return originalLength_; }

    /// Puts @p size bytes in place of the @p removed bytes at @p start. What lies beyond the end is filled with
    /// zeros on the way to @p start and left out of @p removed.
    void replace(std::int64_t start, std::int64_t removed, const char* bytes, std::size_t size);

    /// Calls @p visit for each piece, cut to the given range of the new content, with its position in it.
    template <class Visit>
    void visit(std::int64_t start, std::int64_t length, Visit visit) const
    {
        Start at = startBefore(start);
        for (; at.index < pieces_.size() && at.position < start + length; at.position += pieces_[at.index++].length) {
            const Piece& piece = pieces_[at.index];
            const std::int64_t from = std::max(start, at.position);
            const std::int64_t to = std::min(start + length, at.position + piece.length);
            if (at.position <= start)
                last_ = at;
            if (from < to)
                visit(from, Piece{piece.bytes, piece.offset + from - at.position, to - from});
        }
    }

    bool isChanged() const { return length_ != originalLength_ || unchangedPrefix() != length_; }
    /// Whether every byte that comes from the original stays where it was, and the length too.
    bool keepsPlaces() const;
    /// The length of the original's beginning that stays unchanged.
    std::int64_t unchangedPrefix() const;

private:
    /// Where a piece begins in the content.
    struct Start {
        std::size_t index = 0;
        std::int64_t position = 0;
    };

    /// A piece from which the one at that place can be looked for.
    Start startBefore(std::int64_t position) const { return last_.position <= position ? last_ : Start(); }
    std::size_t splitAt(std::int64_t position);
    bool appendToPiece(std::size_t index, const char* bytes, std::size_t size);

    std::vector<Piece> pieces_;
    std::int64_t originalLength_;
    std::int64_t length_;
    mutable Start last_; ///< looked at: a content of many pieces is mostly gone through in their order
};

/// Tells where the bytes of a content come from, for as long as the content does not change.
class PieceOrigins {
public:
    explicit PieceOrigins(const PieceTable& content);

    /// The place in the original of the byte at that place; none for a new byte. What lies beyond the end comes from
    /// beyond the original's.
    std::optional<std::int64_t> of(std::int64_t position) const;

private:
    struct Start {
        std::int64_t position = 0;
        std::optional<std::int64_t> origin;
    };
    std::vector<Start> starts_; ///< of each piece, and the end
};
