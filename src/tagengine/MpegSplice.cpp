#include "tagengine/MpegSplice.h"

#include "tagengine/FailureReason.h"
#include "tagengine/MpegSound.h"
#include "tagengine/StreamPatch.h"
#include "tagengine/TagText.h"

#include <taglib/apetag.h>
#include <taglib/id3v2tag.h>
#include <taglib/tpropertymap.h>

#include <algorithm>

namespace {

constexpr unsigned int id3v2HeaderSize = 10;
constexpr unsigned int id3v1Size = 128;
constexpr unsigned int apeFooterSize = 32;

} // namespace

MpegSplice::MpegSplice(TagLib::MPEG::File& file, TagLib::IOStream& stream) : Id3v2Splice(stream), file_(file)
{
    TagLib::offset_t end = stream.length();
    if (file.hasID3v1Tag()) {
        end -= id3v1Size;
        id3v1Range_ = read(end, id3v1Size);
        id3v1_.emplace(id3v1Range_.bytes);
    }
    if (file.hasAPETag()) {
        const std::uint32_t length = ApeBytes::lengthOf(read(end - apeFooterSize, apeFooterSize).bytes);
        apeRange_ = read(end - length, length);
        ape_ = ApeBytes::parse(apeRange_.bytes);
    }
    if (file.hasID3v2Tag())
        findId3v2();
}

/// A tag may stand behind some rubbish.
void MpegSplice::findId3v2()
{
    constexpr std::size_t mostRubbish = 1 << 20;
    const TagLib::ByteVector start = read(0, id3v2HeaderSize).bytes;
    TagLib::offset_t begin = 0;
    if (!start.startsWith("ID3")) {
        const auto limit = std::clamp<TagLib::offset_t>(file_.firstFrameOffset(), 0, mostRubbish);
        begin = read(0, static_cast<std::size_t>(limit)).bytes.find("ID3");
    }
    const std::uint32_t length = begin < 0 ? 0 : Id3v2Bytes::lengthOf(read(begin, id3v2HeaderSize).bytes);
    id3v2Range_ = read(begin, length);
    takeId3v2(length == 0 ? start : id3v2Range_.bytes);
}

MpegSplice::Range MpegSplice::read(TagLib::offset_t begin, std::size_t length)
{
    stream().seek(begin, TagLib::IOStream::Beginning);
    return {begin, length == 0 ? TagLib::ByteVector() : stream().readBlock(length)};
}

bool MpegSplice::apeIsSound() const
{
    if (!file_.hasAPETag() || ape_)
        return true;
    FailureReason::note(FailureReason::damaged);
    return false;
}

bool MpegSplice::setProperty(const QString& key, const QString& value)
{
    if (!apeIsSound())
        return false;
    const bool olderTagsHold = ape_ || (id3v1_ && id3v1_->holds(key, value));
    if ((file_.hasID3v2Tag() || id3v2Changed() || !olderTagsHold) && !setId3v2Property(key, value))
        return false;
    if (ape_)
        ape_->setProperty(key, value.isEmpty() ? TagLib::StringList() : TagLib::StringList(TagText::toTagLib(value)));
    if (id3v1_)
        id3v1_->set(key, value);
    return true;
}

void MpegSplice::takeOver(Id3v2Edit& edit)
{
    for (const auto& [key, values] : file_.properties())
        edit.setProperty(TagText::fromTagLib(key).value_or(QString()), values);
}

bool MpegSplice::removeUnsupported(Pictures pictures)
{
    if (file_.hasID3v2Tag() && !file_.ID3v2Tag()->isEmpty())
        return Id3v2Splice::removeUnsupported(pictures);
    if (ape_)
        ape_->removeItems(false);
    return apeIsSound();
}

bool MpegSplice::removeProperties()
{
    if (!apeIsSound() || !Id3v2Splice::removeProperties())
        return false;
    id3v1_.reset();
    if (ape_)
        ape_->removeItems(true);
    return true;
}

bool MpegSplice::store()
{
    const auto id3v2 = id3v2Changed() ? renderId3v2() : std::optional(id3v2Range_.bytes);
    if (!id3v2)
        return false;
    const auto ape = !ape_ ? apeRange_.bytes : ape_->isEmpty() ? TagLib::ByteVector() : ape_->render();
    const bool mayCutSound =
        (*id3v2 != id3v2Range_.bytes && id3v2ReachesIntoSound())
        || (ape != apeRange_.bytes && MpegSound::liesWithin(file_, apeRange_.begin, apeRange_.end()));
    if (mayCutSound) {
        FailureReason::note(FailureReason::untrueLength);
        return false;
    }
    // From the end, so that what comes before stays where it was.
    replace(id3v1Range_, id3v1_ ? id3v1_->bytes() : TagLib::ByteVector());
    replace(apeRange_, ape);
    replace(id3v2Range_, *id3v2);
    return true;
}

/// What is kept behind the frames may be a part of the first frame of sound, as some programs leave it.
bool MpegSplice::id3v2ReachesIntoSound()
{
    return !id3v2Range_.bytes.isEmpty() && MpegSound::runsAcross(file_, id3v2Range_.end(), keepsRest() ? 2 : 1);
}

void MpegSplice::replace(const Range& old, const TagLib::ByteVector& bytes)
{
    StreamPatch::replace(stream(), old.begin, old.bytes, bytes);
}
