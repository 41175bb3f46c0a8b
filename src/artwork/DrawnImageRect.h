#pragma once

#include <QRect>
#include <QSizeF>

/// Where an image view draws its image.
namespace DrawnImageRect {

enum class Frame { None, Photo, GreyBezel, Groove, Button };
enum class Scaling { ProportionallyDown, ProportionallyUpOrDown, AxesIndependently, None };

/// @param image the size of the image; an empty one has the rectangle (0, 0, 0, 0).
/// @param bounds those of the view, frame included.
/// @param alignment the default centres the image both ways.
/// @return the rectangle in whole pixels of the view: its corner rounded to the nearest, its size rounded up.
QRect drawnImageRect(const QSizeF& image, const QRectF& bounds, Frame frame = Frame::None,
                     Scaling scaling = Scaling::ProportionallyUpOrDown, Qt::Alignment alignment = Qt::AlignCenter);

} // namespace DrawnImageRect
