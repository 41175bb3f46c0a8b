#include "tagengine/RiffSplice.h"

RiffSplice::RiffSplice(TagLib::IOStream& stream, Kind kind)
    : Id3v2Splice(stream), chunks_(&stream, kind == Kind::Aiff), kind_(kind)
{
    takeId3v2(chunks_.id3v2());
}

bool RiffSplice::setProperty(const QString& key, const QString& value)
{
    if (!setId3v2Property(key, value))
        return false;
    return kind_ != Kind::Wav || chunks_.setInfo(key, value);
}

bool RiffSplice::removeProperties()
{
    return (kind_ != Kind::Wav || chunks_.clearInfo()) && Id3v2Splice::removeProperties();
}

bool RiffSplice::store()
{
    if (!id3v2Changed())
        return true;
    const auto tag = renderId3v2();
    if (tag)
        chunks_.setId3v2(*tag);
    return tag.has_value();
}
