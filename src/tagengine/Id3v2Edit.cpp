#include "tagengine/Id3v2Edit.h"

#include "tagengine/FailureReason.h"
#include "tagengine/TagText.h"

#include <QDate>
#include <QRegularExpression>

#include <taglib/attachedpictureframe.h>
#include <taglib/commentsframe.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2tag.h>
#include <taglib/textidentificationframe.h>
#include <taglib/unknownframe.h>
#include <taglib/unsynchronizedlyricsframe.h>
#include <taglib/urllinkframe.h>

#include <algorithm>
#include <map>
#include <string_view>

namespace {

using TagLib::ByteVector;
using TagLib::PropertyMap;
using TagLib::String;
using TagLib::StringList;
namespace ID3v2 = TagLib::ID3v2;
using TextFrame = ID3v2::TextIdentificationFrame;
using PictureFrame = ID3v2::AttachedPictureFrame;

constexpr unsigned int renderedHeaderSize = 10;
constexpr unsigned int smallHeaderSize = 6; // ID3v2.2

/// The frames of ID3v2.4 under the names of ID3v2.2, those that a property can become.
constexpr std::string_view smallNames =
    "COM COMM|TAL TALB|TBP TBPM|TCM TCOM|TCO TCON|TCP TCMP|TCR TCOP|TDY TDLY|TEN TENC|TFT TFLT|TKE TKEY|TLA TLAN|"
    "TLE TLEN|TMT TMED|TOF TOFN|TOL TOLY|TOR TDOR|TOT TOAL|TP1 TPE1|TP2 TPE2|TP3 TPE3|TP4 TPE4|TPA TPOS|"
    "TPB TPUB|TRC TSRC|TRK TRCK|TS2 TSO2|TSA TSOA|TSC TSOC|TSP TSOP|TSS TSSE|TST TSOT|TT1 TIT1|TT2 TIT2|TT3 TIT3|"
    "TXX TXXX|TYE TDRC|UFI UFID|ULT USLT|WAF WOAF|WAR WOAR|WAS WOAS|WCM WCOM|WCP WCOP|WPB WPUB|WXX WXXX|"
    "IPL TIPL";

/// The frames of ID3v2.4 under the names of ID3v2.3, where these differ, and those that it does not have.
constexpr std::string_view olderNames =
    "TYER TDRC|TORY TDOR|IPLS TIPL|     TDEN|     TDRL|     TDTG|     TMOO|     TPRO|"
    "     TSST|     TMCL";

/// @return the older name that stands before that of ID3v2.4; null when there is none.
std::optional<ByteVector> olderName(std::string_view table, std::size_t length, const ByteVector& id)
{
    const auto found = table.find(std::string_view(id.data(), id.size()), 0);
    if (found == std::string_view::npos || found < length + 1 || id.size() != 4)
        return std::nullopt;
    const auto name = table.substr(found - length - 1, length);
    return name.front() == ' ' ? ByteVector() : ByteVector(name.data(), static_cast<unsigned int>(length));
}

bool isOneOf(const ByteVector& id, std::initializer_list<const char*> names)
{
    return std::any_of(names.begin(), names.end(), [&](const char* name) { return id == name; });
}

bool isDay(const ByteVector& id)
{
    return isOneOf(id, {"TDAT", "TIME", "TDA", "TIM"});
}

bool isLink(const PictureFrame& picture)
{
    return picture.mimeType() == "-->" || picture.mimeType() == "image/-->";
}

/// Players of the older versions know Latin-1 best.
void preferLatin1(ID3v2::Frame& frame)
{
    if (auto* text = dynamic_cast<TextFrame*>(&frame))
        text->setTextEncoding(String::Latin1);
    else if (auto* comment = dynamic_cast<ID3v2::CommentsFrame*>(&frame))
        comment->setTextEncoding(String::Latin1);
    else if (auto* lyrics = dynamic_cast<ID3v2::UnsynchronizedLyricsFrame*>(&frame))
        lyrics->setTextEncoding(String::Latin1);
    else if (auto* url = dynamic_cast<ID3v2::UserUrlLinkFrame*>(&frame))
        url->setTextEncoding(String::Latin1);
}

/// Whether a frame of that stored name may be read as a property, as far as names tell.
/// @param wanted the name of the property's own frame; empty where it has none.
bool mayHold(const ByteVector& id, const ByteVector& wanted)
{
    const bool isTold = wanted.startsWith("T") && id.size() == 4 && id[3] != '\0';
    return !isTold || id == wanted || isOneOf(id, {"TXXX", "TORY", "TYER", "TDAT", "TIME", "TRDA"});
}

PropertyMap propertiesOf(ID3v2::Frame* frame)
{
    if (!frame)
        return {};
    ID3v2::Tag scratch;
    scratch.addFrame(frame);
    const PropertyMap properties = scratch.properties();
    scratch.removeFrame(frame, false);
    return properties;
}

bool refuse(const char* reason)
{
    FailureReason::note(reason);
    return false;
}

} // namespace

