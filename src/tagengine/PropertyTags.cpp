#include "tagengine/EngineReads.h"
#include "tagengine/FailureReason.h"
#include "tagengine/Id3v2Reads.h"
#include "tagengine/InterruptedChange.h"
#include "tagengine/OpenedFile.h"
#include "tagengine/TagSplice.h"
#include "tagengine/TagText.h"
#include "tagengine/TaglibWrapper.h"

#include <taglib/infotag.h>
#include <taglib/tag.h>
#include <taglib/tpropertymap.h>
#include <taglib/wavfile.h>

#include <algorithm>
#include <array>

namespace {

struct TextField {
    const char* key;
    TagLib::String (TagLib::Tag::*get)() const;
    void (TagLib::Tag::*set)(const TagLib::String&);
};

struct NumberField {
    const char* key;
    unsigned int (TagLib::Tag::*get)() const;
    void (TagLib::Tag::*set)(unsigned int);
};

constexpr std::array textFields{
    TextField{"TITLE", &TagLib::Tag::title, &TagLib::Tag::setTitle},
    TextField{"ARTIST", &TagLib::Tag::artist, &TagLib::Tag::setArtist},
    TextField{"ALBUM", &TagLib::Tag::album, &TagLib::Tag::setAlbum},
    TextField{"COMMENT", &TagLib::Tag::comment, &TagLib::Tag::setComment},
    TextField{"GENRE", &TagLib::Tag::genre, &TagLib::Tag::setGenre},
};

constexpr std::array numberFields{
    NumberField{"YEAR", &TagLib::Tag::year, &TagLib::Tag::setYear},
    NumberField{"TRACK", &TagLib::Tag::track, &TagLib::Tag::setTrack},
};

template <class Fields>
const auto* fieldForKey(const Fields& fields, const QString& key)
{
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const auto& field) { return key == QLatin1String(field.key); });
    return found == fields.end() ? nullptr : &*found;
}

TagLib::RIFF::Info::Tag* infoTag(TagLib::File& file)
{
    auto* wav = dynamic_cast<TagLib::RIFF::WAV::File*>(&file);
    return wav ? wav->InfoTag() : nullptr;
}

QString readText(TagLib::File& file, const TextField& field)
{
    QString text = TagText::fromTagLib((file.tag()->*field.get)()).value_or(QString());
    if (const auto* info = infoTag(file); info && text.isEmpty())
        text = TagText::fromTagLib((info->*field.get)()).value_or(QString());
    return text;
}

void readProperties(const TagLib::PropertyMap& properties, PropertyMap& map)
{
    for (const auto& [name, values] : properties) {
        const auto key = TagText::fromTagLib(name);
        if (!key)
            continue;
        for (const auto& value : values) {
            if (auto text = TagText::fromTagLib(value))
                map[*key] = *std::move(text);
        }
    }
}

/// TagLib's way, for containers that it saves itself.
void writeWithTaglib(const OpenedFile& file, const QString& key, const QString& value)
{
    if (const auto* text = fieldForKey(textFields, key)) {
        (file.tag()->*text->set)(TagText::toTagLib(value));
    } else if (const auto* number = fieldForKey(numberFields, key)) {
        (file.tag()->*number->set)(TagText::leadingNumber(value));
    } else {
        TagLib::PropertyMap properties = file.file()->properties();
        const TagLib::String name(key.toLatin1().toStdString(), TagLib::String::Latin1);
        if (value.isEmpty())
            properties.erase(name);
        else
            properties.replace(name, TagLib::StringList(TagText::toTagLib(value)));
        file.file()->setProperties(properties);
    }
}

/// The text that a field is to read as; YEAR and TRACK take the number that a text begins with.
QString storedText(const QString& key, const QString& value)
{
    if (!fieldForKey(numberFields, key))
        return value;
    const unsigned int number = TagText::leadingNumber(value);
    return number == 0 ? QString() : QString::number(number);
}

bool writeEntry(OpenedFile& file, const QString& key, const QString& value)
{
    if (auto* tags = file.splice())
        return tags->setProperty(key, storedText(key, value));
    writeWithTaglib(file, key, value);
    return true;
}

std::optional<PropertyMap> trackOf(const OpenedFile& file, const QString& type,
                                   const std::function<void(const QByteArray&)>& visitImage)
{
    if (file.isNull())
        return std::nullopt;
    if (const auto picture = EngineReads::picture(*file.file(), type))
        visitImage(QByteArray::fromRawData(picture->data(), picture->size()));
    return EngineReads::metadata(*file.file());
}

void printOpenError(const QString& path)
{
    TagText::printLine(QStringLiteral("Error: TagLib::FileRef.isNull: Unable to open file:") + path);
}

void removeUnsupportedWithTaglib(TagLib::File& file)
{
    file.removeUnsupportedProperties(file.properties().unsupportedData());
}

void removePropertiesWithTaglib(TagLib::File& file)
{
    file.setProperties(TagLib::PropertyMap());
}

/// @param other the same with TagLib's means, for containers that it saves itself.
bool strip(const QString& path, const std::function<bool(TagSplice&)>& change, void (*other)(TagLib::File&))
{
    return OpenedFile::rewrite(path, [&](OpenedFile& file) {
        if (file.isNull()) {
            printOpenError(path);
            return false;
        }
        if (auto* tags = file.splice())
            return change(*tags);
        other(*file.file());
        return true;
    });
}

} // namespace

