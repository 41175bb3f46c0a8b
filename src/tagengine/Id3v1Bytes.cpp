#include "tagengine/Id3v1Bytes.h"

#include "tagengine/TagText.h"

#include <taglib/id3v1genres.h>

#include <algorithm>
#include <array>

namespace {

struct TextPlace {
    const char* key;
    unsigned int at;
    unsigned int length;
};

constexpr unsigned int commentAt = 97;
constexpr unsigned int yearAt = 93;
constexpr unsigned int yearLength = 4;
constexpr unsigned int trackMarkAt = 125; // 0 in ID3v1.1, where the comment is two bytes shorter
constexpr unsigned int trackAt = 126;
constexpr unsigned int genreAt = 127;
constexpr unsigned int noGenre = 255;
constexpr unsigned int textLength = 30;
constexpr std::array texts{TextPlace{"TITLE", 3, textLength}, TextPlace{"ARTIST", 33, textLength},
                           TextPlace{"ALBUM", 63, textLength}};

QByteArray latin1(const QString& text)
{
    const bool fits = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() <= 0xff; });
    return fits ? text.toLatin1() : QByteArray();
}

bool isExact(const QString& text, unsigned int length)
{
    return text.size() <= static_cast<qsizetype>(length) && latin1(text).size() == text.size()
           && text.trimmed() == text && !text.contains(QChar(0));
}

bool isYear(const QString& key)
{
    return key == QLatin1String("YEAR") || key == QLatin1String("DATE");
}

bool isTrack(const QString& key)
{
    return key == QLatin1String("TRACK") || key == QLatin1String("TRACKNUMBER");
}

const TextPlace* placeOf(const QString& key)
{
    const auto* found = std::find_if(texts.begin(), texts.end(),
                                     [&](const TextPlace& place) { return key == QLatin1String(place.key); });
    return found == texts.end() ? nullptr : found;
}

unsigned int genreNumber(const QString& name)
{
    return static_cast<unsigned int>(TagLib::ID3v1::genreIndex(TagText::toTagLib(name)));
}

} // namespace

bool Id3v1Bytes::hasTrack() const
{
    return bytes_[trackMarkAt] == 0 && bytes_[trackAt] != 0;
}

bool Id3v1Bytes::hasRoomForTrack() const
{
    const auto isBlank = [](char c) { return c == 0 || c == ' '; };
    return hasTrack() || (isBlank(bytes_[trackMarkAt]) && isBlank(bytes_[trackAt]));
}

unsigned int Id3v1Bytes::commentLength() const
{
    return hasTrack() ? textLength - 2 : textLength;
}

void Id3v1Bytes::put(unsigned int at, unsigned int length, const QByteArray& text)
{
    const QByteArray padded =
        text.left(static_cast<qsizetype>(length)).leftJustified(static_cast<qsizetype>(length), 0);
    std::copy(padded.begin(), padded.end(), bytes_.begin() + at);
}

void Id3v1Bytes::set(const QString& key, const QString& value)
{
    if (const auto* place = placeOf(key)) {
        put(place->at, place->length, latin1(value));
    } else if (key == QLatin1String("COMMENT")) {
        put(commentAt, commentLength(), latin1(value));
    } else if (key == QLatin1String("GENRE")) {
        bytes_[genreAt] = static_cast<char>(genreNumber(value));
    } else if (isYear(key)) {
        const unsigned int year = TagText::leadingNumber(value.left(yearLength));
        put(yearAt, yearLength, year == 0 ? QByteArray() : QByteArray::number(year));
    } else if (isTrack(key) && hasRoomForTrack()) {
        const unsigned int number = TagText::leadingNumber(value);
        bytes_[trackMarkAt] = 0;
        bytes_[trackAt] = static_cast<char>(number <= 0xff ? number : 0);
    }
}

bool Id3v1Bytes::holds(const QString& key, const QString& value) const
{
    const unsigned int number = TagText::leadingNumber(value);
    const bool isPlainNumber = value == QString::number(number);
    if (const auto* place = placeOf(key))
        return isExact(value, place->length);
    if (key == QLatin1String("COMMENT"))
        return isExact(value, commentLength());
    if (key == QLatin1String("GENRE"))
        return value.isEmpty()
               || (genreNumber(value) != noGenre
                   && TagText::fromTagLib(TagLib::ID3v1::genre(static_cast<int>(genreNumber(value)))) == value);
    if (isYear(key))
        return value.isEmpty() || (isPlainNumber && value.size() == yearLength);
    return isTrack(key) && (value.isEmpty() || (isPlainNumber && number <= 0xff && hasRoomForTrack()));
}
