#include "artwork/ShownArt.h"

#include "model/Picture.h"

void ShownArt::show(const QByteArray& bytes)
{
    if (bytes == bytes_)
        return;
    bytes_ = bytes;
    isPicture_ = !Picture::size(bytes).isEmpty();
    emit changed();
}

void ShownArt::put(const QByteArray& bytes)
{
    show(bytes);
    emit fadeInWanted();
}
