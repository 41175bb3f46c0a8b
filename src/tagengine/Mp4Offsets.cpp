#include "tagengine/Mp4Offsets.h"

#include "tagengine/Mp4Atoms.h"

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <optional>

namespace {

using TagLib::ByteVector;

constexpr int deepest = 64;
constexpr int mostAtoms = 100'000;
constexpr std::array containers{"moov", "trak", "mdia", "minf", "stbl", "moof", "traf", "mfra"};

/// Entries of equal length, each of which has a place in the file somewhere.
struct Table {
    std::int64_t begin = 0;
    std::int64_t count = 0;
    std::int64_t entrySize = 0;
    std::int64_t placeAt = 0; ///< in an entry
    bool isLarge = false;     ///< whether the places have 64 bits

    std::int64_t length() const { return count * entrySize; }
};

class Walk {
public:
    using Visit = std::function<bool(const Mp4Atom& atom, const Table& table)>;

    Walk(TagLib::IOStream& stream, Visit visit) : stream_(stream), visit_(std::move(visit)) {}

    /// Looks at the atoms from one place to another. @return false as soon as a visit does, or there is no end.
    bool go(std::int64_t begin, std::int64_t end, const ByteVector& parent = {}, int depth = 0)
    {
        while (begin + Mp4Atoms::headerSize <= end) {
            Mp4Atom atom = Mp4Atoms::read(stream_, begin, end);
            atom.length = std::min(atom.length, end - begin);
            if (atom.length < Mp4Atoms::headerSize || depth > deepest)
                return true;
            if (++seen_ > mostAtoms)
                return false;
            const auto table = tableIn(atom, parent);
            if (table && !visit_(atom, *table))
                return false;
            if (isContainer(atom) && !go(atom.contents, atom.end(), atom.name, depth + 1))
                return false;
            begin = atom.end();
        }
        return true;
    }

private:
    static bool isContainer(const Mp4Atom& atom)
    {
        return std::any_of(containers.begin(), containers.end(), [&](const char* name) { return atom.name == name; });
    }

    std::optional<Table> tableIn(const Mp4Atom& atom, const ByteVector& parent)
    {
        const bool isFragment = parent == "traf";
        if (atom.name == "stco" || atom.name == "co64")
            return chunks(atom);
        if (atom.name == "tfhd")
            return base(atom);
        if (atom.name == "tfra")
            return fragments(atom);
        // In a fragment, it is told from the fragment's own place.
        if (atom.name == "saio" && !isFragment)
            return auxiliary(atom);
        return std::nullopt;
    }

    std::optional<Table> chunks(const Mp4Atom& atom)
    {
        const bool isLarge = atom.name == "co64";
        return Table{atom.contents + 8, number(atom.contents + 4), isLarge ? 8 : 4, 0, isLarge};
    }

    std::optional<Table> base(const Mp4Atom& atom)
    {
        constexpr unsigned int hasBaseOffset = 1;
        if ((number(atom.contents) & hasBaseOffset) == 0)
            return std::nullopt;
        return Table{atom.contents + 8, 1, 8, 0, true};
    }

    std::optional<Table> fragments(const Mp4Atom& atom)
    {
        const bool isLarge = number(atom.contents) >> 24 == 1;
        const std::uint32_t lengths = number(atom.contents + 8);
        const std::int64_t numbers = 3 + (lengths >> 4 & 3) + (lengths >> 2 & 3) + (lengths & 3);
        const std::int64_t timeSize = isLarge ? 8 : 4;
        return Table{atom.contents + 16, number(atom.contents + 12), 2 * timeSize + numbers, timeSize, isLarge};
    }

    std::optional<Table> auxiliary(const Mp4Atom& atom)
    {
        constexpr unsigned int hasType = 1;
        const std::uint32_t versionAndFlags = number(atom.contents);
        const bool isLarge = versionAndFlags >> 24 != 0;
        const std::int64_t countAt = atom.contents + 4 + ((versionAndFlags & hasType) != 0 ? 8 : 0);
        return Table{countAt + 4, number(countAt), isLarge ? 8 : 4, 0, isLarge};
    }

    std::uint32_t number(std::int64_t offset)
    {
        stream_.seek(offset);
        return stream_.readBlock(4).toUInt();
    }

    TagLib::IOStream& stream_;
    Visit visit_;
    int seen_ = 0;
};

bool fits(const Mp4Atom& atom, const Table& table)
{
    constexpr std::int64_t largest = 1 << 30;
    return table.length() <= largest && table.begin + table.length() <= atom.end();
}

/// @return none when a place would be too large for the table.
std::optional<ByteVector> moved(const ByteVector& entries, const Table& table, std::int64_t from, std::int64_t delta)
{
    const std::int64_t largest =
        table.isLarge ? std::numeric_limits<std::int64_t>::max() : std::numeric_limits<std::uint32_t>::max();
    ByteVector result = entries;
    for (std::int64_t entry = 0; entry < table.count; ++entry) {
        const auto at = static_cast<unsigned int>(entry * table.entrySize + table.placeAt);
        std::int64_t place = table.isLarge ? entries.toLongLong(at) : entries.toUInt(at);
        if (place < from)
            continue;
        if (place > largest - delta)
            return std::nullopt;
        place += delta;
        const ByteVector bytes =
            table.isLarge ? ByteVector::fromLongLong(place) : ByteVector::fromUInt(static_cast<std::uint32_t>(place));
        std::copy(bytes.begin(), bytes.end(), result.begin() + at);
    }
    return result;
}

} // namespace

bool Mp4Offsets::fitTheirTables(TagLib::IOStream& stream)
{
    return Walk(stream, fits).go(0, stream.length());
}

bool Mp4Offsets::move(TagLib::IOStream& stream, std::int64_t from, std::int64_t delta)
{
    const auto moveTable = [&](const Mp4Atom& atom, const Table& table) {
        if (!fits(atom, table))
            return false;
        stream.seek(table.begin);
        const ByteVector entries = stream.readBlock(static_cast<std::size_t>(table.length()));
        const auto changed = moved(entries, table, from, delta);
        if (changed && *changed != entries)
            stream.insert(*changed, table.begin, entries.size());
        return changed.has_value();
    };
    return Walk(stream, moveTable).go(0, stream.length());
}
