#include "tagengine/Id3v2Reads.h"

#include "tagengine/TagText.h"

#include <taglib/aifffile.h>
#include <taglib/apetag.h>
#include <taglib/commentsframe.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2tag.h>
#include <taglib/infotag.h>
#include <taglib/mpegfile.h>
#include <taglib/textidentificationframe.h>
#include <taglib/wavfile.h>

namespace {

const TagLib::ID3v2::Tag* id3v2Tag(TagLib::File& file)
{
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file))
        return mpeg->ID3v2Tag();
    if (auto* wav = dynamic_cast<TagLib::RIFF::WAV::File*>(&file))
        return wav->ID3v2Tag();
    auto* aiff = dynamic_cast<TagLib::RIFF::AIFF::File*>(&file);
    return aiff ? aiff->tag() : nullptr;
}

TagLib::String commentOfOlderTag(TagLib::File& file)
{
    auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file);
    auto* wav = dynamic_cast<TagLib::RIFF::WAV::File*>(&file);
    if (mpeg && mpeg->hasAPETag() && !mpeg->APETag()->comment().isEmpty())
        return mpeg->APETag()->comment();
    if (mpeg && mpeg->hasID3v1Tag())
        return mpeg->ID3v1Tag()->comment();
    return wav && wav->InfoTag() ? wav->InfoTag()->comment() : TagLib::String();
}

} // namespace

std::optional<TagLib::String> Id3v2Reads::comment(TagLib::File& file)
{
    const auto* tag = id3v2Tag(file);
    if (!tag || tag->frameList("COMM").isEmpty())
        return std::nullopt;
    for (const auto* frame : tag->frameList("COMM")) {
        const auto* comment = dynamic_cast<const TagLib::ID3v2::CommentsFrame*>(frame);
        if (comment && comment->description().isEmpty())
            return comment->text();
    }
    if (const auto* own = TagLib::ID3v2::UserTextIdentificationFrame::find(tag, "COMMENT"))
        return own->fieldList().back();
    return commentOfOlderTag(file);
}

std::optional<unsigned int> Id3v2Reads::oldYear(TagLib::File& file)
{
    constexpr unsigned int yearLength = 4;
    const auto* tag = id3v2Tag(file);
    if (!tag || tag->header()->majorVersion() < 4 || !tag->frameList("TDRC").isEmpty()
        || tag->frameList("TYER").isEmpty())
        return std::nullopt;
    const auto text = TagText::fromTagLib(tag->frameList("TYER").front()->toString().substr(0, yearLength));
    return TagText::leadingNumber(text.value_or(QString()));
}
