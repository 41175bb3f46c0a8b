#include "tagengine/Mp4Splice.h"

#include "tagengine/FailureReason.h"
#include "tagengine/TagText.h"

#include <taglib/mp4itemfactory.h>
#include <taglib/mp4tag.h>

#include <algorithm>
#include <utility>

namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::StringList;
namespace MP4 = TagLib::MP4;

constexpr unsigned int headerSize = Mp4Atoms::headerSize;
const char pictureItem[] = "covr";

const MP4::ItemFactory& factory()
{
    return *MP4::ItemFactory::instance();
}

/// The property key of an item; empty when it has none.
String keyOf(const String& name)
{
    return factory().propertyKeyForName(name.data(String::Latin1)).upper();
}

bool isFreeform(const ByteVector& name)
{
    return name.startsWith("----");
}

/// A number and a total as an MP4 file holds them: two of 16 bits, each of which may be missing.
std::optional<QString> numberPair(const QString& value)
{
    const QStringList parts = value.split(QLatin1Char('/'));
    const auto isHeld = [](const QString& part) {
        bool isNumber = false;
        const int number = part.toInt(&isNumber);
        return part.isEmpty() || (isNumber && std::in_range<quint16>(number));
    };
    if (parts.size() > 2 || !std::all_of(parts.begin(), parts.end(), isHeld) || parts.join(QString()).isEmpty())
        return std::nullopt;
    const unsigned int total = parts.value(1).toUShort();
    const QString number = QString::number(parts[0].toUShort());
    return total == 0 ? number : number + QLatin1Char('/') + QString::number(total);
}

bool isPair(const QString& key)
{
    return key == QLatin1String("TRACKNUMBER") || key == QLatin1String("DISCNUMBER") || key == QLatin1String("TRACK");
}

/// Whether the item of that field has a form for the value.
bool isHeld(const QString& key, const QString& value)
{
    if (value.isEmpty())
        return true;
    if (key == QLatin1String("COMPILATION"))
        return value == QLatin1String("0") || value == QLatin1String("1");
    return !isPair(key) || numberPair(value);
}

bool refuse(const char* reason)
{
    FailureReason::note(reason);
    return false;
}

} // namespace

Mp4Splice::Mp4Splice(MP4::File& file, TagLib::IOStream& stream)
    : tag_(*file.tag()), place_(stream), stored_(place_.items()), items_(IlstBytes::parse(stored_))
{
    // What TagLib reads, in a file that is not built quite as it should be, must be what is changed here.
    const auto isThere = [&](const String& name) {
        return std::any_of(items_->items().begin(), items_->items().end(),
                           [&](const auto& item) { return item.name == name; });
    };
    const auto& read = tag_.itemMap();
    const bool isSame =
        items_ && file.hasMP4Tag() == place_.hasItems()
        && std::all_of(read.begin(), read.end(), [&](const auto& item) { return isThere(item.first); });
    if (!isSame)
        items_.reset();
}

bool Mp4Splice::canChange() const
{
    return items_ || refuse(FailureReason::unknownTag);
}

bool Mp4Splice::setProperty(const QString& key, const QString& value)
{
    static const QMap<QString, String> generic{{QStringLiteral("YEAR"), "DATE"},
                                               {QStringLiteral("TRACK"), "TRACKNUMBER"}};
    if (!canChange())
        return false;
    if (!isHeld(key, value))
        return refuse(FailureReason::notHeld);
    const String name = TagText::toTagLib(key).upper();
    if (!generic.contains(key))
        return set(name, value, namesOf(name));
    if (!set(generic[key], value, {target(generic[key], {})}))
        return false;
    // A freeform item of that name hides the other one.
    const Names hiding = namesOf(name);
    return hiding.empty() || set(name, value, hiding);
}

QString Mp4Splice::readBack(const QString& key, const QString& value) const
{
    return isPair(key) ? numberPair(value).value_or(QString()) : value;
}