bool Id3v2Edit::isEmpty() const
{
    return std::none_of(tag_.frames().begin(), tag_.frames().end(), [](const Frame& frame) { return frame.isRead; });
}

Id3v2Edit::Places Id3v2Edit::find(const std::function<bool(const Frame&, ID3v2::Frame*)>& isWanted,
                                  const ByteVector& wanted) const
{
    Places places;
    for (std::size_t place = 0; place < tag_.frames().size(); ++place) {
        const Frame& frame = tag_.frames()[place];
        if (!mayHold(frame.id, wanted))
            continue;
        if (const auto parsed = tag_.read(frame); isWanted(frame, parsed.get()))
            places.push_back(place);
    }
    return places;
}

Id3v2Edit::Places Id3v2Edit::placesOf(const String& key) const
{
    const ByteVector id = ID3v2::Frame::keyToFrameID(key);
    const auto isField = [&](const Frame&, ID3v2::Frame* parsed) {
        const auto* comment = dynamic_cast<ID3v2::CommentsFrame*>(parsed);
        if (comment && !comment->description().isEmpty() && key == "COMMENT")
            return false;
        const bool isSealed =
            dynamic_cast<ID3v2::UnknownFrame*>(parsed) && id.startsWith("T") && parsed->frameID() == id;
        return isSealed || propertiesOf(parsed).contains(key);
    };
    return find(isField, id);
}

bool Id3v2Edit::setProperty(const QString& name, const StringList& values)
{
    const bool isTrack = name == QLatin1String("TRACK");
    const String key(isTrack ? "TRACKNUMBER" : name.toLatin1().toStdString(), String::Latin1);
    const bool isYear = key == "YEAR";
    if (isYear || key == "DATE") {
        const auto isDate = [&](const Frame& frame, ID3v2::Frame* parsed) {
            // In ID3v2.2 the days of the recording are another frame, which TagLib takes for the year as well.
            return (parsed && parsed->frameID() == "TDRC" && frame.id != "TRD") || frame.id == "TYER"
                   || (!isYear && propertiesOf(parsed).contains(key));
        };
        return setDate(values.isEmpty() ? String() : values.front(), find(isDate), isYear);
    }
    const bool isPerson = TextFrame::involvedPeopleMap().contains(key) || key.startsWith("PERFORMER:");
    return isPerson ? setInvolved(key, values) : setPlain(key, values);
}

bool Id3v2Edit::setPlain(const String& key, const StringList& values)
{
    const Places places = placesOf(key);
    if (values.isEmpty())
        return replace(places, {});
    Parsed fresh(ID3v2::FrameFactory::instance()->createFrameForProperty(key, values));
    for (const std::size_t place : places) {
        const Frame& old = tag_.frames()[place];
        if (const auto same = changed(old, *fresh, key, values))
            return replace(places, {rendered(old.id, *same, tag_.version() > 2 ? old.bytes[8] : '\0')});
    }
    ByteVector id = storedId(fresh->frameID());
    if (id.isEmpty()) {
        fresh = std::make_unique<ID3v2::UserTextIdentificationFrame>(
            ID3v2::UserTextIdentificationFrame::keyToTXXX(key), values, String::UTF8);
        id = storedId(fresh->frameID());
    }
    if (tag_.version() < 4) {
        fresh->header()->setVersion(3);
        preferLatin1(*fresh);
    }
    return replace(places, {rendered(id, *fresh)});
}

/// @return the frame with other values; null when it is not of the kind that the property should have, or keeps them not.
Id3v2Edit::Parsed Id3v2Edit::changed(const Frame& frame, const ID3v2::Frame& wanted, const String& key,
                                     const StringList& values) const
{
    Parsed parsed = tag_.read(frame);
    if (!parsed || parsed->frameID() != wanted.frameID() || dynamic_cast<ID3v2::UnknownFrame*>(parsed.get()))
        return nullptr;
    parsed->setText(values.toString("\n"));
    const PropertyMap properties = propertiesOf(parsed.get());
    return properties.contains(key) && properties[key] == values ? std::move(parsed) : nullptr;
}

