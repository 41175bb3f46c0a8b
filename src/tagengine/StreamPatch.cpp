#include "tagengine/StreamPatch.h"

#include <algorithm>

void StreamPatch::replace(TagLib::IOStream& stream, TagLib::offset_t begin, const TagLib::ByteVector& old,
                          const TagLib::ByteVector& bytes)
{
    const auto shorter = static_cast<std::ptrdiff_t>(std::min(old.size(), bytes.size()));
    const auto head = std::mismatch(old.begin(), old.begin() + shorter, bytes.begin()).first - old.begin();
    std::ptrdiff_t tail = 0;
    while (tail < shorter - head && *(old.end() - tail - 1) == *(bytes.end() - tail - 1))
        ++tail;
    const auto removed = old.size() - static_cast<unsigned int>(head + tail);
    const auto added = bytes.size() - static_cast<unsigned int>(head + tail);
    if (removed != 0 || added != 0)
        stream.insert(bytes.mid(static_cast<unsigned int>(head), added), begin + head, removed);
}
