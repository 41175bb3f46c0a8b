#include "tagengine/Id3v2Splice.h"

#include "tagengine/FailureReason.h"
#include "tagengine/TagText.h"

#include <algorithm>

void Id3v2Splice::takeId3v2(const TagLib::ByteVector& tag)
{
    if (tag.isEmpty())
        return;
    const TagLib::ByteVector behind = tag.mid(Id3v2Bytes::lengthOf(tag.mid(0, Id3v2Bytes::headerLength)));
    const bool isAll = std::all_of(behind.begin(), behind.end(), [](char c) { return c == 0; });
    tag_ = isAll ? Id3v2Bytes::parse(tag) : std::nullopt;
    isUnknown_ = !tag_;
}

/// @param adds false where there is nothing to do without a tag.
bool Id3v2Splice::change(bool adds, const std::function<bool(Id3v2Edit&)>& change)
{
    if (isUnknown_) {
        FailureReason::note(FailureReason::unknownTag);
        return false;
    }
    if (!tag_ && !adds)
        return true;
    if (!tag_)
        tag_.emplace();
    isChanged_ = true;
    Id3v2Edit edit(*tag_);
    if (adds && edit.isEmpty())
        takeOver(edit);
    return change(edit);
}

bool Id3v2Splice::setId3v2Property(const QString& key, const QString& value)
{
    const TagLib::StringList values =
        value.isEmpty() ? TagLib::StringList() : TagLib::StringList(TagText::toTagLib(value));
    return change(!value.isEmpty(), [&](Id3v2Edit& edit) { return edit.setProperty(key, values); });
}

bool Id3v2Splice::setPicture(const QByteArray& bytes)
{
    return change(!bytes.isEmpty(), [&](Id3v2Edit& edit) { return edit.setPicture(bytes); });
}

bool Id3v2Splice::setChapters(const QStringList& chapters)
{
    return change(!chapters.isEmpty(), [&](Id3v2Edit& edit) { return edit.setChapters(chapters); });
}

bool Id3v2Splice::removeUnsupported(Pictures pictures)
{
    const bool keepsFirst = pictures == Pictures::KeepFirst;
    return change(false, [=](Id3v2Edit& edit) { return edit.removeUnsupported(keepsFirst); });
}

bool Id3v2Splice::removeProperties()
{
    dropsEmpty_ = true;
    return change(false, [](Id3v2Edit& edit) { return edit.removeProperties(); });
}

std::optional<TagLib::ByteVector> Id3v2Splice::renderId3v2() const
{
    if (dropsEmpty_ && tag_->isEmpty())
        return TagLib::ByteVector();
    const auto rendered = tag_->render(stream_.length());
    if (!rendered)
        FailureReason::note(FailureReason::notHeld);
    return rendered;
}