/// The roles of one frame stand in it by pairs of role and name.
bool Id3v2Edit::setInvolved(const String& key, const StringList& values)
{
    const bool isRole = TextFrame::involvedPeopleMap().contains(key);
    const String role =
        isRole ? TextFrame::involvedPeopleMap()[key] : key.substr(std::string_view("PERFORMER:").size());
    const ByteVector id = isRole || tag_.version() < 4 ? "TIPL" : "TMCL";
    const Places places = find([&](const Frame&, ID3v2::Frame* parsed) { return parsed && parsed->frameID() == id; });
    TextFrame people(id, tag_.version() < 4 ? String::Latin1 : String::UTF8);
    people.header()->setVersion(tag_.version() < 4 ? 3 : 4);
    StringList pairs;
    StringList unpaired;
    for (const std::size_t place : places) {
        const StringList list = tag_.read(tag_.frames()[place])->toStringList();
        for (unsigned int entry = 0; entry < list.size(); entry += 2) {
            if (entry + 1 == list.size())
                unpaired.append(list[entry]);
            else if (list[entry].upper() != role.upper())
                pairs.append(list[entry]).append(list[entry + 1]);
        }
    }
    if (!values.isEmpty())
        pairs.append(role).append(values.toString(","));
    pairs.append(unpaired);
    if (pairs.isEmpty())
        return replace(places, {});
    people.setText(pairs);
    return replace(places, {rendered(storedId(id), people)});
}

/// Before ID3v2.4 the year stands in one frame, the day and the time in others, which have to make a true date with it.
bool Id3v2Edit::setDate(const String& value, Places places, bool isYear)
{
    const auto isStored = [&](const char* id) {
        return std::any_of(places.begin(), places.end(), [&](auto place) { return tag_.frames()[place].id == id; });
    };
    const bool fitsYearFrame = value.isEmpty() || value.size() == 4;
    const bool isWhole = isStored("TDRC") || (tag_.version() == 4 && !(isStored("TYER") && fitsYearFrame));
    if (isWhole)
        return value.isEmpty() ? replace(places, {}) : replace(places, {textFrame("TDRC", value)});
    static const QRegularExpression form(
        QStringLiteral("^(\\d{1,4})(?:-(\\d\\d)-(\\d\\d)(?:[T ](\\d\\d):(\\d\\d))?)?$"));
    const auto date = form.match(TagText::fromTagLib(value).value_or(QString()));
    if (!value.isEmpty() && !date.hasMatch())
        return refuse(FailureReason::notHeld);
    const Places days = find([](const Frame& frame, ID3v2::Frame*) { return isDay(frame.id); });
    if (!isYear || value.isEmpty() || !makeTrueDate(date.captured(1).toInt(), days))
        places.insert(places.end(), days.begin(), days.end());
    std::sort(places.begin(), places.end());
    std::vector<std::optional<Frame>> frames;
    const auto append = [&](const char* id, const QString& text) {
        if (!text.isEmpty())
            frames.push_back(textFrame(id, TagText::toTagLib(text)));
    };
    append("TYER", date.captured(1).isEmpty() ? QString() : date.captured(1).rightJustified(4, u'0'));
    append("TDAT", date.captured(3) + date.captured(2));
    append("TIME", date.captured(4) + date.captured(5));
    return replace(places, std::move(frames));
}

bool Id3v2Edit::makeTrueDate(int year, const Places& days) const
{
    return std::all_of(days.begin(), days.end(), [&](std::size_t place) {
        const Frame& frame = tag_.frames()[place];
        const ByteVector body = frame.bytes.mid(frame.id.size() == 3 ? smallHeaderSize : renderedHeaderSize);
        if (body.isEmpty() || !isOneOf(frame.id, {"TDAT", "TDA"}))
            return true;
        const String text(body.mid(1), static_cast<String::Type>(body[0]));
        return QDate::isValid(year, text.substr(2, 2).toInt(), text.substr(0, 2).toInt());
    });
}

Id3v2Edit::Places Id3v2Edit::picturePlaces() const
{
    return find([](const Frame&, ID3v2::Frame* parsed) {
        const auto* picture = dynamic_cast<PictureFrame*>(parsed);
        return picture && !isLink(*picture);
    });
}