Mp4Splice::Names Mp4Splice::namesOf(const String& key) const
{
    Names names;
    for (const auto& item : items_->items()) {
        if (!item.bytes.isEmpty() && keyOf(item.name) == key)
            names.insert(item.name);
    }
    return names;
}

/// The name of the item that is to hold the field.
String Mp4Splice::target(const String& key, const Names& names) const
{
    const ByteVector usual = factory().nameForPropertyKey(key);
    if (!isFreeform(usual) && !usual.isEmpty())
        return {usual, String::Latin1};
    // Of several, the property interface shows the last that TagLib can read.
    const auto shown =
        std::find_if(names.rbegin(), names.rend(), [&](const String& name) { return tag_.contains(name); });
    if (shown != names.rend())
        return *shown;
    return names.empty() ? String(usual, String::UTF8) : *names.rbegin();
}

/// @param names those of the items that go when the value is empty, and one of which may take it.
bool Mp4Splice::set(const String& key, const QString& value, const Names& names)
{
    if (value.isEmpty()) {
        items_->removeIf([&](const String& name) { return names.contains(name); });
        return true;
    }
    const String name = target(key, names);
    const ByteVector atom = rendered(name, key, TagText::toTagLib(value));
    if (atom.isEmpty())
        return refuse(FailureReason::notHeld);
    items_->set(name, atom);
    return true;
}

/// @return nothing when TagLib has no item for it.
ByteVector Mp4Splice::rendered(const String& name, const String& key, const StringList& values) const
{
    if (!name.startsWith("----"))
        return factory().renderItem(name, factory().itemFromProperty(key, values).second);
    const auto old = std::find_if(items_->items().begin(), items_->items().end(),
                                  [&](const auto& item) { return item.name == name && !item.bytes.isEmpty(); });
    const auto named =
        old == items_->items().end() ? std::optional<ByteVector>() : IlstBytes::freeformName(old->bytes);
    if (!named)
        return factory().renderItem(name, values);
    // Any text item has the same content.
    return Mp4Atoms::make("----", *named + factory().renderItem("\251nam", values).mid(headerSize));
}

bool Mp4Splice::setPicture(const QByteArray& bytes)
{
    if (!canChange())
        return false;
    if (bytes.isEmpty()) {
        items_->removeIf([](const String& name) { return name == pictureItem; });
        return true;
    }
    MP4::CoverArtList pictures;
    pictures.append(MP4::CoverArt(MP4::CoverArt::JPEG, TagText::fromBytes(bytes)));
    items_->set(pictureItem, factory().renderItem(pictureItem, pictures));
    return true;
}

bool Mp4Splice::setChapters(const QStringList& chapters)
{
    Q_UNUSED(chapters)
    return refuse(FailureReason::notHeld);
}

bool Mp4Splice::removeUnsupported(Pictures pictures)
{
    if (!canChange())
        return false;
    const ByteVector picture = pictures == Pictures::KeepFirst ? firstPicture() : ByteVector();
    items_->removeIf(
        [&](const String& name) { return keyOf(name).isEmpty() && (picture.isEmpty() || name != pictureItem); });
    if (!picture.isEmpty())
        items_->set(pictureItem, picture);
    return true;
}

/// The item of the pictures with the first of them alone; empty when there is none.
ByteVector Mp4Splice::firstPicture() const
{
    const auto& items = items_->items();
    const auto covers =
        std::find_if(items.begin(), items.end(), [](const auto& item) { return item.name == pictureItem; });
    if (covers == items.end() || covers->bytes.size() < 2 * headerSize)
        return {};
    const std::uint32_t length = covers->bytes.toUInt(headerSize);
    return Mp4Atoms::make(pictureItem, covers->bytes.mid(headerSize, length));
}

bool Mp4Splice::removeProperties()
{
    if (!canChange())
        return false;
    items_->removeIf([](const String& name) { return !keyOf(name).isEmpty(); });
    return true;
}

bool Mp4Splice::store()
{
    if (!canChange())
        return false;
    const ByteVector contents = items_->render();
    if (contents == stored_)
        return true;
    return place_.store(contents) || refuse(FailureReason::lostPlaces);
}
