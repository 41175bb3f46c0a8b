#include "app/ui/LightGradientView.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>
#include <numbers>

namespace {

constexpr qreal endWhite = 0.98;
constexpr qreal degrees = 60.0;
constexpr int halfLightness = 128;

/// A gradient across the whole of a rectangle, its direction turned from the horizontal against the clock: it begins
/// and ends in the corners that lie farthest along it.
QLinearGradient gradientAcross(const QRectF& bounds)
{
    const qreal angle = degrees * std::numbers::pi / 180;
    const QPointF direction(std::cos(angle), -std::sin(angle));
    const qreal reach = (bounds.width() * std::abs(direction.x()) + bounds.height() * std::abs(direction.y())) / 2;
    QLinearGradient gradient(bounds.center() - direction * reach, bounds.center() + direction * reach);
    gradient.setColorAt(0, Qt::white);
    gradient.setColorAt(1, QColor::fromRgbF(endWhite, endWhite, endWhite));
    return gradient;
}

} // namespace

void LightGradientView::paintEvent(QPaintEvent*)
{
    if (palette().color(QPalette::Window).lightness() >= halfLightness)
        QPainter(this).fillRect(rect(), gradientAcross(rect()));
}

void LightGradientView::mousePressEvent(QMouseEvent* event)
{
    event->accept();
}
