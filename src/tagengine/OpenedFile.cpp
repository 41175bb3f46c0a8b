#include "tagengine/OpenedFile.h"

#include "platform/PathBytes.h"
#include "tagengine/FailureReason.h"
#include "tagengine/Mp4Offsets.h"

#include <taglib/id3v2tag.h>
#include <taglib/infotag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/tpropertymap.h>
#include <taglib/wavfile.h>

namespace {

SafeFileStream::Outcome refuse(const char* reason)
{
    FailureReason::note(reason);
    return SafeFileStream::Outcome::Failed;
}

/// A track such as "0/12" or a date that is no number: TagLib's save would put the ID3v1 tag's missing number in its
/// place, and so drop it.
bool holdsUnreadNumber(const TagLib::ID3v2::Tag& tag)
{
    return (tag.track() == 0 && !tag.frameList("TRCK").isEmpty())
           || (tag.year() == 0 && !tag.frameList("TDRC").isEmpty());
}

} // namespace

OpenedFile::OpenedFile(const QString& path, SafeFileStream::Mode mode)
    : stream_(PathBytes::encode(path), mode), ref_(&stream_, true, TagLib::AudioProperties::Average)
{
    if (stream_.isRefused())
        ref_ = TagLib::FileRef();
    if (stream_.isOpen() && ref_.isNull())
        FailureReason::note(FailureReason::notSound);
}

bool OpenedFile::rewrite(const QString& path, const std::function<bool(OpenedFile&)>& change)
{
    using Outcome = SafeFileStream::Outcome;
    constexpr int attempts = 3;
    Outcome outcome = Outcome::Stale;
    for (int attempt = 0; attempt < attempts && outcome == Outcome::Stale; ++attempt) {
        OpenedFile file(path, SafeFileStream::Mode::ReadWrite);
        if (!change(file))
            return false;
        outcome = file.save();
    }
    if (outcome == Outcome::Stale)
        FailureReason::note(FailureReason::inUse);
    return outcome == Outcome::Saved;
}

void OpenedFile::fillId3v2Tag()
{
    auto* mpeg = as<TagLib::MPEG::File>();
    auto* wav = as<TagLib::RIFF::WAV::File>();
    auto* tag = mpeg ? mpeg->ID3v2Tag(true) : wav ? wav->ID3v2Tag() : nullptr;
    if (tag && tag->isEmpty())
        tag->setProperties(mpeg ? mpeg->properties() : wav->InfoTag()->properties());
}

SafeFileStream::Outcome OpenedFile::save()
{
    // A tag in front of it, or taken out of its middle, would destroy an MP4 that only passes for an MPEG file.
    const bool isDisguisedMp4 = as<TagLib::MPEG::File>() && TagLib::MP4::File::isSupported(&stream_);
    const bool hasBrokenTables = as<TagLib::MP4::File>() && !Mp4Offsets::fitTheirTables(stream_);
    if (isDisguisedMp4)
        return refuse(QT_TRANSLATE_NOOP("FailureReason", "The file is named like MP3, but holds MP4"));
    if (hasBrokenTables)
        return refuse(FailureReason::damaged);
    if (!saveTags())
        return SafeFileStream::Outcome::Failed;
    // An MP4 with a damaged structure may come out of a save as one that no longer opens.
    if (as<TagLib::MP4::File>() && !TagLib::MP4::File(&stream_, false).isValid())
        return refuse(FailureReason::damaged);
    return stream_.commit();
}

bool OpenedFile::saveTags()
{
    using MpegFile = TagLib::MPEG::File;
    auto* mpeg = as<MpegFile>();
    const auto* tag = mpeg ? mpeg->ID3v2Tag(false) : nullptr;
    if (tag && holdsUnreadNumber(*tag))
        return mpeg->save(MpegFile::AllTags, MpegFile::StripOthers, TagLib::ID3v2::v4, MpegFile::DoNotDuplicate);
    return ref_.save();
}
