#include "tagengine/RiffTags.h"

#include "tagengine/FailureReason.h"
#include "tagengine/TagText.h"

#include <algorithm>
#include <array>

namespace {

using TagLib::ByteVector;

struct InfoField {
    const char* key;
    const char* id;
    bool isNumber;
};

constexpr std::array infoFields{
    InfoField{"TITLE", "INAM", false}, InfoField{"ARTIST", "IART", false},  InfoField{"ALBUM", "IPRD", false},
    InfoField{"GENRE", "IGNR", false}, InfoField{"COMMENT", "ICMT", false}, InfoField{"YEAR", "ICRD", true},
    InfoField{"DATE", "ICRD", true},   InfoField{"TRACK", "IPRT", true},    InfoField{"TRACKNUMBER", "IPRT", true},
};

constexpr unsigned int chunkHeader = 8;

/// One field of the list, with what fills it up to an even length.
ByteVector fieldAt(const ByteVector& list, unsigned int at)
{
    const std::uint64_t size = at + 4 < list.size() ? list.toUInt(at + 4, false) : 0;
    return list.mid(at,
                    static_cast<unsigned int>(std::min<std::uint64_t>(chunkHeader + size + (size & 1), list.size())));
}

/// Whether no field says that it is longer than what is left of the list.
bool isWhole(const ByteVector& list)
{
    unsigned int at = 0;
    while (at + chunkHeader <= list.size() && list.toUInt(at + 4, false) <= list.size() - at - chunkHeader)
        at += fieldAt(list, at).size();
    const ByteVector rest = list.mid(at);
    return std::all_of(rest.begin(), rest.end(), [](char c) { return c == 0; });
}

ByteVector made(const char* id, const QString& value)
{
    if (value.isEmpty())
        return {};
    const ByteVector text = TagText::fromBytes(value.toUtf8()).append('\0');
    ByteVector field = ByteVector(id) + ByteVector::fromUInt(text.size(), false) + text;
    if (field.size() % 2 != 0)
        field.append('\0');
    return field;
}

/// The list with one field in the place of those of that name.
ByteVector replaced(const ByteVector& list, const char* id, const ByteVector& field)
{
    ByteVector fields;
    bool isPut = false;
    for (unsigned int at = 0; at < list.size(); at += fieldAt(list, at).size()) {
        const ByteVector old = fieldAt(list, at);
        const bool isSame = old.startsWith(id);
        if (!isSame)
            fields.append(old);
        else if (!std::exchange(isPut, true))
            fields.append(field);
    }
    return isPut ? fields : fields.append(field);
}

} // namespace

RiffTags::RiffTags(TagLib::IOStream* stream, bool isBigEndian)
    : TagLib::RIFF::File((stream->seek(0), stream), isBigEndian ? BigEndian : LittleEndian)
{
}

int RiffTags::findChunk(const char* name, const char* start)
{
    for (unsigned int chunk = 0; chunk < chunkCount(); ++chunk) {
        if (chunkName(chunk) == name && (*start == 0 || chunkData(chunk).startsWith(start)))
            return static_cast<int>(chunk);
    }
    return -1;
}

int RiffTags::id3v2Chunk()
{
    const int upper = findChunk("ID3 ");
    const int lower = findChunk("id3 ");
    return upper < 0 || lower < 0 ? std::max(upper, lower) : std::min(upper, lower);
}

ByteVector RiffTags::id3v2()
{
    const int chunk = id3v2Chunk();
    return chunk < 0 ? ByteVector() : chunkData(static_cast<unsigned int>(chunk));
}

void RiffTags::setId3v2(const ByteVector& tag)
{
    const int chunk = id3v2Chunk();
    if (chunk < 0)
        setChunkData("ID3 ", tag);
    else if (tag.isEmpty())
        removeChunk(static_cast<unsigned int>(chunk));
    else
        setChunkData(static_cast<unsigned int>(chunk), tag);
}

ByteVector RiffTags::info()
{
    const int chunk = findChunk("LIST", "INFO");
    return chunk < 0 ? ByteVector() : chunkData(static_cast<unsigned int>(chunk)).mid(4);
}

bool RiffTags::storeInfo(const ByteVector& fields)
{
    const int chunk = findChunk("LIST", "INFO");
    if (fields == info())
        return true;
    if (!isWhole(info())) {
        FailureReason::note(FailureReason::damaged);
        return false;
    }
    if (chunk < 0)
        setChunkData("LIST", ByteVector("INFO") + fields, true);
    else if (fields.isEmpty())
        removeChunk(static_cast<unsigned int>(chunk));
    else
        setChunkData(static_cast<unsigned int>(chunk), ByteVector("INFO") + fields);
    return true;
}

bool RiffTags::setInfo(const QString& key, const QString& value)
{
    const auto* field = std::find_if(infoFields.begin(), infoFields.end(),
                                     [&](const InfoField& known) { return key == QLatin1String(known.key); });
    if (field == infoFields.end())
        return true;
    const unsigned int number = TagText::leadingNumber(value);
    const QString text = !field->isNumber ? value : number == 0 ? QString() : QString::number(number);
    return storeInfo(replaced(info(), field->id, made(field->id, text)));
}

bool RiffTags::clearInfo()
{
    ByteVector fields = info();
    for (const auto& field : infoFields)
        fields = replaced(fields, field.id, {});
    return storeInfo(fields);
}
