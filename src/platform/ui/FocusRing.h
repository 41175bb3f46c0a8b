#pragma once

class QPainter;
class QPalette;
class QRect;

/// The mark of the keyboard focus where the widget style draws none.
namespace FocusRing {

/// Draws it just inside the rectangle, in two colours, so that it shows on any picture.
void paint(QPainter& painter, const QRect& rectangle, const QPalette& palette);

} // namespace FocusRing
