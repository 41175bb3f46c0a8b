#include "model/AudioFile.h"

#include "model/ImageMeasure.h"
#include "tagengine/TaglibWrapper.h"

#include <QFileInfo>

#include <array>

namespace {

constexpr std::array fields{
    AudioFile::TagField{"title", "TITLE", &AudioFile::title},
    AudioFile::TagField{"artist", "ARTIST", &AudioFile::artist},
    AudioFile::TagField{"album", "ALBUM", &AudioFile::album},
    AudioFile::TagField{"albumArtist", "ALBUMARTIST", &AudioFile::albumArtist},
    AudioFile::TagField{"trackNumber", "TRACKNUMBER", &AudioFile::trackNumber},
    AudioFile::TagField{"discNumber", "DISCNUMBER", &AudioFile::discNumber},
    AudioFile::TagField{"year", "YEAR", &AudioFile::year},
    AudioFile::TagField{"genre", "GENRE", &AudioFile::genre},
    AudioFile::TagField{"comment", "COMMENT", &AudioFile::comment},
    AudioFile::TagField{"compilation", "COMPILATION", &AudioFile::compilation},
};

const QLatin1String compilationKey("COMPILATION");
const QLatin1String yearKey("YEAR");
const QLatin1String none("0");

} // namespace

std::shared_ptr<AudioFile> AudioFile::fromFile(const QString& path)
{
    qint64 imageDataLength = 0;
    const auto map = TaglibWrapper::readTrack(
        path, QFileInfo(path).suffix(), [&](const QByteArray& picture) { imageDataLength = measureImage(picture); });
    return map ? fromPropertyMap(*map, path, imageDataLength) : nullptr;
}

std::shared_ptr<AudioFile> AudioFile::fromPropertyMap(const PropertyMap& map, const QString& path,
                                                      qint64 imageDataLength)
{
    auto record = std::make_shared<AudioFile>();
    record->takeTags(map);
    const QFileInfo file(path);
    record->path = path;
    record->fileName = file.fileName();
    record->fileType = file.suffix();
    record->imageDataLength = imageDataLength;
    return record;
}

bool AudioFile::readTags()
{
    const auto map = TaglibWrapper::getMetadata(path);
    if (map)
        takeTags(*map);
    return map.has_value();
}

void AudioFile::takeTags(const PropertyMap& map)
{
    PropertyMap full = map;
    if (!full.contains(compilationKey))
        full[compilationKey] = none;
    if (full.value(yearKey) == none)
        full[yearKey].clear();
    setFromPropertyMap(full);
}

std::span<const AudioFile::TagField> AudioFile::tagFields()
{
    return fields;
}

PropertyMap AudioFile::propertyMap() const
{
    PropertyMap map;
    for (const auto& field : fields)
        map[QLatin1String(field.key)] = this->*field.text;
    map[QStringLiteral("TRACK")] = trackNumber.section(QLatin1Char('/'), 0, 0);
    return map;
}

void AudioFile::setFromPropertyMap(const PropertyMap& map)
{
    for (const auto& field : fields)
        this->*field.text = map.value(QLatin1String(field.key));
}

QString AudioFile::value(const QString& name) const
{
    for (const auto& field : fields) {
        if (name == QLatin1String(field.name))
            return this->*field.text;
    }
    if (name == QLatin1String("path"))
        return path;
    if (name == QLatin1String("fileName"))
        return fileName;
    if (name == QLatin1String("fileType"))
        return fileType;
    if (name == QLatin1String("imageDataLength"))
        return QString::number(imageDataLength);
    return {};
}
