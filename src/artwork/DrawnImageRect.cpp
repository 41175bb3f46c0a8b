#include "artwork/DrawnImageRect.h"

#include <algorithm>
#include <cmath>

namespace DrawnImageRect {

namespace {

QRectF insideFrame(const QRectF& bounds, Frame frame)
{
    constexpr qreal grooveWidth = 2;
    constexpr qreal bezelWidth = 8;
    switch (frame) {
    case Frame::Groove:
    case Frame::Button:
        return bounds.adjusted(grooveWidth, grooveWidth, -grooveWidth, -grooveWidth);
    case Frame::Photo:
        // Its shadow takes two pixels on the right and at the bottom.
        return bounds.adjusted(1, 1, -2, -2);
    case Frame::GreyBezel:
        return bounds.adjusted(bezelWidth, bezelWidth, -bezelWidth, -bezelWidth);
    case Frame::None:
        break;
    }
    return bounds;
}

QSizeF scaledSize(const QSizeF& image, const QSizeF& box, Scaling scaling)
{
    switch (scaling) {
    case Scaling::ProportionallyUpOrDown:
        return image.scaled(box, Qt::KeepAspectRatio);
    case Scaling::ProportionallyDown:
        return image.scaled(box.boundedTo(image), Qt::KeepAspectRatio);
    case Scaling::AxesIndependently:
        return box;
    case Scaling::None:
        break;
    }
    return image;
}

} // namespace

QRect drawnImageRect(const QSizeF& image, const QRectF& bounds, Frame frame, Scaling scaling, Qt::Alignment alignment)
{
    if (image.isEmpty())
        return {};
    const QRectF box = insideFrame(bounds, frame);
    QRectF place(box.topLeft(), scaledSize(image, box.size(), scaling));
    if (alignment & Qt::AlignRight)
        place.moveRight(box.right());
    else if (!(alignment & Qt::AlignLeft))
        place.moveLeft(box.center().x() - place.width() / 2);
    if (alignment & Qt::AlignBottom)
        place.moveBottom(box.bottom());
    else if (!(alignment & Qt::AlignTop))
        place.moveTop(box.center().y() - place.height() / 2);
    const auto nearest = [](qreal value) { return static_cast<int>(std::lround(value)); };
    const auto up = [](qreal value) { return static_cast<int>(std::ceil(value)); };
    return {nearest(place.x()), nearest(place.y()), up(place.width()), up(place.height())};
}

} // namespace DrawnImageRect
