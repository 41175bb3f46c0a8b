#pragma once

#include <QPixmap>

class AudioFile;
class QWidget;

/// What hangs at the pointer while rows are dragged.
namespace RowDragImage {

/// The file's name behind its cover art or, without art, the icon of its type, both as high as the text. The file is
/// only read.
/// @param list gives the font, the colour and the scale factor.
QPixmap draggingImageComponents(const AudioFile& record, const QWidget& list);

} // namespace RowDragImage
