#include "tagengine/PieceTable.h"

#include <algorithm>

PieceTable::PieceTable(std::int64_t originalLength) : originalLength_(originalLength), length_(originalLength)
{
    if (originalLength > 0)
        pieces_.push_back({nullptr, 0, originalLength});
}

void PieceTable::replace(std::int64_t start, std::int64_t removed, const char* bytes, std::size_t size)
{
    if (start > length_) {
        const Bytes gap(static_cast<std::size_t>(start - length_));
        replace(length_, 0, gap.data(), gap.size());
    }
    removed = std::clamp<std::int64_t>(removed, 0, length_ - start);
    if (start <= last_.position)
        last_ = {};
    const std::size_t first = splitAt(start);
    const std::size_t last = splitAt(start + removed);
    const auto begin = pieces_.begin();
    pieces_.erase(begin + static_cast<std::ptrdiff_t>(first), begin + static_cast<std::ptrdiff_t>(last));
    length_ += static_cast<std::int64_t>(size) - removed;
    if (size == 0 || (first > 0 && appendToPiece(first - 1, bytes, size)))
        return;
    pieces_.insert(pieces_.begin() + static_cast<std::ptrdiff_t>(first),
                   {std::make_shared<Bytes>(bytes, bytes + size), 0, static_cast<std::int64_t>(size)});
}

bool PieceTable::keepsPlaces() const
{
    std::int64_t position = 0;
    for (const auto& piece : pieces_) {
        if (piece.isOriginal() && piece.offset != position)
            return false;
        position += piece.length;
    }
    return length_ == originalLength_;
}

std::int64_t PieceTable::unchangedPrefix() const
{
    std::int64_t position = 0;
    for (const auto& piece : pieces_) {
        if (!piece.isOriginal() || piece.offset != position)
            break;
        position += piece.length;
    }
    return position;
}

/// @return the index of the piece that begins at the position, after cutting one in two where needed.
std::size_t PieceTable::splitAt(std::int64_t position)
{
    auto [i, begin] = startBefore(position);
    for (; i < pieces_.size(); ++i) {
        if (begin == position)
            return i;
        const std::int64_t head = position - begin;
        if (head < pieces_[i].length) {
            Piece tail = pieces_[i];
            tail.offset += head;
            tail.length -= head;
            pieces_[i].length = head;
            pieces_.insert(pieces_.begin() + static_cast<std::ptrdiff_t>(i) + 1, tail);
            return i + 1;
        }
        begin += pieces_[i].length;
    }
    return pieces_.size();
}

/// Lets a run of small writes, such as an MP4's chunk offsets, grow one piece instead of making thousands.
bool PieceTable::appendToPiece(std::size_t index, const char* bytes, std::size_t size)
{
    Piece& piece = pieces_[index];
    if (piece.isOriginal() || piece.bytes.use_count() > 1
        || piece.offset + piece.length != static_cast<std::int64_t>(piece.bytes->size()))
        return false;
    piece.bytes->insert(piece.bytes->end(), bytes, bytes + size);
    piece.length += static_cast<std::int64_t>(size);
    return true;
}

PieceOrigins::PieceOrigins(const PieceTable& content)
{
    content.visit(0, content.length(), [&](std::int64_t position, const PieceTable::Piece& piece) {
        starts_.push_back({position, piece.isOriginal() ? std::optional(piece.offset) : std::nullopt});
    });
    starts_.push_back({content.length(), content.originalLength()});
}

std::optional<std::int64_t> PieceOrigins::of(std::int64_t position) const
{
    const auto next = std::upper_bound(starts_.begin(), starts_.end(), position,
                                       [](std::int64_t place, const Start& start) { return place < start.position; });
    if (next == starts_.begin())
        return std::nullopt;
    const Start& start = *std::prev(next);
    return start.origin ? std::optional(*start.origin + position - start.position) : std::nullopt;
}