std::optional<PropertyMap> EngineReads::metadata(TagLib::File& file)
{
    if (!file.tag()) {
        FailureReason::note(FailureReason::noTag);
        return std::nullopt;
    }
    PropertyMap map;
    // What only the INFO list of a WAV file has, TagLib does not report beside ID3v2.
    if (const auto* info = infoTag(file))
        readProperties(info->properties(), map);
    readProperties(file.properties(), map);
    // The properties come first: they are the same texts in most files, and cost less.
    for (const auto& field : textFields) {
        if (const QString key = QLatin1String(field.key); !map.contains(key))
            map[key] = readText(file, field);
    }
    for (const auto& field : numberFields) {
        if (const QString key = QLatin1String(field.key); !map.contains(key))
            map[key] = QString::number((file.tag()->*field.get)());
    }
    if (const auto comment = Id3v2Reads::comment(file))
        map[QStringLiteral("COMMENT")] = TagText::fromTagLib(*comment).value_or(QString());
    if (const auto year = Id3v2Reads::oldYear(file))
        map[QStringLiteral("YEAR")] = QString::number(*year);
    return map;
}

QMap<QString, QStringList> EngineReads::severalValues(TagLib::File& file)
{
    QMap<QString, QStringList> found;
    for (const auto& [name, values] : file.properties()) {
        QStringList texts;
        for (const auto& value : values)
            texts += TagText::fromTagLib(value).value_or(QString());
        if (texts.size() > 1)
            found[TagText::fromTagLib(name).value_or(QString())] = texts;
    }
    return found;
}

std::optional<PropertyMap> TaglibWrapper::getMetadata(const QString& path)
{
    return OpenedFile::read(path, [](const OpenedFile& file) {
        return file.isNull() ? std::nullopt : EngineReads::metadata(*file.file());
    });
}

std::optional<TaglibWrapper::Contents>
TaglibWrapper::readContents(const QString& path, const QString& type,
                            const std::function<void(const QByteArray&)>& visitImage)
{
    return OpenedFile::read(path, [&](const OpenedFile& file) -> std::optional<Contents> {
        const auto tags = trackOf(file, type, visitImage);
        if (!tags)
            return std::nullopt;
        return Contents{*tags, EngineReads::severalValues(*file.file()), EngineReads::chapters(file)};
    });
}

std::optional<PropertyMap> TaglibWrapper::readTrack(const QString& path, const QString& type,
                                                    const std::function<void(const QByteArray&)>& visitImage)
{
    return OpenedFile::read(path, [&](const OpenedFile& file) { return trackOf(file, type, visitImage); });
}

bool TaglibWrapper::setMetadata(const QString& path, const PropertyMap& changes)
{
    return OpenedFile::rewrite(path, [&](OpenedFile& file) {
        if (file.isNull()) {
            printOpenError(path);
            return false;
        }
        if (!file.tag()) {
            TagText::printLine(QStringLiteral("Unable to create tag"));
            FailureReason::note(FailureReason::noTag);
            return false;
        }
        if (!std::all_of(changes.begin(), changes.end(), TagText::isValid)) {
            FailureReason::note(FailureReason::invalidText);
            return false;
        }
        file.expect(changes);
        for (auto entry = changes.begin(); entry != changes.end(); ++entry) {
            if (!writeEntry(file, entry.key(), entry.value()))
                return false;
        }
        return true;
    });
}

bool TaglibWrapper::removeUnsupportedTags(const QString& path)
{
    return strip(
        path, [](TagSplice& tags) { return tags.removeUnsupported(TagSplice::Pictures::Remove); },
        &removeUnsupportedWithTaglib);
}

bool TaglibWrapper::removeUnsupportedTagsKeepingImage(const QString& path)
{
    return strip(
        path, [](TagSplice& tags) { return tags.removeUnsupported(TagSplice::Pictures::KeepFirst); },
        &removeUnsupportedWithTaglib);
}

bool TaglibWrapper::removeAllTags(const QString& path)
{
    return strip(
        path, [](TagSplice& tags) { return tags.removeProperties(); }, &removePropertiesWithTaglib);
}

bool TaglibWrapper::removeAllTagsAndImages(const QString& path)
{
    return strip(
        path, [](TagSplice& tags) { return tags.setPicture({}) && tags.removeProperties(); },
        &removePropertiesWithTaglib);
}

std::optional<QString> TaglibWrapper::getTitle(const QString& path)
{
    return OpenedFile::read(path, [](const OpenedFile& file) {
        return file.isNull() || !file.tag() ? std::nullopt : TagText::fromTagLib(file.tag()->title());
    });
}

std::optional<QString> TaglibWrapper::getComment(const QString& path)
{
    return OpenedFile::read(path, [&](const OpenedFile& file) -> std::optional<QString> {
        if (file.isNull()) {
            TagText::printLine(QStringLiteral("FileRef is nil for: ") + path);
            return std::nullopt;
        }
        if (!file.tag()) {
            TagText::printLine(QStringLiteral("Tag is nil"));
            return std::nullopt;
        }
        return TagText::fromTagLib(Id3v2Reads::comment(*file.file()).value_or(file.tag()->comment()));
    });
}

bool TaglibWrapper::writeComment(const QString& path, const QString& comment)
{
    return OpenedFile::rewrite(path, [&](OpenedFile& file) {
        if (file.isNull()) {
            TagText::printLine(QStringLiteral("Unable to write comment"));
            return false;
        }
        TagText::printLine(QStringLiteral("Updating comment to: ") + comment);
        if (!file.tag()) {
            TagText::printLine(QStringLiteral("Unable to write tag"));
            return false;
        }
        if (!TagText::isValid(comment))
            return false;
        return writeEntry(file, QStringLiteral("COMMENT"), comment);
    });
}

QString TaglibWrapper::failureReason()
{
    return FailureReason::text();
}

void TaglibWrapper::recoverInterruptedChanges()
{
    InterruptedChanges::recover();
}
