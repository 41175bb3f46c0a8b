#include "tagengine/Mp4Look.h"

#include "tagengine/FailureReason.h"
#include "tagengine/Mp4Atoms.h"
#include "tagengine/SafeFileStream.h"

#include <algorithm>
#include <array>
#include <limits>

namespace {

using TagLib::ByteVector;

constexpr int deepest = 64;
constexpr std::int64_t largestTable = 1 << 30;
constexpr std::int64_t startOfTable = 32; // as much of a table as tells one place
constexpr std::array containers{"moov", "trak", "mdia", "minf", "dinf", "stbl",
                                "udta", "meta", "moof", "traf", "mfra"};

/// Reads big-endian numbers one after the other; those behind the end are 0.
class Numbers {
public:
    explicit Numbers(const ByteVector& bytes) : bytes_(bytes) {}

    std::uint64_t take(unsigned int size)
    {
        std::uint64_t value = 0;
        for (unsigned int byte = 0; byte < size; ++byte, ++at_)
            value =
                value << 8 | (at_ < bytes_.size() ? static_cast<std::uint8_t>(bytes_[static_cast<int>(at_)]) : 0U);
        return value;
    }
    std::int64_t takePlace(unsigned int size) { return static_cast<std::int64_t>(take(size)); }
    void skip(unsigned int size) { at_ += size; }
    bool atEnd() const { return at_ >= bytes_.size(); }

private:
    ByteVector bytes_;
    unsigned int at_ = 0;
};

/// Numbers in a damaged file may be any: their sum wraps, and leads nowhere.
std::int64_t sum(std::int64_t one, std::int64_t other)
{
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(one) + static_cast<std::uint64_t>(other));
}

struct Place {
    std::int64_t at;
    bool isSound; ///< and lies in an atom of its own
};

/// What a file tells of the places in it.
struct Places {
    std::vector<Place> told;
    std::vector<Mp4Atom> atoms; ///< the outermost, as far as they are whole
    std::int64_t length = 0;
    bool hasUnknown = false; ///< places that can't be told, or are those of another file
};

class Walk {
public:
    explicit Walk(TagLib::IOStream& stream) : stream_(stream) { places_.length = stream.length(); }

    Places all()
    {
        go(0, places_.length, {}, 0);
        return std::move(places_);
    }

private:
    void go(std::int64_t begin, std::int64_t end, const ByteVector& parent, int depth)
    {
        while (begin <= end - Mp4Atoms::headerSize && depth <= deepest) {
            Mp4Atom atom = Mp4Atoms::read(stream_, begin, end);
            // What is missing of the sound may have been lost on the way.
            if (depth == 0 && atom.name == "mdat" && atom.length > end - begin)
                atom.length = std::numeric_limits<std::int64_t>::max() - begin;
            else if (atom.length > end - begin)
                return;
            if (atom.length < atom.contents - atom.offset)
                return;
            if (depth == 0)
                places_.atoms.push_back(atom);
            take(atom, parent);
            if (std::any_of(containers.begin(), containers.end(),
                            [&](const char* name) { return atom.name == name; }))
                go(Mp4Atoms::childrenOf(stream_, atom), atom.end(), atom.name, depth + 1);
            begin = atom.end();
        }
    }

    void take(const Mp4Atom& atom, const ByteVector& parent)
    {
        const ByteVector& name = atom.name;
        if (name == "stco" || name == "co64")
            takeChunks(numbers(atom), name == "stco" ? 4 : 8);
        else if (name == "saio")
            takeAuxiliary(numbers(atom), parent == "traf" ? base_ : 0);
        else if (name == "moof")
            base_ = nextBase_ = atom.offset;
        else if (name == "tfhd")
            takeBase(numbers(atom, startOfTable));
        else if (name == "trun")
            takeRun(numbers(atom, startOfTable));
        else if (name == "tfra")
            takeFragments(numbers(atom));
        else if (name == "sidx")
            takeSegments(numbers(atom), atom.end());
        else if (name == "iloc")
            takeItems(numbers(atom));
        else if (name == "dref")
            takeReferences(numbers(atom));
        else if (name == "cmov")
            places_.hasUnknown = true;
    }

    Numbers numbers(const Mp4Atom& atom, std::int64_t most = largestTable)
    {
        stream_.seek(atom.contents);
        return Numbers(stream_.readBlock(static_cast<std::size_t>(std::min(most, atom.end() - atom.contents))));
    }

    void add(std::int64_t at, bool isSound = false) { places_.told.push_back({at, isSound}); }

    void takeChunks(Numbers table, unsigned int size)
    {
        table.skip(4);
        for (auto count = table.take(4); count > 0 && !table.atEnd(); --count)
            add(table.takePlace(size), true);
    }

    void takeAuxiliary(Numbers table, std::int64_t base)
    {
        const unsigned int size = table.take(1) == 0 ? 4 : 8;
        table.skip((table.take(3) & 1) != 0 ? 8 : 0);
        for (auto count = table.take(4); count > 0 && !table.atEnd(); --count)
            add(sum(base, table.takePlace(size)));
    }

