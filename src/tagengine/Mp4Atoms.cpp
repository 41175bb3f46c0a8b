#include "tagengine/Mp4Atoms.h"

#include <array>
#include <limits>

namespace {

using TagLib::ByteVector;

constexpr unsigned int toTheEnd = 0; // in place of a length
constexpr unsigned int isLarge = 1;

ByteVector readAt(TagLib::IOStream& stream, std::int64_t offset, std::size_t length)
{
    stream.seek(offset);
    return stream.readBlock(length);
}

} // namespace

Mp4Atom Mp4Atoms::read(TagLib::IOStream& stream, std::int64_t offset, std::int64_t end)
{
    const ByteVector header = readAt(stream, offset, largeHeaderSize);
    Mp4Atom atom{header.mid(4, 4), offset, header.toUInt(), offset + headerSize};
    if (atom.length == toTheEnd) {
        atom.length = end - offset;
    } else if (atom.length == isLarge) {
        atom.length = header.toLongLong(8U);
        atom.contents = offset + largeHeaderSize;
    }
    return atom;
}

std::vector<Mp4Atom> Mp4Atoms::list(TagLib::IOStream& stream, std::int64_t begin, std::int64_t end)
{
    std::vector<Mp4Atom> atoms;
    while (begin + headerSize <= end) {
        Mp4Atom atom = read(stream, begin, end);
        if (atom.length < atom.contents - atom.offset || atom.length > end - begin)
            break;
        begin = atom.end();
        atoms.push_back(std::move(atom));
    }
    return atoms;
}

std::int64_t Mp4Atoms::childrenOf(TagLib::IOStream& stream, const Mp4Atom& atom)
{
    constexpr std::array firstChildren{"hdlr", "ilst", "mhdr", "ctry", "lang"};
    constexpr int versionAndFlags = 4;
    if (atom.name != "meta")
        return atom.contents;
    // The name is looked at as TagLib does.
    const ByteVector start = readAt(stream, atom.contents, largeHeaderSize);
    for (const char* name : firstChildren) {
        if (start.mid(4, 4) == name)
            return atom.contents;
    }
    return atom.contents + versionAndFlags;
}

bool Mp4Atoms::resize(TagLib::IOStream& stream, const Mp4Atom& atom, std::int64_t delta)
{
    const std::uint32_t stored = readAt(stream, atom.offset, 4).toUInt();
    const std::int64_t length = atom.length + delta;
    if (stored == toTheEnd)
        return true;
    if (stored == isLarge)
        stream.insert(ByteVector::fromLongLong(length), atom.offset + headerSize, headerSize);
    else if (length <= std::numeric_limits<std::uint32_t>::max())
        stream.insert(ByteVector::fromUInt(static_cast<std::uint32_t>(length)), atom.offset, 4);
    else
        return false;
    return true;
}

ByteVector Mp4Atoms::make(const ByteVector& name, const ByteVector& contents)
{
    return ByteVector::fromUInt(contents.size() + static_cast<unsigned int>(headerSize)) + name + contents;
}