bool Id3v2Edit::setPicture(const QByteArray& bytes)
{
    const Places places = picturePlaces();
    if (bytes.isEmpty())
        return replace(places, {});
    const Places first = places.empty() ? Places() : Places{places.front()};
    const Frame* old = first.empty() ? nullptr : &tag_.frames()[first.front()];
    if (tag_.version() == 2)
        return replace(first, {smallPicture(old, bytes)});
    const Parsed parsed = old ? tag_.read(*old) : std::make_unique<PictureFrame>();
    auto& picture = dynamic_cast<PictureFrame&>(*parsed);
    picture.setMimeType("image/jpeg");
    picture.setPicture(TagText::fromBytes(bytes));
    return replace(first, {rendered("APIC", picture, old ? old->bytes[8] : '\0')});
}

/// ID3v2.2: encoding, format, type, description, picture.
std::optional<Id3v2Edit::Frame> Id3v2Edit::smallPicture(const Frame* old, const QByteArray& bytes) const
{
    constexpr unsigned int headLength = 5;
    ByteVector head("\0JPG\0\0", headLength + 1);
    if (old) {
        const ByteVector body = old->bytes.mid(smallHeaderSize);
        const bool isWide = body[0] == String::UTF16 || body[0] == String::UTF16BE;
        const int end = body.find(ByteVector(isWide ? 2 : 1, '\0'), headLength, isWide ? 2 : 1);
        if (end >= 0)
            head = body.mid(0, 1) + ByteVector("JPG")
                   + body.mid(4, static_cast<unsigned int>(end) - 4 + (isWide ? 2 : 1));
    }
    return tag_.makeFrame("PIC", head + TagText::fromBytes(bytes));
}

bool Id3v2Edit::removeUnsupported(bool keepsFirstPicture)
{
    Places places = find([](const Frame&, ID3v2::Frame* parsed) { return propertiesOf(parsed).isEmpty(); });
    const Places pictures = picturePlaces();
    if (keepsFirstPicture && !pictures.empty())
        std::erase(places, pictures.front());
    return replace(places, {});
}

bool Id3v2Edit::removeProperties()
{
    return replace(find([](const Frame&, ID3v2::Frame* parsed) { return !propertiesOf(parsed).isEmpty(); }), {});
}

bool Id3v2Edit::replace(const Places& places, std::vector<std::optional<Frame>> frames)
{
    if (std::any_of(frames.begin(), frames.end(), [](const auto& frame) { return !frame; }))
        return refuse(FailureReason::notHeld);
    auto& all = tag_.frames();
    bool isRead = !places.empty() && all[places.front()].isRead;
    std::for_each(places.rbegin(), places.rend(),
                  [&](std::size_t place) { all.erase(all.begin() + static_cast<std::ptrdiff_t>(place)); });
    isRead = isRead && !(tag_.hasFooter() && places.front() == all.size());
    auto next = all.begin() + (isRead ? static_cast<std::ptrdiff_t>(places.front()) : 0);
    for (auto& frame : frames) {
        if (isRead)
            next = std::next(all.insert(next, *std::move(frame)));
        else
            tag_.add(*std::move(frame));
    }
    return true;
}

std::optional<Id3v2Edit::Frame> Id3v2Edit::rendered(const ByteVector& id, ID3v2::Frame& frame, char status) const
{
    return tag_.makeFrame(id, frame.render().mid(renderedHeaderSize), status);
}

ByteVector Id3v2Edit::textBody(const String& text) const
{
    TextFrame frame("TIT2", tag_.version() < 4 ? String::Latin1 : String::UTF8);
    frame.header()->setVersion(tag_.version() < 4 ? 3 : 4);
    frame.setText(text);
    return frame.render().mid(renderedHeaderSize);
}

std::optional<Id3v2Edit::Frame> Id3v2Edit::textFrame(const ByteVector& id, const String& text) const
{
    static const std::map<QByteArray, const char*> smallDays{{"TYER", "TYE"}, {"TDAT", "TDA"}, {"TIME", "TIM"}};
    const auto small = smallDays.find(TagText::toBytes(id));
    return tag_.makeFrame(tag_.version() == 2 && small != smallDays.end() ? small->second : id, textBody(text));
}

ByteVector Id3v2Edit::storedId(const ByteVector& id) const
{
    if (tag_.version() == 2)
        return olderName(smallNames, 3, id).value_or(ByteVector());
    return tag_.version() == 3 ? olderName(olderNames, 4, id).value_or(id) : id;
}
