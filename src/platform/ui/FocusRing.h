#pragma once

class QPainter;
class QPalette;
class QRect;

/// The mark of the keyboard focus where the widget style draws none.
namespace FocusRing {

/// Draws it just inside the rectangle, in two colours, so that it shows on any picture. @param width that of the outer
/// colour, in pixels; the inner one is half as wide.
void paint(QPainter& painter, const QRect& rectangle, const QPalette& palette, int width = 2);

} // namespace FocusRing
