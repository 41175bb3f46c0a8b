#include "tagengine/TagCost.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include <zlib.h>

namespace {

using TagCost::Encoding;
using TagLib::ByteVector;

constexpr std::size_t ofByte = 28; // four in TagLib's strings, two in ours, each several times
constexpr std::size_t ofValue = 300;

/// The number of values, for each of which there is a zero.
std::size_t separators(const char* begin, const char* end, Encoding encoding)
{
    if (encoding == Encoding::Narrow)
        return static_cast<std::size_t>(std::count(begin, end, '\0'));
    std::size_t found = 0;
    for (const char* at = begin; at + 1 < end; ++at) {
        if (at[0] == 0 && at[1] == 0) {
            ++found;
            ++at;
        }
    }
    return found;
}

Encoding encodingOf(const char* body, const char* end)
{
    return body < end && (*body == 1 || *body == 2) ? Encoding::Wide : Encoding::Narrow;
}

bool isText(const ByteVector& id)
{
    constexpr std::array<std::string_view, 11> others{"COMM", "COM",  "USLT", "ULT",  "SYLT", "SLT",
                                                      "ETCO", "IPLS", "IPL",  "MVNM", "MVIN"};
    return id[0] == 'T' || id[0] == 'W'
           || std::find(others.begin(), others.end(), std::string_view(id.data(), id.size())) != others.end();
}

bool isList(const ByteVector& id)
{
    return id[0] == 'T' || id.startsWith("SY") || id.startsWith("SL") || id.startsWith("ETC") || id.startsWith("IPL");
}

/// Where the text ends that stands in front of binary data: the third string is the last one in any frame.
const char* endOfLabels(const char* begin, const char* end, Encoding encoding)
{
    constexpr int mostStrings = 3;
    for (int i = 0; i < mostStrings && begin < end; ++i) {
        const char* zero = std::find(begin, end, '\0');
        while (encoding == Encoding::Wide && end - zero > 1 && zero[1] != 0)
            zero = std::find(zero + 1, end, '\0');
        begin = std::min(zero + 1, end);
    }
    return begin;
}

const char* endOf(const ByteVector& bytes)
{
    return bytes.data() + bytes.size();
}

} // namespace

std::size_t TagCost::ofText(const char* begin, const char* end, Encoding encoding, bool isList)
{
    return static_cast<std::size_t>(end - begin) * ofByte + (isList ? separators(begin, end, encoding) * ofValue : 0);
}

std::size_t TagCost::ofFrame(const ByteVector& id, const char* begin, const char* end)
{
    if (id.isEmpty())
        return 0;
    const Encoding encoding = encodingOf(begin, end);
    if (isText(id))
        return object + ofText(begin, end, encoding, isList(id));
    return object + ofText(begin, endOfLabels(begin, end, encoding), encoding, false);
}

std::size_t TagCost::ofCompressedFrame(const ByteVector& id, ByteVector body, std::size_t limit)
{
    constexpr std::size_t copies = 2; // of what is expanded
    z_stream stream{};
    stream.next_in = reinterpret_cast<Bytef*>(body.data());
    stream.avail_in = body.size();
    if (id.isEmpty() || inflateInit(&stream) != Z_OK)
        return object;
    std::vector<char> buffer(1 << 16);
    std::size_t cost = object;
    auto encoding = Encoding::Narrow;
    int result = Z_OK;
    while (result == Z_OK && cost <= limit) {
        const bool isStart = stream.total_out == 0;
        stream.next_out = reinterpret_cast<Bytef*>(buffer.data());
        stream.avail_out = static_cast<uInt>(buffer.size());
        result = inflate(&stream, Z_NO_FLUSH);
        const std::size_t count = buffer.size() - stream.avail_out;
        const char* end = buffer.data() + count;
        if (isStart)
            encoding = encodingOf(buffer.data(), end);
        cost += count * copies + (isText(id) ? ofText(buffer.data(), end, encoding, isList(id)) : 0);
    }
    inflateEnd(&stream);
    return cost;
}

std::size_t TagCost::ofApe(const ByteVector& items)
{
    constexpr unsigned int shortest = 11;
    constexpr unsigned int keyAt = 8;
    constexpr unsigned int typeBits = 6;
    std::size_t cost = 0;
    for (unsigned int at = 0; at + shortest <= items.size();) {
        const std::uint32_t length = items.toUInt(at, false);
        const bool isText = (items.toUInt(at + 4, false) & typeBits) == 0;
        const char* key = items.data() + at + keyAt;
        const char* value = std::find(key, endOf(items), '\0');
        if (endOf(items) - value <= length)
            break;
        cost += object + (isText ? ofText(value + 1, value + 1 + length) : 0);
        at = static_cast<unsigned int>(value + 1 + length - items.data());
    }
    return cost;
}

std::size_t TagCost::ofMp4Item(const ByteVector& atoms, bool isPicture)
{
    constexpr unsigned int shortest = 12;
    std::size_t cost = object;
    for (unsigned int at = 0; at + shortest <= atoms.size();) {
        const std::uint32_t length = std::min(atoms.toUInt(at), atoms.size() - at);
        if (length < shortest)
            break;
        const char* begin = atoms.data() + at;
        cost += object + (isPicture ? 0 : ofText(begin, begin + length, Encoding::Narrow, false));
        at += length;
    }
    return cost;
}

std::size_t TagCost::ofInfo(const ByteVector& list)
{
    constexpr unsigned int header = 8;
    std::size_t cost = 0;
    for (unsigned int at = 4; at + header <= list.size();) {
        const std::uint32_t length = list.toUInt(at + 4, false);
        if (length > list.size() - at - header)
            break;
        const char* begin = list.data() + at;
        cost += object + ofText(begin, begin + header + length, Encoding::Narrow, false);
        at += (header + length + 1) & ~1U;
    }
    return cost;
}
