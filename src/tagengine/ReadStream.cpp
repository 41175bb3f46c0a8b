#include "tagengine/ReadStream.h"

#include <algorithm>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

ReadStream::ReadStream(QByteArray path)
    : path_(std::move(path)), descriptor_(::open(path_.constData(), O_RDONLY | O_CLOEXEC)), reader_(descriptor_)
{
    struct stat status {};
    if (isOpen() && ::fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode))
        length_ = status.st_size;
}

ReadStream::~ReadStream()
{
    if (isOpen())
        ::close(descriptor_);
}

TagLib::ByteVector ReadStream::readBlock(std::size_t length)
{
    if (!isOpen() || position_ < 0 || position_ >= length_)
        return {};
    length = std::min(length, static_cast<std::size_t>(length_ - position_));
    TagLib::ByteVector bytes(static_cast<unsigned int>(length));
    const std::size_t count = reader_.read(position_, bytes.data(), length);
    bytes.resize(static_cast<unsigned int>(count));
    position_ += static_cast<TagLib::offset_t>(count);
    return bytes;
}

void ReadStream::seek(TagLib::offset_t offset, Position from)
{
    switch (from) {
    case Beginning:
        position_ = offset;
        break;
    case Current:
        position_ += offset;
        break;
    case End:
        position_ = length_ + offset;
        break;
    }
}
