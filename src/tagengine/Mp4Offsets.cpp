#include "tagengine/Mp4Offsets.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

constexpr std::int64_t headerSize = 8;
constexpr std::int64_t largeHeaderSize = 16;
constexpr int deepest = 64;
constexpr int mostAtoms = 100'000;
constexpr std::array containers{"moov", "udta", "mdia", "meta", "ilst", "stbl",
                                "minf", "moof", "traf", "trak", "stsd"};

struct Atom {
    std::int64_t offset;
    std::int64_t length;
    std::int64_t contents;
    TagLib::ByteVector name;
};

class Walk {
public:
    explicit Walk(TagLib::IOStream& stream) : stream_(stream) {}

    /// Looks at the atoms from one place to another. @return false as soon as a table does not fit, or there is no end.
    bool tablesFit(std::int64_t begin, std::int64_t end, int depth = 0)
    {
        while (begin + headerSize <= end) {
            const Atom atom = atomAt(begin, end);
            if (atom.length < headerSize || depth > deepest)
                return true;
            if (++seen_ > mostAtoms)
                return false;
            if (!tableFits(atom) || !contentsFit(atom, depth))
                return false;
            begin += atom.length;
        }
        return true;
    }

private:
    TagLib::ByteVector read(std::int64_t offset, std::size_t length)
    {
        stream_.seek(offset);
        return stream_.readBlock(length);
    }

    Atom atomAt(std::int64_t offset, std::int64_t end)
    {
        const auto header = read(offset, largeHeaderSize);
        Atom atom{offset, header.toUInt(), offset + headerSize, header.mid(4, 4)};
        if (atom.length == 0) {
            atom.length = end - offset;
        } else if (atom.length == 1) {
            atom.length = header.toLongLong(8U);
            atom.contents = offset + largeHeaderSize;
        }
        return atom;
    }

    bool contentsFit(const Atom& atom, int depth)
    {
        const bool isContainer = std::any_of(containers.begin(), containers.end(),
                                             [&](const char* name) { return atom.name == TagLib::ByteVector(name); });
        if (!isContainer)
            return true;
        const std::int64_t end = atom.offset + atom.length;
        // QuickTime's meta atom has no version and flags before its children.
        if (atom.name == "meta" && !tablesFit(atom.contents, end, depth + 1))
            return false;
        const std::int64_t skipped = atom.name == "meta" ? 4 : atom.name == "stsd" ? 8 : 0;
        return tablesFit(atom.contents + skipped, end, depth + 1);
    }

    bool tableFits(const Atom& atom)
    {
        constexpr std::int64_t tableHeader = 16;
        if (atom.name == "stco" || atom.name == "co64") {
            const std::int64_t entrySize = atom.name == "stco" ? 4 : 8;
            const std::int64_t count = read(atom.offset + 12, 4).toUInt();
            return tableHeader + count * entrySize <= atom.length;
        }
        if (atom.name == "tfhd") {
            constexpr unsigned int hasBaseOffset = 1;
            const bool has = read(atom.offset + 9, 3).toUInt(0, 3, true) & hasBaseOffset;
            return !has || atom.length >= tableHeader + 8;
        }
        return true;
    }

    TagLib::IOStream& stream_;
    int seen_ = 0;
};

} // namespace

bool Mp4Offsets::fitTheirTables(TagLib::IOStream& stream)
{
    return Walk(stream).tablesFit(0, stream.length());
}
