#include "tagengine/Mp4Place.h"

#include "tagengine/Mp4Offsets.h"
#include "tagengine/StreamPatch.h"

#include <algorithm>
#include <array>

namespace {

using TagLib::ByteVector;

// The room that new space for the items has for the next edits: in bytes, and a part of the items.
constexpr unsigned int leastPadding = 1024;
constexpr unsigned int mostPadding = 1024 * 1024;
constexpr unsigned int partOfItems = 16;

constexpr std::int64_t largestFree = 1 << 28;
constexpr std::int64_t largestItems = 1 << 30;

bool isFree(const Mp4Atom& atom)
{
    return atom.name == "free" && atom.length <= largestFree;
}

ByteVector padding(std::int64_t length)
{
    if (length < Mp4Atoms::headerSize)
        return {};
    return Mp4Atoms::make("free", ByteVector(static_cast<unsigned int>(length - Mp4Atoms::headerSize), '\0'));
}

ByteVector padded(const ByteVector& ilst)
{
    return ilst + padding(std::clamp(ilst.size() / partOfItems, leastPadding, mostPadding));
}

/// Whether the items fit into some room: what they leave must be nothing, or a free atom.
bool isEnough(std::int64_t room, const ByteVector& ilst)
{
    const std::int64_t left = room - ilst.size();
    return left == 0 || left >= Mp4Atoms::headerSize;
}

ByteVector fitted(std::int64_t room, const ByteVector& ilst)
{
    return isEnough(room, ilst) ? ilst + padding(room - ilst.size()) : padded(ilst);
}

/// The atom with those contents, with a header as long as it has.
ByteVector sameAtom(const Mp4Atom& atom, const ByteVector& contents)
{
    constexpr unsigned int isLarge = 1;
    if (atom.contents - atom.offset == Mp4Atoms::headerSize)
        return Mp4Atoms::make(atom.name, contents);
    return ByteVector::fromUInt(isLarge) + atom.name
           + ByteVector::fromLongLong(contents.size() + Mp4Atoms::largeHeaderSize) + contents;
}

} // namespace

Mp4Place::Mp4Place(TagLib::IOStream& stream) : stream_(stream)
{
    constexpr std::array names{"moov", "udta", "meta", "ilst"};
    Mp4Atom parent{{}, 0, stream.length(), 0};
    for (const char* name : names) {
        const Atoms atoms = children(parent);
        const auto found =
            std::find_if(atoms.begin(), atoms.end(), [&](const Mp4Atom& atom) { return atom.name == name; });
        if (found == atoms.end())
            return;
        parent = *found;
        parents_.push_back(parent);
    }
    parents_.pop_back();
    if (parent.length <= largestItems)
        ilst_ = parent;
}

Mp4Place::Atoms Mp4Place::children(const Mp4Atom& parent)
{
    return Mp4Atoms::list(stream_, Mp4Atoms::childrenOf(stream_, parent), parent.end());
}

ByteVector Mp4Place::items()
{
    return ilst_ ? read({ilst_->contents, ilst_->end()}) : ByteVector();
}

bool Mp4Place::store(const ByteVector& items)
{
    if (parents_.empty())
        return false;
    return ilst_ ? storeExisting(items) : storeNew(items);
}

bool Mp4Place::storeExisting(const ByteVector& items)
{
    const ByteVector ilst = sameAtom(*ilst_, items);
    const Atoms siblings = children(parents_.back());
    Range room{ilst_->offset, ilst_->end()};
    for (const auto& atom : siblings) {
        if (atom.offset == room.end && isFree(atom))
            room.end = atom.end();
    }
    if (!isEnough(room.length(), ilst))
        room.begin = freeBefore(siblings, room.begin).begin;
    return replace(room, fitted(room.length(), ilst));
}

Mp4Place::Range Mp4Place::freeBefore(const Atoms& siblings, std::int64_t end)
{
    Range range{end, end};
    std::for_each(siblings.rbegin(), siblings.rend(), [&](const auto& atom) {
        if (atom.end() == range.begin && isFree(atom))
            range.begin = atom.offset;
    });
    return range;
}

bool Mp4Place::storeNew(const ByteVector& items)
{
    const ByteVector ilst = Mp4Atoms::make("ilst", items);
    const auto endOf = [](const Atoms& atoms, std::int64_t begin) {
        return atoms.empty() ? begin : atoms.back().end();
    };
    if (parents_.size() == 3 && isForItems(parents_.back())) {
        const Atoms siblings = children(parents_.back());
        const Range room = freeBefore(siblings, endOf(siblings, 0));
        return replace(room, fitted(room.length(), ilst));
    }
    const ByteVector handler =
        Mp4Atoms::make("hdlr", ByteVector(8, '\0') + ByteVector("mdirappl") + ByteVector(9, '\0'));
    const ByteVector meta = Mp4Atoms::make("meta", ByteVector(4, '\0') + handler + padded(ilst));
    // A meta atom for something else stays behind the new one, since readers look at the first.
    if (parents_.size() > 2)
        parents_.pop_back();
    const Mp4Atom& parent = parents_.back();
    if (parents_.size() == 2)
        return replace({parent.contents, parent.contents}, meta);
    const std::int64_t end = endOf(children(parent), parent.contents);
    return replace({end, end}, Mp4Atoms::make("udta", meta));
}

bool Mp4Place::isForItems(const Mp4Atom& meta)
{
    constexpr int handlerAt = 8;
    for (const auto& atom : children(meta)) {
        if (atom.name == "hdlr")
            return read({atom.contents + handlerAt, atom.end()}).startsWith("mdir");
    }
    return false;
}

ByteVector Mp4Place::read(const Range& range)
{
    stream_.seek(range.begin);
    return range.length() <= 0 ? ByteVector() : stream_.readBlock(static_cast<std::size_t>(range.length()));
}

bool Mp4Place::replace(const Range& range, const ByteVector& bytes)
{
    const std::int64_t delta = bytes.size() - range.length();
    if (delta != 0) {
        const bool isMoved = Mp4Offsets::move(stream_, range.end, delta)
                             && std::all_of(parents_.begin(), parents_.end(), [&](const Mp4Atom& parent) {
                                    return Mp4Atoms::resize(stream_, parent, delta);
                                });
        if (!isMoved)
            return false;
    }
    StreamPatch::replace(stream_, range.begin, read(range), bytes);
    return true;
}
