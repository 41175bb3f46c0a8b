#include "artwork/ShownArt.h"

#include "model/Picture.h"

void ShownArt::show(const QByteArray& bytes)
{
    if (bytes == bytes_)
        return;
    bytes_ = bytes;
    isShown_ = !Picture::size(bytes).isEmpty();
    emit changed();
}

void ShownArt::put(const QByteArray& bytes)
{
    show(bytes);
    emit fadeInWanted();
}

void ShownArt::setDecoded(bool decoded)
{
    const bool isShown = decoded && Picture::canBeDecodedWhole(bytes_);
    if (isShown == isShown_)
        return;
    isShown_ = isShown;
    emit changed();
}
