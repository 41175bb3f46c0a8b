#include "platform/ui/FocusRing.h"

#include <QPainter>
#include <QPalette>

namespace {

constexpr qreal radius = 3;

} // namespace

void FocusRing::paint(QPainter& painter, const QRect& rectangle, const QPalette& palette, int width)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const auto draw = [&](QPalette::ColorRole role, qreal penWidth, qreal inset) {
        painter.setPen(QPen(palette.color(role), penWidth));
        painter.drawRoundedRect(QRectF(rectangle).adjusted(inset, inset, -inset, -inset), radius, radius);
    };
    const qreal innerWidth = width / 2.0;
    draw(QPalette::Base, innerWidth, width + innerWidth / 2);
    draw(QPalette::Highlight, width, width / 2.0);
    painter.restore();
}
