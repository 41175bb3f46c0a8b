#pragma once

class QColor;
class QPainter;
class QSize;

/// What the art well shows instead of art: a dashed square around the symbol of a picture.
namespace ArtPlaceholder {

/// Paints it in the middle of an area of @p size, as large as fits. The painter's state is not kept.
void paint(QPainter& painter, const QSize& size, const QColor& colour);

} // namespace ArtPlaceholder
