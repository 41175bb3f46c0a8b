#include "tagengine/EngineReads.h"
#include "tagengine/FailureReason.h"
#include "tagengine/OpenedFile.h"
#include "tagengine/TagSplice.h"
#include "tagengine/TagText.h"
#include "tagengine/TaglibWrapper.h"

#include <taglib/attachedpictureframe.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mp4tag.h>
#include <taglib/mpegfile.h>

namespace {

using PictureFrame = TagLib::ID3v2::AttachedPictureFrame;

const QLatin1String mpegType("mp3");
const QLatin1String mp4Type("m4a");
const char coverItem[] = "covr";
const char pictureFrame[] = "APIC";

PictureFrame* firstPicture(const TagLib::ID3v2::Tag& tag)
{
    for (auto* frame : tag.frameList(pictureFrame)) {
        // A link to a picture is none.
        auto* picture = dynamic_cast<PictureFrame*>(frame);
        if (picture && picture->mimeType() != "-->" && picture->mimeType() != "image/-->")
            return picture;
    }
    return nullptr;
}

std::optional<TagLib::ByteVector> readPicture(TagLib::MPEG::File& file)
{
    const auto* tag = file.ID3v2Tag(false);
    const auto* picture = tag ? firstPicture(*tag) : nullptr;
    if (!picture)
        return std::nullopt;
    return picture->picture();
}

std::optional<TagLib::ByteVector> readPicture(TagLib::MP4::File& file)
{
    if (!file.tag())
        return std::nullopt;
    const auto covers = file.tag()->item(coverItem).toCoverArtList();
    if (covers.isEmpty())
        return std::nullopt;
    return covers.front().data();
}

bool refuse()
{
    FailureReason::note(
        QT_TRANSLATE_NOOP("FailureReason", "Cover art is kept in MP3 and M4A files that are named so"));
    return false;
}

} // namespace

std::optional<TagLib::ByteVector> EngineReads::picture(TagLib::File& file, const QString& type)
{
    auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file);
    auto* mp4 = dynamic_cast<TagLib::MP4::File*>(&file);
    if (type == mpegType && mpeg)
        return readPicture(*mpeg);
    if (type == mp4Type && mp4)
        return readPicture(*mp4);
    return std::nullopt;
}

std::optional<QByteArray> TaglibWrapper::getImageData(const QString& path, const QString& type)
{
    return OpenedFile::read(path, [&](const OpenedFile& file) {
        const auto picture = file.isNull() ? std::nullopt : EngineReads::picture(*file.file(), type);
        return picture ? std::optional(QByteArray(picture->data(), picture->size())) : std::nullopt;
    });
}

bool TaglibWrapper::setImageData(const QByteArray& bytes, const QString& path, const QString& type)
{
    FailureReason::clear();
    if (type != mpegType && type != mp4Type)
        return refuse();
    return OpenedFile::rewrite(path, [&](OpenedFile& opened) {
        const bool isThatType =
            type == mpegType ? opened.as<TagLib::MPEG::File>() != nullptr : opened.as<TagLib::MP4::File>() != nullptr;
        if (!isThatType)
            return refuse();
        opened.expect({});
        opened.expectPicture(bytes, type);
        return opened.splice()->setPicture(bytes);
    });
}
