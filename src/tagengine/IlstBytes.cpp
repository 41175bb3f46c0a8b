#include "tagengine/IlstBytes.h"

#include "tagengine/Mp4Atoms.h"

#include <utility>

namespace {

using TagLib::ByteVector;
using TagLib::String;

constexpr unsigned int headerSize = Mp4Atoms::headerSize;
constexpr unsigned int textAt = 12; // behind a header, version and flags

/// The length of the atom at that place; 0 when it is not whole.
unsigned int lengthAt(const ByteVector& bytes, unsigned int at)
{
    std::uint64_t length = bytes.toUInt(at);
    std::uint64_t shortest = headerSize;
    if (length == 1 && at + Mp4Atoms::largeHeaderSize <= bytes.size()) {
        length = bytes.toULongLong(at + headerSize);
        shortest = Mp4Atoms::largeHeaderSize;
    }
    return length < shortest || length > bytes.size() - at ? 0 : static_cast<unsigned int>(length);
}

String nameOf(const ByteVector& atom)
{
    const ByteVector id = atom.mid(4, 4);
    const auto freeform = IlstBytes::freeformName(atom);
    if (id == "gnre")
        return "\251gen";
    if (!freeform)
        return {id, String::Latin1};
    const unsigned int meanLength = freeform->toUInt();
    return "----:" + String(freeform->mid(textAt, meanLength - textAt), String::UTF8) + ":"
           + String(freeform->mid(meanLength + textAt), String::UTF8);
}

} // namespace

std::optional<ByteVector> IlstBytes::freeformName(const ByteVector& atom)
{
    if (atom.size() < 2 * headerSize || atom.mid(4, 4) != "----" || atom.toUInt() == 1)
        return std::nullopt;
    const unsigned int mean = lengthAt(atom, headerSize);
    const unsigned int nameAt = headerSize + mean;
    const bool hasName = mean >= textAt && nameAt + textAt <= atom.size();
    const unsigned int name = hasName ? lengthAt(atom, nameAt) : 0;
    if (name < textAt || atom.mid(headerSize + 4, 4) != "mean" || atom.mid(nameAt + 4, 4) != "name")
        return std::nullopt;
    return atom.mid(headerSize, mean + name);
}

std::optional<IlstBytes> IlstBytes::parse(const ByteVector& contents)
{
    IlstBytes parsed;
    unsigned int at = 0;
    // Zeros may fill what is left.
    while (at + headerSize <= contents.size() && contents.toUInt(at) != 0) {
        const unsigned int length = lengthAt(contents, at);
        if (length == 0)
            return std::nullopt;
        const ByteVector atom = contents.mid(at, length);
        parsed.items_.push_back({nameOf(atom), atom});
        at += length;
    }
    parsed.rest_ = contents.mid(at);
    return parsed;
}

void IlstBytes::set(const String& name, const ByteVector& atom)
{
    bool isPut = false;
    for (auto& item : items_) {
        if (item.name == name)
            item.bytes = std::exchange(isPut, true) ? ByteVector() : atom;
    }
    if (!isPut)
        items_.push_back({name, atom});
}

void IlstBytes::removeIf(const std::function<bool(const String&)>& isUnwanted)
{
    for (auto& item : items_) {
        if (isUnwanted(item.name))
            item.bytes.clear();
    }
}

ByteVector IlstBytes::render() const
{
    ByteVector contents;
    for (const auto& item : items_)
        contents.append(item.bytes);
    return contents.append(rest_);
}
