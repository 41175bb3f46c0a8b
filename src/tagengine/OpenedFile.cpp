#include "tagengine/OpenedFile.h"

#include "tagengine/ReadStream.h"

#include <QFile>

#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/tfilestream.h>

namespace {

std::unique_ptr<TagLib::IOStream> openStream(const QByteArray& path, OpenedFile::Mode mode)
{
    if (mode == OpenedFile::Mode::Read)
        return std::make_unique<ReadStream>(path);
    return std::make_unique<TagLib::FileStream>(path.constData());
}

} // namespace

OpenedFile::OpenedFile(const QString& path, Mode mode)
    : stream_(openStream(QFile::encodeName(path), mode)), ref_(stream_.get(), true, TagLib::AudioProperties::Average)
{
}

bool OpenedFile::save()
{
    const bool isDisguisedMp4 = as<TagLib::MPEG::File>() && !TagLib::MPEG::File::isSupported(stream_.get())
                                && TagLib::MP4::File::isSupported(stream_.get());
    return !isDisguisedMp4 && ref_.save();
}
