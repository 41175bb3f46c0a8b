#include "artwork/PictureDecoder.h"

#include "model/Picture.h"

#include <utility>

PictureDecoder::PictureDecoder()
{
    worker_.setMaxThreadCount(1);
}

PictureDecoder::~PictureDecoder()
{
    worker_.waitForDone();
}

void PictureDecoder::decode(const QByteArray& bytes, const QSize& within)
{
    wish_ = Wish{bytes, within};
    isStale_ = true;
    if (!isBusy_)
        start();
}

void PictureDecoder::cancel()
{
    wish_.reset();
    isStale_ = true;
}

void PictureDecoder::start()
{
    isBusy_ = true;
    isStale_ = false;
    worker_.start([this, wish = *std::exchange(wish_, std::nullopt)] {
        const QImage picture = Picture::decode(wish.bytes, wish.within);
        QMetaObject::invokeMethod(
            this, [this, picture] { finish(picture); }, Qt::QueuedConnection);
    });
}

void PictureDecoder::finish(const QImage& picture)
{
    isBusy_ = false;
    if (!isStale_)
        emit decoded(picture);
    if (wish_ && !isBusy_)
        start();
}
