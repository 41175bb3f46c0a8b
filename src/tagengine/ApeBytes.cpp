#include "tagengine/ApeBytes.h"

#include "tagengine/TagText.h"

#include <taglib/apefooter.h>
#include <taglib/apeitem.h>
#include <taglib/apetag.h>
#include <taglib/tpropertymap.h>

#include <algorithm>

namespace {

using TagLib::ByteVector;
namespace APE = TagLib::APE;

constexpr unsigned int footerSize = 32;
constexpr unsigned int sizeAt = 12;
constexpr unsigned int countAt = 16;
constexpr unsigned int leastItem = 11; // length, flags, two letters of a key and its end

TagLib::PropertyMap propertiesOf(const ByteVector& bytes)
{
    APE::Item item;
    item.parse(bytes);
    APE::Tag scratch;
    scratch.setItem(item.key(), item);
    return scratch.properties();
}

/// TagLib's item for the property; none without values.
ByteVector rendered(const TagLib::String& key, const TagLib::StringList& values)
{
    APE::Tag scratch;
    TagLib::PropertyMap properties;
    if (!values.isEmpty())
        properties.insert(key, values);
    scratch.setProperties(properties);
    const auto& items = scratch.itemListMap();
    return items.isEmpty() ? ByteVector() : items.begin()->second.render();
}

} // namespace

std::uint32_t ApeBytes::lengthOf(const ByteVector& footer)
{
    if (footer.size() != footerSize || !footer.startsWith("APETAGEX"))
        return 0;
    return APE::Footer(footer).completeTagSize();
}

std::optional<ApeBytes> ApeBytes::parse(const ByteVector& tag)
{
    ApeBytes parsed;
    if (tag.size() < footerSize)
        return std::nullopt;
    parsed.footer_ = tag.mid(tag.size() - footerSize);
    const APE::Footer footer(parsed.footer_);
    const unsigned int begin = footer.headerPresent() ? footerSize : 0;
    if (tag.size() != footer.completeTagSize() || footer.tagSize() < footerSize)
        return std::nullopt;
    parsed.header_ = tag.mid(0, begin);
    if (begin != 0 && !parsed.header_.startsWith("APETAGEX"))
        return std::nullopt;
    const ByteVector items = tag.mid(begin, tag.size() - begin - footerSize);
    unsigned int at = 0;
    while (at + leastItem <= items.size()) {
        const int keyEnd = items.find(ByteVector(1, '\0'), at + 8);
        const std::uint64_t end = std::uint64_t(keyEnd) + 1 + items.toUInt(at, false);
        if (keyEnd < 0 || end > items.size())
            return std::nullopt;
        parsed.items_.push_back(items.mid(at, static_cast<unsigned int>(end) - at));
        at = static_cast<unsigned int>(end);
    }
    const bool isWhole = at == items.size() && parsed.items_.size() == footer.itemCount();
    return isWhole ? std::optional(parsed) : std::nullopt;
}

void ApeBytes::setProperty(const QString& key, const TagLib::StringList& values)
{
    const QString known = key == QLatin1String("YEAR")    ? QStringLiteral("DATE")
                          : key == QLatin1String("TRACK") ? QStringLiteral("TRACKNUMBER")
                                                          : key;
    const TagLib::String name(known.toLatin1().toStdString(), TagLib::String::Latin1);
    std::vector<bool> isOld(items_.size());
    std::transform(items_.begin(), items_.end(), isOld.begin(),
                   [&](const ByteVector& item) { return propertiesOf(item).contains(name); });
    replace(isOld, rendered(name, values));
}

void ApeBytes::removeItems(bool withKey)
{
    std::erase_if(items_, [&](const ByteVector& item) { return propertiesOf(item).isEmpty() != withKey; });
}

void ApeBytes::replace(const std::vector<bool>& isOld, const ByteVector& item)
{
    std::vector<ByteVector> items;
    bool isPut = item.isEmpty();
    for (std::size_t place = 0; place < items_.size(); ++place) {
        if (!isOld[place])
            items.push_back(items_[place]);
        else if (!std::exchange(isPut, true))
            items.push_back(item);
    }
    if (!isPut)
        items.push_back(item);
    items_ = std::move(items);
}

ByteVector ApeBytes::render() const
{
    ByteVector items;
    for (const auto& item : items_)
        items.append(item);
    const auto told = [&](const ByteVector& part) {
        if (part.isEmpty())
            return part;
        return part.mid(0, sizeAt) + ByteVector::fromUInt(items.size() + footerSize, false)
               + ByteVector::fromUInt(static_cast<unsigned int>(items_.size()), false) + part.mid(countAt + 4);
    };
    return told(header_) + items + told(footer_);
}
