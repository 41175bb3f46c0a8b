#include "artwork/ui/ArtPlaceholder.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

/// The side of the square in whose coordinates it is drawn.
constexpr int designSide = 240;
constexpr qreal lineWidth = 5.0;
constexpr qreal dashLength = 20.0;
constexpr qreal dashPhase = 10.0;

/// The placeholder's shapes are measured upward from the lower left corner.
QPainterPath dashedSquare()
{
    // From the middle of a side, since a dash that begins at a corner does not join the last one.
    QPainterPath path(QPointF(120.42, 40.0));
    for (const auto& corner : {QPointF(200.42, 40.0), QPointF(200.42, 200.0), QPointF(40.42, 200.0),
                               QPointF(40.42, 40.0), QPointF(120.42, 40.0)})
        path.lineTo(corner);
    return path;
}

/// A framed picture of a sun above mountains, which are holes in the frame.
QPainterPath pictureSymbol()
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.moveTo(94.67, 138.0);
    path.cubicTo(91.22, 138.0, 88.42, 135.2, 88.42, 131.75);
    path.cubicTo(88.42, 129.53, 89.58, 127.58, 91.32, 126.47);
    path.cubicTo(92.29, 125.86, 93.44, 125.5, 94.67, 125.5);
    path.cubicTo(98.12, 125.5, 100.92, 128.3, 100.92, 131.75);
    path.cubicTo(100.92, 135.2, 98.12, 138.0, 94.67, 138.0);
    path.closeSubpath();

    path.moveTo(122.17, 132.25);
    for (const auto& point : {QPointF(106.67, 111.25), QPointF(96.17, 117.25), QPointF(88.67, 100.75),
                              QPointF(154.17, 100.75), QPointF(138.67, 128.25), QPointF(131.67, 117.25)})
        path.lineTo(point);
    path.closeSubpath();

    path.moveTo(157.92, 141.5);
    path.lineTo(157.92, 98.5);
    path.cubicTo(157.92, 97.4, 157.03, 96.5, 155.92, 96.5);
    path.lineTo(84.92, 96.5);
    path.cubicTo(83.82, 96.5, 82.92, 97.4, 82.92, 98.5);
    path.cubicTo(82.92, 98.5, 82.92, 104.39, 82.92, 111.82);
    path.cubicTo(82.92, 124.45, 82.92, 141.5, 82.92, 141.5);
    path.cubicTo(82.92, 142.6, 83.82, 143.5, 84.92, 143.5);
    path.lineTo(155.92, 143.5);
    path.cubicTo(157.03, 143.5, 157.92, 142.6, 157.92, 141.5);
    path.closeSubpath();
    return path;
}

} // namespace

void ArtPlaceholder::paint(QPainter& painter, const QSize& size, const QColor& colour)
{
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal scale = qreal(std::min(size.width(), size.height())) / designSide;
    painter.translate(size.width() / 2.0, size.height() / 2.0);
    painter.scale(scale, -scale);
    painter.translate(-designSide / 2.0, -designSide / 2.0);

    QPen pen(colour, lineWidth, Qt::CustomDashLine, Qt::FlatCap, Qt::RoundJoin);
    pen.setDashPattern({dashLength / lineWidth, dashLength / lineWidth});
    pen.setDashOffset(dashPhase / lineWidth);
    painter.strokePath(dashedSquare(), pen);
    painter.fillPath(pictureSymbol(), colour);
}
