#include "tagengine/OpenedFile.h"

#include "platform/PathBytes.h"
#include "tagengine/EngineReads.h"
#include "tagengine/FailureReason.h"
#include "tagengine/Mp4Look.h"
#include "tagengine/Mp4Offsets.h"
#include "tagengine/RiffLook.h"
#include "tagengine/TagSplice.h"
#include "tagengine/TagText.h"

#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/rifffile.h>

namespace {

SafeFileStream::Outcome refuse(const char* reason)
{
    FailureReason::note(reason);
    return SafeFileStream::Outcome::Failed;
}

bool isNumber(const QString& key)
{
    return key == QLatin1String("YEAR") || key == QLatin1String("TRACK");
}

/// A field that is written in another one's frame, too.
QString companion(const QString& key)
{
    static const QMap<QString, QString> companions{{QStringLiteral("YEAR"), QStringLiteral("DATE")},
                                                   {QStringLiteral("DATE"), QStringLiteral("YEAR")},
                                                   {QStringLiteral("TRACK"), QStringLiteral("TRACKNUMBER")},
                                                   {QStringLiteral("TRACKNUMBER"), QStringLiteral("TRACK")}};
    return companions.value(key);
}

/// Whether the field will be read otherwise than it is written: numbers stand for genres, a date has more than one form.
bool hasOtherForms(const QString& key)
{
    return key == QLatin1String("GENRE") || key == QLatin1String("DATE");
}

} // namespace

OpenedFile::OpenedFile(const QString& path, SafeFileStream::Mode mode) : stream_(PathBytes::encode(path), mode)
{
    constexpr int attempts = 3;
    bool isSettled = false;
    for (int attempt = 0; attempt < attempts && !isSettled; ++attempt) {
        if (attempt > 0)
            stream_.reopen();
        ref_ = TagLib::FileRef(&stream_, mode == SafeFileStream::Mode::Read);
        isSettled = stream_.isSettled();
    }
    if (!isSettled)
        FailureReason::note(FailureReason::inUse);
    if (!isSettled || stream_.isRefused())
        ref_ = TagLib::FileRef();
    if (stream_.isOpen() && ref_.isNull())
        FailureReason::note(FailureReason::notSound);
}

bool OpenedFile::rewrite(const QString& path, const std::function<bool(OpenedFile&)>& change)
{
    using Outcome = SafeFileStream::Outcome;
    constexpr int attempts = 3;
    auto outcome = std::optional(Outcome::Stale);
    for (int attempt = 0; attempt < attempts && outcome == Outcome::Stale; ++attempt)
        outcome = guarded([&] { return std::optional(rewriteOnce(path, change)); });
    if (outcome == Outcome::Stale)
        FailureReason::note(FailureReason::inUse);
    // An exception may have come in the middle of an overwriting, whose record is still there.
    if (!outcome)
        guarded([&] { return OpenedFile(path, SafeFileStream::Mode::Read).isNull(); });
    return outcome == Outcome::Saved;
}

SafeFileStream::Outcome OpenedFile::rewriteOnce(const QString& path, const std::function<bool(OpenedFile&)>& change)
{
    OpenedFile file(path, SafeFileStream::Mode::ReadWrite);
    return change(file) ? file.save() : SafeFileStream::Outcome::Failed;
}

OpenedFile::~OpenedFile() = default;

TagSplice* OpenedFile::splice()
{
    if (!splice_ && ref_.file())
        splice_ = TagSplice::of(*ref_.file(), stream_);
    return splice_.get();
}

void OpenedFile::expect(const PropertyMap& changes)
{
    changes_ = changes;
    before_ = EngineReads::metadata(*ref_.file()).value_or(PropertyMap());
}

void OpenedFile::expectPicture(const QByteArray& bytes, const QString& type)
{
    hasPicture_ = [=](TagLib::File& saved) {
        const auto picture = EngineReads::picture(saved, type);
        return picture.value_or(TagLib::ByteVector()) == TagText::fromBytes(bytes);
    };
}

bool OpenedFile::readsAsExpected()
{
    stream_.seek(0, TagLib::IOStream::Beginning);
    const TagLib::FileRef saved(&stream_, false);
    const auto after = saved.isNull() ? std::nullopt : EngineReads::metadata(*saved.file());
    if (!after || (hasPicture_ && !hasPicture_(*saved.file())))
        return false;
    for (auto field = before_.begin(); field != before_.end(); ++field) {
        const bool isMeant = changes_.contains(field.key()) || changes_.contains(companion(field.key()));
        if (!isMeant && after->value(field.key()) != field.value())
            return false;
    }
    for (auto change = changes_.begin(); change != changes_.end(); ++change) {
        const QString expected = isNumber(change.key()) ? QString::number(TagText::leadingNumber(change.value()))
                                                        : splice_->readBack(change.key(), change.value());
        const bool isOverruled = isNumber(change.key()) && changes_.contains(companion(change.key()));
        if (!isOverruled && !hasOtherForms(change.key()) && after->value(change.key()) != expected)
            return false;
    }
    return true;
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
    const char* reason = as<TagLib::MP4::File>()    ? Mp4Look::reasonAgainst(stream_)
                         : as<TagLib::RIFF::File>() ? RiffLook::reasonAgainst(stream_)
                                                    : nullptr;
    if (reason)
        return refuse(reason);
    return stream_.commit();
}

bool OpenedFile::saveTags()
{
    if (!splice_)
        return ref_.save();
    if (!splice_->store())
        return false;
    if (!readsAsExpected()) {
        FailureReason::note(FailureReason::notHeld);
        return false;
    }
    return true;
}