    /// Without a base of its own, the second track of a fragment begins where the data of the first ends: that can't lead
    /// elsewhere on its own.
    void takeBase(Numbers header)
    {
        constexpr std::uint64_t isTold = 1;
        constexpr std::uint64_t isFragment = 0x20000;
        const auto flags = header.take(4);
        header.skip(4);
        base_ = nextBase_;
        if ((flags & isTold) != 0)
            add(base_ = header.takePlace(8));
        else if ((flags & isFragment) == 0)
            nextBase_ = nowhere;
    }

    void takeRun(Numbers run)
    {
        constexpr std::uint64_t hasOffset = 1;
        const auto flags = run.take(4);
        run.skip(4);
        if (base_ != nowhere && (flags & hasOffset) != 0)
            add(sum(base_, static_cast<std::int32_t>(run.take(4))));
    }

    void takeFragments(Numbers table)
    {
        const unsigned int size = table.take(1) == 0 ? 4 : 8;
        table.skip(7);
        const auto sizes = table.take(4);
        const auto numbers = static_cast<unsigned int>(3 + (sizes >> 4 & 3) + (sizes >> 2 & 3) + (sizes & 3));
        for (auto count = table.take(4); count > 0 && !table.atEnd(); --count) {
            table.skip(size);
            add(table.takePlace(size));
            table.skip(numbers);
        }
    }

    void takeSegments(Numbers table, std::int64_t begin)
    {
        constexpr std::int64_t lengthBits = 0x7fffffff;
        const unsigned int size = table.take(1) == 0 ? 4 : 8;
        table.skip(3 + 4 + 4 + size);
        begin = sum(begin, table.takePlace(size));
        table.skip(2);
        for (auto count = table.take(2); count > 0 && !table.atEnd(); --count) {
            const std::int64_t length = table.takePlace(4) & lengthBits;
            table.skip(8);
            add(begin);
            if (length > 0)
                add(sum(begin, length - 1));
            begin = sum(begin, length);
        }
    }

    void takeItems(Numbers table)
    {
        const auto version = table.take(1);
        table.skip(3);
        const auto sizes = static_cast<unsigned int>(table.take(2));
        const unsigned int indexSize = version > 0 ? sizes & 15 : 0;
        for (auto count = table.take(version < 2 ? 2 : 4); count > 0 && !table.atEnd(); --count) {
            table.skip(version < 2 ? 2 : 4);
            const bool isInFile = version == 0 || (table.take(2) & 15) == 0;
            table.skip(2);
            const std::int64_t base = table.takePlace(sizes >> 4 & 15);
            for (auto extents = table.take(2); extents > 0 && !table.atEnd(); --extents) {
                table.skip(indexSize);
                const std::int64_t at = sum(base, table.takePlace(sizes >> 12));
                table.skip(sizes >> 8 & 15);
                if (isInFile)
                    add(at);
            }
        }
    }

    void takeReferences(Numbers table)
    {
        constexpr std::uint64_t isThisFile = 1;
        table.skip(4);
        for (auto count = table.take(4); count > 0 && !table.atEnd(); --count) {
            const auto length = static_cast<unsigned int>(table.take(4));
            table.skip(4);
            places_.hasUnknown = places_.hasUnknown || (table.take(4) & isThisFile) == 0;
            table.skip(length - 12);
        }
    }

    static constexpr std::int64_t nowhere = -1;

    TagLib::IOStream& stream_;
    Places places_;
    std::int64_t base_ = nowhere; ///< of the fragment's track
    std::int64_t nextBase_ = nowhere;
};

/// Whether the sound lies where only sound should. Beyond the end of the file, there is nothing to lose.
bool isApart(const Place& place, const Places& places)
{
    if (!place.isSound || place.at >= places.length)
        return true;
    const auto next = std::upper_bound(places.atoms.begin(), places.atoms.end(), place.at,
                                       [](std::int64_t at, const Mp4Atom& atom) { return at < atom.offset; });
    return next != places.atoms.begin() && place.at < std::prev(next)->end() && std::prev(next)->name != "moov";
}

bool areKept(const Places& before, const Places& after, const PieceOrigins& origins)
{
    const auto isKept = [&](std::int64_t was, std::int64_t is) { return origins.of(is) == was; };
    return std::equal(before.told.begin(), before.told.end(), after.told.begin(), after.told.end(),
                      [&](const Place& was, const Place& is) { return isKept(was.at, is.at); })
           && std::equal(before.atoms.begin(), before.atoms.end(), after.atoms.begin(), after.atoms.end(),
                         [&](const Mp4Atom& was, const Mp4Atom& is) {
                             return was.name == is.name && (was.name == "moov" || isKept(was.offset, is.offset));
                         });
}

} // namespace

const char* Mp4Look::reasonAgainst(SafeFileStream& stream)
{
    const PieceTable& content = stream.content();
    if (!content.isChanged())
        return nullptr;
    const Places before = stream.asItIs([&] { return Walk(stream).all(); });
    const bool areApart = std::all_of(before.told.begin(), before.told.end(),
                                      [&](const Place& place) { return isApart(place, before); });
    if (before.hasUnknown)
        return content.keepsPlaces() ? nullptr : FailureReason::lostPlaces;
    if (!areApart)
        return FailureReason::damaged;
    return areKept(before, Walk(stream).all(), PieceOrigins(content)) ? nullptr : FailureReason::lostPlaces;
}
